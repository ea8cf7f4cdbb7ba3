#include "SDPAddress.h"

#include <gtest/gtest.h>

#include <string>

using namespace negotiation;

namespace {

TEST(Address, IsANumberOrAHostName) {
    for (const std::string_view text : {"192.0.2.1", "0.0.0.0", "2001:db8::9", "::", "::ffff:192.0.2.1",
                                        "far.example", "far.example.", "localhost", "10.example-2.far4"}) {
        EXPECT_TRUE(IsAddress(text)) << text;
    }
    for (const std::string_view text :
         {"", ".", "....", "192.0.2.1x", "999.1.1.1", "192.0.2", "IP4", "1:2:nope", "192.0.2.1/127",
          "m=audio", "far_example", "far.example/1", "far.{ample", "far.[ample", "2001:db8::9::1",
          "fe80::1%eth0"}) {
        EXPECT_FALSE(IsAddress(text)) << text;
    }
    EXPECT_FALSE(IsAddress(std::string_view("192.0.2.1\0", 10)));
    EXPECT_TRUE(IsAddress(std::string(255, 'a')));
    EXPECT_FALSE(IsAddress(std::string(256, 'a')));
}

TEST(Address, NowhereHasManySpellings) {
    for (const std::string_view text : {"0.0.0.0", "::", "0:0:0:0:0:0:0:0", "::0", "::0.0.0.0"}) {
        EXPECT_TRUE(IsNowhere(text)) << text;
    }
    for (const std::string_view text : {"", "192.0.2.1", "0.0.0.1", "::1", "far.example", "0.0.0.0x"}) {
        EXPECT_FALSE(IsNowhere(text)) << text;
    }
}

} // namespace
