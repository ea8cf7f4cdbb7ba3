// Stage: two runs of the component to what differs between them.
// Input: the facts of both runs. Output: for each topic what changes, in words.
// Touches nothing.
// Test: tests/explain/LawTest.cpp
#include "Effects.h"

namespace explain {

namespace {

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

} // namespace

Named ByName(const State& state) {
    Named named;
    for (const Fact& fact : state.facts) {
        named[{fact.topic, fact.name}] = &fact;
    }
    return named;
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

} // namespace explain
