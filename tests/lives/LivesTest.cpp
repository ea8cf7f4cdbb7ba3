// Two negotiators through random lives: wishes, offers, answers, refusals and glare.
//
// COMMONMEDIA_LIVES=100000 build/.../test_lives takes as many lives as it says, each of twenty steps.
#include "Life.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr int kSteps = 20;
constexpr int kUsualLives = 400;

int LivesToTake() {
    const char* const wanted = std::getenv("COMMONMEDIA_LIVES");
    return wanted == nullptr ? kUsualLives : std::atoi(wanted);
}

TEST(Lives, BothSidesSayTheSameAfterEveryExchange) {
    lives::Tally tally;
    const int lives = LivesToTake();
    for (int life = 1; life <= lives; ++life) {
        const std::string story = lives::Life(static_cast<std::uint32_t>(life), tally).Run(kSteps);
        ASSERT_EQ(story, "") << "life " << life;
    }
    // Every law was put to the test: on average each life has an exchange, a running and a secure stream.
    EXPECT_GT(tally.exchanges, static_cast<std::size_t>(lives));
    EXPECT_GT(tally.runningStreams, static_cast<std::size_t>(lives));
    EXPECT_GT(tally.secureStreams, static_cast<std::size_t>(lives) / 2);
    EXPECT_GT(tally.heldStreams, static_cast<std::size_t>(lives) / 4);
    EXPECT_GT(tally.rejectedStreams, static_cast<std::size_t>(lives) / 4);
    EXPECT_GT(tally.refusals, static_cast<std::size_t>(lives) / 4);
    EXPECT_GT(tally.glares, static_cast<std::size_t>(lives));
    RecordProperty("exchanges", static_cast<int>(tally.exchanges));
    RecordProperty("running_streams", static_cast<int>(tally.runningStreams));
}

} // namespace
