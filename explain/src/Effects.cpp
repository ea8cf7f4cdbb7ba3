// Stage: two runs of the component to what differs between them.
// Input: the facts of both runs. Output: for each topic what changes, in words.
// Touches nothing.
// Test: tests/explain/LawTest.cpp
#include "Effects.h"

#include <algorithm>

namespace explain {

namespace {

void AppendClause(std::string& text, std::string_view clause) {
    constexpr std::size_t most = 200;
    if (text.size() + clause.size() < most && text.find(clause) == std::string::npos) {
        text += text.empty() ? "" : ", ";
        text += clause;
    }
}

/// The same fact of another run; null when it has none. Facts have one order in all runs, so the search
/// begins after the last one found.
class Others {
public:
    explicit Others(FactRange facts) : m_facts(facts), m_next(facts.begin()) {}

    const Fact* Find(const Fact& fact) {
        const auto isSame = [&fact](const Fact& other) { return other.IsSame(fact); };
        const Fact* found = std::find_if(m_next, m_facts.end(), isSame);
        if (found == m_facts.end()) {
            found = std::find_if(m_facts.begin(), m_next, isSame);
            if (found == m_next) {
                return nullptr;
            }
        }
        m_next = found + 1;
        return found;
    }

private:
    FactRange m_facts;
    const Fact* m_next;
};

/// The facts of a part in two runs, which have made them each for itself.
struct Comparison {
    const State& now;
    const State& then;
    bool wantsClauses;
    Effects& effects;

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
    const bool isNewHarm = before == nullptr && (isDead || after->isIdle);
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
    Effects effects;
    Parts withNew; // parts of `then` with a fact that is new
    const auto compare = [&](std::size_t index, auto visit) {
        const auto part = static_cast<Part>(index);
        const State& before = now.MakerOf(part);
        const State& after = then.MakerOf(part);
        if (&before != &after) {
            visit(Comparison{before, after, wantsClauses, effects}, now.Facts(part), then.Facts(part));
        }
    };
    for (std::size_t part = 0; part < kParts; ++part) {
        compare(part, [&](Comparison comparison, FactRange facts, FactRange others) {
            Others afterwards(others);
            std::size_t found = 0;
            for (const Fact& fact : facts) {
                const Fact* const other = afterwards.Find(fact);
                found += other == nullptr ? 0 : 1;
                comparison.Compare(&fact, other);
            }
            withNew[part] = found < others.size();
        });
    }
    for (std::size_t part = 0; part < kParts; ++part) {
        if (!withNew[part]) {
            continue;
        }
        compare(part, [](Comparison comparison, FactRange facts, FactRange others) {
            Others before(facts);
            for (const Fact& fact : others) {
                if (before.Find(fact) == nullptr) {
                    comparison.Compare(nullptr, &fact);
                }
            }
        });
    }
    return effects;
}

} // namespace explain
