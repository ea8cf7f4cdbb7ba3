// Answers that need code; the others are in answer.cases.
#include "Call.h"

#include <cstring>

using namespace call;

namespace {

TEST(Answer, AnEmptyTextAsksForAnOffer) {
    SDPNegotiator side = Side(AudioOnly());
    const SDPNegotiator before = side;
    const auto outcome = side.Answer("");
    EXPECT_FALSE(outcome.isTaken);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.reason, "a request without a body asks for an offer");
    EXPECT_TRUE(side == before);
}

TEST(Answer, WithoutAGeneratorAKeyOfOursInTheOfferIsRefused) {
    static bool fails;
    fails = false;
    SDPNegotiator side([](unsigned char* bytes, std::size_t length) {
        std::memset(bytes, 7, length);
        return !fails;
    });
    ASSERT_TRUE(side.SetLocal(AudioOnly()).isTaken);
    side.SetSrtp(Srtp::Wanted);
    fails = true;
    const SDPNegotiator before = side;
    const auto refused = side.Answer(Far("m=audio 30000 RTP/SAVP 0\na=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                                         "inline:BwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcH\n"));
    EXPECT_FALSE(refused.isTaken);
    EXPECT_EQ(refused.status, 488);
    EXPECT_EQ(refused.reason, "the generator of keys and ids fails");
    EXPECT_TRUE(side == before);
}

} // namespace
