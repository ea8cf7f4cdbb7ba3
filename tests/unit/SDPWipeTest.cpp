// SDPWipe: no byte of a wiped text or array is left, whatever its length.
#include "SDPSecrecy.h"

#include "Expect.h"

#include <cstring>
#include <string>

namespace {

TEST(SDPWipe, ArrayIsZeroed) {
    unsigned char key[5] = {1, 2, 3, 4, 5};
    sdp::Wipe(key);
    const unsigned char zeros[5] = {};
    EXPECT_EQ(std::memcmp(key, zeros, sizeof key), 0);
}

TEST(SDPWipe, LargeArrayIsZeroed) {
    static unsigned char bytes[65536 + 3];
    std::memset(bytes, 'x', sizeof bytes);
    sdp::Wipe(bytes);
    EXPECT_EQ(std::string(bytes, bytes + sizeof bytes), std::string(sizeof bytes, '\0'));
}

TEST(SDPWipe, RowsAreZeroed) {
    unsigned char keys[2][3] = {{1, 2, 3}, {4, 5, 6}};
    sdp::Wipe(keys);
    const unsigned char zeros[2][3] = {};
    EXPECT_EQ(std::memcmp(keys, zeros, sizeof keys), 0);
}

TEST(SDPWipe, TextIsZeroedInPlaceAndEmptied) {
    std::string text = "inline:d0RmdmcmVCspeEc3QGZiNWpVLFJhQX1cfHAwJSoj";
    const char* const at = text.data();
    const std::size_t length = text.size();
    sdp::Wipe(text);
    EXPECT_EQ(text, "");
    EXPECT_EQ(text.data(), at);
    EXPECT_EQ(std::string(at, length), std::string(length, '\0'));
}

TEST(SDPWipe, EmptyTextStaysEmpty) {
    std::string text;
    sdp::Wipe(text);
    EXPECT_EQ(text, "");
}

TEST(SDPWipe, TextsOfEveryLengthAreZeroed) {
    for (const std::size_t length :
         {1U,    2U,    15U,   16U,   17U,   255U,   256U,   257U,   1023U,   1024U,
          1025U, 2047U, 2048U, 2049U, 5000U, 65535U, 65536U, 65537U, 131072U, 1048577U}) {
        std::string text(length, 'x');
        const char* const at = text.data();
        sdp::Wipe(text);
        EXPECT_EQ(std::string(at, length), std::string(length, '\0')) << length;
    }
}

TEST(SDPWipe, TextIsWipedWhenItsScopeEnds) {
    std::string text = "secret";
    {
        const sdp::WipedAtEnd wiped(text);
        EXPECT_EQ(text, "secret");
    }
    EXPECT_EQ(text, "");
}

} // namespace
