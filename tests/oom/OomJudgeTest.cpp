// The judge in which each allocation fails in turn, once alone and once with all later ones: only
// std::bad_alloc leaves it, no block is left allocated, and it then finds the same as ever.
#include "Allocations.h"

#include <SDPJudge.h>

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

namespace {

using Judging = std::vector<JudgeViolation> (*)(std::string_view first, std::string_view second);

const std::string kOffer = "v=0\r\no=far 7 1 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\nt=0 0\r\n"
                           "m=audio 30000 RTP/SAVP 0 101\r\na=rtpmap:101 telephone-event/8000\r\n"
                           "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                           "inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl\r\n"
                           "m=video 30002 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n"
                           "a=fmtp:97 profile-level-id=42e01f;packetization-mode=1\r\na=content:speaker\r\n"
                           "m=application 30006 UDP/BFCP *\r\na=floorctrl:s-only\r\na=confid:4711\r\n";

/// The offer as its own answer, with a fault in most lines.
const std::string kAnswer = "v=0\r\no=far 7 9 IN IP6 198.51.100.7\r\ns=-\r\nc=IN IP4 2001:db8::1\r\nt=1 2\r\n"
                            "m=audio 30000 RTP/SAVP 101 77 77\r\na=rtpmap:101 PCMU/8000\r\n"
                            "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:AAAA\r\na=label:\r\n"
                            "m=video 30002 RTP/AVP 97\r\nb=AS:0\r\na=rtpmap:97 H264/90000\r\n"
                            "a=fmtp:97 profile-level-id=64001f\r\na=content:slides\r\n"
                            "m=application 30006 UDP/BFCP *\r\na=floorctrl:s-only\r\nword\r\n";

std::string Written(const std::vector<JudgeViolation>& violations) {
    std::string text;
    for (const JudgeViolation& violation : violations) {
        text += std::string(violation.rule->id) + " " + violation.particulars + "\n";
    }
    return text;
}

/// What goes wrong when the n-th allocation fails; hasFailed is false when there are fewer.
std::string RunOnce(Judging judge, void (*fail)(std::size_t n), std::size_t n, bool& hasFailed) {
    std::string problems;
    const allocations::Scope scope;
    hasFailed = false;
    fail(n);
    try {
        judge(kOffer, kAnswer);
    } catch (const std::bad_alloc&) {
        hasFailed = true;
    } catch (...) {
        problems = "another exception than std::bad_alloc";
    }
    allocations::StopFailing();
    return scope.live() == 0 ? problems : problems + " blocks are left";
}

TEST(OomJudge, EveryAllocationFails) {
    for (const Judging judge : {Judging{CheckAnswer}, Judging{CheckNext}}) {
        const std::string expected = Written(judge(kOffer, kAnswer));
        EXPECT_NE(expected, "");
        std::size_t sites = 0;
        for (bool hasFailed = true; hasFailed;) {
            for (const auto fail : {allocations::FailOnce, allocations::FailFrom}) {
                EXPECT_EQ(RunOnce(judge, fail, sites + 1, hasFailed), "") << "allocation " << sites + 1;
            }
            sites += hasFailed ? 1 : 0;
        }
        EXPECT_GT(sites, 100U);
        EXPECT_EQ(Written(judge(kOffer, kAnswer)), expected);
    }
}

} // namespace
