// "a=rtpmap:" and "a=fmtp:" lines fill the payload entries that the "m=" line before them listed.
#include "SDPHandler.h"

#include "Expect.h"

#include <string>
#include <string_view>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;

// A handler with one section that lists the given formats.
struct Formats {
    SDPHandler handler;

    explicit Formats(const std::string& formats) { handler.ProcessMedia("m=video 5000 RTP/AVP " + formats); }
    RtpMap& Entry(std::size_t i) { return *handler.vecRemoteMediaSession.back()->vecRtpMap.at(i); }
    const std::string& Name(std::size_t i) { return Entry(i).strEncodingName; }
    const Pieces& Parms(std::size_t i) { return Entry(i).vecFmtpParms; }

    // One word per format: its payload, "=" and its name, each parameter in brackets.
    std::string Shown() const {
        std::string shown;
        for (const RtpMap* const format : handler.vecRemoteMediaSession.back()->vecRtpMap) {
            shown += (shown.empty() ? "" : " ") + format->strPayload;
            shown += (format->strEncodingName.empty() ? "" : "=") + format->strEncodingName;
            for (const std::string& parameter : format->vecFmtpParms) {
                shown += "[" + parameter + "]";
            }
        }
        return shown;
    }
};

// What the formats of a section are after these lines.
struct Row {
    const char* why;
    const char* formats;
    Pieces lines;
    const char* shown;
};

void ExpectRows(void (SDPHandler::*process)(std::string_view), const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        Formats f(row.formats);
        for (const std::string& line : row.lines) {
            (f.handler.*process)(line);
        }
        EXPECT_TEXT(f.Shown(), row.shown) << row.why;
    }
}

TEST(SDPParseFormat, RtpmapNamesAPayload) {
    ExpectRows(
        &SDPHandler::ProcessRTPMap,
        {
            {"its payload and no other", "96 97", {"a=rtpmap:96 H264/90000"}, "96=H264/90000 97"},
            {"with clock rate and channels",
             "101 96",
             {"a=rtpmap:101 telephone-event/8000", "a=rtpmap:96 L16/44100/2"},
             "101=telephone-event/8000 96=L16/44100/2"},
            {"a payload that is not listed", "96 97", {"a=rtpmap:98 H264/90000"}, "96 97"},
            {"the first word from its tenth character", "96", {"12345678996 NAME"}, "96=NAME"},
            {"no other place", "96", {"a=rtpmap:096 OTHER", "a=rtpmap: 96 OTHER", "a=rtpmap96 OTHER"}, "96"},
            {"whole payloads", "9 96 960 A", {"a=rtpmap:96 X", "a=rtpmap:a Y"}, "9 96=X 960 A"},
            {"one length and one last digit", "87 97 77", {"a=rtpmap:97 X", "a=rtpmap:67 Y"}, "87 97=X 77"},
            {"the first of equal payloads",
             "97 96 96",
             {"a=rtpmap:96 FIRST", "a=rtpmap:96 AGAIN"},
             "97 96=AGAIN 96"},
            {"a second line replaces the name",
             "96",
             {"a=rtpmap:96 VERY-LONG-ENCODING-NAME/90000", "a=rtpmap:96 VP8/90000"},
             "96=VP8/90000"},
            {"words after the second", "96", {"a=rtpmap:96 H264/90000 a comment"}, "96=H264/90000"},
            {"any white space", "96", {" \t a=rtpmap:96\t\v\n H264/90000\r"}, "96=H264/90000"},
            {"fewer than two words",
             "96",
             {"a=rtpmap:96 NAME", "", " ", "a=rtpmap:96", "a=rtpmap:96 ", "a=rtpmap:"},
             "96=NAME"},
            {"a first word under nine characters",
             "96",
             {"a=rtpmap 96", "a=rtpmap NAME", "a NAME", "12345678 NAME"},
             "96"},
            {"an empty payload", "96", {"a=rtpmap: NAME"}, "96"},
        });
    // Nine characters leave an empty payload, which no "m=" line lists but a section can hold.
    Formats f("96");
    f.Entry(0).strPayload.clear();
    f.handler.ProcessRTPMap("a=rtpmap: NAME");
    EXPECT_TEXT(f.Shown(), "=NAME");
}

TEST(SDPParseFormat, FmtpGivesParameters) {
    ExpectRows(&SDPHandler::ProcessFMTP,
               {
                   {"in their order",
                    "96 97",
                    {"a=fmtp:97 profile-level-id=42801f;packetization-mode=1;max-mbps=108000"},
                    "96 97[profile-level-id=42801f][packetization-mode=1][max-mbps=108000]"},
                   {"a second line replaces all",
                    "97",
                    {"a=fmtp:97 a=1;b=2;c=3", "a=fmtp:97 max-fs=3600"},
                    "97[max-fs=3600]"},
                   {"without a semicolon it is one", "101", {"a=fmtp:101 0-15"}, "101[0-15]"},
                   {"without a blank there is none",
                    "101",
                    {"a=fmtp:101 0-15", "a=fmtp:101", "a=fmtp:101\t0-11"},
                    "101[0-15]"},
                   {"blanks after semicolons",
                    "96",
                    {"a=fmtp:96 profile-level-id=42801f; packetization-mode=1 ;  x "},
                    "96[profile-level-id=42801f][ packetization-mode=1 ][  x ]"},
                   {"blanks after the first", "96", {"a=fmtp:96   a=1"}, "96[  a=1]"},
                   {"a tab after the first", "96", {"a=fmtp:96 \ta=1"}, "96[\ta=1]"},
                   {"empty pieces", "96", {"a=fmtp:96 ;a=1;;b=2;"}, "96[][a=1][][b=2][]"},
                   {"nothing after the blank", "96", {"a=fmtp:96 a=1", "a=fmtp:96 "}, "96[a=1]"},
                   {"a payload that is not listed",
                    "96 97",
                    {"a=fmtp:98 a=1", "a=fmtp:096 a=1", "a=fmtp:9 a=1"},
                    "96 97"},
                   {"one length and one last digit",
                    "87 97 77",
                    {"a=fmtp:77 z=1", "a=fmtp:67 y=1"},
                    "87 97 77[z=1]"},
                   {"the first of equal payloads", "97 96 96", {"a=fmtp:96 a=1"}, "97 96[a=1] 96"},
                   {"another keyword", "96 97", {"a=fmtx:96 a=1", "A=FMTP:96 a=1"}, "96 97"},
                   {"the keyword anywhere, the payload from offset 7",
                    "96 97",
                    {"123456797 a=fmtp:"},
                    "96 97[a=fmtp:]"},
                   {"one byte before the keyword", "96 :96", {"xa=fmtp:96 a=1"}, "96 :96[a=1]"},
                   {"two bytes before the keyword", "96 p:96", {"xya=fmtp:96 a=1"}, "96 p:96[a=1]"},
                   // The text from offset 7 to the end of the line would be a listed payload.
                   {"a blank before the payload's place",
                    "p: 96 a=fmtp:",
                    {"x a=fmtp:", " a=fmtp:96 a=1", "123456 a=fmtp:", "a=fmtp: 96 a=1"},
                    "p: 96 a=fmtp:"},
               });
    Formats f("95 96");
    f.Entry(1).strPayload.clear();
    f.handler.ProcessFMTP("a=fmtp: a=1");
    EXPECT_TEXT(f.Shown(), "95 [a=1]");
}

TEST(SDPParseFormat, LinesBelongToTheLastSection) {
    SDPHandler none;
    none.ProcessRTPMap("a=rtpmap:96 H264/90000");
    none.ProcessFMTP("a=fmtp:96 a=1");
    EXPECT_TRUE(none.vecRemoteMediaSession.empty());

    Formats f("96");
    f.handler.ProcessMedia("m=video 5002 RTP/AVP 96");
    f.handler.ProcessRTPMap("a=rtpmap:96 H264/90000");
    f.handler.ProcessFMTP("a=fmtp:96 a=1");
    EXPECT_TEXT(f.Shown(), "96=H264/90000[a=1]");
    EXPECT_EQ(f.handler.vecRemoteMediaSession[0]->vecRtpMap[0]->strEncodingName, "");
    EXPECT_TRUE(f.handler.vecRemoteMediaSession[0]->vecRtpMap[0]->vecFmtpParms.empty());
}

// --- attaching parameters, and sections with very many formats ---

TEST(SDPParseFormat, AttachingReplacesTheListOfTheFirstMatch) {
    SDPHandler handler;
    MediaSession section;
    RtpMap first;
    RtpMap match;
    RtpMap second;
    first.strPayload = "95";
    match.strPayload = second.strPayload = "96";
    match.vecFmtpParms = {"old=1", "old=2"};
    section.vecRtpMap = {&first, &match, &second};
    Pieces parms = {"new=1"};
    handler.SaveFmtpParmsToRtpMap(&section, parms, "96");
    EXPECT_TRUE(first.vecFmtpParms.empty());
    EXPECT_EQ(match.vecFmtpParms, (Pieces{"new=1"}));
    EXPECT_TRUE(second.vecFmtpParms.empty());
    EXPECT_EQ(parms, (Pieces{"new=1"}));
    handler.SaveFmtpParmsToRtpMap(&section, parms, "97");
    EXPECT_EQ(match.vecFmtpParms, (Pieces{"new=1"}));
    Pieces none;
    handler.SaveFmtpParmsToRtpMap(&section, none, "96");
    EXPECT_TRUE(match.vecFmtpParms.empty());
}

std::string Numbered(int count) {
    std::string formats;
    for (int i = 0; i < count; ++i) {
        formats += (i == 0 ? "" : " ") + std::to_string(1000 + i);
    }
    return formats;
}

TEST(SDPParseFormat, AnyNumberOfFormatsIsFilledAlike) {
    for (const int count : {1, 2, 31, 32, 33, 63, 64, 65, 66, 127, 128, 129, 500}) {
        // Every payload twice, in two orders.
        Formats f(Numbered(count) + " " + Numbered(count));
        for (int i = count - 1; i >= 0; --i) {
            f.handler.ProcessRTPMap("a=rtpmap:" + std::to_string(1000 + i) + " N" + std::to_string(i));
            f.handler.ProcessFMTP("a=fmtp:" + std::to_string(1000 + i) + " p=" + std::to_string(i));
        }
        // Payloads that sort before, between and after those listed.
        f.handler.ProcessRTPMap("a=rtpmap:0 X");
        f.handler.ProcessRTPMap("a=rtpmap:1000x X");
        f.handler.ProcessRTPMap("a=rtpmap:999 X");
        f.handler.ProcessFMTP("a=fmtp:0 x=1");
        f.handler.ProcessFMTP("a=fmtp:99999 x=1");
        for (int i = 0; i < count; ++i) {
            const auto at = static_cast<std::size_t>(i);
            ASSERT_EQ(f.Name(at), "N" + std::to_string(i)) << count;
            ASSERT_EQ(f.Parms(at), (Pieces{"p=" + std::to_string(i)})) << count;
            ASSERT_EQ(f.Name(at + static_cast<std::size_t>(count)), "") << count;
            ASSERT_TRUE(f.Parms(at + static_cast<std::size_t>(count)).empty()) << count;
        }
    }
}

TEST(SDPParseFormat, EachOfTwoLargeSectionsIsFilledByItsOwnLines) {
    SDPHandler handler;
    for (const char* name : {"FIRST", "SECOND"}) {
        handler.ProcessMedia("m=video 5000 RTP/AVP " + Numbered(200));
        handler.ProcessRTPMap(std::string("a=rtpmap:1150 ") + name);
    }
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->vecRtpMap[150]->strEncodingName, "FIRST");
    EXPECT_EQ(handler.vecRemoteMediaSession[1]->vecRtpMap[150]->strEncodingName, "SECOND");
    handler.ClearRemoteMediaSession();
    handler.ProcessMedia("m=video 5000 RTP/AVP " + Numbered(200));
    handler.ProcessRTPMap("a=rtpmap:1150 THIRD");
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->vecRtpMap[150]->strEncodingName, "THIRD");
}

// The parameters are stored in the given section, not in one of the handler.
TEST(SDPParseFormat, AttachingReachesTheSectionItIsGivenHoweverManyFormatsTheHandlerHolds) {
    SDPHandler handler;
    handler.ProcessMedia("m=video 5000 RTP/AVP " + Numbered(200));
    handler.ProcessRTPMap("a=rtpmap:1150 HELD");
    std::vector<RtpMap> entries(200);
    MediaSession section;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].strPayload = std::to_string(1000 + i);
        section.vecRtpMap.push_back(&entries[i]);
    }
    Pieces parms = {"a=1"};
    handler.SaveFmtpParmsToRtpMap(&section, parms, "1150");
    EXPECT_EQ(entries[150].vecFmtpParms, (Pieces{"a=1"}));
    EXPECT_TRUE(handler.vecRemoteMediaSession[0]->vecRtpMap[150]->vecFmtpParms.empty());
}

// The entries are those of the moment of the call, not those of an earlier one.
TEST(SDPParseFormat, AttachingReachesTheEntriesThatTheSectionHoldsNow) {
    SDPHandler handler;
    std::vector<RtpMap> before(200);
    std::vector<RtpMap> now(200);
    MediaSession section;
    Pieces parms = {"a=1"};
    for (std::vector<RtpMap>* entries : {&before, &now}) {
        section.vecRtpMap.clear();
        for (std::size_t i = 0; i < entries->size(); ++i) {
            (*entries)[i].strPayload = std::to_string(1000 + i);
            section.vecRtpMap.push_back(&(*entries)[i]);
        }
        handler.SaveFmtpParmsToRtpMap(&section, parms, "1150");
        parms = {"b=2"};
    }
    EXPECT_EQ(before[150].vecFmtpParms, (Pieces{"a=1"}));
    EXPECT_EQ(now[150].vecFmtpParms, (Pieces{"b=2"}));
}

} // namespace
