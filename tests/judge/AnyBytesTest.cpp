// The judge takes any bytes: cut texts, changed bytes, long repetitions. Nothing is read beyond a text, which
// the sanitizers watch, and the number of violations stays in proportion to the text.
#include "Expect.h"
#include "Pairs.h"

#include <gtest/gtest.h>

using namespace judged;

namespace {

std::string SampleOffer() {
    return ReadBrokenPair(Directory("broken/24-B14-crypto-without-suite.txt")).first;
}
std::string SampleAnswer() {
    return ReadBrokenPair(Directory("broken/24-B14-crypto-without-suite.txt")).second;
}

std::string Repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t n = 0; n < count; ++n) {
        all += text;
    }
    return all;
}

} // namespace

TEST(AnyBytes, EmptyTexts) {
    EXPECT_TEXT(Written(CheckAnswer("", "")),
                "J02 line 0, other 0, section -1: The first line is not v=0.\n"
                "J02 line 0, other 0, section -1: There are 0 lines v= at session level.\n"
                "J02 line 0, other 0, section -1: There are 0 lines o= at session level.\n"
                "J02 line 0, other 0, section -1: There are 0 lines s= at session level.\n"
                "J02 line 0, other 0, section -1: There are 0 lines t= at session level.\n");
    EXPECT_EQ(Written(CheckNext("", "")), Written(CheckAnswer("", "")));
}

TEST(AnyBytes, EveryPrefixIsRefused) {
    const std::string offer = SampleOffer();
    const std::string answer = SampleAnswer();
    for (std::size_t length = 0; length < answer.size(); ++length) {
        EXPECT_FALSE(CheckAnswer(offer, answer.substr(0, length)).empty()) << length;
        EXPECT_FALSE(CheckAnswer(offer.substr(0, length), answer).empty()) << length;
    }
}

// Of every byte that is no part of free text, a zero byte in its place is refused.
TEST(AnyBytes, EveryZeroByteIsRefused) {
    const std::string offer = SampleOffer();
    std::string answer = SampleAnswer();
    for (char& byte : answer) {
        const char kept = byte;
        byte = '\0';
        EXPECT_FALSE(CheckAnswer(offer, answer).empty()) << (&byte - answer.data());
        EXPECT_FALSE(CheckNext(offer, answer).empty()) << (&byte - answer.data());
        byte = kept;
    }
}

TEST(AnyBytes, RepetitionsGiveViolationsInProportion) {
    constexpr std::size_t count = 4000;
    const std::string head = SampleAnswer();
    for (const char* line :
         {"m=audio 1 RTP/AVP 0\r\n", "a=rtpmap:96 H264/90000\r\n", "a=fmtp:96 a=1;b=2\r\n",
          "a=crypto:1 X inline:AAAA\r\n", "a=label:1\r\n", "b=AS:0\r\n", "\r\n", "t=0 0\r\n"}) {
        const std::string text = head + Repeated(line, count);
        EXPECT_LE(CheckAnswer(text, text).size(), 8 * count) << line;
        EXPECT_LE(CheckNext(text, text).size(), 8 * count) << line;
    }
    const std::string formats = "v=0\r\nm=audio 1 RTP/AVP" + Repeated(" 96", count) + "\r\n" +
                                Repeated("a=rtpmap:96 x/1\r\na=rtpmap:96 y/1\r\n", count);
    EXPECT_LE(CheckAnswer(formats, formats).size(), 2 * count);
}
