// What the built command says of texts that surprise: each note has the line, the ID and the consequence, and
// no reason contradicts the text in view.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using nlohmann::json;

constexpr const char* kStart = "v=0\r\nc=IN IP4 198.51.100.7\r\n";
constexpr const char* kVideo = "m=video 5006 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n";

struct Case {
    const char* name;
    std::string text;
    const char* path;  ///< of the member that says it
    const char* value; ///< the reason, or the only note
    const char* local = "{}";
};

std::ostream& operator<<(std::ostream& out, const Case& row) {
    return out << row.name;
}

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases = {
        {"X03", kStart + std::string("m=video 5006 RTP/AVP 98\r\na=rtpmap:98 h264/90000\r\n"),
         "/main_video/why",
         "no codec in common: the far end lists h264/90000 (98); this side takes H264/90000; letter case "
         "counts (line 4, X03)"},
        {"letter case of G.722.1",
         kStart + std::string("m=audio 5004 RTP/AVP 104\r\na=rtpmap:104 g7221/16000\r\n"
                              "a=fmtp:104 bitrate=32000\r\n"),
         "/audio/why",
         "no codec in common: the far end lists g7221/16000 (104); this side takes G722 (9), G7221/16000 "
         "with "
         "bitrate=32000 in front, PCMU (0), G729 (18); letter case counts (line 4)"},
        {"X01",
         kStart + std::string("m=audio 5004 RTP/AVP 104\r\na=rtpmap:104 G7221/16000\r\n"
                              "a=fmtp:104 foo=1; bitrate=32000\r\n"),
         "/audio/why",
         "no codec in common: the far end lists G7221/16000 (104); this side takes G722 (9), G7221/16000 "
         "with "
         "bitrate=32000 in front, PCMU (0), G729 (18); payload type 104 has the parameters \"foo=1\", \" "
         "bitrate=32000\", none of which begins with bitrate=32000 (line 5, X01)"},
        {"P05", kStart + std::string("m=video 5006 RTP/AVP\r\n"), "/main_video/why",
         "the far end's m= line for it has fewer than four words and opens no section (line 3, P05)"},
        {"P05, the lines after it",
         kStart + std::string("m=audio 5004 RTP/AVP 0\r\nm=video 5006 RTP/AVP\r\n"), "/notes",
         "line 4, P05: an m= line of fewer than four words opens no section; the lines after it change the "
         "audio "
         "section"},
        {"slides declined without a mark", kStart + std::string(kVideo) + "m=video 0 RTP/AVP 97\r\n",
         "/presentation/why",
         "the far end has no video section marked a=content:slides; it declines an unmarked one with port 0, "
         "which may be the presentation"},
        {"X06",
         kStart + std::string("m=audio 5004 RTP/AVP 0\r\n") + kVideo +
             "a=fmtp:97 packetization-mode=1;profile-level-id=42e034\r\n",
         "/main_video/notes",
         "line 6, X06: the level digits \"34\" are unknown here and are read as level 1.3, so the picture "
         "that we "
         "send is small"},
        {"more level digits than two",
         kStart + std::string("m=audio 5004 RTP/AVP 0\r\n") + kVideo +
             "a=fmtp:97 packetization-mode=1;profile-level-id=42e01f5\r\n",
         "/main_video/notes",
         "line 6, X06: the level digits \"1f5\" are unknown here and are read as level 1.3, so the picture "
         "that "
         "we send is small"},
        {"no level digits",
         kStart + std::string("m=audio 5004 RTP/AVP 0\r\n") + kVideo +
             "a=fmtp:97 packetization-mode=1;profile-level-id=42e0\r\n",
         "/main_video/notes",
         "line 6, X06: profile-level-id ends before the level, which is read as level 1.3, so the picture "
         "that "
         "we send is small"},
        {"0.0.0.0, ICE of the session",
         "v=0\r\nc=IN IP4 0.0.0.0\r\na=ice-ufrag:F7gI\r\nm=audio 9 RTP/AVP 0\r\n", "/audio/notes",
         "line 4, G16: the address is 0.0.0.0 and the far end relies on ICE, which this side records and "
         "does "
         "not answer; no media comes up"},
        {"0.0.0.0, a hold", "v=0\r\nc=IN IP4 0.0.0.0\r\nm=audio 5004 RTP/AVP 0\r\n", "/audio/notes",
         "line 3, P14: the address is 0.0.0.0, a hold as RFC 2543 wrote it; only the direction attributes "
         "count "
         "here, so the stream is not shown as held, and nothing may be sent"},
        {"0.0.0.0, ICE only", "v=0\r\nc=IN IP4 0.0.0.0\r\nm=audio 9 RTP/AVP 0\r\na=ice-ufrag:F7gI\r\n",
         "/audio/notes",
         "line 3, G16: the address is 0.0.0.0 and the far end relies on ICE, which this side records and "
         "does not "
         "answer; no media comes up"},
        {"no address", "v=0\r\nm=audio 5004 RTP/AVP 0\r\n", "/audio/notes",
         "line 2, P18: neither the section nor the session has an address; in a first description media goes "
         "nowhere, in a later one it stays where it went before"},
        {"muted", kStart + std::string("m=audio 5004 RTP/AVP 0\r\n") + kVideo, "/main_video/notes",
         "line 4, B19: video.muted of this side is true, so our answer says recvonly and nothing is sent",
         R"({"video": {"muted": true}})"},
        {"a port that wraps", kStart + std::string("m=audio 4294972296 RTP/AVP 0\r\n"), "/notes",
         "line 3, G04: port 4294972296 is read as 5000, and media goes to a port that the far end does not "
         "open"},
        {"a port beyond 65535", kStart + std::string("m=audio 99999 RTP/AVP 0\r\n"), "/notes",
         "line 3, G04: port 99999 is beyond 65535; the media engine cannot open it"},
        {"a port that wraps to zero", kStart + std::string("m=audio 4294967296 RTP/AVP 0\r\n"), "/audio/why",
         "its port \"4294967296\" is read as 0, with which a far end declines (line 3, G04)"},
        {"a port that wraps to zero, the line", kStart + std::string("m=audio 4294967296 RTP/AVP 0\r\n"),
         "/notes", "line 3, G04: port 4294967296 is read as 0, and the section counts as declined"},
        {"a port without digits", kStart + std::string("m=audio abc RTP/AVP 0\r\n"), "/audio/why",
         "its port \"abc\" is read as 0, with which a far end declines (line 3, G18)"},
        {"a port without digits, the line", kStart + std::string("m=audio abc RTP/AVP 0\r\n"), "/notes",
         "line 3, G18: port \"abc\" is no number and is read as 0, and the section counts as declined"},
        {"a port below zero", kStart + std::string("m=audio -5 RTP/AVP 0\r\n"), "/notes",
         "line 3, G04: port -5 is below 0; the media engine cannot open it"},
        {"P15", kStart + std::string("b=TIAS:64000\r\nm=audio 5004 RTP/AVP 0\r\n"), "/notes",
         "line 3, P15: b=TIAS in front of the first section is read as b=AS, so the bandwidth of the session "
         "is a "
         "thousand times too large"},
        {"P08",
         kStart + std::string("m=audio 5004 RTP/AVP 0\r\n") + kVideo +
             "a=fmtp:97 packetization-mode=1\r\na=fmtp:97 max-fs=3600\r\n",
         "/main_video/notes",
         "line 7, P08: this fmtp line of payload type 97 replaces that of line 6, whose parameters are lost"},
        {"P11",
         kStart + std::string("m=audio 5004 RTP/SAVP 0\r\n"
                              "a=crypto:2 AES_CM_128_HMAC_SHA1_32 "
                              "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n"
                              "a=crypto:4 AES_256_CM_HMAC_SHA1_32 "
                              "inline:T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2\r\n"),
         "/audio/notes",
         "line 5, P11: the key and the tag of this line replaced those of line 4, although its suite is "
         "unknown "
         "here; the two ends use different keys, and the stream stays silent or noisy",
         R"({"srtp": true})"},
        {"P19",
         kStart + std::string("m=audio 5004 RTP/SAVP 0\r\na=crypto:one AES_CM_128_HMAC_SHA1_32 "
                              "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n"),
         "/audio/notes",
         "line 4, P19: the tag of this crypto line is no number and is read as 1; our answer names tag 1, "
         "which "
         "the far end did not write",
         R"({"srtp": true})"},
        {"B03", kStart + std::string(kVideo) + "m=audio 5004 RTP/AVP 0\r\n", "/main_video/why",
         "line 3, B03: section 1 of the offer is section 2 of our answer, which has the audio section in its "
         "place; the far end matches sections by their place"},
        {"B18", kStart + std::string("m=audio 5004 RTP/AVP 0\r\n") + kVideo, "/main_video/notes",
         "line 4, B18: our answer accepts this section and rejects a copy of it at port 0, because it comes "
         "after "
         "the sections that are served",
         R"({"served_sections": 1})"},
        {"B15", kStart + std::string("m=audio 5004 RTP/AVP 0\r\n"), "/notes",
         "line 32 of our answer, B15: the m=application line has no port, because the offer has no floor "
         "control; strict far ends refuse the whole answer",
         R"({"floor_control": {"enabled": true}})"},
        {"crypto suites on an ICE line", // every row of the dispatch counts, this one hides no content
         kStart + std::string("m=audio 5004 RTP/AVP 0\r\n") + kVideo +
             "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:x\r\n" + "a=ice-options:a=content:slides\r\n",
         "/main_video/notes",
         "line 6, P10: not encrypted: the far end names AES_CM_128_HMAC_SHA1_80; only "
         "AES_CM_128_HMAC_SHA1_32 is "
         "read; our answer says RTP/AVP, which a far end that insists on it refuses"},
        {"content on a candidate line",
         kStart + std::string("m=video 5006 RTP/AVP 96\r\na=rtpmap:96 VP8/90000\r\n"
                              "a=candidate:1 1 UDP 1 192.0.2.1 9 typ host a=content:slides\r\n"),
         "/main_video/why",
         "no codec in common: the far end lists VP8/90000 (96); this side takes H264/90000"},
    };
    return cases;
}

class NotesRun : public ToolTest, public ::testing::WithParamInterface<Case> {};

TEST_P(NotesRun, AreWhole) {
    Write("me.json", GetParam().local);
    const Result run = CmsdpReads(GetParam().text, {"inspect", "--json", "--local", "me.json"});
    const json member = json::parse(run.out)[json::json_pointer(GetParam().path)];
    EXPECT_TEXT(member.dump(),
                (member.is_array() ? json::array({GetParam().value}) : json(GetParam().value)).dump());
}

INSTANTIATE_TEST_SUITE_P(Each, NotesRun, ::testing::ValuesIn(Cases()));

class NotesText : public ToolTest {};

TEST_F(NotesText, H264AsPayloadTypeZeroIsACodec) {
    Write("me.json", R"({"audio": {"priority": []}})"); // our answer then has one section as well
    const Result run = CmsdpReads(kStart + std::string("m=video 5006 RTP/AVP 0\r\na=rtpmap:0 H264/90000\r\n"),
                                  {"inspect", "--json", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(json::parse(run.out)["main_video"]["codec"], "H264");
}

TEST_F(NotesText, EndAfterEightAndSayHowManyMore) {
    std::string text = "v=0\r\n";
    for (int i = 0; i < 20; ++i) {
        text += "a=x c=1 2 3\r\n";
    }
    const json notes = json::parse(CmsdpReads(text, {"inspect", "--json"}).out)["notes"];
    ASSERT_EQ(notes.size(), 9U);
    EXPECT_EQ(notes[8], "and 12 more");
}

// In order: a key whose padding holds "c=", the end of one that was wrapped, an attribute that lost its
// colon, a crypto attribute that a lost line end joined to another line, the same the other way round.
TEST_F(NotesText, KeyTextOfMisreadLinesIsNotShown) {
    const std::string key = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";
    const std::string hidden =
        "read as a \"c=\" line, because it holds \"c=\"; its third word is now the address "
        "of the session; it may hold key text, so it is not shown";
    const std::string text = "a=crypto:1 AEAD_AES_128_GCM inline:" + key + "c==\r\n" +  //
                             key + "c==|2^20 FEC_ORDER=FEC_SRTP UNENCRYPTED_SRTP\r\n" + //
                             "a=crypto 1 " + key + " c=x\r\n" +                         //
                             "a=tool:x\na=crypto:1 " + key + " c=x\r\n";
    const Result run = CmsdpReads(text, {"inspect", "--json", "--exact"});
    const json notes = json::parse(run.out)["notes"];
    ASSERT_EQ(notes.size(), 5U);
    EXPECT_EQ(notes[0], "line 1, P01: " + hidden);
    EXPECT_EQ(notes[1], "line 2, P01: " + hidden);
    EXPECT_EQ(notes[2], "line 3, P01: " + hidden);
    EXPECT_EQ(notes[3],
              "line 4, P01: read as a \"c=\" line, because it holds \"c=\"; its third word is now the "
              "address of the session: \"a=tool:x...\"");
}

TEST_F(NotesText, LinesTooShortToHarmAreNotNoted) {
    const Result run = CmsdpReads("v=0\r\na=fmtp:111 minptime=10;useinbandfec=1\r\n", {"inspect", "--json"});
    EXPECT_EQ(json::parse(run.out)["notes"], json::array());
}

} // namespace

} // namespace tool
