// What the second look sees, and that it sees sections where the component sees them.
#include "RemoteLook.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::CodecsInWords;
using cmsdp::FindAudio;
using cmsdp::FindFloorControl;
using cmsdp::FindVideo;
using cmsdp::LookAt;
using cmsdp::RemoteLook;
using cmsdp::SeenSection;
using cmsdp::SuitesInWords;

using Notes = std::vector<std::string>;

TEST(RemoteLook, ListsSectionsWithTheirCodecs) {
    const RemoteLook look = LookAt("v=0\r\n"
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
    ASSERT_EQ(look.sections.size(), 5U);
    const SeenSection* const audio = FindAudio(look);
    ASSERT_EQ(audio, &look.sections[0]);
    EXPECT_EQ(audio->transport, "RTP/SAVP");
    EXPECT_FALSE(audio->declined);
    EXPECT_EQ(audio->suites, (Notes{"AES_CM_128_HMAC_SHA1_80", "AES_CM_256_HMAC_SHA1_80"}));
    EXPECT_EQ(CodecsInWords(*audio), "opus/48000/2 (111), PCMU (0)");
    EXPECT_EQ(FindVideo(look, false), &look.sections[1]);
    EXPECT_TRUE(look.sections[1].declined);
    EXPECT_EQ(FindVideo(look, true), &look.sections[2]);
    EXPECT_EQ(FindFloorControl(look), &look.sections[3]);
    EXPECT_FALSE(look.sections[4].floorControl);
    EXPECT_EQ(look.notes, Notes{});
}

TEST(RemoteLook, FindsNothingInNothing) {
    const RemoteLook look = LookAt("");
    EXPECT_EQ(FindAudio(look), nullptr);
    EXPECT_EQ(FindVideo(look, true), nullptr);
    EXPECT_EQ(FindFloorControl(look), nullptr);
}

TEST(RemoteLook, AShortMediaLineOpensNothing) {
    EXPECT_EQ(LookAt("m=audio 5004 RTP/AVP\r\n").sections.size(), 0U);
}

TEST(RemoteLook, AnUnterminatedLineIsNotSeen) {
    EXPECT_EQ(LookAt("m=audio 5004 RTP/AVP 0\r\nm=video 5006 RTP/AVP 97").sections.size(), 1U);
}

TEST(RemoteLook, TheLastContentAttributeDecides) {
    const RemoteLook look = LookAt("m=video 1 RTP/AVP 97\r\na=content:slides\r\na=content:main\r\n"
                                   "m=video 2 RTP/AVP 97\r\na=content:slides\r\na=content:alt\r\n"
                                   "m=audio 3 RTP/AVP 0\r\na=content:slides\r\n");
    EXPECT_FALSE(look.sections[0].slides);
    EXPECT_TRUE(look.sections[1].slides);
    EXPECT_FALSE(look.sections[2].slides);
}

TEST(RemoteLook, AttributesBeforeTheFirstSectionAreNobodys) {
    const RemoteLook look =
        LookAt("a=rtpmap:0 PCMU/8000\r\na=crypto:1 S inline:x\r\nm=audio 3 RTP/AVP 96\r\n");
    EXPECT_EQ(CodecsInWords(look.sections[0]), "payload type 96 without a name");
    EXPECT_EQ(SuitesInWords(look.sections[0]), "");
}

TEST(RemoteLook, OddRtpmapLinesAreNoNames) {
    const RemoteLook look =
        LookAt("m=audio 3 RTP/AVP 96\r\na=rtpmap:96\r\na=rtpmap 96 x\r\na=rtpmap:97 opus/48000\r\n");
    EXPECT_EQ(CodecsInWords(look.sections[0]), "payload type 96 without a name");
}

TEST(RemoteLook, TheFirstEntryOfAPayloadNumberGetsTheName) {
    const RemoteLook look = LookAt("m=audio 3 RTP/AVP 96 96\r\na=rtpmap:96 opus/48000/2\r\n");
    EXPECT_EQ(CodecsInWords(look.sections[0]), "opus/48000/2 (96), payload type 96 without a name");
}

TEST(RemoteLook, WordsThatAreNoPayloadTypeAreCountedNotShown) {
    EXPECT_EQ(CodecsInWords(LookAt("m=audio 3 RTP/AVP 0\na=crypto:1 S inline:x\r\n").sections[0]),
              "PCMU (0), 3 words that are no payload type");
    EXPECT_EQ(CodecsInWords(LookAt("m=audio 3 RTP/AVP *\r\n").sections[0]), "1 word that is no payload type");
}

constexpr const char* kKey = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";

TEST(RemoteLook, WordsThatAreNoSuiteAreCountedNotShown) {
    const std::string jumbled = std::string("a=crypto:1 1234567") + kKey + " AES_CM_128_HMAC_SHA1_80\r\n";
    EXPECT_EQ(SuitesInWords(LookAt("m=audio 3 RTP/AVP 0\r\n" + jumbled).sections[0]), "an unknown suite");
    const RemoteLook look =
        LookAt("m=audio 3 RTP/AVP 0\r\n" + jumbled + "a=crypto:2 F8_128_HMAC_SHA1_80 inline:x\r\n" + jumbled);
    EXPECT_EQ(look.sections[0].suites, Notes{"F8_128_HMAC_SHA1_80"});
    EXPECT_EQ(SuitesInWords(look.sections[0]), "F8_128_HMAC_SHA1_80, 2 unknown suites");
}

TEST(RemoteLook, LongListsOfSuitesAreCut) {
    std::string text = "m=audio 3 RTP/AVP 0\r\n";
    for (int i = 0; i < 5; ++i) {
        text += "a=crypto:1 AEAD_AES_128_GCM inline:x\r\n";
    }
    EXPECT_EQ(SuitesInWords(LookAt(text).sections[0]),
              "AEAD_AES_128_GCM, AEAD_AES_128_GCM, AEAD_AES_128_GCM, AEAD_AES_128_GCM and 1 more");
}

// The tag is the payload number here, and nine bytes stand in front of it as in an rtpmap attribute.
TEST(RemoteLook, TheSecondWordOfACryptoAttributeIsNoName) {
    EXPECT_EQ(CodecsInWords(LookAt(std::string("m=audio 3 RTP/AVP 96\r\na=crypto:96 ") + kKey +
                                   " S\na=rtpmap:96 opus/48000/2\r\n")
                                .sections[0]),
              "payload type 96 without a name");
}

TEST(RemoteLook, LongListsAreCut) {
    EXPECT_EQ(CodecsInWords(LookAt("m=audio 3 RTP/AVP 0 3 4 8 9 12 13 14 15 18\r\n").sections[0]),
              "PCMU (0), GSM (3), G723 (4), PCMA (8), G722 (9), QCELP (12), CN (13), MPA (14) and 2 more");
}

TEST(RemoteLook, OnlyTelephoneEventsAreNoCodec) {
    EXPECT_EQ(
        CodecsInWords(LookAt("m=audio 3 RTP/AVP 101\r\na=rtpmap:101 telephone-event/8000\r\n").sections[0]),
        "no codec");
}

TEST(RemoteLook, LinesTakenForSomethingElseAreNoted) {
    const RemoteLook look = LookAt("v=0\r\n"
                                   "m=video 5006 RTP/AVP 97\r\n"
                                   "a=fmtp:97 sprop-parameter-sets=Z0IAHm= packetization-mode=1 x y\r\n"
                                   "a=tool:abc c=x IN\r\n");
    EXPECT_EQ(look.notes, (Notes{"line 3 is taken for a media line, because it holds \"m=\": "
                                 "\"a=fmtp:97 sprop-parameter-sets=Z0IAHm= p...\"",
                                 "line 4 is taken for a connection line, because it holds \"c=\": "
                                 "\"a=tool:abc c=x IN\""}));
}

// In order: a key whose padding holds "c=", the end of one that was wrapped, an attribute that lost its
// colon, a crypto attribute that a lost line end joined to another line, the same the other way round, a log
// prefix.
TEST(RemoteLook, KeyTextOfMisreadLinesIsNotShown) {
    const std::string key = kKey;
    const RemoteLook look = LookAt("a=crypto:1 AEAD_AES_128_GCM inline:" + key + "c==\r\n" + //
                                   key + "c==|2^20 FEC_ORDER=FEC_SRTP UNENCRYPTED_SRTP\r\n" + "a=crypto 1 " +
                                   key + " c=x\r\n" + //
                                   "a=tool:x\na=crypto:1 " + key + " c=x\r\n" + "a=crypto:1 " + key +
                                   "\rc=IN IP4 192.0.2.1\r\n" + "[12:00] m=audio 5004 RTP/AVP 0\r\n");
    EXPECT_EQ(look.notes,
              (Notes{"line 1 is taken for a connection line, because it holds \"c=\"; it may hold key "
                     "text, so it is not shown",
                     "line 2 is taken for a connection line, because it holds \"c=\"; it may hold key "
                     "text, so it is not shown",
                     "line 3 is taken for a connection line, because it holds \"c=\"; it may hold key "
                     "text, so it is not shown",
                     "line 4 is taken for a connection line, because it holds \"c=\": \"a=tool:x...\"",
                     "line 5 is taken for a connection line, because it holds \"c=\"; it may hold key "
                     "text, so it is not shown",
                     "line 6 is taken for a media line, because it holds \"m=\"; it may hold key text, "
                     "so it is not shown"}));
}

TEST(RemoteLook, LinesTooShortToHarmAreNotNoted) {
    EXPECT_EQ(LookAt("a=fmtp:111 minptime=10;useinbandfec=1\r\n m=audio 5004 RTP/AVP 0\r\n").notes, Notes{});
}

TEST(RemoteLook, NotesEndAfterEight) {
    std::string text;
    for (int i = 0; i < 20; ++i) {
        text += "a=x c=1 2 3\r\n";
    }
    EXPECT_EQ(LookAt(text).notes.size(), 8U);
}

TEST(RemoteLook, LongWordsAreCut) {
    const RemoteLook look =
        LookAt("m=audio 3 " + std::string(200, 't') + " 96\r\na=rtpmap:96 " + std::string(200, 'e') + "\r\n");
    EXPECT_EQ(look.sections[0].transport, std::string(100, 't') + "...");
    EXPECT_EQ(look.sections[0].formats[0].encoding, std::string(100, 'e') + "...");
}

TEST(RemoteLook, ManySectionsBehindALargeOneCostNoMore) {
    std::string text = "m=audio 3 RTP/AVP";
    for (int i = 0; i < 50000; ++i) {
        text += " " + std::to_string(i);
    }
    text += "\r\n";
    for (int i = 0; i < 50000; ++i) {
        text += "m=x 1 2 3\r\n";
    }
    EXPECT_EQ(LookAt(text).sections.size(), 50001U);
}

} // namespace
