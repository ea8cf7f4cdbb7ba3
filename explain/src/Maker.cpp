// Stage: suspects to findings.
// Input: the suspects of a text. Output: findings with their cures, most harmful first.
// Touches nothing; at most kExplainTrials edits of the text and each edit of a local field are run.
// Test: tests/explain/LawTest.cpp, tests/explain/judge_cases.py
#include "Maker.h"

#include <algorithm>

namespace explain {

namespace {

std::string Sentence(std::string text) {
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') {
        text[0] = static_cast<char>(text[0] - 32);
    }
    return text + ".";
}

/// What comes of a suspect on a topic, in sentences.
std::string ConsequenceOf(const Suspect& suspect, const Effect& effect, ExplainTopic topic) {
    const auto known = std::find_if(suspect.known.begin(), suspect.known.end(),
                                    [topic](const auto& each) { return each.first == topic; });
    std::string comes = known == suspect.known.end() ? std::string() : known->second;
    if (effect.isAny && effect.now.empty()) {
        return comes + (comes.empty() ? "" : " ") + "With the cure " + effect.then + ".";
    }
    if (effect.isAny) {
        const bool hasCure = !suspect.cure.text.empty() || !suspect.cure.local.empty();
        comes += (comes.empty() ? "" : " ") + Sentence(effect.now);
        comes += hasCure && !effect.then.empty() ? " With the cure " + effect.then + "." : "";
    }
    return comes;
}

using Find = void (*)(Scene&);
constexpr Find kFinders[] = {
    FindLocalAudio, FindLocalVideo, FindLocalCall,    FindPair,         FindLineEnds,
    FindMisread,    FindNames,      FindMedia,        FindMisplaced,    FindMisspelled,
    FindOverridden, FindAddresses,  FindAudioFormats, FindVideoFormats, FindParameters,
    FindSecurity,   FindStreams,    FindBandwidth,    FindFloor,        FindIce,
};

} // namespace

std::vector<Suspect> SuspectsOf(const ExplainInput& input, const Reading& reading, const State& state,
                                bool isBrief, std::size_t& skipped) {
    constexpr std::size_t usual = 32;
    std::vector<Suspect> suspects;
    suspects.reserve(usual);
    Scene scene{input, reading, state, suspects, isBrief};
    for (const Find find : kFinders) {
        find(scene);
    }
    skipped = scene.skipped;
    std::stable_sort(suspects.begin(), suspects.end(),
                     [](const Suspect& a, const Suspect& b) { return a.rule->rank < b.rule->rank; });
    return suspects;
}

Maker::Maker(const ExplainInput& input, const Reading& reading, const State& state, OurTexts& texts,
             bool isBrief)
    : m_input(input), m_reading(reading), m_state(state), m_texts(texts) {
    // Small texts are examined in full; for long ones the cost stays in proportion to the length.
    constexpr std::size_t bytes = 1U << 20U;
    constexpr std::size_t most = 256;
    constexpr std::size_t fewest = 4;
    m_allowance = kExplainTrials / 4 + std::min(most, bytes / (input.remote.size() + 1));
    m_mostTrials = std::min(kExplainTrials, fewest + 2 * bytes / (input.remote.size() + 1));
    constexpr std::size_t usual = 16;
    m_found.reserve(usual);
    if (isBrief) {
        m_brief.emplace(input, reading, state, texts);
    }
}

/// What the suspect's edit changes. An edit after which the suspect is found again is no cure and is dropped.
Effects Maker::Try(Suspect& suspect) {
    const bool isLocal = !suspect.cure.local.empty();
    if (suspect.cure.text.empty() && !isLocal) {
        return {};
    }
    if (!isLocal && ++m_tried > m_mostTrials) {
        ++untried;
        return {};
    }
    if (m_brief && !isLocal) {
        return Counted(suspect, m_brief->EffectsOf(suspect.cure));
    }
    ExplainInput cured = ExplainCured(m_input, suspect.cure);
    if (m_brief) {
        cured.remote = m_brief->Lean(suspect.cure);
    }
    State then;
    Run(cured, then, isLocal ? nullptr : &m_state, &m_texts);
    Effects effects = Counted(suspect, EffectsOf(m_state, then, !m_brief));
    const bool isFinding =
        !suspect.known.empty() ||
        std::any_of(effects.begin(), effects.end(), [](const Effect& effect) { return effect.isAny; });
    if (!m_brief && isFinding && !IsEnded(suspect, m_reading, cured, then)) {
        suspect.cure = {};
    }
    return effects;
}

std::vector<Maker::Weight> Maker::Weigh(const Suspect& suspect, const Effects& effects) {
    std::vector<Weight> weights;
    const Rule& rule = *suspect.rule;
    for (std::size_t i = 0; i < kExplainTopics; ++i) {
        const Effect& effect = effects[i];
        if (!effect.isAny) {
            continue;
        }
        const bool isError = effect.heals || effect.isHard || effect.takes;
        weights.push_back({static_cast<ExplainTopic>(i),
                           std::min(rule.most, isError ? ExplainSeverity::Error : ExplainSeverity::Warning),
                           rule.rank + (effect.heals || effect.isHard ? 0 : 5)});
    }
    for (const auto& known : suspect.known) {
        if (!effects[static_cast<std::size_t>(known.first)].isAny) {
            weights.push_back({known.first, rule.most, rule.rank});
        }
    }
    return weights;
}

ExplainFinding Maker::FindingOf(const Suspect& suspect, const Effects& effects, const Weight& weight) const {
    ExplainFinding finding;
    finding.id = suspect.rule->id;
    finding.topic = weight.topic;
    finding.severity = weight.severity;
    finding.lines = suspect.lines;
    finding.field = suspect.field;
    finding.ledger = *suspect.ledger != '\0' ? suspect.ledger : suspect.rule->ledger;
    if (!m_brief) {
        finding.what = suspect.what;
        finding.acted = suspect.acted.empty() ? suspect.rule->acted : suspect.acted;
        finding.comes = ConsequenceOf(suspect, effects[static_cast<std::size_t>(weight.topic)], weight.topic);
        finding.cure = suspect.cure;
    }
    return finding;
}

void Maker::Take(Suspect suspect) {
    const Effects effects = Try(suspect);
    for (const Weight& weight : Weigh(suspect, effects)) {
        m_found.push_back({FindingOf(suspect, effects, weight), weight.rank, m_suspects.size()});
    }
    if (!m_brief) {
        m_suspects.push_back(std::move(suspect)); // Its cure is checked at the end.
    }
}

std::vector<ExplainFinding> Maker::Finish() {
    if (!m_brief) {
        DropBadCures();
    }
    std::vector<Ranked*> order;
    order.reserve(m_found.size());
    for (Ranked& found : m_found) {
        order.push_back(&found);
    }
    std::stable_sort(order.begin(), order.end(), [](const Ranked* a, const Ranked* b) {
        return a->finding.severity != b->finding.severity ? a->finding.severity > b->finding.severity
                                                          : a->rank < b->rank;
    });
    std::set<Place> places;
    std::vector<ExplainFinding> findings;
    findings.reserve(order.size());
    for (Ranked* const ranked : order) {
        const ExplainFinding& finding = ranked->finding;
        const bool isLocal = finding.field != nullptr;
        const Place place{finding.id, isLocal ? finding.field->file : std::string_view(),
                          isLocal || finding.lines.empty() ? 0 : finding.lines[0], finding.topic};
        if (places.insert(place).second) {
            findings.push_back(std::move(ranked->finding));
        }
    }
    return findings;
}

} // namespace explain
