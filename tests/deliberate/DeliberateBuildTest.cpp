// The deliberate behaviour of writing that no description shows, B08 of commonmedia/DELIBERATE.md. The others
// are in build.cases.
#include "Capabilities.h"
#include "Expect.h"

using namespace support;

namespace {

TEST(Deliberate, B08_BareRtpmapPrefix) {
    const SDPHandler h;
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_G711U), "a=rtpmap:0 PCMU/8000\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_VP8), "a=rtpmap:");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_UNKNOWN), "a=rtpmap:");
    EXPECT_TEXT(h.AddRTPMap(kAllAudio), "a=rtpmap:");
}

} // namespace
