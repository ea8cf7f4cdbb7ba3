// H264Level: the rows of the level tables, and both conversions.
#include "SDPTables.h"

#include <SDPHandler.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <iterator>
#include <string>

namespace {

struct Level {
    const char* name;
    int number;
    const char* digits;
};

const Level kLevels[] = {{"1", 10, "0A"},   {"1.b", 255, "FF"}, {"1.1", 11, "0B"}, {"1.2", 12, "0C"},
                         {"1.3", 13, "0D"}, {"2", 20, "14"},    {"2.1", 21, "15"}, {"2.2", 22, "16"},
                         {"3", 30, "1E"},   {"3.1", 31, "1F"},  {"3.2", 32, "20"}, {"4", 40, "28"},
                         {"4.1", 41, "29"}, {"4.2", 42, "2A"},  {"5", 50, "32"},   {"5.1", 51, "33"}};

TEST(H264Level, LevelRows) {
    ASSERT_EQ(std::size(sdp::__H264Profile), std::size(kLevels));
    ASSERT_EQ(std::size(sdp::__iH264Profile), std::size(kLevels));
    ASSERT_EQ(std::size(sdp::__strH264Profile2), std::size(kLevels));
    static_assert(sizeof sdp::__H264Profile[0] == 40 && sizeof sdp::__strH264Profile2[0] == 40);
    for (std::size_t row = 0; row < std::size(kLevels); ++row) {
        EXPECT_STREQ(sdp::__H264Profile[row], kLevels[row].name);
        EXPECT_EQ(sdp::__iH264Profile[row], kLevels[row].number);
        EXPECT_STREQ(sdp::__strH264Profile2[row], kLevels[row].digits);
    }
}

TEST(H264Level, EveryLevelSurvivesBothWays) {
    const SDPHandler h;
    for (const Level& level : kLevels) {
        EXPECT_EQ(h.ReverseConvertVideoLevel(level.name), level.digits);
        EXPECT_EQ(h.ConvertVideoLevel(level.digits), level.name);
        EXPECT_EQ(h.ConvertVideoLevel(h.ReverseConvertVideoLevel(level.name)), level.name);
        char digits[3] = {};
        std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(level.number));
        EXPECT_STREQ(digits, level.digits);
    }
}

TEST(H264Level, EveryOtherLevelByteReadsAsLevel13) {
    const SDPHandler h;
    const std::string known = " 0A 0B 0C 0D 14 15 16 1E 1F 20 28 29 2A 32 33 FF ";
    const char* const digits = "0123456789ABCDEF";
    for (int byte = 0; byte < 256; ++byte) {
        const std::string byteText = {digits[byte / 16], digits[byte % 16]};
        if (known.find(" " + byteText + " ") == std::string::npos) {
            EXPECT_EQ(h.ConvertVideoLevel(byteText), "1.3") << byteText;
        }
    }
}

TEST(H264Level, LevelDigitsAreReadAsHexUpToTheFirstOtherCharacter) {
    const SDPHandler h;
    const struct {
        const char* digits;
        const char* level;
    } rows[] = {
        {"1f", "3.1"},
        {"0d", "1.3"},
        {"ff", "1.b"},
        {"a", "1"},
        {"001f", "3.1"},
        {"1f;x", "3.1"},
        {"1f ", "3.1"},
        {" 1f", "3.1"},
        {"0x1f", "3.1"},
        {"14h", "2"},
        // No hex, or no level: numbers are compared in full width.
        {"", "1.3"},
        {"zz", "1.3"},
        {" ", "1.3"},
        {"x1f", "1.3"},
        {"1f00", "1.3"},
        {"100", "1.3"},
        {"31", "1.3"},
        {"-a", "1.3"},
        {"10000001F", "1.3"},
        {"1000000000000001F", "1.3"},
        {"FFFFFFFFFFFFFFFFFFFFFF", "1.3"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(h.ConvertVideoLevel(row.digits), row.level) << row.digits;
    }
}

TEST(H264Level, UnknownLevelNamesWriteTheDigitsOfLevel2) {
    const SDPHandler h;
    for (const char* name : {"", "6", "5.2", "1b", "3.1 ", " 3.1", "3.10", "3.0", "31", "1.B", "1F"}) {
        EXPECT_EQ(h.ReverseConvertVideoLevel(name), "14") << name;
    }
}

// Every part of a level's name and every name with one more character is that of another level or of none.
TEST(H264Level, PrefixesOfLevelNamesNameTheirOwnLevelOrNone) {
    const SDPHandler h;
    const auto digitsOf = [](const std::string& name) {
        for (const Level& level : kLevels) {
            if (name == level.name) {
                return level.digits;
            }
        }
        return "14";
    };
    for (const Level& level : kLevels) {
        const std::string name = level.name;
        for (std::size_t length = 0; length <= name.size(); ++length) {
            EXPECT_EQ(h.ReverseConvertVideoLevel(name.substr(0, length)), digitsOf(name.substr(0, length)));
            EXPECT_EQ(h.ReverseConvertVideoLevel(name.substr(length)), digitsOf(name.substr(length)));
        }
        for (const char* const more : {".", ".1", "1", "b", " ", "x"}) {
            EXPECT_EQ(h.ReverseConvertVideoLevel(name + more), digitsOf(name + more)) << name << more;
        }
    }
}

TEST(H264Level, LevelNamesAreComparedInFullLength) {
    const SDPHandler h;
    EXPECT_EQ(h.ReverseConvertVideoLevel(std::string("1\0", 2)), "14");
    EXPECT_EQ(h.ReverseConvertVideoLevel(std::string("3.1\0", 4)), "14");
    EXPECT_EQ(h.ReverseConvertVideoLevel(std::string("\0", 1)), "14");
    for (const std::size_t length : {39U, 40U, 41U, 79U, 80U, 1000U}) {
        EXPECT_EQ(h.ReverseConvertVideoLevel(std::string("3.1") + std::string(length - 3, '\0')), "14");
        EXPECT_EQ(h.ReverseConvertVideoLevel(std::string(length, '1')), "14") << length;
    }
}

} // namespace
