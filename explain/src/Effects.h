// What an edit changes, topic by topic: two runs of the component, compared fact by fact.
#pragma once

#include "State.h"

#include <array>
#include <map>
#include <string>
#include <utility>

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
using Named = std::map<std::pair<ExplainTopic, std::string>, const Fact*>;

/// The facts of a run by topic and name.
Named ByName(const State& state);
/// `now` is the run as it is, `then` the run with the edit.
Effects EffectsOf(const State& now, const Named& nowNamed, const State& then);

} // namespace explain
