// Extracting twice equals extracting once, and writing a description changes nothing that was read.
#include "Law.h"

#include <string>
#include <vector>

using namespace support;

namespace {

std::vector<std::string> Texts() {
    std::vector<std::string> texts = CapturedTexts();
    texts.insert(texts.end(), {kRichText, kAddressless, "", "b=AS:512\r\n"});
    return texts;
}

TEST(LawExtract, TwiceEqualsOnce) {
    ForEachReading(Texts(), [](SDPHandler& h, RemoteSDP& remote) {
        const std::string once = Outcome(h, remote);
        h.GetRTPData(remote);
        EXPECT_TEXT(Outcome(h, remote), once);
        RemoteSDP other;
        h.GetRTPData(other);
        EXPECT_TEXT(Outcome(h, other), once);
    });
}

TEST(LawExtract, WritingADescriptionChangesNothingThatWasRead) {
    ForEachReading(Texts(), [](SDPHandler& h, RemoteSDP& remote) {
        const std::string before = Outcome(h, remote);
        h.GetLocalSDP();
        EXPECT_TEXT(Outcome(h, remote), before);
        h.GetRTPData(remote);
        EXPECT_TEXT(Outcome(h, remote), before);
    });
}

TEST(LawExtract, AfterAResetOnlyTheSessionAddressIsLeft) {
    ForEachReading(Texts(), [](SDPHandler& h, RemoteSDP& remote) {
        h.ResetRemoteSDP();
        h.GetRTPData(remote);
        EXPECT_TEXT(Describe(remote), kFreshRemote);
        EXPECT_EQ(h.strMaxSessionBandwidth, "");
        EXPECT_TRUE(h.vecRemoteMediaSession.empty());
    });
}

} // namespace
