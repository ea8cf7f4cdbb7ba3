// SDPMask: which part of a text is key text, and what stays visible.
#include "SDPSecrecy.h"

#include "Expect.h"

#include <string>

namespace {

TEST(SDPMask, KeyTextIsMaskedInAnyLetterCase) {
    EXPECT_TEXT(sdp::Masked("INLINE:c2VjcmV0 Inline:bW9yZQ|2^31 xinline: nline:shown :inline:bGFzdA"),
                "INLINE:*** Inline:*** xinline:*** nline:shown :inline:***");
}

TEST(SDPMask, OtherWordsBeforeAColonAreShown) {
    const std::string text = "ONLINE:a XNLINE:b iNlIn:c inlineX:d I\x0eLINE:e inline;f \tnline:g";
    EXPECT_TEXT(sdp::Masked(text), text);
}

// The text between a masked key and the next colon is too short for the key method.
TEST(SDPMask, ColonsAfterAMaskedKeyAreShown) {
    EXPECT_TEXT(sdp::Masked("inline:YWJj :x: line: inline:ZGVm"), "inline:*** :x: line: inline:***");
}

TEST(SDPMask, KeyMethodAtTheEndIsFollowedByTheMask) {
    EXPECT_TEXT(sdp::Masked("inline:"), "inline:***");
}

TEST(SDPMask, AKeyThatContainsColonsIsMaskedAsOneWord) {
    EXPECT_TEXT(sdp::Masked("inline:YWJj:inline:ZGVm:x s-only"), "inline:*** s-only");
}

TEST(SDPMask, AKeyEndsAtAnyWhiteSpace) {
    EXPECT_TEXT(sdp::Masked("a inline:YQ\tb inline:YQ\nc inline:YQ\rd"),
                "a inline:***\tb inline:***\nc inline:***\rd");
}

TEST(SDPMask, AKeyEndsAtNoOtherByte) {
    for (int byte = 0; byte < 256; ++byte) {
        const bool isBlank = byte == ' ' || (byte >= '\t' && byte <= '\r');
        const std::string text = std::string("inline:YWJj") + static_cast<char>(byte) + "ZGVm x";
        const std::string after = static_cast<char>(byte) + std::string("ZGVm");
        EXPECT_TEXT(sdp::Masked(text), "inline:***" + (isBlank ? after : "") + " x");
    }
}

TEST(SDPMask, KeysAreMaskedInTextsOfEveryLength) {
    for (const std::size_t length : {255U, 256U, 65535U, 65536U, 65537U, 131072U, 1048576U}) {
        const std::string filler(length, 'x');
        EXPECT_TRUE(sdp::Masked(filler + " inline:YWJj y") == filler + " inline:*** y") << length;
        EXPECT_TRUE(sdp::Masked("inline:YWJj " + filler) == "inline:*** " + filler) << length;
        EXPECT_TRUE(sdp::Masked("inline:" + filler + " y") == "inline:*** y") << length;
    }
}

TEST(SDPMask, TextWithoutAKeyIsUnchanged) {
    EXPECT_TEXT(sdp::Masked(""), "");
    EXPECT_TEXT(sdp::Masked("iPort: 5004\nstrIPAddr: 192.0.2.1\n"), "iPort: 5004\nstrIPAddr: 192.0.2.1\n");
}

} // namespace
