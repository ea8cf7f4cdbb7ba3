// Stage: what the media engine starts with, and what changes for it from one description to the next.
// Input: everything that decides how the call comes up. Output: phrases.
// Touches nothing.
// Test: tests/explain/DifferenceTest.cpp
#include "State.h"

#include <algorithm>
#include <iterator>

namespace explain {

namespace {

/// Facts about what the engine starts; the others are about our text.
bool IsForEngine(const Fact& fact) {
    static constexpr About kOurs[] = {About::OurCodec, About::OurSending, About::OurReceiving,
                                      About::OurKey,   About::OurFloor,   About::OurBandwidth,
                                      About::Served,   About::Match};
    return fact.topic != ExplainTopic::Call &&
           std::find(std::begin(kOurs), std::end(kOurs), fact.about) == std::end(kOurs);
}

/// "audio.codec: audio has G.722 as payload 9"
std::string Phrase(const Fact& fact, const std::string& clause) {
    std::string phrase;
    Append(phrase, {ExplainTopicName(fact.topic), ": ", clause});
    return phrase;
}

} // namespace

} // namespace explain

std::vector<std::string> ExplainStart(const ExplainInput& input) {
    using namespace explain;
    State state;
    Run(input, state);
    std::vector<std::string> phrases;
    for (const Fact& fact : state.Facts()) {
        if (IsForEngine(fact) && !fact.isIdle) {
            phrases.push_back(Phrase(fact, state.ClauseOf(fact)));
        }
    }
    return phrases;
}

std::vector<std::string> ExplainDifference(const ExplainInput& input, std::string_view older,
                                           std::string_view newer) {
    using namespace explain;
    ExplainInput then = input;
    then.remote = older;
    ExplainInput now = input;
    now.remote = newer;
    now.before = older;
    State before;
    Run(then, before);
    State after;
    Run(now, after);
    std::vector<std::string> phrases;
    for (const Fact& fact : after.Facts()) {
        const auto earlier = std::find_if(before.Facts().begin(), before.Facts().end(),
                                          [&](const Fact& other) { return other.IsSame(fact); });
        const bool isNew = earlier == before.Facts().end();
        const std::string clause = after.ClauseOf(fact);
        const bool saysSame = !isNew && before.ClauseOf(*earlier) == clause;
        // A stream that starts neither before nor now is no difference, whatever keeps it from starting.
        const bool isOff = !isNew && fact.about == About::Codec && fact.isDead && earlier->isDead;
        if (!IsForEngine(fact) || isOff || (isNew && fact.isIdle) ||
            (saysSame && earlier->hidden == fact.hidden)) {
            continue;
        }
        std::string phrase = Phrase(fact, clause);
        if (saysSame) {
            phrase += ", which is another one than before";
        } else if (!isNew) {
            Append(phrase, {"; before, ", before.ClauseOf(*earlier)});
        }
        phrases.push_back(std::move(phrase));
    }
    return phrases;
}
