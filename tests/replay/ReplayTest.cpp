// The kept inputs of every fuzz target, replayed by each compiler that runs the tests. A law that an input
// breaks prints both sides and aborts, which fails its test. The inputs must also reach what they were kept
// for: the first bytes choose switches, and a byte that gets another meaning changes every input of its
// target.
#include "Inputs.h"

#include <Judged.h>
#include <Targets.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// In how many runs a state is reached at least: two thirds of what the kept inputs reached when they were
/// chosen.
struct Floor {
    const char* state;
    std::size_t runs;
};

/// Every target has seeds in the repository. Regressions exist only where a finding was kept.
void ReplayAll(const std::string& name, replay::Target target, const std::vector<Floor>& floors = {}) {
    fuzz::States().clear();
    const auto seeds = replay::InputsOf("seeds", name);
    EXPECT_GE(seeds.size(), 5U);
    replay::Replay(seeds, target);
    for (const Floor& floor : floors) {
        EXPECT_GE(fuzz::States()[floor.state], floor.runs) << floor.state;
    }
    replay::Replay(replay::InputsOf("regressions", name), target);
    target(nullptr, 0);
}

TEST(Replay, Parse) {
    ReplayAll("parse", FuzzParse,
              {{"SRTP and floor control on", 22},
               {"SRTP off, floor control off", 3},
               {"SRTP off, floor control on", 1},
               {"SRTP on, floor control off", 1},
               {"a key was read", 2},
               {"a key was written", 5},
               {"a presentation was read", 6},
               {"a presentation was written", 20},
               {"a trace sink was installed", 10},
               {"another number of sections was served", 3},
               {"audio has a codec", 8},
               {"audio was read", 12},
               {"audio was written", 26},
               {"bandwidth was read", 6},
               {"floor control was read", 4},
               {"floor control was written", 8},
               {"main video was read", 14},
               {"main video was written", 18},
               {"our audio was read back", 18},
               {"our main video was read back", 12},
               {"our offer was read back", 3},
               {"our presentation was read back", 10},
               {"packetization mode 1 was read", 5},
               {"telephone events were read", 4},
               {"the far end serves the floor", 3}});
}

TEST(Replay, Volume) {
    ReplayAll("volume", FuzzVolume);
}

TEST(Replay, Life) {
    ReplayAll("life", FuzzLife,
              {{"an answer was written", 3},
               {"an empty text was read", 2},
               {"an offer was written", 12},
               {"our audio was read back", 2},
               {"our main video was read back", 3},
               {"our offer was read back", 2},
               {"our presentation was read back", 2},
               {"the remote side was reset", 1}});
}

TEST(Replay, Key) {
    ReplayAll("key", FuzzKey,
              {{"SRTP and floor control on", 13},
               {"a crypto line counted", 4},
               {"a key was read", 3},
               {"a key was written", 3},
               {"a presentation was written", 13},
               {"a text that is a key", 24},
               {"a text that is no key", 15},
               {"audio has a codec", 13},
               {"audio was read", 13},
               {"audio was written", 13},
               {"main video was written", 13},
               {"no crypto line counted", 9},
               {"our audio was read back", 13},
               {"our main video was read back", 13},
               {"our presentation was read back", 13}});
}

TEST(Replay, Format) {
    ReplayAll("format", FuzzFormat,
              {{"SRTP and floor control on", 16},
               {"a presentation was written", 16},
               {"audio has a codec", 9},
               {"audio was read", 16},
               {"audio was written", 16},
               {"main video was read", 16},
               {"main video was written", 16},
               {"our audio was read back", 16},
               {"our main video was read back", 16},
               {"our presentation was read back", 16},
               {"packetization mode 1 was read", 1},
               {"telephone events were read", 2}});
}

TEST(Replay, Grammar) {
    ReplayAll("grammar", FuzzGrammar,
              {{"SRTP and floor control on", 42},
               {"SRTP off, floor control off", 12},
               {"SRTP off, floor control on", 12},
               {"SRTP on, floor control off", 16},
               {"a harmless mutation", 12},
               {"a key was written", 24},
               {"a presentation was read", 6},
               {"a presentation was written", 48},
               {"a trace sink was installed", 46},
               {"another mutation", 28},
               {"another number of sections was served", 68},
               {"audio has a codec", 10},
               {"audio was read", 14},
               {"audio was written", 70},
               {"bandwidth was read", 42},
               {"floor control was read", 14},
               {"floor control was written", 34},
               {"main video was read", 4},
               {"main video was written", 41},
               {"our audio was read back", 30},
               {"our main video was read back", 17},
               {"our offer was read back", 9},
               {"our presentation was read back", 14},
               {"packetization mode 1 was read", 1},
               {"telephone events were read", 6},
               {"the far end serves the floor", 2}});
}

TEST(Replay, Negotiation) {
    ReplayAll("negotiation", FuzzNegotiation,
              {{"a plain stream runs", 10},
               {"a secure stream runs", 8},
               {"an answer was refused", 3},
               {"an answer was taken", 1},
               {"an offer was answered", 14},
               {"an offer was refused", 2}});
}

TEST(Replay, Judge) {
    ReplayAll("judge", FuzzJudge,
              {{"a text with a fault", 19},
               {"a text without a fault", 1},
               {"an answer that does not fit its offer", 15}});
}

TEST(Replay, Explain) {
    ReplayAll("explain", FuzzExplain);
}

#ifdef COMMONMEDIA_FUZZ_TOOL
TEST(Replay, Tool) {
    ReplayAll("tool", FuzzTool,
              {{"a bad local file", 50},
               {"a bad remote text", 1},
               {"a verb has done its work", 29},
               {"nothing was negotiated", 20}});
}

TEST(Replay, Calls) {
    ReplayAll("calls", FuzzCalls, {{"an answer", 7}, {"an offer", 10}, {"another message", 5}});
}
#endif

} // namespace
