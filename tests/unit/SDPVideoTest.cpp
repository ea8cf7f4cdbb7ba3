// VideoParms: the dump. What holds for every record is in SDPRecordTest.cpp.
#include "SDP.h"

#include "Expect.h"
#include "RecordSamples.h"

#include <string>

namespace {

const std::string kNewDump = R"(iFmtpMaxMbps: 0
iFmtpMaxFrameSize: 0
iFmtpMaxBitRate: 0
eVideoCodec: 256
eVideoType: 100
iVideoRTPPort: 0
strVideoLevel: 
strVideoIPAddr: 
iVideoPayload: 0
iFmtpPacketizationMode: 0
fVideoSend: false
fVideoRecv: false
fIsVideoValid: false
)";

TEST(SDPVideo, DumpShowsEveryFieldOnALineOfItsOwn) {
    EXPECT_TEXT(VideoParms().ToDiag(), kNewDump);
    EXPECT_TEXT(samples::Filled<VideoParms>().ToDiag(), R"(iFmtpMaxMbps: 101
iFmtpMaxFrameSize: 102
iFmtpMaxBitRate: 103
eVideoCodec: 104
eVideoType: 105
iVideoRTPPort: 106
strVideoLevel: text 107
strVideoIPAddr: text 108
iVideoPayload: 109
iFmtpPacketizationMode: 110
fVideoSend: true
fVideoRecv: true
fIsVideoValid: true
)");
}

TEST(SDPVideo, DumpTellsTheFlagsApart) {
    samples::ExpectFlagInDump<VideoParms>(&VideoParms::fVideoSend, "fVideoSend");
    samples::ExpectFlagInDump<VideoParms>(&VideoParms::fVideoRecv, "fVideoRecv");
    samples::ExpectFlagInDump<VideoParms>(&VideoParms::fIsVideoValid, "fIsVideoValid");
}

TEST(SDPVideo, DumpMasksKeyText) {
    VideoParms parms;
    parms.strVideoLevel = "inline:bGV2ZWw";
    parms.strVideoIPAddr = "a inline:YWRkcmVzcw b";
    EXPECT_TEXT(parms.ToDiag(),
                support::Replaced(kNewDump, {{"strVideoLevel: ", "strVideoLevel: inline:***"},
                                             {"strVideoIPAddr: ", "strVideoIPAddr: a inline:*** b"}}));
}

} // namespace
