// What an edit changes, topic by topic: two runs of the component, compared fact by fact.
#pragma once

#include "State.h"

#include <array>
#include <string>

namespace explain {

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

/// `now` is the run as it is, `then` the run with the edit. The clauses are wanted where they are shown.
Effects EffectsOf(const State& now, const State& then, bool wantsClauses);

} // namespace explain
