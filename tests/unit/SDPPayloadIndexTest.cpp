// Formats by payload in a section that lists many: numbers, other texts, and which of two equal ones is
// found.
#include "SDPPayloadIndex.h"

#include <SDPHandler.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

/// A section whose formats are these payloads; the formats belong to the fixture.
class SDPPayloadIndex : public ::testing::Test {
protected:
    void List(const std::vector<std::string>& payloads) {
        for (const std::string& strPayload : payloads) {
            m_formats.push_back(std::make_unique<RtpMap>(RtpMap{strPayload, {}, {}}));
            m_section.vecRtpMap.push_back(m_formats.back().get());
        }
        m_index.Build(m_section);
    }

    /// Position of the format found; -1 for none.
    int At(std::string_view strPayload) {
        const RtpMap* const rm = m_index.Find(strPayload);
        for (std::size_t i = 0; i < m_formats.size(); ++i) {
            if (m_formats[i].get() == rm) {
                return static_cast<int>(i);
            }
        }
        return -1;
    }

    MediaSession m_section;
    std::vector<std::unique_ptr<RtpMap>> m_formats;
    SDPHandler::PayloadIndex m_index;
};

TEST_F(SDPPayloadIndex, NumbersAreFoundWhereTheyStand) {
    List({"0", "9", "10", "99", "100", "127", "255"});
    EXPECT_EQ(At("0"), 0);
    EXPECT_EQ(At("9"), 1);
    EXPECT_EQ(At("10"), 2);
    EXPECT_EQ(At("99"), 3);
    EXPECT_EQ(At("100"), 4);
    EXPECT_EQ(At("127"), 5);
    EXPECT_EQ(At("255"), 6);
    EXPECT_EQ(At("1"), -1);
    EXPECT_EQ(At("254"), -1);
}

TEST_F(SDPPayloadIndex, TextsThatAreNoPlainNumberAreFoundAsTheyStand) {
    List({"*", "256", "999", "1000", "007", "00", "-1", "9a", "a9", "/", ":", "x"});
    EXPECT_EQ(At("*"), 0);
    EXPECT_EQ(At("256"), 1);
    EXPECT_EQ(At("999"), 2);
    EXPECT_EQ(At("1000"), 3);
    EXPECT_EQ(At("007"), 4);
    EXPECT_EQ(At("00"), 5);
    EXPECT_EQ(At("-1"), 6);
    EXPECT_EQ(At("9a"), 7);
    EXPECT_EQ(At("a9"), 8);
    EXPECT_EQ(At("/"), 9);
    EXPECT_EQ(At(":"), 10);
    EXPECT_EQ(At("x"), 11);
    EXPECT_EQ(At(""), -1);
    EXPECT_EQ(At("7"), -1);
    EXPECT_EQ(At("0"), -1);
    EXPECT_EQ(At("257"), -1);
}

TEST_F(SDPPayloadIndex, TheFirstOfEqualPayloadsIsFound) {
    List({"96", "*", "97", "96", "*", "300", "97", "300"});
    EXPECT_EQ(At("96"), 0);
    EXPECT_EQ(At("*"), 1);
    EXPECT_EQ(At("97"), 2);
    EXPECT_EQ(At("300"), 5);
}

TEST_F(SDPPayloadIndex, SpeaksOfOneSectionAsItWasBuilt) {
    EXPECT_FALSE(m_index.IsFor(m_section));
    List({"96"});
    EXPECT_TRUE(m_index.IsFor(m_section));
    const MediaSession other;
    EXPECT_FALSE(m_index.IsFor(other));
    m_formats.push_back(std::make_unique<RtpMap>(RtpMap{"97", {}, {}}));
    m_section.vecRtpMap.push_back(m_formats.back().get());
    EXPECT_FALSE(m_index.IsFor(m_section));
}

TEST_F(SDPPayloadIndex, TextsOfOneBeginningAreToldApart) {
    using namespace std::string_literals;
    List({"12345678", "123456789", "1234567", "1234567\0"s, "1234567\0\0"s, "12345678a", "12345678b", "\xff",
          "\x7f", "a"s + std::string(1000, 'x'), "b"s + std::string(1000, 'x'), ""s});
    EXPECT_EQ(At("12345678"), 0);
    EXPECT_EQ(At("123456789"), 1);
    EXPECT_EQ(At("1234567"), 2);
    EXPECT_EQ(At("1234567\0"s), 3);
    EXPECT_EQ(At("1234567\0\0"s), 4);
    EXPECT_EQ(At("12345678a"), 5);
    EXPECT_EQ(At("12345678b"), 6);
    EXPECT_EQ(At("\xff"), 7);
    EXPECT_EQ(At("\x7f"), 8);
    EXPECT_EQ(At("a"s + std::string(1000, 'x')), 9);
    EXPECT_EQ(At("b"s + std::string(1000, 'x')), 10);
    EXPECT_EQ(At(""), 11);
    EXPECT_EQ(At("12345678c"), -1);
    EXPECT_EQ(At("123456"), -1);
    EXPECT_EQ(At("1234567\0\0\0"s), -1);
    EXPECT_EQ(At("\0"s), -1);
}

TEST(SDPPayloadIndexParts, PlainNumbersHaveUpToThreeDigitsAndNoLeadingZero) {
    using Index = SDPHandler::PayloadIndex;
    EXPECT_EQ(Index::PlainNumber("0"), 0U);
    EXPECT_EQ(Index::PlainNumber("9"), 9U);
    EXPECT_EQ(Index::PlainNumber("10"), 10U);
    EXPECT_EQ(Index::PlainNumber("255"), 255U);
    for (const char* const otherText : {"", "00", "01", "256", "999", "1000", "-1", "1a", "a1", " 1"}) {
        EXPECT_EQ(Index::PlainNumber(otherText), 256U) << otherText;
    }
}

TEST_F(SDPPayloadIndex, AskingTwiceFindsTheSame) {
    List({"300", "*", "300", "97"});
    for (int n = 0; n < 2; ++n) {
        EXPECT_EQ(At("300"), 0);
        EXPECT_EQ(At("300"), 0);
        EXPECT_EQ(At("97"), 3);
        EXPECT_EQ(At("301"), -1);
        EXPECT_EQ(At("301"), -1);
        EXPECT_EQ(At("*"), 1);
    }
}

TEST_F(SDPPayloadIndex, BuildingAnewForgetsWhatWasThere) {
    List({"96", "*"});
    EXPECT_EQ(At("*"), 1);
    MediaSession other;
    RtpMap format{"97", {}, {}};
    other.vecRtpMap.push_back(&format);
    m_index.Build(other);
    EXPECT_EQ(m_index.Find("96"), nullptr);
    EXPECT_EQ(m_index.Find("*"), nullptr);
    EXPECT_EQ(m_index.Find("97"), &format);
}

/// "m=audio 5000 RTP/AVP 200 201 ..." with this many formats.
std::string MediaLine(int formats) {
    std::string line = "m=audio 5000 RTP/AVP";
    for (int i = 0; i < formats; ++i) {
        line += " " + std::to_string(200 + i);
    }
    return line + "\r\n";
}

TEST(SDPPayloadIndexInHandler, SectionsAroundTheSizeFromWhichItIsUsed) {
    for (int formats = 7; formats <= 10; ++formats) {
        SDPHandler h;
        RemoteSDP remote;
        const std::string last = std::to_string(199 + formats);
        h.ParseTheSDP(MediaLine(formats) + "a=rtpmap:" + last + " X/1\r\na=fmtp:200 y=1\r\n", remote);
        const MediaSession& section = *h.vecRemoteMediaSession[0];
        EXPECT_EQ(section.vecRtpMap.back()->strEncodingName, "X/1") << formats;
        EXPECT_EQ(section.vecRtpMap.front()->vecFmtpParms, std::vector<std::string>{"y=1"}) << formats;
        EXPECT_EQ(h.payloadIndex, nullptr) << "it outlived the text";
    }
}

// So many that an unstable sort would move another one to the first place.
TEST(SDPPayloadIndexInHandler, TheFirstOfManyEqualPayloadsIsNamed) {
    SDPHandler h;
    RemoteSDP remote;
    std::string line = "m=video 5000 RTP/AVP";
    for (int n = 0; n < 40; ++n) {
        line += " *";
    }
    h.ParseTheSDP(line + "\r\na=rtpmap:* X/1\r\n", remote);
    const MediaSession& section = *h.vecRemoteMediaSession[0];
    ASSERT_EQ(section.vecRtpMap.size(), 40U);
    for (std::size_t n = 0; n < 40; ++n) {
        EXPECT_EQ(section.vecRtpMap[n]->strEncodingName, n == 0 ? "X/1" : "") << n;
    }
}

TEST(SDPPayloadIndexInHandler, IsBuiltForMoreThanEightFormats) {
    for (std::size_t formats = 7; formats <= 10; ++formats) {
        SDPHandler h;
        MediaSession section;
        std::vector<RtpMap> many(formats, RtpMap{"7", {}, {}});
        for (RtpMap& rm : many) {
            section.vecRtpMap.push_back(&rm);
        }
        SDPHandler::PayloadIndex index;
        h.payloadIndex = &index;
        EXPECT_EQ(h.FindRtpMap(section, "7"), &many[0]);
        EXPECT_EQ(index.IsFor(section), formats > 8) << formats;
    }
}

TEST(SDPPayloadIndexInHandler, BetweenTextsTheFormatsAreAskedThemselves) {
    SDPHandler h;
    RemoteSDP remote;
    h.ParseTheSDP(MediaLine(20) + "a=rtpmap:210 X/1\r\n", remote);
    h.vecRemoteMediaSession[0]->vecRtpMap[10]->strPayload = "7";
    h.ProcessRTPMap("a=rtpmap:7 SEVEN/1");
    h.ProcessRTPMap("a=rtpmap:210 NONE/1");
    EXPECT_EQ(h.vecRemoteMediaSession[0]->vecRtpMap[10]->strEncodingName, "SEVEN/1");
}

TEST(SDPPayloadIndexInHandler, EachLargeSectionIsSearchedByItself) {
    SDPHandler h;
    RemoteSDP remote;
    h.ParseTheSDP(MediaLine(20) + "a=rtpmap:210 FIRST/1\r\n" + MediaLine(20) + "a=rtpmap:210 SECOND/1\r\n",
                  remote);
    EXPECT_EQ(h.vecRemoteMediaSession[0]->vecRtpMap[10]->strEncodingName, "FIRST/1");
    EXPECT_EQ(h.vecRemoteMediaSession[1]->vecRtpMap[10]->strEncodingName, "SECOND/1");
}

TEST(SDPPayloadIndexInHandler, FormatsOfTheTextBeforeAreForgotten) {
    SDPHandler h;
    RemoteSDP remote;
    for (int round = 0; round < 3; ++round) {
        const std::string name = "ROUND" + std::to_string(round) + "/1";
        h.ParseTheSDP(MediaLine(20) + "a=rtpmap:219 " + name + "\r\na=rtpmap:220 NONE/1\r\n", remote);
        EXPECT_EQ(h.vecRemoteMediaSession[0]->vecRtpMap[19]->strEncodingName, name);
        EXPECT_EQ(h.vecRemoteMediaSession[0]->vecRtpMap[18]->strEncodingName, "");
    }
}

} // namespace
