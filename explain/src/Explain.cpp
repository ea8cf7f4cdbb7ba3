// Stage: suspects to findings: each edit is tried, and what it changes becomes the consequence.
// Input: everything that decides how the call comes up. Output: findings, most harmful first.
// Touches nothing; at most kExplainTrials edits of the text and each edit of a local field are run.
// Test: tests/explain/ExplainTest.cpp
#include "SDPExplain.h"

#include "Suspect.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace explain {

namespace {

/// What an edit changes on one topic.
struct Effect {
    bool heals = false;  ///< something dead works with the edit
    bool takes = false;  ///< something that worked is dead with the edit
    bool isHard = false; ///< an address, a port or a key changes
    bool isAny = false;
    std::string now;  ///< clauses as it is
    std::string then; ///< clauses with the edit
};

using Effects = std::array<Effect, kExplainTopics>;
using Named = std::map<std::pair<ExplainTopic, std::string>, const Fact*>;

Named ByName(const State& state) {
    Named named;
    for (const Fact& fact : state.facts) {
        named[{fact.topic, fact.name}] = &fact;
    }
    return named;
}

void Append(std::string& text, const std::string& clause) {
    constexpr std::size_t most = 200;
    if (text.size() + clause.size() < most && text.find(clause) == std::string::npos) {
        text += (text.empty() ? "" : ", ") + clause;
    }
}

void Compare(Effect& effect, const Fact* now, const Fact* then) {
    const bool isSame = now != nullptr && then != nullptr && now->clause == then->clause &&
                        now->hidden == then->hidden && now->isDead == then->isDead;
    if (isSame) {
        return;
    }
    const bool wasDead = now != nullptr && now->isDead;
    const bool isDead = then != nullptr && then->isDead;
    const bool isGone = then == nullptr && !wasDead;
    if (isGone || (wasDead && isDead)) {
        return;
    }
    effect.isAny = true;
    effect.heals = effect.heals || (wasDead && !isDead && then != nullptr);
    effect.takes = effect.takes || (!wasDead && isDead && now != nullptr);
    effect.isHard = effect.isHard || (now != nullptr && now->isHard);
    if (now != nullptr) {
        Append(effect.now, now->clause);
    }
    if (then != nullptr && (now == nullptr || now->clause != then->clause)) {
        Append(effect.then, then->clause);
    }
}

Effects EffectsOf(const State& now, const Named& nowNamed, const State& then) {
    Effects effects;
    const Named thenNamed = ByName(then);
    // In the order of the facts, which begins with what matters most.
    for (const Fact& fact : now.facts) {
        const auto other = thenNamed.find({fact.topic, fact.name});
        Compare(effects[static_cast<std::size_t>(fact.topic)], &fact,
                other == thenNamed.end() ? nullptr : other->second);
    }
    for (const Fact& fact : then.facts) {
        if (nowNamed.count({fact.topic, fact.name}) == 0) {
            Compare(effects[static_cast<std::size_t>(fact.topic)], nullptr, &fact);
        }
    }
    return effects;
}

std::string Sentence(std::string text) {
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') {
        text[0] = static_cast<char>(text[0] - 32);
    }
    return text + ".";
}

ExplainFinding FindingOf(const Suspect& suspect, ExplainTopic topic, ExplainSeverity severity,
                         std::string comes) {
    ExplainFinding finding;
    finding.id = suspect.rule->id;
    finding.topic = topic;
    finding.severity = std::min(severity, suspect.rule->most);
    finding.lines = suspect.lines;
    finding.field = suspect.field;
    finding.what = suspect.what;
    finding.acted = suspect.acted.empty() ? suspect.rule->acted : suspect.acted;
    finding.comes = std::move(comes);
    finding.ledger = *suspect.ledger != '\0' ? suspect.ledger : suspect.rule->ledger;
    finding.cure = suspect.cure;
    return finding;
}

struct Ranked {
    ExplainFinding finding;
    int rank;
};

class Maker {
public:
    Maker(const ExplainInput& input, const State& state)
        : m_input(input), m_state(state), m_named(ByName(state)) {}

    void Take(const Suspect& suspect);
    std::vector<ExplainFinding> Sorted();
    std::size_t untried = 0;

private:
    void AddKnown(const Suspect& suspect, const Effects& effects);

    const ExplainInput& m_input;
    const State& m_state;
    Named m_named;
    std::vector<Ranked> m_found;
    std::set<std::pair<std::string, ExplainTopic>> m_places; ///< rule and place of each finding, by topic
    std::size_t m_tried = 0;
};

void Maker::AddKnown(const Suspect& suspect, const Effects& effects) {
    for (const auto& known : suspect.known) {
        const Effect& effect = effects[static_cast<std::size_t>(known.first)];
        if (!effect.isAny) {
            m_found.push_back(
                {FindingOf(suspect, known.first, ExplainSeverity::Error, known.second), suspect.rule->rank});
        }
    }
}

void Maker::Take(const Suspect& suspect) {
    Effects effects;
    const bool hasEdit = !suspect.cure.text.empty() || !suspect.cure.local.empty();
    const bool isLocal = !suspect.cure.local.empty();
    if (hasEdit && !isLocal && ++m_tried > kExplainTrials) {
        ++untried;
    } else if (hasEdit) {
        effects = EffectsOf(m_state, m_named, RunState(ExplainCured(m_input, suspect.cure)));
    }
    for (std::size_t i = 0; i < kExplainTopics; ++i) {
        const Effect& effect = effects[i];
        if (!effect.isAny || (effect.takes && !effect.heals && !suspect.isTakenAway)) {
            continue;
        }
        const auto topic = static_cast<ExplainTopic>(i);
        const bool isError = effect.heals || effect.isHard || (effect.takes && suspect.isTakenAway);
        std::string comes;
        for (const auto& known : suspect.known) {
            comes = known.first == topic ? known.second + " " : comes;
        }
        comes += Sentence(effect.now);
        if (!effect.then.empty()) {
            comes += " With the cure " + effect.then + ".";
        }
        m_found.push_back(
            {FindingOf(suspect, topic, isError ? ExplainSeverity::Error : ExplainSeverity::Warning, comes),
             suspect.rule->rank + (effect.heals || effect.isHard ? 0 : 5)});
    }
    AddKnown(suspect, effects);
}

std::vector<ExplainFinding> Maker::Sorted() {
    std::stable_sort(m_found.begin(), m_found.end(), [](const Ranked& a, const Ranked& b) {
        return a.finding.severity != b.finding.severity ? a.finding.severity > b.finding.severity
                                                        : a.rank < b.rank;
    });
    std::vector<ExplainFinding> findings;
    for (Ranked& ranked : m_found) {
        const ExplainFinding& finding = ranked.finding;
        const std::string place =
            std::string(finding.id) + "/" +
            (finding.field != nullptr ? std::string(finding.field->file)
                                      : std::to_string(finding.lines.empty() ? 0 : finding.lines[0]));
        if (m_places.emplace(place, finding.topic).second) {
            findings.push_back(std::move(ranked.finding));
        }
    }
    return findings;
}

/// A finding that the negotiation layer ends says so.
void NameRepairs(std::vector<ExplainFinding>& findings, const ExplainInput& input) {
    const auto repairs = NeededRepairs(input);
    for (ExplainFinding& finding : findings) {
        for (const auto& repair : repairs) {
            const bool isMet = !finding.ledger.empty() && finding.field == nullptr &&
                               repair.first.find(finding.ledger) != std::string_view::npos;
            if (isMet && finding.repair.empty()) {
                finding.repair = repair.second;
            }
        }
    }
}

using Find = void (*)(Scene&);
constexpr Find kFinders[] = {
    FindLocalAudio,   FindLocalVideo, FindLocalCall,  FindPair,       FindLineEnds,  FindMisread,
    FindMedia,        FindMisplaced,  FindMisspelled, FindOverridden, FindAddresses, FindAudioFormats,
    FindVideoFormats, FindParameters, FindSecurity,   FindStreams,    FindBandwidth, FindFloorAndIce,
};

} // namespace

} // namespace explain

Explanation Explain(const ExplainInput& input) {
    using namespace explain;
    const Reading reading = Read(input.remote);
    const State state = RunState(input);
    std::vector<Suspect> suspects;
    Scene scene{input, reading, state, suspects};
    for (const Find find : kFinders) {
        find(scene);
    }
    std::stable_sort(suspects.begin(), suspects.end(),
                     [](const Suspect& a, const Suspect& b) { return a.rule->rank < b.rule->rank; });
    Maker maker(input, state);
    for (const Suspect& suspect : suspects) {
        maker.Take(suspect);
    }
    Explanation explanation;
    explanation.lines = ExplainLines(input);
    explanation.findings = maker.Sorted();
    NameRepairs(explanation.findings, input);
    for (ExplainFinding& judged : JudgedFindings(input)) {
        explanation.findings.push_back(std::move(judged));
    }
    std::stable_sort(
        explanation.findings.begin(), explanation.findings.end(),
        [](const ExplainFinding& a, const ExplainFinding& b) { return a.severity > b.severity; });
    explanation.untried = maker.untried;
    return explanation;
}
