// Copies and assignments of parsed sections: every field arrives, the formats are shared.
#include <SDP.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

/// A section in which no field has its first value.
MediaSession Filled(RtpMap* format) {
    MediaSession ms;
    ms.eMedia = MEDIA_VIDEO;
    ms.eContent = VIDEOTYPE_PRESO;
    ms.iPort = 5004;
    ms.strIPAddr = "192.0.2.10";
    ms.vecRtpMap = {format};
    ms.fSend = false;
    ms.fRecv = false;
    ms.strFullMLine = "m=video 5004 RTP/SAVP 97";
    ms.strVideoLevel = "3.1";
    ms.strMaxBandwidth = "64000";
    ms.iVideoLabel = 9;
    std::memset(ms.bufSRTPKey, 0x5a, sizeof ms.bufSRTPKey);
    std::memset(ms.bufSRTPSalt, 0xa5, sizeof ms.bufSRTPSalt);
    ms.cryptoAlgo = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
    ms.iCryptoTag = 3;
    ms.strBase64Key = "key text";
    ms.iBfcpConfid = 15;
    ms.iBfcpUserid = 16;
    ms.iBfcpFloorid = 17;
    ms.strFloorctrl = "c-s";
    ms.striceufrag = "a=ice-ufrag:F7gI";
    ms.stricepwd = "a=ice-pwd:x9cml";
    ms.vecCandidate = {"a=candidate:1", "a=candidate:2"};
    return ms;
}

void ExpectFilled(const MediaSession& ms, RtpMap* format) {
    EXPECT_EQ(ms.eMedia, MEDIA_VIDEO);
    EXPECT_EQ(ms.eContent, VIDEOTYPE_PRESO);
    EXPECT_EQ(ms.iPort, 5004);
    EXPECT_EQ(ms.strIPAddr, "192.0.2.10");
    EXPECT_EQ(ms.vecRtpMap, std::vector<RtpMap*>{format});
    EXPECT_FALSE(ms.fSend);
    EXPECT_FALSE(ms.fRecv);
    EXPECT_EQ(ms.strFullMLine, "m=video 5004 RTP/SAVP 97");
    EXPECT_EQ(ms.strVideoLevel, "3.1");
    EXPECT_EQ(ms.strMaxBandwidth, "64000");
    EXPECT_EQ(ms.iVideoLabel, 9);
    EXPECT_EQ(std::string(ms.bufSRTPKey, ms.bufSRTPKey + sizeof ms.bufSRTPKey), std::string(17, '\x5a'));
    EXPECT_EQ(std::string(ms.bufSRTPSalt, ms.bufSRTPSalt + sizeof ms.bufSRTPSalt), std::string(15, '\xa5'));
    EXPECT_EQ(ms.cryptoAlgo, Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32);
    EXPECT_EQ(ms.iCryptoTag, 3);
    EXPECT_EQ(ms.strBase64Key, "key text");
    EXPECT_EQ(ms.iBfcpConfid, 15);
    EXPECT_EQ(ms.iBfcpUserid, 16);
    EXPECT_EQ(ms.iBfcpFloorid, 17);
    EXPECT_EQ(ms.strFloorctrl, "c-s");
    EXPECT_EQ(ms.striceufrag, "a=ice-ufrag:F7gI");
    EXPECT_EQ(ms.stricepwd, "a=ice-pwd:x9cml");
    EXPECT_EQ(ms.vecCandidate, (std::vector<std::string>{"a=candidate:1", "a=candidate:2"}));
}

TEST(SDPSectionCopy, ACopyHasEveryField) {
    RtpMap format;
    const MediaSession copy(Filled(&format));
    ExpectFilled(copy, &format);
}

TEST(SDPSectionCopy, AnAssignmentCarriesEveryField) {
    RtpMap format;
    MediaSession target;
    EXPECT_EQ(&(target = Filled(&format)), &target);
    ExpectFilled(target, &format);
}

TEST(SDPSectionCopy, AnAssignmentOfASectionToItselfChangesNothing) {
    RtpMap format;
    MediaSession target = Filled(&format);
    const MediaSession& same = target;
    target = same;
    ExpectFilled(target, &format);
}

} // namespace
