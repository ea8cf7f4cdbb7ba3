// Stage: two runs of the component to what differs between them.
// Input: the facts of both runs. Output: for each topic what changes, in words.
// Touches nothing.
// Test: tests/explain/LawTest.cpp
#include "Effects.h"

#include <utility>

namespace explain {

namespace {

void AppendClause(std::string& text, std::string_view clause) {
    constexpr std::size_t most = 200;
    if (text.size() + clause.size() < most && text.find(clause) == std::string::npos) {
        text += text.empty() ? "" : ", ";
        text += clause;
    }
}

/// The same fact of another run; null when it has none. Facts stand in one order in all runs, so the search
/// begins after the last one found.
class Others {
public:
    explicit Others(const State& state) : m_facts(state.Facts()) {}

    const Fact* Find(const Fact& fact) {
        for (std::size_t i = 0; i < m_facts.size(); ++i) {
            const std::size_t at = (m_next + i) % m_facts.size();
            if (m_facts[at].IsSame(fact)) {
                m_next = at + 1;
                return &m_facts[at];
            }
        }
        return nullptr;
    }

private:
    const std::vector<Fact>& m_facts;
    std::size_t m_next = 0;
};

/// A fact of one run and the same of another.
struct Comparison {
    const State& now;
    const State& then;
    bool wantsClauses;
    Effects effects;

    void Compare(const Fact* before, const Fact* after);
};

void Comparison::Compare(const Fact* before, const Fact* after) {
    const bool saysSame = before != nullptr && after != nullptr && now.SaysSame(*before, then, *after);
    if (saysSame && before->hidden == after->hidden && before->isDead == after->isDead) {
        return;
    }
    const bool wasDead = before != nullptr && before->isDead;
    const bool isDead = after != nullptr && after->isDead;
    const bool isGone = after == nullptr && !wasDead;
    const bool isNewHarm = before == nullptr && isDead;
    if (isGone || isNewHarm || (wasDead && isDead)) {
        return;
    }
    Effect& effect = effects[static_cast<std::size_t>((before != nullptr ? before : after)->topic)];
    effect.isAny = true;
    effect.heals = effect.heals || (wasDead && !isDead && after != nullptr);
    effect.takes = effect.takes || (!wasDead && isDead && before != nullptr);
    effect.isHard = effect.isHard || (before != nullptr && before->isHard);
    if (wantsClauses && before != nullptr) {
        AppendClause(effect.now, now.ClauseOf(*before));
    }
    if (wantsClauses && after != nullptr && !saysSame) {
        AppendClause(effect.then, then.ClauseOf(*after));
    }
}

} // namespace

Effects EffectsOf(const State& now, const State& then, bool wantsClauses) {
    if (then.same == &now) {
        return {};
    }
    Comparison comparison{now, then, wantsClauses, {}};
    Others afterwards(then);
    std::size_t found = 0;
    for (const Fact& fact : now.Facts()) {
        const Fact* const other = afterwards.Find(fact);
        found += other == nullptr ? 0 : 1;
        comparison.Compare(&fact, other);
    }
    if (found == then.Facts().size()) {
        return std::move(comparison.effects); // There is no fact that is new.
    }
    Others before(now);
    for (const Fact& fact : then.Facts()) {
        if (before.Find(fact) == nullptr) {
            comparison.Compare(nullptr, &fact);
        }
    }
    return std::move(comparison.effects);
}

} // namespace explain
