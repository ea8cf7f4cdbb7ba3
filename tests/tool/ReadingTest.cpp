// Sections and lines as the component reports them, and what they hold in words.
#include "Reading.h"
#include "Notes.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::CodecsInWords;
using cmsdp::Draft;
using cmsdp::Reading;
using cmsdp::Section;
using cmsdp::SuitesInWords;

using Notes = std::vector<std::string>;

// A text and all that it takes to read it.
struct Text {
    explicit Text(const std::string& text) : draft(Draft::Of(text)), reading(ReadWith(handler, draft)) {}
    const Section& operator[](std::size_t place) const { return reading.sections.at(place); }

    Draft draft;
    SDPHandler handler;
    Reading reading;
};

TEST(Reading, ListsSectionsWithTheirCodecs) {
    const Text text("v=0\r\n"
                    "m=audio 5004 RTP/SAVP 111 0 101\r\n"
                    "a=rtpmap:111 opus/48000/2\r\n"
                    "a=rtpmap:101 telephone-event/8000\r\n"
                    "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:x\r\n"
                    "a=crypto:2 AES_CM_256_HMAC_SHA1_80 inline:x\r\n"
                    "a=crypto:3 short\r\n"
                    "m=video 0 RTP/AVP 96\r\n"
                    "m=video 5008 RTP/AVP 97\r\n"
                    "a=content:slides\r\n"
                    "m=application 5010 TCP/BFCP *\r\n"
                    "m=application 5012 UDP/DTLS/SCTP webrtc-datachannel\r\n");
    ASSERT_EQ(text.reading.sections.size(), 5U);
    EXPECT_EQ(cmsdp::FindAudio(text.reading), &text[0]);
    EXPECT_EQ(TransportOf(text[0]), "RTP/SAVP");
    EXPECT_EQ(text[0].line, 2U);
    EXPECT_EQ(SuitesInWords(text[0]), "AES_CM_128_HMAC_SHA1_80, AES_CM_256_HMAC_SHA1_80");
    EXPECT_EQ(CodecsInWords(text[0]), "opus/48000/2 (111), PCMU (0)");
    EXPECT_EQ(cmsdp::FindVideo(text.reading, VIDEOTYPE_MAIN), &text[1]);
    EXPECT_EQ(cmsdp::FindVideo(text.reading, VIDEOTYPE_PRESO), &text[2]);
    EXPECT_EQ(text[2].line, 9U);
    EXPECT_EQ(cmsdp::FindFloorControl(text.reading), &text[3]);
}

TEST(Reading, FindsNothingInNothing) {
    const Text text("");
    EXPECT_EQ(cmsdp::FindAudio(text.reading), nullptr);
    EXPECT_EQ(cmsdp::FindVideo(text.reading, VIDEOTYPE_PRESO), nullptr);
    EXPECT_EQ(cmsdp::FindFloorControl(text.reading), nullptr);
}

// Line numbers are those of the input, so a LF inside a line counts.
TEST(Reading, LinesKeepTheirNumbersAndRows) {
    const Text text("v=0\r\na=tool:x\na=y\r\nm=audio 3 RTP/AVP 0\r\na=ice-options:a=content:slides\r\n");
    ASSERT_EQ(text.reading.lines.size(), 3U);
    EXPECT_EQ(text.reading.lines[0].number, 2U);
    EXPECT_EQ(text.reading.lines[0].row, SDPRow::Direction);
    EXPECT_EQ(text.reading.lines[1].number, 4U);
    EXPECT_TRUE(text.reading.lines[1].opens);
    EXPECT_EQ(text.reading.lines[2].row, SDPRow::Ice);
    EXPECT_EQ(text.reading.lines[2].section, 1U);
}

TEST(Reading, OddRtpmapLinesAreNoNames) {
    const Text text("m=audio 3 RTP/AVP 96\r\na=rtpmap:96\r\na=rtpmap 96 x\r\na=rtpmap:97 opus/48000\r\n");
    EXPECT_EQ(CodecsInWords(text[0]), "payload type 96 without a name");
}

TEST(Reading, TheFirstEntryOfAPayloadNumberGetsTheName) {
    const Text text("m=audio 3 RTP/AVP 96 96\r\na=rtpmap:96 opus/48000/2\r\n");
    EXPECT_EQ(CodecsInWords(text[0]), "opus/48000/2 (96), payload type 96 without a name");
}

TEST(Reading, WordsThatAreNoPayloadTypeAreCountedNotShown) {
    EXPECT_EQ(CodecsInWords(Text("m=audio 3 RTP/AVP 0\na=crypto:1 S inline:x\r\n")[0]),
              "PCMU (0), 3 words that are no payload type");
    EXPECT_EQ(CodecsInWords(Text("m=audio 3 RTP/AVP *\r\n")[0]), "1 word that is no payload type");
}

constexpr const char* kKey = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";

TEST(Reading, WordsThatAreNoSuiteAreCountedNotShown) {
    const std::string jumbled = std::string("a=crypto:1 1234567") + kKey + " AES_CM_128_HMAC_SHA1_80\r\n";
    EXPECT_EQ(SuitesInWords(Text("m=audio 3 RTP/AVP 0\r\n" + jumbled)[0]), "an unknown suite");
    const Text text("m=audio 3 RTP/AVP 0\r\n" + jumbled + "a=crypto:2 F8_128_HMAC_SHA1_80 inline:x\r\n" +
                    jumbled);
    EXPECT_EQ(SuitesInWords(text[0]), "F8_128_HMAC_SHA1_80, 2 unknown suites");
}

TEST(Reading, LongListsAreCut) {
    std::string crypto = "m=audio 3 RTP/AVP 0 3 4 8 9 12 13 14 15 18\r\n";
    for (int i = 0; i < 5; ++i) {
        crypto += "a=crypto:1 AEAD_AES_128_GCM inline:x\r\n";
    }
    const Text text(crypto);
    EXPECT_EQ(SuitesInWords(text[0]),
              "AEAD_AES_128_GCM, AEAD_AES_128_GCM, AEAD_AES_128_GCM, AEAD_AES_128_GCM and 1 more");
    EXPECT_EQ(CodecsInWords(text[0]),
              "PCMU (0), GSM (3), G723 (4), PCMA (8), G722 (9), QCELP (12), CN (13), MPA (14) and 2 more");
}

// The tag is the payload number here, and nine bytes stand in front of it as in an rtpmap attribute, so the
// component takes the key for the name of a codec.
TEST(Reading, TheSecondWordOfACryptoAttributeIsNoName) {
    const Text text(std::string("m=audio 3 RTP/AVP 96\r\na=crypto:96 ") + kKey +
                    " S\na=rtpmap:96 opus/48000/2\r\n");
    EXPECT_EQ(text[0].session->vecRtpMap[0]->strEncodingName, kKey);
    EXPECT_EQ(CodecsInWords(text[0]), "payload type 96 without a name");
}

TEST(Reading, OnlyTelephoneEventsAreNoCodec) {
    EXPECT_EQ(CodecsInWords(Text("m=audio 3 RTP/AVP 101\r\na=rtpmap:101 telephone-event/8000\r\n")[0]),
              "no codec");
}

TEST(Reading, LongWordsAreCut) {
    const Text text("m=audio 3 " + std::string(200, 't') + " 96\r\na=rtpmap:96 " + std::string(200, 'e') +
                    "\r\n");
    EXPECT_EQ(TransportOf(text[0]), std::string(100, 't') + "...");
    EXPECT_EQ(CodecsInWords(text[0]), std::string(100, 'e') + "... (96)");
}

TEST(Reading, ManySectionsAfterALargeOneCostNoMore) {
    std::string text = "m=audio 3 RTP/AVP";
    for (int i = 0; i < 50000; ++i) {
        text += " " + std::to_string(i);
    }
    text += "\r\n";
    for (int i = 0; i < 50000; ++i) {
        text += "m=x 1 2 3\r\n";
    }
    EXPECT_EQ(Text(text).reading.sections.size(), 50001U);
}

} // namespace
