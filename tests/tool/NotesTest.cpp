// What the built command says of texts that surprise: each note has the line, the ID and the consequence, and
// no reason contradicts the text in view.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>

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

// The notes of one stream.
json NotesOf(const Result& run, const char* stream) {
    return json::parse(run.out)[stream]["notes"];
}

constexpr const char* kSlides = "m=video 5008 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\na=content:slides\r\n";
constexpr const char* kFloor = "m=application 5010 UDP/BFCP *\r\n";

// Sections 3 and 4 are not served; the copy of the slides is none of main video.
TEST_F(NotesText, OnlyAStreamThatIsNotServedIsRejectedAsWell) {
    Write("me.json", R"({"served_sections": 2})");
    const Result run =
        CmsdpReads(std::string(kStart) + "m=audio 5004 RTP/AVP 0\r\n" + kVideo + kSlides + kFloor,
                   {"inspect", "--json", "--local", "me.json"});
    EXPECT_EQ(NotesOf(run, "audio"), json::array());
    EXPECT_EQ(NotesOf(run, "main_video"), json::array());
    EXPECT_EQ(NotesOf(run, "presentation"),
              json::array({"line 6, B18: our answer accepts this section and rejects a copy of it at port 0, "
                           "because it comes after the sections that are served"}));
    EXPECT_EQ(NotesOf(run, "floor_control"),
              json::array({"line 9, B18: our answer accepts this section and rejects a copy of it at port 0, "
                           "because it comes after the sections that are served"}));
}

// The copy is that of the second audio section and of the declined videos.
TEST_F(NotesText, ACopyOfAnotherSectionIsNoCopyOfTheStream) {
    const std::string audio = "m=audio 5004 RTP/AVP 0\r\n";
    const Result two = CmsdpReads(kStart + audio + kVideo + audio + "m=text 5012 RTP/AVP 98\r\n" + audio,
                                  {"inspect", "--json"});
    EXPECT_EQ(NotesOf(two, "audio"), json::array());
    const std::string declined = "m=video 0 RTP/AVP 97\r\n";
    const Result videos =
        CmsdpReads(kStart + audio + kVideo + declined + declined + declined, {"inspect", "--json"});
    EXPECT_EQ(NotesOf(videos, "main_video"), json::array());
}

// The far end counts its m= lines: a short one counts, and a misread line does not.
TEST_F(NotesText, PlacesAreThoseOfTheMediaLines) {
    const Result second = CmsdpReads(std::string(kStart) + "m=audio 5004 RTP/AVP\r\n" + kVideo,
                                     {"inspect", "--json", "--require", "main_video"});
    EXPECT_EQ(second.status, 0) << second.err;
    const Result team = CmsdpReads(
        "v=0\r\ns=team=a b c d\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\n" + std::string(kVideo),
        {"inspect", "--json", "--require", "audio,main_video"});
    EXPECT_EQ(team.status, 0) << team.err;
    EXPECT_EQ(json::parse(team.out)["notes"],
              json::array({"line 2, P01: read as a \"m=\" line, because it holds \"m=\"; it opens a section: "
                           "\"s=team=a b c d\""}));
}

constexpr const char* kTagOfLetters = "m=audio 5004 RTP/SAVP 0\r\na=crypto:one AES_CM_128_HMAC_SHA1_32 "
                                      "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n";
constexpr const char* kOtherSuite = "m=audio 5004 RTP/SAVP 0\r\na=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                                    "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n";

// With --offered the text is the answer, and without SRTP our answer has no crypto line.
TEST_F(NotesText, NoNoteSpeaksOfAnAnswerOrALineThatDoesNotExist) {
    Write("muted.json", R"({"video": {"muted": true}})");
    EXPECT_EQ(
        NotesOf(CmsdpReads(kStart + std::string("m=audio 5004 RTP/AVP 0\r\n") + kVideo,
                           {"inspect", "--json", "--offered", "--local", "muted.json"}),
                "main_video"),
        json::array({"line 4, B19: video.muted of this side is true, so our offer said recvonly and nothing "
                     "is sent"}));
    EXPECT_EQ(
        NotesOf(CmsdpReads(std::string(kStart) + kOtherSuite, {"inspect", "--json", "--offered"}), "audio"),
        json::array({"line 4, P10: not encrypted: the far end names AES_CM_128_HMAC_SHA1_80; only "
                     "AES_CM_128_HMAC_SHA1_32 is read; the far end encrypts and this side does not, so the "
                     "stream stays silent or noisy"}));
    EXPECT_EQ(
        NotesOf(CmsdpReads(std::string(kStart) + kTagOfLetters, {"inspect", "--json", "--offered"}), "audio"),
        json::array({"line 3, srtp: the far end gives a key, but SRTP is off on this side; the far end "
                     "encrypts and this side does not, so the stream stays silent or noisy"}));
    EXPECT_EQ(
        NotesOf(CmsdpReads(std::string(kStart) + kTagOfLetters, {"inspect", "--json"}), "audio"),
        json::array({"line 3, srtp: the far end gives a key, but SRTP is off on this side; our answer says "
                     "RTP/AVP, which a far end that insists on it refuses"}));
}

TEST_F(NotesText, DigitsOfAKnownLevelAreNotNoted) {
    for (const char* const digits : {"42e0a", "42e0015", "42e01f", "42E01F"}) {
        const Result run =
            CmsdpReads(std::string(kStart) + "m=audio 5004 RTP/AVP 0\r\n" + kVideo +
                           "a=fmtp:97 packetization-mode=1;profile-level-id=" + digits + "\r\n",
                       {"inspect", "--json"});
        EXPECT_EQ(NotesOf(run, "main_video"), json::array()) << digits;
    }
}

TEST_F(NotesText, AHoldThatIsShownIsNotNoted) {
    for (const char* const direction : {"a=inactive", "a=sendonly"}) {
        const Result run = CmsdpReads(std::string("v=0\r\nc=IN IP4 0.0.0.0\r\nm=audio 5004 RTP/AVP 0\r\n") +
                                          direction + "\r\n",
                                      {"inspect", "--json"});
        EXPECT_EQ(NotesOf(run, "audio"), json::array()) << direction;
    }
}

// A rule of the judge names the behaviour that breaks it here, and no other.
TEST_F(NotesText, OnTheAnswerNameTheBehaviourThatActs) {
    const Result run =
        CmsdpReads("v=0\r\no=- 1 1 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\nt=0 0\r\n"
                   "m=audio 5004 RTP/AVP 0\r\n",
                   {"inspect", "--json"});
    EXPECT_EQ(json::parse(run.out)["our_answer"]["notes"],
              json::array(
                  {"J20, B03, our answer: An answer has as many m= lines as its offer. The answer has 2, the "
                   "offer 1; strict far ends refuse the whole answer",
                   "J24, B07, line 7 of our answer: An accepted section lists formats that were offered in "
                   "it. Format '101' was not offered in this section; strict far ends do not start the "
                   "stream"}));
}

// Texts that, with the cases above, apply every rule of notes.
const std::vector<Case>& MoreCases() {
    static const std::string key = "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n";
    static const std::string known = "m=audio 5004 RTP/SAVP 0\r\na=crypto:1 AES_CM_128_HMAC_SHA1_32 ";
    static const std::vector<Case> cases = {
        {"P01", kStart + std::string("a=x c=1 2 3\r\n"), "", ""},
        {"P03", kStart + std::string("m=audio 5004 RTP/AVP 0\r\na=sendonly\na=x\r\n"), "", ""},
        {"P12", kStart + known + "inline:short\r\n", "", "", R"({"srtp": true})"},
        {"srtp", kStart + known + key, "", ""},
        {"B21", kStart + known + key, "", "",
         R"({"srtp": true, "audio": {"suite": "AES_CM_128_HMAC_SHA1_80"}})"},
        {"B22", kStart + known + key, "", "", R"({"srtp": true, "audio": {"suite": "none"}})"},
        {"X11", kStart + std::string(kFloor) + kFloor, "", ""},
        {"RFC 4796, 5", kStart + std::string(kVideo) + kVideo, "", ""},
    };
    return cases;
}

void Gather(const json& report, std::set<std::string>& notes) {
    for (const json& note : report["notes"]) {
        notes.insert(note.get<std::string>());
    }
    for (const char* const stream : {"audio", "main_video", "presentation", "floor_control"}) {
        for (const json& note : report[stream]["notes"]) {
            notes.insert(note.get<std::string>());
        }
    }
}

// The sources of a rule as they stand in its file: {"P11", or {view.section.line, "srtp",
std::set<std::string> IdsInSources() {
    std::set<std::string> ids;
    const std::regex id(R"re("([A-Z]\d\d|srtp|suite|RFC \d+, [\d.]+)",)re");
    for (const char* const name :
         {"NotesOnLines", "NotesOnStreams", "NotesOnKeys", "NotesOnAnswer", "Report"}) {
        std::ifstream file(std::string(COMMONMEDIA_SOURCE_DIR "/tools/cmsdp/") + name + ".cpp");
        const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        for (std::sregex_iterator at(text.begin(), text.end(), id); at != std::sregex_iterator(); ++at) {
            ids.insert((*at)[1]);
        }
    }
    return ids;
}

// Every rule applies somewhere here, and each note has a line, a source and what comes of it.
TEST_F(NotesText, OfEveryRuleHaveLineSourceAndConsequence) {
    std::set<std::string> notes;
    for (const std::vector<Case>* const cases : {&Cases(), &MoreCases()}) {
        for (const Case& row : *cases) {
            Write("me.json", row.local);
            Gather(
                json::parse(CmsdpReads(row.text, {"inspect", "--exact", "--json", "--local", "me.json"}).out),
                notes);
        }
    }
    Write("me.json", R"({"srtp": true, "audio": {"suite": "AES_CM_128_HMAC_SHA1_80"}})");
    Gather(json::parse(
               CmsdpReads(MoreCases()[3].text, {"inspect", "--offered", "--json", "--local", "me.json"}).out),
           notes);
    const std::regex form(
        R"re(line \d+(?: of our answer)?, ([A-Z]\d\d|srtp|suite|RFC \d+, [\d.]+): .+(?:[;,] .+))re");
    std::set<std::string> ids = {"B03"}; // a reason of a stream that is not negotiated
    for (const std::string& note : notes) {
        std::smatch found;
        EXPECT_TRUE(std::regex_match(note, found, form)) << note;
        ids.insert(found[1]);
    }
    EXPECT_EQ(ids, IdsInSources());
}

TEST_F(NotesText, LinesTooShortToHarmAreNotNoted) {
    const Result run = CmsdpReads("v=0\r\na=fmtp:111 minptime=10;useinbandfec=1\r\n", {"inspect", "--json"});
    EXPECT_EQ(json::parse(run.out)["notes"], json::array());
}

} // namespace

} // namespace tool
