// "a=rtpmap:" and "a=fmtp:" lines fill the payload entries that the "m=" line before them listed.
#include "SDPHandler.h"

#include "Expect.h"

#include <string>
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
};

// --- rtpmap ---

TEST(SDPParseFormat, RtpmapNamesItsPayloadAndNoOther) {
    Formats f("96 97");
    f.handler.ProcessRTPMap("a=rtpmap:96 H264/90000");
    EXPECT_EQ(f.Name(0), "H264/90000");
    EXPECT_EQ(f.Name(1), "");
    EXPECT_EQ(f.Entry(0).strPayload, "96");
    EXPECT_TRUE(f.Parms(0).empty());
}

TEST(SDPParseFormat, RtpmapKeepsClockRateAndChannels) {
    Formats f("101 96");
    f.handler.ProcessRTPMap("a=rtpmap:101 telephone-event/8000");
    f.handler.ProcessRTPMap("a=rtpmap:96 L16/44100/2");
    EXPECT_EQ(f.Name(0), "telephone-event/8000");
    EXPECT_EQ(f.Name(1), "L16/44100/2");
}

TEST(SDPParseFormat, RtpmapForAPayloadThatIsNotListedChangesNothing) {
    Formats f("96 97");
    f.handler.ProcessRTPMap("a=rtpmap:98 H264/90000");
    EXPECT_EQ(f.Name(0), "");
    EXPECT_EQ(f.Name(1), "");
    EXPECT_EQ(f.handler.vecRemoteMediaSession.back()->vecRtpMap.size(), 2U);
}

TEST(SDPParseFormat, RtpmapBeforeAnySectionIsIgnored) {
    SDPHandler handler;
    handler.ProcessRTPMap("a=rtpmap:96 H264/90000");
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
}

TEST(SDPParseFormat, RtpmapBelongsToTheLastSection) {
    SDPHandler handler;
    handler.ProcessMedia("m=video 5000 RTP/AVP 96");
    handler.ProcessMedia("m=video 5002 RTP/AVP 96");
    handler.ProcessRTPMap("a=rtpmap:96 H264/90000");
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->vecRtpMap[0]->strEncodingName, "");
    EXPECT_EQ(handler.vecRemoteMediaSession[1]->vecRtpMap[0]->strEncodingName, "H264/90000");
}

TEST(SDPParseFormat, RtpmapPayloadIsTheFirstWordFromItsTenthCharacter) {
    Formats f("96");
    f.handler.ProcessRTPMap("123456789"
                            "96 NAME");
    EXPECT_EQ(f.Name(0), "NAME");
    f.handler.ProcessRTPMap("a=rtpmap:096 OTHER");
    f.handler.ProcessRTPMap("a=rtpmap: 96 OTHER");
    f.handler.ProcessRTPMap("a=rtpmap96 OTHER");
    EXPECT_EQ(f.Name(0), "NAME");
}

TEST(SDPParseFormat, RtpmapComparesWholePayloads) {
    Formats f("9 96 960 A");
    f.handler.ProcessRTPMap("a=rtpmap:96 X");
    f.handler.ProcessRTPMap("a=rtpmap:a Y");
    EXPECT_EQ(f.Name(0), "");
    EXPECT_EQ(f.Name(1), "X");
    EXPECT_EQ(f.Name(2), "");
    EXPECT_EQ(f.Name(3), "");
}

TEST(SDPParseFormat, PayloadsOfOneLengthAndOneLastDigitAreToldApart) {
    Formats f("87 97 77");
    f.handler.ProcessRTPMap("a=rtpmap:97 X");
    f.handler.ProcessRTPMap("a=rtpmap:67 Y");
    f.handler.ProcessFMTP("a=fmtp:77 z=1");
    EXPECT_EQ(f.Name(0), "");
    EXPECT_EQ(f.Name(1), "X");
    EXPECT_EQ(f.Name(2), "");
    EXPECT_TRUE(f.Parms(0).empty());
    EXPECT_TRUE(f.Parms(1).empty());
    EXPECT_EQ(f.Parms(2), (Pieces{"z=1"}));
}

TEST(SDPParseFormat, RtpmapGoesToTheFirstOfEqualPayloads) {
    Formats f("97 96 96");
    f.handler.ProcessRTPMap("a=rtpmap:96 FIRST");
    f.handler.ProcessRTPMap("a=rtpmap:96 AGAIN");
    EXPECT_EQ(f.Name(0), "");
    EXPECT_EQ(f.Name(1), "AGAIN");
    EXPECT_EQ(f.Name(2), "");
}

TEST(SDPParseFormat, SecondRtpmapReplacesTheName) {
    Formats f("96");
    f.handler.ProcessRTPMap("a=rtpmap:96 VERY-LONG-ENCODING-NAME/90000");
    f.handler.ProcessRTPMap("a=rtpmap:96 VP8/90000");
    EXPECT_EQ(f.Name(0), "VP8/90000");
}

TEST(SDPParseFormat, RtpmapWordsBehindTheSecondAreIgnored) {
    Formats f("96");
    f.handler.ProcessRTPMap("a=rtpmap:96 H264/90000 a comment");
    EXPECT_EQ(f.Name(0), "H264/90000");
}

TEST(SDPParseFormat, RtpmapWordsAreSeparatedByAnyWhiteSpace) {
    Formats f("96");
    f.handler.ProcessRTPMap(" \t a=rtpmap:96\t\v\n H264/90000\r");
    EXPECT_EQ(f.Name(0), "H264/90000");
}

TEST(SDPParseFormat, RtpmapWithFewerThanTwoWordsIsDropped) {
    Formats f("96");
    f.handler.ProcessRTPMap("a=rtpmap:96 NAME");
    for (const char* line : {"", " ", "a=rtpmap:96", "a=rtpmap:96 ", "a=rtpmap:"}) {
        f.handler.ProcessRTPMap(line);
        EXPECT_EQ(f.Name(0), "NAME") << line;
    }
}

TEST(SDPParseFormat, RtpmapWithAFirstWordUnderNineCharactersIsDropped) {
    Formats f("96");
    for (const char* line : {"a=rtpmap 96", "a=rtpmap NAME", "a NAME", "12345678 NAME"}) {
        f.handler.ProcessRTPMap(line);
        EXPECT_EQ(f.Name(0), "") << line;
    }
    // Nine characters leave an empty payload, which no "m=" line lists but a section can hold.
    f.handler.ProcessRTPMap("a=rtpmap: NAME");
    EXPECT_EQ(f.Name(0), "");
    f.Entry(0).strPayload.clear();
    f.handler.ProcessRTPMap("a=rtpmap: NAME");
    EXPECT_EQ(f.Name(0), "NAME");
}

// --- fmtp ---

TEST(SDPParseFormat, FmtpParametersStandInOrder) {
    Formats f("96 97");
    f.handler.ProcessFMTP("a=fmtp:97 profile-level-id=42801f;packetization-mode=1;max-mbps=108000");
    EXPECT_EQ(f.Parms(1), (Pieces{"profile-level-id=42801f", "packetization-mode=1", "max-mbps=108000"}));
    EXPECT_TRUE(f.Parms(0).empty());
    EXPECT_EQ(f.Name(1), "");
}

TEST(SDPParseFormat, SecondFmtpReplacesAllParameters) {
    Formats f("97");
    f.handler.ProcessFMTP("a=fmtp:97 profile-level-id=42801f;packetization-mode=1;max-mbps=108000");
    f.handler.ProcessFMTP("a=fmtp:97 max-fs=3600");
    EXPECT_EQ(f.Parms(0), (Pieces{"max-fs=3600"}));
}

TEST(SDPParseFormat, FmtpWithoutSemicolonIsOneParameter) {
    Formats f("101");
    f.handler.ProcessFMTP("a=fmtp:101 0-15");
    EXPECT_EQ(f.Parms(0), (Pieces{"0-15"}));
}

TEST(SDPParseFormat, FmtpWithoutBlankChangesNothing) {
    Formats f("101");
    f.handler.ProcessFMTP("a=fmtp:101 0-15");
    f.handler.ProcessFMTP("a=fmtp:101");
    f.handler.ProcessFMTP("a=fmtp:101\t0-11");
    EXPECT_EQ(f.Parms(0), (Pieces{"0-15"}));
}

TEST(SDPParseFormat, FmtpKeepsBlanksBehindSemicolons) {
    Formats f("96");
    f.handler.ProcessFMTP("a=fmtp:96 profile-level-id=42801f; packetization-mode=1 ;  x ");
    EXPECT_EQ(f.Parms(0), (Pieces{"profile-level-id=42801f", " packetization-mode=1 ", "  x "}));
}

TEST(SDPParseFormat, FmtpKeepsBlanksBehindTheFirst) {
    Formats f("96");
    f.handler.ProcessFMTP("a=fmtp:96   a=1");
    EXPECT_EQ(f.Parms(0), (Pieces{"  a=1"}));
    f.handler.ProcessFMTP("a=fmtp:96 \ta=1");
    EXPECT_EQ(f.Parms(0), (Pieces{"\ta=1"}));
}

TEST(SDPParseFormat, FmtpKeepsEmptyPieces) {
    Formats f("96");
    f.handler.ProcessFMTP("a=fmtp:96 ;a=1;;b=2;");
    EXPECT_EQ(f.Parms(0), (Pieces{"", "a=1", "", "b=2", ""}));
}

TEST(SDPParseFormat, FmtpWithNothingBehindTheBlankKeepsTheParameters) {
    Formats f("96");
    f.handler.ProcessFMTP("a=fmtp:96 a=1");
    f.handler.ProcessFMTP("a=fmtp:96 ");
    EXPECT_EQ(f.Parms(0), (Pieces{"a=1"}));
}

TEST(SDPParseFormat, FmtpBeforeAnySectionIsIgnored) {
    SDPHandler handler;
    handler.ProcessFMTP("a=fmtp:96 a=1");
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
}

TEST(SDPParseFormat, FmtpBelongsToTheLastSection) {
    SDPHandler handler;
    handler.ProcessMedia("m=video 5000 RTP/AVP 96");
    handler.ProcessMedia("m=video 5002 RTP/AVP 96");
    handler.ProcessFMTP("a=fmtp:96 a=1");
    EXPECT_TRUE(handler.vecRemoteMediaSession[0]->vecRtpMap[0]->vecFmtpParms.empty());
    EXPECT_EQ(handler.vecRemoteMediaSession[1]->vecRtpMap[0]->vecFmtpParms, (Pieces{"a=1"}));
}

TEST(SDPParseFormat, FmtpForAPayloadThatIsNotListedChangesNothing) {
    Formats f("96 97");
    f.handler.ProcessFMTP("a=fmtp:98 a=1");
    f.handler.ProcessFMTP("a=fmtp:096 a=1");
    f.handler.ProcessFMTP("a=fmtp:9 a=1");
    EXPECT_TRUE(f.Parms(0).empty());
    EXPECT_TRUE(f.Parms(1).empty());
}

TEST(SDPParseFormat, FmtpGoesToTheFirstOfEqualPayloads) {
    Formats f("97 96 96");
    f.handler.ProcessFMTP("a=fmtp:96 a=1");
    EXPECT_TRUE(f.Parms(0).empty());
    EXPECT_EQ(f.Parms(1), (Pieces{"a=1"}));
    EXPECT_TRUE(f.Parms(2).empty());
}

TEST(SDPParseFormat, FmtpLineMustHoldItsKeyword) {
    Formats f("96 97");
    f.handler.ProcessFMTP("a=fmtx:96 a=1");
    f.handler.ProcessFMTP("A=FMTP:96 a=1");
    EXPECT_TRUE(f.Parms(0).empty());
    // The keyword may be anywhere in the line; the payload is still taken from offset 7.
    f.handler.ProcessFMTP("1234567"
                          "97 a=fmtp:");
    EXPECT_EQ(f.Parms(1), (Pieces{"a=fmtp:"}));
}

TEST(SDPParseFormat, FmtpPayloadIsCutAtAFixedPlace) {
    Formats one("96 :96");
    one.handler.ProcessFMTP("xa=fmtp:96 a=1");
    EXPECT_TRUE(one.Parms(0).empty());
    EXPECT_EQ(one.Parms(1), (Pieces{"a=1"}));
    Formats two("96 p:96");
    two.handler.ProcessFMTP("xya=fmtp:96 a=1");
    EXPECT_TRUE(two.Parms(0).empty());
    EXPECT_EQ(two.Parms(1), (Pieces{"a=1"}));
}

TEST(SDPParseFormat, FmtpWithABlankBeforeThePayloadsPlaceIsDropped) {
    // The text from offset 7 to the end of the line would be a listed payload.
    Formats f("p: 96 a=fmtp:");
    f.handler.ProcessFMTP("x a=fmtp:");
    f.handler.ProcessFMTP(" a=fmtp:96 a=1");
    f.handler.ProcessFMTP("123456 a=fmtp:");
    EXPECT_TRUE(f.Parms(0).empty());
    EXPECT_TRUE(f.Parms(1).empty());
    EXPECT_TRUE(f.Parms(2).empty());
    // At position 7 the payload is merely empty.
    f.handler.ProcessFMTP("a=fmtp: 96 a=1");
    EXPECT_TRUE(f.Parms(0).empty());
    EXPECT_TRUE(f.Parms(1).empty());
    f.Entry(1).strPayload.clear();
    f.handler.ProcessFMTP("a=fmtp: a=1");
    EXPECT_EQ(f.Parms(1), (Pieces{"a=1"}));
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
        // Payloads that sort before, between and behind those listed.
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
