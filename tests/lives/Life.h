// One life: two negotiators, random wishes, offers, answers, refusals and glare between them.
//
// After each exchange the two must say the same of every stream, the texts of each side must continue its
// session, no stream may take a second section, nothing plain may run where SRTP is required, and no secure
// stream may become plain without Off. The first law that fails ends the life with a
// story: the steps so far and both sides' texts.
#pragma once

#include "SDPJudge.h"
#include "SDPNegotiator.h"

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace lives {

/// How often each kind of step was taken, over all lives; a law that never applied proves nothing.
struct Tally {
    std::size_t exchanges = 0;
    std::size_t refusals = 0;
    std::size_t glares = 0;
    std::size_t wishes = 0;
    std::size_t runningStreams = 0;
    std::size_t secureStreams = 0;
    std::size_t heldStreams = 0;
    std::size_t rejectedStreams = 0;
};

class Life {
public:
    Life(std::uint32_t seed, Tally& tally);

    /// Takes the steps. Returns the story of the first law that failed; empty when all held.
    std::string Run(int steps);

private:
    struct Side {
        explicit Side(std::string_view who);

        std::string_view name;
        SDPNegotiator call;
        SDPNegotiator::Srtp srtp = SDPNegotiator::Srtp::Off;
        std::string sent;         ///< the last text of this side that the other one has seen
        std::string agreed;       ///< the last one of them that was not refused
        std::vector<bool> secure; ///< of each section: whether its stream was secure in the last agreement
    };

    std::size_t Roll(std::size_t sides) { return m_random() % sides; }
    void Step();
    void WishOf(Side& side);
    LocalSDP RandomLocal(const Side& side);
    void Exchange(Side& offerer, Side& answerer);
    void Glare();
    void Refuse(Side& offerer, int status);
    bool SendText(Side& side, const std::string& text);
    void CheckAgreement();
    void CheckDowngrades(Side& side);
    void CheckStreams(const SDPNegotiator::Stream& ours, const SDPNegotiator::Stream& theirs);
    void CheckSecrecy(const Side& side);
    void CheckCrossed(const SDPNegotiator::Stream& from, const SDPNegotiator::Stream& to);
    void Tell(const std::string& line);
    void Fail(const std::string& law);

    std::minstd_rand m_random;
    Tally& m_tally;
    std::array<Side, 2> m_sides = {Side("near"), Side("away")};
    std::string m_story;
    bool m_hasFailed = false;
};

} // namespace lives
