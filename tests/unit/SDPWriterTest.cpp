// The text that descriptions are written into: pieces, numbers, growth, and the bytes that remain in freed
// memory.
#include "SDPWriter.h"

#include "Expect.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace {

TEST(SDPWriter, PiecesStandInTheOrderInWhichTheyWereWritten) {
    sdp::Writer sdp(64);
    const std::string address = "192.0.2.1";
    sdp << "a=rtcp:" << std::int32_t{16385} << " IN IP4 " << address << "\r\n";
    EXPECT_TEXT(sdp.Take(), "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPWriter, NothingWrittenIsAnEmptyText) {
    sdp::Writer sdp(64);
    EXPECT_TEXT(sdp.Take(), "");
}

TEST(SDPWriter, EmptyPieceChangesNothing) {
    sdp::Writer sdp(64);
    sdp << "a" << std::string_view() << "" << std::string() << "b";
    EXPECT_TEXT(sdp.Take(), "ab");
}

TEST(SDPWriter, NumbersAtTheirLimits) {
    sdp::Writer sdp(0);
    sdp << std::numeric_limits<std::int32_t>::min() << " " << std::numeric_limits<std::int32_t>::max() << " "
        << std::int32_t{0} << " " << std::int32_t{-1} << " " << std::uint32_t{0} << " "
        << std::numeric_limits<std::uint32_t>::max();
    EXPECT_TEXT(sdp.Take(), "-2147483648 2147483647 0 -1 0 4294967295");
}

TEST(SDPWriter, GrowsFromNoRoomAtAll) {
    sdp::Writer sdp(0);
    std::string expected;
    for (int i = 0; i < 300; ++i) {
        sdp << "piece " << i << ";";
        expected += "piece " + std::to_string(i) + ";";
    }
    EXPECT_TEXT(sdp.Take(), expected);
}

TEST(SDPWriter, PieceLongerThanTwiceTheRoom) {
    sdp::Writer sdp(8);
    const std::string longText(1000, 'x');
    sdp << "m=" << longText << "\r\n";
    EXPECT_TEXT(sdp.Take(), "m=" + longText + "\r\n");
}

TEST(SDPWriter, ZeroBytesAreBytesLikeAnyOther) {
    sdp::Writer sdp(4);
    sdp << "a" << std::string_view("\0b\0", 3) << "c";
    EXPECT_TEXT(sdp.Take(), std::string("a\0b\0c", 5));
}

TEST(SDPWriter, TakingTheTextLeavesAnEmptyWriter) {
    sdp::Writer sdp(64);
    sdp << "first";
    EXPECT_TEXT(sdp.Take(), "first");
    sdp << "second";
    EXPECT_TEXT(sdp.Take(), "second");
}

} // namespace
