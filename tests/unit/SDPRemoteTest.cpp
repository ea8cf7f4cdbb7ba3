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
    const std::string fresh = RemoteSDP().ToDiag();
    RemoteSDP sends;
    sends.fAudioSend = true;
    EXPECT_TEXT(sends.ToDiag(), support::Replaced(fresh, "fAudioSend: false", "fAudioSend: true"));
    RemoteSDP receives;
    receives.fAudioRecv = true;
    EXPECT_TEXT(receives.ToDiag(), support::Replaced(fresh, "fAudioRecv: false", "fAudioRecv: true"));
}

} // namespace
