// A negotiator in which each allocation of an operation fails in turn, once alone and once with all later
// ones.
//
// Only std::bad_alloc leaves an operation, the negotiator then is as it was, no block is left allocated, and
// the operation does the same as ever when it is called again.
#include "Allocations.h"
#include "Capabilities.h"

#include <SDPNegotiator.h>

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace {

using Srtp = SDPNegotiator::Srtp;

unsigned char g_nextByte = 1;

bool CountingBytes(unsigned char* bytes, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = g_nextByte++;
    }
    return true;
}

const std::string kOffer = "v=0\r\no=far 7 1 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\nt=0 0\r\n"
                           "m=audio 30000 RTP/SAVP 9 0 101\r\n"
                           "a=rtpmap:101 telephone-event/8000\r\n"
                           "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                           "inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl|2^20|1:4\r\n"
                           "m=video 30002 RTP/SAVP 97 126\r\n"
                           "a=rtpmap:97 H264/90000\r\n"
                           "a=fmtp:97 profile-level-id=42e01f;packetization-mode=1\r\n"
                           "a=fmtp:97 max-fs=3600\r\n"
                           "a=rtpmap:126 H264/90000\r\n"
                           "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                           "inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl\r\n"
                           "a=content:speaker\r\n"
                           "m=video 30004 RTP/AVP 100\r\n"
                           "a=rtpmap:100 H264/90000\r\n"
                           "a=label:a-label-that-is-longer-than-a-short-text\r\n"
                           "a=ice-ufrag:8hhY\r\n"
                           "a=ice-pwd:asd88fgpdd777uzjYhagZg\r\n"
                           "a=content:slides\r\n"
                           "m=application 30006 UDP/BFCP *\r\n"
                           "a=floorctrl:s-only\r\n"
                           "a=confid:4711\r\n"
                           "a=userid:23\r\n"
                           "a=floorid:1 mstrm:a-label-that-is-longer-than-a-short-text\r\n"
                           "m=message 30008 TCP/MSRP a b\r\n";

/// All streams of the offer on hold at port 0.
const std::string kHeld = "v=0\r\no=far 7 2 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\nt=0 0\r\n"
                          "m=audio 0 RTP/SAVP 9 0 101\r\n"
                          "m=video 0 RTP/SAVP 97 126\r\n"
                          "m=video 0 RTP/AVP 100\r\n"
                          "m=application 0 UDP/BFCP *\r\n"
                          "m=message 0 TCP/MSRP a b\r\n";

/// Sections that are rejected, each for what its "m=" line lacks.
const std::string kOdd =
    "v=0\r\no=far 7 1 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\n"
    "t=3724394400 3724398000\r\nr=604800 3600 0 90000\r\nt=0 0\r\n"
    "m=audio 30000 RTP/AVP 0\r\n"
    "m=a-medium-that-is-longer-than-a-short-text 30002 RTP//AVP 31 a-format-of-some-length\r\n"
    "m=a-medium-that-is-longer-than-a-short-text 30004\r\n"
    "m=a-medium-that-is-longer-than-a-short-text\r\n"
    "m=video 30006 RTP/AVP 97\r\n"
    "a=rtpmap:97 H264/90000\r\n";

LocalSDP Local() {
    return support::PresentationLocal();
}

/// What a side answers to an offer, made while no allocation fails.
std::string AnswerTo(const std::string& offer) {
    SDPNegotiator side(CountingBytes);
    side.SetLocal(Local());
    side.SetSrtp(Srtp::Wanted);
    return side.Answer(offer).text;
}

void Begin(SDPNegotiator& call) {
    call.SetLocal(Local());
    call.SetSrtp(Srtp::Wanted);
    call.Present(true);
}

void BeginAnswered(SDPNegotiator& call) {
    Begin(call);
    call.Answer(kOffer);
}

std::string g_answer;

void BeginOffered(SDPNegotiator& call) {
    BeginAnswered(call);
    call.Hold(true);
    g_answer = AnswerTo(call.Offer().text);
}

void BeginHeld(SDPNegotiator& call) {
    BeginAnswered(call);
    call.Answer(kHeld);
}

/// The far end offers what this side answered, keys included.
void BeginEchoed(SDPNegotiator& call) {
    Begin(call);
    g_answer = call.Answer(kOffer).text;
}

struct Operation {
    const char* name;
    void (*prepare)(SDPNegotiator& call);
    void (*run)(SDPNegotiator& call);
    std::size_t leastSites; ///< allocations that it has at least
};

constexpr Operation kOperations[] = {
    {"SetLocal", [](SDPNegotiator&) {}, [](SDPNegotiator& call) { call.SetLocal(Local()); }, 3},
    {"Offer", Begin, [](SDPNegotiator& call) { EXPECT_TRUE(call.Offer().isTaken); }, 20},
    {"Answer", Begin, [](SDPNegotiator& call) { EXPECT_TRUE(call.Answer(kOffer).isTaken); }, 40},
    {"AnswerAgain", BeginAnswered, [](SDPNegotiator& call) { EXPECT_TRUE(call.Answer(kOffer).isTaken); }, 40},
    {"OfferAgain", BeginAnswered, [](SDPNegotiator& call) { EXPECT_TRUE(call.Offer().isTaken); }, 20},
    {"Accept", BeginOffered, [](SDPNegotiator& call) { EXPECT_TRUE(call.Accept(g_answer).isTaken); }, 40},
    {"AnswerHeld", BeginAnswered, [](SDPNegotiator& call) { EXPECT_TRUE(call.Answer(kHeld).isTaken); }, 15},
    {"AnswerResumed", BeginHeld, [](SDPNegotiator& call) { EXPECT_TRUE(call.Answer(kOffer).isTaken); }, 40},
    {"OfferHeld", BeginHeld, [](SDPNegotiator& call) { EXPECT_TRUE(call.Offer().isTaken); }, 20},
    {"AnswerOdd", Begin, [](SDPNegotiator& call) { EXPECT_TRUE(call.Answer(kOdd).isTaken); }, 40},
    {"AnswerEchoed", BeginEchoed, [](SDPNegotiator& call) { EXPECT_TRUE(call.Answer(g_answer).isTaken); },
     40},
    {"AnswerPlain", BeginHeld, [](SDPNegotiator& call) { EXPECT_EQ(call.Answer(kOdd).status, 488); }, 3},
    {"Refused488", BeginOffered, [](SDPNegotiator& call) { EXPECT_TRUE(call.Refused(488).isTaken); }, 1},
    {"Rekey", BeginAnswered, [](SDPNegotiator& call) { EXPECT_TRUE(call.Rekey().isTaken); }, 1},
    {"Hold", BeginAnswered, [](SDPNegotiator& call) { call.Hold(true); }, 1},
    {"MuteCamera", BeginAnswered, [](SDPNegotiator& call) { call.MuteCamera(true); }, 1},
    {"Present", BeginAnswered, [](SDPNegotiator& call) { call.Present(false); }, 1},
    {"SetSrtp", BeginAnswered, [](SDPNegotiator& call) { call.SetSrtp(Srtp::Required); }, 1},
    {"Copy", BeginOffered,
     [](SDPNegotiator& call) {
         const SDPNegotiator copy = call;
         EXPECT_TRUE(copy == call);
     },
     5},
    {"Assignment", BeginOffered,
     [](SDPNegotiator& call) {
         SDPNegotiator other;
         other = call;
         EXPECT_TRUE(other == call);
     },
     6},
};

enum class Failing { kOnce, kFromThenOn };

struct Round {
    bool hasFailed = false;
    std::string problems;
};

/// The negotiator that the operation leaves when nothing fails.
SDPNegotiator Undisturbed(const Operation& operation) {
    g_nextByte = 1;
    SDPNegotiator call(CountingBytes);
    operation.prepare(call);
    g_nextByte = 1;
    operation.run(call);
    std::string().swap(g_answer);
    return call;
}

Round RunOnce(const Operation& operation, std::size_t n, Failing failing, const SDPNegotiator& expected) {
    Round round;
    const allocations::Scope scope;
    {
        g_nextByte = 1;
        SDPNegotiator call(CountingBytes);
        operation.prepare(call);
        const SDPNegotiator before = call;
        (failing == Failing::kOnce ? allocations::FailOnce : allocations::FailFrom)(n);
        try {
            g_nextByte = 1;
            operation.run(call);
        } catch (const std::bad_alloc&) {
            round.hasFailed = true;
        } catch (...) {
            round.problems += " another exception than std::bad_alloc;";
        }
        allocations::StopFailing();
        if (round.hasFailed && !(call == before)) {
            round.problems += " the negotiator is changed;";
        }
        if (!round.hasFailed && scope.thrown() != 0) {
            round.problems += " the failed allocation was not reported;";
        }
        if (round.hasFailed) {
            g_nextByte = 1;
            operation.run(call);
        }
        if (!(call == expected)) {
            round.problems += " the operation does something else when it is called again;";
        }
        std::string().swap(g_answer);
    }
    if (scope.live() != 0) {
        round.problems += " " + std::to_string(scope.live()) + " blocks are left;";
    }
    return round;
}

class OomNegotiation : public testing::TestWithParam<Operation> {};

TEST_P(OomNegotiation, EveryAllocationFails) {
    const Operation& operation = GetParam();
    const SDPNegotiator expected = Undisturbed(operation);
    std::size_t sites = 0;
    for (bool hasFailed = true; hasFailed;) {
        hasFailed = false;
        for (const Failing failing : {Failing::kOnce, Failing::kFromThenOn}) {
            const Round round = RunOnce(operation, sites + 1, failing, expected);
            EXPECT_EQ(round.problems, "") << "allocation " << sites + 1;
            hasFailed = round.hasFailed;
        }
        sites += hasFailed ? 1 : 0;
    }
    RecordProperty("sites", static_cast<int>(sites));
    EXPECT_GE(sites, operation.leastSites);
}

INSTANTIATE_TEST_SUITE_P(Operations, OomNegotiation, testing::ValuesIn(kOperations),
                         [](const auto& operation) { return std::string(operation.param.name); });

} // namespace
