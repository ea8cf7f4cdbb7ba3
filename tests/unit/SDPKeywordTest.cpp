// Which row of a table a line or a word belongs to: keywords at every place, several in one line, none.
#include "SDPKeyword.h"

#include "Exact.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using support::Exact;

struct Named {
    std::string_view name;
};

struct Row {
    std::string_view keyword;
};

constexpr Named kNames[] = {{"audio"}, {"video"}, {"video2"}, {"audio"}, {std::string_view("vid\0eo", 6)}};
constexpr Named kNamesWithNone[] = {{"audio"}, {""}};
constexpr Row kThree[] = {{"c="}, {"a=ice"}, {"a="}};
constexpr Row kLong[] = {{"a=rtpmap"}, {"a=rtcp:"}, {"b=TIAS:"}};
constexpr Row kOne[] = {{"a=i"}};
constexpr Row kOverlapping[] = {{"i=c=i"}, {"c=ii"}, {"a=ii=c"}, {"a=i="}, {"c=a"}, {"i="}};

/// Positions in a table; the number of rows for none.
template <const auto& kTable>
std::size_t RowOf(std::string_view line) {
    const Exact exact(line);
    const auto* const row = sdp::FirstKeyword<kTable>(exact.View());
    return row == nullptr ? std::size(kTable) : static_cast<std::size_t>(row - kTable);
}

template <const auto& kTable>
std::size_t RowAt(std::string_view here) {
    const Exact exact(here);
    return sdp::FirstMatch<kTable>(
        [&](const Row& row) { return sdp::StartsWith(exact.View(), row.keyword); });
}

/// Lines and the rows that they belong to.
using Rows = std::initializer_list<std::pair<std::string_view, std::size_t>>;

template <const auto& kTable>
void ExpectRowOf(const Rows& rows) {
    for (const auto& [line, row] : rows) {
        EXPECT_EQ(RowOf<kTable>(line), row) << line;
    }
}

template <const auto& kTable>
void ExpectRowAt(const Rows& rows) {
    for (const auto& [here, row] : rows) {
        EXPECT_EQ(RowAt<kTable>(here), row) << here;
    }
}

template <const auto& kTable>
std::size_t NaiveRowOf(std::string_view line) {
    std::size_t row = 0;
    while (row < std::size(kTable) && line.find(kTable[row].keyword) == std::string_view::npos) {
        ++row;
    }
    return row;
}

/// Thousands of lines of at most `most` of these pieces, against a search row by row. Every row, and none, is
/// met often.
template <const auto& kTable>
void ExpectAsNaive(const std::vector<std::string_view>& pieces, std::size_t most) {
    std::vector<int> counts(std::size(kTable) + 1);
    std::minstd_rand random(11);
    for (int count = 0; count < 6000; ++count) {
        std::string lineText;
        for (std::size_t left = random() % (most + 1); left > 0; --left) {
            lineText += pieces[random() % pieces.size()];
        }
        const std::size_t row = RowOf<kTable>(lineText);
        ASSERT_EQ(row, NaiveRowOf<kTable>(lineText)) << lineText;
        ++counts.at(row);
    }
    for (const int count : counts) {
        EXPECT_GT(count, 20);
    }
}

TEST(SDPKeyword, NameIsTheWholeWord) {
    EXPECT_EQ(sdp::FindNamed<kNames>("video"), &kNames[1]);
    EXPECT_EQ(sdp::FindNamed<kNames>("video2"), &kNames[2]);
    for (const char* word : {"", "v", "vide", "video ", " video", "video22", "Video", "audiovideo", "vid"}) {
        EXPECT_EQ(sdp::FindNamed<kNames>(word), nullptr) << word;
    }
    EXPECT_EQ(sdp::FindNamed<kNames>(std::string_view()), nullptr);
    EXPECT_EQ(sdp::FindNamed<kNames>(std::string_view("video\0", 6)), nullptr);
    EXPECT_EQ(sdp::FindNamed<kNames>(std::string_view("vid\0eo", 6)), &kNames[4]);
    EXPECT_EQ(sdp::FindNamed<kNames>(std::string_view("video2", 5)), &kNames[1]);
}

TEST(SDPKeyword, FirstOfEqualNamesIsFound) {
    EXPECT_EQ(sdp::FindNamed<kNames>("audio"), &kNames[0]);
}

TEST(SDPKeyword, EmptyNameIsFoundOnlyWhereATableHasIt) {
    EXPECT_EQ(sdp::FindNamed<kNamesWithNone>(""), &kNamesWithNone[1]);
    EXPECT_EQ(sdp::FindNamed<kNamesWithNone>(std::string_view()), &kNamesWithNone[1]);
    EXPECT_EQ(sdp::FindNamed<kNamesWithNone>("x"), nullptr);
}

TEST(SDPKeyword, NameIsNotReadAfterItsEnd) {
    EXPECT_EQ(sdp::FindNamed<kNames>(Exact("video").View()), &kNames[1]);
    EXPECT_EQ(sdp::FindNamed<kNames>(Exact("vide").View()), nullptr);
    EXPECT_EQ(sdp::FindNamed<kNames>(Exact("videos").View()), nullptr);
}

TEST(SDPKeyword, LettersHaveBitsThatOthersShare) {
    static_assert(sdp::LetterBit('a') == 0x00000002U);
    static_assert(sdp::LetterBit('c') == 0x00000008U);
    static_assert(sdp::LetterBit('z') == 0x04000000U);
    static_assert(sdp::LetterBit('A') == 0x00000002U);
    static_assert(sdp::LetterBit('!') == 0x00000002U);
    static_assert(sdp::LetterBit('\x01') == 0x00000002U);
    static_assert(sdp::LetterBit('\xE1') == 0x00000002U);
    static_assert(sdp::LetterBit('\0') == 0x00000001U);
    static_assert(sdp::LetterBit('`') == 0x00000001U);
    static_assert(sdp::LetterBit('\xFF') == 0x80000000U);
    std::uint32_t letters = 0;
    for (char c = 'a'; c <= 'z'; ++c) {
        EXPECT_EQ(letters & sdp::LetterBit(c), 0U) << c;
        letters |= sdp::LetterBit(c);
    }
    EXPECT_EQ(letters, 0x07FFFFFEU);
}

TEST(SDPKeyword, AKeywordHasItsEqualsSignInSecondPlace) {
    static constexpr Row kShortest[] = {{"c="}};
    static constexpr Row kShort[] = {{"c="}, {"a"}};
    static constexpr Row kEmpty[] = {{""}, {"c="}};
    static constexpr Row kOther[] = {{"rtpmap"}, {"c="}};
    static constexpr Row kLate[] = {{"c="}, {"ca="}};
    static_assert(sdp::Examine(kThree).isSignSecond);
    static_assert(sdp::Examine(kShortest).isSignSecond);
    static_assert(!sdp::Examine(kShort).isSignSecond);
    static_assert(!sdp::Examine(kEmpty).isSignSecond);
    static_assert(!sdp::Examine(kOther).isSignSecond);
    static_assert(!sdp::Examine(kLate).isSignSecond);
}

TEST(SDPKeyword, ATableHasFirstLetters) {
    static_assert(sdp::Examine(kThree).firstLetters == 0x0000000AU);
    static_assert(sdp::Examine(kLong).firstLetters == 0x00000006U);
    static_assert(sdp::Examine(kOne).firstLetters == 0x00000002U);
}

TEST(SDPKeyword, ATableHasAShortestKeyword) {
    static constexpr Row kLongFirst[] = {{"a=rtpmap"}, {"b="}, {"a=ice"}};
    static_assert(sdp::Examine(kLongFirst).shortest == 2);
    static_assert(sdp::Examine(kOne).shortest == kOne[0].keyword.size());
}

TEST(SDPKeyword, RowsAreFoundByNumber) {
    const auto find = [](std::string_view wanted) {
        return sdp::FirstMatch<kNames>([wanted](const Named& row) { return row.name == wanted; });
    };
    EXPECT_EQ(find("audio"), 0U);
    EXPECT_EQ(find("video2"), 2U);
    EXPECT_EQ(find("image"), 5U);
}

TEST(SDPKeyword, SearchOfRowsEndsAtTheFirstMatch) {
    int asked = 0;
    const auto isVideo = [&asked](const Named& row) {
        ++asked;
        return row.name == "video";
    };
    EXPECT_EQ(sdp::FirstMatch<kNames>(isVideo), 1U);
    EXPECT_EQ(asked, 2);
}

TEST(SDPKeyword, KeywordStandsAtTheStartOfAText) {
    ExpectRowAt<kThree>({{"c=IN IP4 10.0.0.1", 0},
                         {"a=ice-pwd:x", 1},
                         {"a=sendrecv", 2},
                         {"xc=IN IP4", 3},
                         {"b=AS:384", 3},
                         {"a-ice-pwd", 3},
                         {"=a=ice", 3}});
}

TEST(SDPKeyword, KeywordStandsInTheLastBytesOfAText) {
    ExpectRowAt<kThree>({{"a=ice", 1},
                         {"a=ic", 2},
                         {"a=i", 2},
                         {"a=", 2},
                         {"a", 3},
                         {"c=ice", 0},
                         {"c=ic", 0},
                         {"c=", 0},
                         {"c", 3},
                         {"x", 3}});
    ExpectRowAt<kLong>({{"a=rtpmap", 0}, {"a=rtpma", 3}, {"a=rtcp:", 1}, {"a=rtcp", 3}, {"b=TIAS:", 2}});
}

TEST(SDPKeyword, KeywordIsNotReadAfterTheText) {
    // The bytes after the view would complete the keyword.
    ExpectRowAt<kThree>({{std::string_view("a=ice", 4), 2}, {std::string_view("a=ice", 1), 3}});
    ExpectRowAt<kLong>({{std::string_view("a=rtpmap", 7), 3}});
    EXPECT_EQ(sdp::FirstKeyword<kLong>(std::string_view("x a=rtpmap", 9)), nullptr);
    EXPECT_EQ(sdp::FirstKeyword<kLong>(std::string_view("x a=rtpmap", 10)), &kLong[0]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>(std::string_view("x a=ice", 6)), &kThree[2]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>(std::string_view("x a=ice", 3)), nullptr);
}

TEST(SDPKeyword, ZeroByteCompletesNoKeyword) {
    ExpectRowAt<kThree>({{std::string_view("a=ic\0", 5), 2},
                         {std::string_view("a=ic\0e", 6), 2},
                         {std::string_view("a\0=ice", 6), 3},
                         {std::string_view("\0", 1), 3},
                         {std::string_view("a\0", 2), 3}});
    ExpectRowOf<kLong>({{std::string_view("a=rt\0pmap", 9), 3},
                        {std::string_view("\0\0a=rtpmap\0", 11), 0},
                        {std::string_view("a\0=rtcp:a=rtcp:", 15), 1}});
}

TEST(SDPKeyword, CharacterThatSharesALettersBitBeginsNoKeyword) {
    for (const char c : {'A', '!', '\x01', '\x81', '\xA1', '\xC1', '\xE1'}) {
        EXPECT_EQ(RowAt<kThree>(std::string(1, c) + "=ice"), 3U) << int{c};
        EXPECT_EQ(RowAt<kThree>(std::string(1, c) + "="), 3U) << int{c};
        EXPECT_EQ(RowOf<kLong>(std::string(1, c) + "=rtpmap:97 H264/90000"), 3U) << int{c};
        EXPECT_EQ(RowOf<kLong>(std::string(1, c) + "=rtpmap a=rtpmap"), 0U) << int{c};
    }
    EXPECT_EQ(RowOf<kLong>("B=TIAS:1"), 3U);
    EXPECT_EQ(RowOf<kLong>("\"=TIAS:1"), 3U);
}

TEST(SDPKeyword, KeywordIsFoundAtEveryPlaceOfALine) {
    for (std::size_t before = 0; before < 40; ++before) {
        for (std::size_t after = 0; after < 40; ++after) {
            const std::string beforeText(before, 'x');
            const std::string suffix(after, 'y');
            EXPECT_EQ(RowOf<kThree>(beforeText + "c=" + suffix), 0U) << before << ' ' << after;
            EXPECT_EQ(RowOf<kThree>(beforeText + "a=ice" + suffix), 1U) << before << ' ' << after;
            EXPECT_EQ(RowOf<kThree>(beforeText + "a=" + suffix), 2U) << before << ' ' << after;
            EXPECT_EQ(RowOf<kThree>(beforeText + "b=" + suffix), 3U) << before << ' ' << after;
            EXPECT_EQ(RowOf<kLong>(beforeText + "a=rtpmap" + suffix), 0U) << before << ' ' << after;
            EXPECT_EQ(RowOf<kLong>(beforeText + "b=TIAS:" + suffix), 2U) << before << ' ' << after;
            EXPECT_EQ(RowOf<kLong>(beforeText + "b=TIAS" + suffix), 3U) << before << ' ' << after;
        }
    }
}

TEST(SDPKeyword, FirstRowWinsWhereverItsKeywordStands) {
    ExpectRowOf<kThree>({{"c=IN", 0},
                         {"c=IN a=ice a=", 0},
                         {"a=x c=IN", 0},
                         {"a=ice c=", 0},
                         {"a=c=", 0},
                         {"a=x a=ice-pwd", 1},
                         {"a=ice-pwd a=x", 1},
                         {"a=ice", 1},
                         {"a=ic", 2},
                         {"b=1 a=", 2}});
    ExpectRowOf<kLong>(
        {{"b=TIAS:a=rtcp:a=rtpmap", 0}, {"b=TIAS:512000 a=rtcp:5001", 1}, {"a=rtcp:5001 b=TIAS:512000", 1}});
}

TEST(SDPKeyword, TwoKeywordsAtEveryTwoPlacesOfALine) {
    for (std::size_t between = 0; between < 40; ++between) {
        const std::string betweenText(between, '=');
        EXPECT_EQ(RowOf<kLong>("a=rtcp:" + betweenText + "b=TIAS:"), 1U) << between;
        EXPECT_EQ(RowOf<kLong>("b=TIAS:" + betweenText + "a=rtcp:"), 1U) << between;
        EXPECT_EQ(RowOf<kLong>("b=TIAS:" + betweenText + "a=rtcp"), 2U) << between;
    }
}

TEST(SDPKeyword, KeywordsInEachOtherAreFound) {
    ExpectRowOf<kOverlapping>({{"i=c=i", 0},
                               {"i=c=a", 4},
                               {"a=ii=c=i", 0},
                               {"a=ii=c=a", 2},
                               {"a=i=c=ii", 0},
                               {"a=i=c=a", 3},
                               {"c=i=i", 5}});
}

TEST(SDPKeyword, NoKeywordIsNoRow) {
    for (const char* line : {"", "=", "==", "c", "C=", "v=0", "=c", "c =", "ice", "=ice", "b=1", "o=- 1 2"}) {
        EXPECT_EQ(RowOf<kThree>(line), 3U) << line;
    }
    EXPECT_EQ(sdp::FirstKeyword<kThree>(std::string_view()), nullptr);
    EXPECT_EQ(sdp::FirstKeyword<kLong>(std::string_view()), nullptr);
}

TEST(SDPKeyword, LineShorterThanEveryKeywordHasNone) {
    ExpectRowOf<kLong>({{"a", 3}, {"a=", 3}, {"a=rtcp", 3}, {"a=rtcp:", 1}});
    ExpectRowOf<kOne>({{"a=", 1}, {"a=i", 0}});
}

TEST(SDPKeyword, EqualsSignAtTheStartOfALineBelongsToNone) {
    ExpectRowOf<kThree>({{"=a=ice", 1}, {"==a==", 2}, {"==", 3}});
    ExpectRowOf<kLong>({{"=rtpmap:97 H264/90000", 3}, {"=a=rtcp:", 1}, {"==========", 3}});
}

TEST(SDPKeyword, LastPlaceLeavesRoomForTheShortestKeyword) {
    ExpectRowOf<kLong>({{"x=1 y=2 a=rtcp:", 1},
                        {"x=1 y=2 a=rtcp", 3},
                        {"a=rtcp:a=rtpma", 1},
                        {"b=TIAS:a=rtpmap", 0},
                        {"b=TIAS:1=2=3=4=", 2}});
    ExpectRowOf<kThree>({{"a=1c=", 0}, {"a=1c", 2}});
}

TEST(SDPKeyword, EveryLineIsSearchedRowByRow) {
    ExpectAsNaive<kThree>({"a", "=", "i", "c", "e", "x", "x", "x", "a=", "ice"}, 20);
    ExpectAsNaive<kOverlapping>({"a", "c", "i", "="}, 40);
    ExpectAsNaive<kOne>({"a", "=", "i", "A", "I", "!"}, 40);
    ExpectAsNaive<kLong>({"a=rt", "pmap", "cp:", "b=TI", "AS:", "=", "a", "b", " ", "A=rtcp:"}, 12);
}

} // namespace
