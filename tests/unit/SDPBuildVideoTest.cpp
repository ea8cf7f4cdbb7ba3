// SDPBuildVideo: label and content lines. The video section and its format parameters are in video.cases.
#include "Capabilities.h"
#include "Expect.h"

using namespace support;

namespace {

TEST(SDPBuildVideo, LabelsAndContents) {
    const SDPHandler h;
    EXPECT_TEXT(h.AddLabel(VIDEOTYPE_MAIN), "a=label:8\r\n");
    EXPECT_TEXT(h.AddLabel(VIDEOTYPE_PRESO), "a=label:9\r\n");
    EXPECT_TEXT(h.AddContent(VIDEOTYPE_MAIN), "a=content:main\r\n");
    EXPECT_TEXT(h.AddContent(VIDEOTYPE_PRESO), "a=content:slides\r\n");
    for (const VIDEOTYPE role : {VIDEOTYPE_MAX, VIDEOTYPE_UNKNOWN, VIDEOTYPE(-1)}) {
        EXPECT_TEXT(h.AddLabel(role), "a=label:") << role;
        EXPECT_TEXT(h.AddContent(role), "a=content:") << role;
    }
}

} // namespace
