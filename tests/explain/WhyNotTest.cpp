// Pairs of remote formats and local codecs.
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
        "with bitrate=32000 (X01).",
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

} // namespace
