// SDPBuildPresentation: sections that no parser makes are rejected, too. Those of a far end and the floor
// control channel are in presentation.cases.
#include "Capabilities.h"
#include "Expect.h"

#include <cstdint>
#include <string>
#include <vector>

using namespace support;

namespace {

struct Remote {
    std::string strFullMLine;
    std::string strIPAddr;
};

std::string Reject(std::uint32_t supported, const std::vector<Remote>& sections) {
    SDPHandler h;
    h.m_iMaxSupportedSessions = supported;
    for (const Remote& remote : sections) {
        MediaSession& section = AddSection(h, MEDIA_UNKNOWN, 5004);
        section.strFullMLine = remote.strFullMLine;
        section.strIPAddr = remote.strIPAddr;
    }
    return h.AddUnsupported();
}

TEST(SDPBuildPresentation, ShortLinesOfRejectedSectionsEndAtThePort) {
    EXPECT_TEXT(Reject(0, {{"m=video", ""}}), "m=video 0\r\n");
    EXPECT_TEXT(Reject(0, {{"m=video 5004", "10.0.0.5"}}), "m=video 0\r\nc=IN IP4 10.0.0.5\r\n");
    EXPECT_TEXT(Reject(0, {{"m=video 5004 RTP/AVP", ""}}), "m=video 0 RTP/AVP\r\n");
}

TEST(SDPBuildPresentation, ARejectedSectionWithoutAWordIsSkipped) {
    EXPECT_TEXT(Reject(0, {{"", "10.0.0.5"}, {" \t ", ""}, {"m=text 1 RTP/AVP 9", ""}}),
                "m=text 0 RTP/AVP 9\r\n");
}

} // namespace
