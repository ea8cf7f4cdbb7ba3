#include "SDPPrefix.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    std::string_view keyword;
};

constexpr Row kTable[] = {{"a=rtpmap:"}, {"a=rtcp:"}, {"c="}, {"a=ice-ufrag:"}, {"a=ice"}, {"a=sendrecv"}};

TEST(Prefix, TheFirstRowThatALineBeginsWithIsFound) {
    struct {
        std::string_view line;
        std::size_t row;
    } const cases[] = {
        {"a=rtpmap:97 H264/90000", 0},
        {"a=rtpmap", 6},
        {"a=rtcp:9", 1},
        {"c=", 2},
        {"c=IN IP4 192.0.2.1", 2},
        {"a=ice-ufrag:F7gI", 3},
        {"a=ice", 4},
        {"a=ice-lite", 4},
        {"a=sendrecv", 5},
        {"a=sendrec", 6},
        {"a=sendonly", 6},
        {"", 6},
        {"a", 6},
        {"a=", 6},
        {" c=", 6},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(negotiation::RowAt<kTable>(one.line), one.row) << one.line;
    }
}

} // namespace
