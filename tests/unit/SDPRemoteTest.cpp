// RemoteSDP: the dump. What holds for every record is in SDPRecordTest.cpp.
#include "SDP.h"

#include "Expect.h"
#include "RecordSamples.h"

namespace {

TEST(SDPRemote, DumpShowsEveryFieldButTheKeys) {
    EXPECT_TEXT(samples::Filled<RemoteSDP>().ToDiag(), samples::kFilledBaseDump + R"(strAudioIPAddr: text 143
iAudioPayload: 144
iDTMFPayload: 145
fAudioSend: true
fAudioRecv: true
fIsAudioValid: true
)");
}

TEST(SDPRemote, DumpTellsTheFlagsApart) {
    samples::ExpectFlagInDump<RemoteSDP>(&RemoteSDP::fAudioSend, "fAudioSend");
    samples::ExpectFlagInDump<RemoteSDP>(&RemoteSDP::fAudioRecv, "fAudioRecv");
    samples::ExpectFlagInDump<RemoteSDP>(&RemoteSDP::fIsAudioValid, "fIsAudioValid");
}

} // namespace
