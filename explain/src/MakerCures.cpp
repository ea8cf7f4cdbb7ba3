// Stage: cures to those that keep their promise.
// Input: the suspects of a text with their edits. Output: whether an edit ends its suspect and opens nothing
// worse; findings without the cures that do not.
// Touches the findings of the maker. Each check runs the component on the edited text.
// Test: tests/explain/LawTest.cpp
#include "Maker.h"

#include <algorithm>

namespace explain {

namespace {

/// Whether what dies by the edit counts as harm that the suspect does. Tones that are sent although the far
/// end holds the call are no harm.
bool CountsLosses(const Suspect& suspect, ExplainTopic topic) {
    return suspect.isTakenAway && topic != ExplainTopic::Dtmf;
}

void DropCure(ExplainFinding& finding) {
    finding.cure = {};
    finding.comes = finding.comes.substr(0, finding.comes.find(" With the cure "));
}

/// The offset that a byte of the text has in the edited text.
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

std::size_t OffsetOf(const Reading& reading, const Suspect& suspect) {
    const std::size_t number = suspect.lines.empty() ? 0 : suspect.lines[0];
    return number == 0 || number > reading.lines.size() ? 0 : reading.lines[number - 1].offset;
}

/// A sentence without its digits: those of a line change when an edit inserts another one.
std::string WithoutDigits(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }),
               text.end());
    return text;
}

} // namespace

Effects Counted(const Suspect& suspect, Effects effects) {
    for (std::size_t i = 0; i < kExplainTopics; ++i) {
        const bool isLoss = effects[i].takes && !effects[i].heals;
        if (isLoss && !CountsLosses(suspect, static_cast<ExplainTopic>(i))) {
            effects[i] = {};
        }
    }
    return effects;
}

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

} // namespace explain
