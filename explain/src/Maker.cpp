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

/// Whether what dies by the edit counts as harm that the suspect does. Tones that are sent although the far
/// end holds the call are no harm.
bool CountsLosses(const Suspect& suspect, ExplainTopic topic) {
    return suspect.isTakenAway && topic != ExplainTopic::Dtmf;
}

/// What the edit changes, without the topics on which it only takes something away.
Effects Counted(const Suspect& suspect, Effects effects) {
    for (std::size_t i = 0; i < kExplainTopics; ++i) {
        const bool isLoss = effects[i].takes && !effects[i].heals;
        if (isLoss && !CountsLosses(suspect, static_cast<ExplainTopic>(i))) {
            effects[i] = {};
        }
    }
    return effects;
}

void DropCure(ExplainFinding& finding) {
    finding.cure = {};
    finding.comes = finding.comes.substr(0, finding.comes.find(" With the cure "));
}

/// Where a byte of the text stands with the edit.
std::size_t Moved(const ExplainCure& cure, std::size_t offset) {
    std::size_t moved = offset;
    for (const ExplainTextChange& change : cure.text) {
        if (change.offset < offset) {
            moved += change.text.size();
            moved -= std::min(change.length, offset - change.offset);
        }
    }
    return moved;
}

/// A sentence without its digits: those of a line change when an edit inserts another one.
std::string WithoutDigits(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }),
               text.end());
    return text;
}

std::size_t OffsetOf(const Reading& reading, const Suspect& suspect) {
    const std::size_t number = suspect.lines.empty() ? 0 : suspect.lines[0];
    return number == 0 || number > reading.lines.size() ? 0 : reading.lines[number - 1].offset;
}

/// Whether the edited text has no suspect of the same rule and the same words at the same place.
bool IsEnded(const Suspect& suspect, const Reading& reading, const ExplainInput& cured, const State& then) {
    const Reading after = Read(cured.remote);
    std::size_t skipped = 0;
    const std::vector<Suspect> others = SuspectsOf(cured, after, then, false, skipped);
    const std::size_t place = Moved(suspect.cure, OffsetOf(reading, suspect));
    const std::string what = WithoutDigits(suspect.what);
    return std::none_of(others.begin(), others.end(), [&](const Suspect& other) {
        if (other.rule != suspect.rule || other.field != suspect.field) {
            return false;
        }
        return other.field != nullptr ? other.what == suspect.what
                                      : OffsetOf(after, other) == place && WithoutDigits(other.what) == what;
    });
}

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

Maker::Place Maker::PlaceOf(const Suspect& suspect, const Reading& reading, const ExplainCure& cure,
                            ExplainTopic topic) const {
    return {suspect.rule->id, suspect.field != nullptr ? suspect.field->file : std::string_view(),
            suspect.field != nullptr ? 0 : Moved(cure, OffsetOf(reading, suspect)), topic};
}

/// Whether the edited text has a finding of more than this severity that the text has not. True as
/// well when the allowance is used up.
bool Maker::OpensWorse(const Suspect& suspect, ExplainSeverity severity) {
    if (m_allowance == 0) {
        return true;
    }
    --m_allowance;
    std::set<Place> known;
    for (const Ranked& found : m_found) {
        known.insert(PlaceOf(m_suspects[found.suspect], m_reading, suspect.cure, found.finding.topic));
    }
    const ExplainInput cured = ExplainCured(m_input, suspect.cure);
    const Reading reading = Read(cured.remote);
    State state;
    Run(cured, state, nullptr, &m_texts);
    std::size_t skipped = 0;
    for (const Suspect& other : SuspectsOf(cured, reading, state, true, skipped)) {
        const bool hasEdit = !other.cure.text.empty() || !other.cure.local.empty();
        if (other.rule->most <= severity || (other.known.empty() && !hasEdit)) {
            continue;
        }
        if (m_allowance == 0) {
            return true;
        }
        --m_allowance;
        Effects effects;
        if (hasEdit) {
            State then;
            Run(ExplainCured(cured, other.cure), then, other.cure.local.empty() ? &state : nullptr, &m_texts);
            effects = Counted(other, EffectsOf(state, then, false));
        }
        for (const Weight& weight : Weigh(other, effects)) {
            if (weight.severity > severity && known.count(PlaceOf(other, reading, {}, weight.topic)) == 0) {
                return true;
            }
        }
    }
    return false;
}

/// An edit that opens something worse than it ends is no cure. Nothing is worse than an error.
void Maker::DropBadCures() {
    for (std::size_t i = 0; i < m_suspects.size(); ++i) {
        if (m_suspects[i].cure.text.empty() && m_suspects[i].cure.local.empty()) {
            continue;
        }
        for (const ExplainSeverity severity : {ExplainSeverity::Note, ExplainSeverity::Warning}) {
            const auto isMeant = [&](const Ranked& found) {
                return found.suspect == i && found.finding.severity == severity;
            };
            if (std::any_of(m_found.begin(), m_found.end(), isMeant) && OpensWorse(m_suspects[i], severity)) {
                for (Ranked& found : m_found) {
                    if (isMeant(found)) {
                        DropCure(found.finding);
                    }
                }
            }
        }
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
