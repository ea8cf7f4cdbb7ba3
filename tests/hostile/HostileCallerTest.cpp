// Difficult callers and machines: no memory, calls in any order, threads, counters that wrap.
#include "Hostile.h"

#include "Platform.h"
#include "oom/Allocations.h"

#include <iterator>
#include <new>
#include <optional>
#include <random>
#include <thread>

namespace {

/// The value of the tick count.
std::uint32_t g_tickCount = 12345;

} // namespace

// This tick count replaces that of the platform, so that the test can let it wrap.
std::uint32_t GetTickCount() noexcept {
    return g_tickCount;
}

namespace {

using namespace hostile;

/// Reads and answers kConference while the n-th allocation fails. Returns true if an allocation failed.
bool FailsAt(Endpoint& near, void (*fail)(std::size_t), std::size_t n) {
    bool hasFailed = false;
    fail(n);
    try {
        near.handler.ParseTheSDP(kConference, near.remote);
        near.handler.GetLocalSDP();
    } catch (const std::bad_alloc&) {
        hasFailed = true;
    }
    allocations::StopFailing();
    return hasFailed;
}

/// Lets every allocation of an answer fail in turn and returns their number. Any other exception than
/// std::bad_alloc ends the test.
std::size_t ExhaustAnswer(void (*fail)(std::size_t)) {
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        bool hasFailed = false;
        long long left = -1;
        {
            const allocations::Scope scope;
            {
                Endpoint near;
                hasFailed = FailsAt(near, fail, n);
            }
            left = scope.live();
        }
        EXPECT_EQ(left, 0);
        Endpoint near;
        {
            const allocations::Scope scope;
            FailsAt(near, fail, n);
        }
        ExpectAsFresh(near.handler);
        if (!hasFailed) {
            return n - 1;
        }
    }
}

TEST(Hostile, C58_EveryAllocationFailsOnce) {
    EXPECT_GE(ExhaustAnswer(allocations::FailOnce), 20U);
}

TEST(Hostile, C58_EveryAllocationFailsFromThenOn) {
    EXPECT_GE(ExhaustAnswer(allocations::FailFrom), 20U);
}

TEST(Hostile, C59_AnswerTwice) {
    Endpoint near;
    EXPECT_TEXT(Meet(near.handler, kConference), kConferenceOutcome);
    const std::string once = near.handler.GetLocalSDP();
    const std::string twice = near.handler.GetLocalSDP();
    EXPECT_TEXT(Difference(once, twice), "-o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                                         "+o=Quillmarshorizon 1000 4 IN IP4 192.0.2.1\r\n");
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C59_EmptyTextAndResetInBetween) {
    Endpoint near;
    Endpoint fresh;
    const std::string offer = fresh.handler.GetLocalSDP();
    near.handler.ParseTheSDP(kConference, near.remote);
    near.handler.ParseTheSDP("", near.remote);
    EXPECT_TEXT(near.handler.GetLocalSDP(), offer);
    near.handler.ParseTheSDP(kConference, near.remote);
    near.handler.ResetRemoteSDP();
    near.handler.ResetRemoteSDP();
    EXPECT_TEXT(Difference(offer, near.handler.GetLocalSDP()),
                "-o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                "+o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n");
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C59_CallsOnAHandlerThatWasGivenNothing) {
    SDPHandler handler;
    RemoteSDP remote;
    handler.ResetRemoteSDP();
    handler.GetRTPData(remote);
    EXPECT_TEXT(support::Describe(remote), support::kFreshRemote);
    EXPECT_EQ(handler.GetLocalSDP(), "");
    EXPECT_EQ(handler.ParseTheSDP("", remote), 1);
    EXPECT_EQ(handler.GetLocalSDP(), "");
    EXPECT_TRUE(handler.IsOffer());
    Begin(handler);
    ExpectAsFresh(handler);
}

/// All state that the application gave to a handler.
struct Told {
    LocalSDP local = ConferenceLocal();
    bool usesSrtp = true;
    bool usesBfcp = true;
    std::optional<std::string> text; ///< the last description, unless it was reset
    std::string addressBefore;       ///< session address before that description was read
};

/// A new handler with the same state.
void Tell(SDPHandler& handler, const Told& told, std::uint32_t version) {
    support::Start(handler, told.local);
    handler.m_bSRTP = told.usesSrtp;
    handler.SetBfcpSupport(told.usesBfcp);
    handler.m_iSessionVersion = version;
    handler.strSessionIPAddr = told.addressBefore;
    RemoteSDP remote;
    if (told.text) {
        handler.ParseTheSDP(*told.text, remote);
    }
}

TEST(Hostile, C59_CallsInAnyOrderLeaveNoTrace) {
    const std::string texts[] = {
        kConference,
        "",
        "v=0\r\n",
        "no line",
        kSessionBlock + "m=audio 5004 RTP/AVP 0\r\n",
        "m=video 5006 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\na=inactive\r\n",
        With("a=sendrecv", "a=inactive"),
        "c=IN IP4 192.0.2.77\r\nm=application 5 UDP/BFCP *\r\nm=x 1 2 3\r\nm=y 1 2 3\r\n"};
    SDPHandler used;
    Told told;
    Tell(used, told, 1);
    std::minstd_rand random(20);
    for (int step = 0; step < 3000; ++step) {
        RemoteSDP remote;
        switch (random() % 9) {
        case 0:
        case 1: {
            const std::string& text = texts[random() % std::size(texts)];
            told.addressBefore = used.strSessionIPAddr;
            told.text = text;
            EXPECT_EQ(used.ParseTheSDP(text, remote), text.empty() ? 1 : 0);
            break;
        }
        case 2:
            used.ResetRemoteSDP();
            told.addressBefore = used.strSessionIPAddr;
            told.text.reset();
            break;
        case 3:
            used.m_bSRTP = told.usesSrtp = !told.usesSrtp;
            break;
        case 4:
            told.usesBfcp = !told.usesBfcp;
            used.SetBfcpSupport(told.usesBfcp);
            break;
        case 5:
            told.local = random() % 2 == 0 ? ConferenceLocal() : support::AudioLocal();
            used.InitializeLocalSDP(told.local);
            break;
        case 6:
            told.local.strDefaultIPAddr = random() % 2 == 0 ? "" : "192.0.2.9";
            used.SetDefaultLocalIPAddr(told.local.strDefaultIPAddr);
            break;
        case 7:
            used.SetAudioICECandidate("a=candidate:1");
            used.SetVideoICECandidate("");
            break;
        default:
            used.GetRTPData(remote);
            break;
        }
        SDPHandler fresh;
        Tell(fresh, told, used.m_iSessionVersion);
        RemoteSDP expected;
        fresh.GetRTPData(expected);
        used.GetRTPData(remote);
        ASSERT_TEXT(support::Describe(remote), support::Describe(expected));
        ASSERT_TEXT(DescribeHeld(used, 200), DescribeHeld(fresh, 200));
        ASSERT_TEXT(used.GetLocalSDP(), fresh.GetLocalSDP());
    }
}

TEST(Hostile, C60_TwoHandlersInTwoThreadsAtOnce) {
    const std::string other = "m=video 5006 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\na=inactive\r\n";
    std::string outcomes[2];
    Endpoint last[2];
    const auto talk = [](const std::string& text, Endpoint& lastOne, std::string& outcome) {
        for (int round = 1; round < 200; ++round) {
            Endpoint near;
            Meet(near.handler, text);
        }
        outcome = Meet(lastOne.handler, text);
    };
    std::thread first(talk, kConference, std::ref(last[0]), std::ref(outcomes[0]));
    std::thread second(talk, other, std::ref(last[1]), std::ref(outcomes[1]));
    first.join();
    second.join();
    EXPECT_TEXT(outcomes[0], kConferenceOutcome);
    Endpoint alone;
    EXPECT_TEXT(outcomes[1], Meet(alone.handler, other));
    ExpectAsFresh(last[0].handler);
    ExpectAsFresh(last[1].handler);
}

/// The origin lines of `count` consecutive offers, beginning with this version.
std::string OriginLines(std::uint32_t version, int count) {
    Endpoint near;
    near.handler.m_iSessionVersion = version;
    std::string lines;
    for (int n = 0; n < count; ++n) {
        lines += LineOf(near.handler.GetLocalSDP(), "o=") + "\n";
    }
    ExpectAsFresh(near.handler);
    return lines;
}

TEST(Hostile, C62_SessionVersionAtItsWrap) {
    EXPECT_TEXT(OriginLines(0xfffffffeU, 3), "o=Quillmarshorizon 1000 -1 IN IP4 192.0.2.1\n"
                                             "o=Quillmarshorizon 1000 0 IN IP4 192.0.2.1\n"
                                             "o=Quillmarshorizon 1000 1 IN IP4 192.0.2.1\n");
    EXPECT_TEXT(OriginLines(0x7ffffffeU, 2), "o=Quillmarshorizon 1000 2147483647 IN IP4 192.0.2.1\n"
                                             "o=Quillmarshorizon 1000 -2147483648 IN IP4 192.0.2.1\n");
}

TEST(Hostile, C63_TickCountAtItsWrap) {
    struct Row {
        std::uint32_t ticks;
        const char* line;
    };
    for (const Row& row : {Row{0xffffffffU, "o=Quillmarshorizon 4294967295 2 IN IP4 192.0.2.1"},
                           Row{0, "o=Quillmarshorizon 0 2 IN IP4 192.0.2.1"},
                           Row{0x7fffffffU, "o=Quillmarshorizon 2147483647 2 IN IP4 192.0.2.1"},
                           Row{0x80000000U, "o=Quillmarshorizon 2147483648 2 IN IP4 192.0.2.1"}}) {
        g_tickCount = row.ticks;
        SDPHandler handler;
        handler.SetDefaultLocalIPAddr("192.0.2.1");
        EXPECT_TEXT(LineOf(handler.GetLocalSDP(), "o="), row.line);
        Begin(handler);
        ExpectAsFresh(handler);
    }
}

} // namespace
