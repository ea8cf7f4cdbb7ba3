// Pairs of remote formats and local codecs, and what changes between two descriptions.
#include "Texts.h"

#include <gtest/gtest.h>

namespace {

using support::Side;

std::vector<std::string> PairsOf(const ExplainInput& input, PayloadType_t codec) {
    std::vector<std::string> words;
    for (const ExplainPair& pair : ExplainWhyNot(input)) {
        if (pair.codec == codec) {
            words.push_back(pair.format + " " + pair.encoding + ": " +
                            (pair.isMatch ? "match" : pair.firstFault));
        }
    }
    return words;
}

TEST(ExplainWhyNot, NamesTheFirstTestThatFailed) {
    const ExplainInput input = Side("v=0\r\n"
                                    "m=audio 5004 RTP/AVP 104 105 106 9 107\r\n"
                                    "a=rtpmap:104 g7221/16000\r\n"
                                    "a=fmtp:104 bitrate=32000\r\n"
                                    "a=rtpmap:105 G7221/16000\r\n"
                                    "a=fmtp:105 version=1; bitrate=32000\r\n"
                                    "a=rtpmap:106 G7221/16000\r\n"
                                    "a=fmtp:106 bitrate=32000\r\n");
    const std::vector<std::string> expected = {
        "104 g7221/16000: Its name is g7221/16000 and not G7221/16000.",
        "105 G7221/16000: None of its parameters is read as needed: G.722.1 takes a parameter that begins "
        "with "
        "bitrate=32000 (X01).",
        "106 G7221/16000: match",
        "9 : It has no rtpmap line with the name G7221/16000; its parameters do not fit either.",
        "107 : It has no rtpmap line with the name G7221/16000; its parameters do not fit either.",
    };
    EXPECT_EQ(PairsOf(input, PAYLOAD_G7221), expected);
}

TEST(ExplainWhyNot, StaticCodecsAreKnownByTheirNumber) {
    const ExplainInput input = Side("m=audio 5004 RTP/AVP 9 109\r\na=rtpmap:109 G722/8000\r\n");
    const std::vector<std::string> expected = {
        "9 : match",
        "109 G722/8000: Its payload number is 109 and not 9, by which alone G.722 is known (X12).",
    };
    EXPECT_EQ(PairsOf(input, PAYLOAD_G722), expected);
}

TEST(ExplainWhyNot, ACodecThatThisSideLacksIsNoMatch) {
    ExplainInput input = Side("m=audio 5004 RTP/AVP 18\r\n");
    input.local.eAudioCodec = PAYLOAD_G722;
    const std::vector<std::string> expected = {"18 : This side does not have G.729 in its codec set."};
    EXPECT_EQ(PairsOf(input, PAYLOAD_G729), expected);
}

constexpr const char* kCall = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=audio 5004 RTP/AVP 0\r\n";

TEST(ExplainDifference, ALineWithoutEffectIsNoDifference) {
    const std::string newer = std::string(kCall) + "a=ptime:20\r\na=sendrecv\r\n";
    EXPECT_EQ(ExplainDifference(Side(""), kCall, newer), std::vector<std::string>());
}

TEST(ExplainDifference, HoldAndAnotherAddressAreSaid) {
    const std::string newer = "v=0\r\nc=IN IP4 192.0.2.9\r\nm=audio 5004 RTP/AVP 0\r\na=sendonly\r\n";
    const std::vector<std::string> expected = {
        "audio.send: audio is not sent; before, audio is sent",
        "audio.send: audio is sent to the address 192.0.2.9 port 5004; before, audio is sent to the address "
        "192.0.2.2 port 5004",
    };
    EXPECT_EQ(ExplainDifference(Side(""), kCall, newer), expected);
}

TEST(ExplainDifference, ANewKeyIsSaidAndNotShown) {
    const std::string line = "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:";
    const std::string older = kCall + line + "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n";
    const std::string newer = kCall + line + "bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n";
    const std::vector<std::string> expected = {
        "encryption.audio: audio is decrypted with the key of tag 1, which is another one than before"};
    EXPECT_EQ(ExplainDifference(Side(""), older, newer), expected);
}

} // namespace
