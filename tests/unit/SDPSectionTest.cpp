// MediaSession: who owns the payload entries, and the dump.
#include "SDP.h"

#include "Expect.h"
#include "RecordSamples.h"
#include "TraceKeeper.h"

#include <memory>
#include <string>

namespace {

// One dump line longer than the dump's buffer takes, cut where the buffer ends.
std::string Repeated(std::size_t count) {
    return std::string(count, 'x');
}

using support::kNewSectionDump;

TEST(SDPSection, DestroyingASectionLeavesItsPayloadEntriesAlive) {
    const std::unique_ptr<RtpMap> entry(new RtpMap{"96", "", {"a=1", "b=2"}});
    {
        MediaSession section;
        section.vecRtpMap.push_back(entry.get());
    }
    // Reading the entry, and freeing it here, is sound only while the section did neither.
    EXPECT_EQ(entry->strPayload, "96");
    EXPECT_EQ(entry->vecFmtpParms, (std::vector<std::string>{"a=1", "b=2"}));
}

TEST(SDPSection, DumpOfANewSectionBeginsWithItsContent) {
    EXPECT_TEXT(MediaSession().ToDiag(), kNewSectionDump);
}

TEST(SDPSection, DumpOfAnAudioSectionWithoutAddressHasNoMediaLine) {
    MediaSession section;
    section.eMedia = MEDIA_AUDIO;
    section.iPort = 5000;
    EXPECT_TEXT(section.ToDiag(), support::Replaced(kNewSectionDump, "iPort: 0", "iPort: 5000"));
}

TEST(SDPSection, DumpShowsEveryDumpedFieldInOrder) {
    RtpMap mode1 = {"97", "H264/90000", {"profile-level-id=42801f", " packetization-mode=1"}};
    RtpMap bare = {"126", "", {}};
    MediaSession section;
    section.eMedia = MEDIA_VIDEO;
    section.eContent = VIDEOTYPE_PRESO;
    section.iPort = 5002;
    section.strIPAddr = "192.0.2.10";
    section.vecRtpMap = {&mode1, &bare};
    section.fSend = false;
    section.fRecv = true;
    section.strFullMLine = "m=video 5002 RTP/SAVP 97 126";
    section.strVideoLevel = "3.1";
    section.strMaxBandwidth = "384000";
    section.iVideoLabel = 9;
    section.cryptoAlgo = samples::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
    section.iCryptoTag = 4;
    section.strBase64Key = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";
    section.iBfcpConfid = 15;
    section.iBfcpUserid = 16;
    section.iBfcpFloorid = 17;
    section.strFloorctrl = "c-s";
    section.striceufrag = "a=ice-ufrag:F7gI";
    section.stricepwd = "a=ice-pwd:x9cml";
    section.vecCandidate = {"a=candidate:1 1 UDP 1 10.0.0.1 5000 typ host"};
    EXPECT_TEXT(section.ToDiag(), "eContent: 1\n"
                                  "iPort: 5002\n"
                                  "strIPAddr: 192.0.2.10\n"
                                  "\tRtpMap[0]: Payload-97 EncodingName-H264/90000\n"
                                  "\t\tFmtp Parm-profile-level-id=42801f\n"
                                  "\t\tFmtp Parm- packetization-mode=1\n"
                                  "\tRtpMap[1]: Payload-126 EncodingName-\n"
                                  "fRecv: true\n"
                                  "fSend: false\n"
                                  "strVideoLevel: 3.1\n"
                                  "strMaxBandwidth: 384000\n"
                                  "iBfcpConfid: 15\n"
                                  "iBfcpUserid: 16\n"
                                  "strFloorctrl: c-s\n"
                                  "\n\n");
}

TEST(SDPSection, DumpShowsTheReceiveFlagBeforeTheSendFlag) {
    MediaSession section;
    section.fSend = true;
    section.fRecv = false;
    EXPECT_TEXT(section.ToDiag(), support::Replaced(kNewSectionDump, "fRecv: true", "fRecv: false"));
}

TEST(SDPSection, DumpPrintsNegativeNumbersWithTheirSign) {
    MediaSession section;
    section.eContent = VIDEOTYPE_MAIN;
    section.iPort = -1;
    section.iBfcpConfid = -2147483647 - 1;
    section.iBfcpUserid = 2147483647;
    EXPECT_TEXT(section.ToDiag(),
                support::Replaced(kNewSectionDump, {{"eContent: 100", "eContent: 0"},
                                                    {"iPort: 0", "iPort: -1"},
                                                    {"iBfcpConfid: 0", "iBfcpConfid: -2147483648"},
                                                    {"iBfcpUserid: 0", "iBfcpUserid: 2147483647"}}));
}

TEST(SDPSection, DumpKeepsALineThatJustFitsItsBuffer) {
    // "strIPAddr: " and the line end take 12 of the 999 bytes.
    MediaSession section;
    section.strIPAddr = Repeated(987);
    EXPECT_TEXT(section.ToDiag(),
                support::Replaced(kNewSectionDump, "strIPAddr: ", "strIPAddr: " + Repeated(987)));
}

TEST(SDPSection, DumpCutsALongerLineAndWithItsLineEnd) {
    for (const std::size_t length : {988U, 989U, 5000U}) {
        MediaSession section;
        section.strIPAddr = Repeated(length);
        EXPECT_TEXT(section.ToDiag(),
                    support::Replaced(kNewSectionDump, "strIPAddr: \n", "strIPAddr: " + Repeated(988)));
    }
}

TEST(SDPSection, DumpCutsEveryKindOfLineAtTheSameLength) {
    RtpMap entry = {Repeated(400), Repeated(1200), {Repeated(1200), "short"}};
    MediaSession section;
    section.vecRtpMap = {&entry};
    section.strVideoLevel = Repeated(1200);
    section.strMaxBandwidth = Repeated(1200);
    section.strFloorctrl = Repeated(1200);
    EXPECT_TEXT(section.ToDiag(),
                support::Replaced(kNewSectionDump,
                                  {{"fRecv", "\tRtpMap[0]: Payload-" + Repeated(400) + " EncodingName-" +
                                                 Repeated(999 - 20 - 400 - 14) + "\t\tFmtp Parm-" +
                                                 Repeated(999 - 12) + "\t\tFmtp Parm-short\nfRecv"},
                                   {"strVideoLevel: \n", "strVideoLevel: " + Repeated(999 - 15)},
                                   {"strMaxBandwidth: \n", "strMaxBandwidth: " + Repeated(999 - 17)},
                                   {"strFloorctrl: \n", "strFloorctrl: " + Repeated(999 - 14)}}));
}

TEST(SDPSection, DumpEndsATextAtItsFirstZeroByte) {
    MediaSession section;
    section.strIPAddr = std::string("192.0.2.1\0hidden", 16);
    section.strFloorctrl = std::string("\0c-s", 4);
    EXPECT_TEXT(section.ToDiag(), support::Replaced(kNewSectionDump, "strIPAddr: ", "strIPAddr: 192.0.2.1"));
}

TEST(SDPSection, DumpShowsKeyTextInEveryFieldAsItIs) {
    RtpMap entry = {
        "inline:cGF5bG9hZA", "inline:bmFtZQ", {"a=1\na=crypto:1 SUITE inline:Zm10cA|2^31 KDR=1", "inline:"}};
    MediaSession section;
    section.strIPAddr = "inline:YWRkcmVzcw";
    section.vecRtpMap = {&entry};
    section.strVideoLevel = "inline:bGV2ZWw";
    section.strMaxBandwidth = "64000\na=x inline:b25l and inline:dHdv\ttab";
    section.strFloorctrl = "c-s\na=x inline:Zmxvb3I";
    EXPECT_TEXT(section.ToDiag(),
                support::Replaced(
                    kNewSectionDump,
                    {{"strIPAddr: ", "strIPAddr: inline:YWRkcmVzcw"},
                     {"fRecv", "\tRtpMap[0]: Payload-inline:cGF5bG9hZA EncodingName-inline:bmFtZQ\n"
                               "\t\tFmtp Parm-a=1\na=crypto:1 SUITE inline:Zm10cA|2^31 KDR=1\n"
                               "\t\tFmtp Parm-inline:\nfRecv"},
                     {"strVideoLevel: ", "strVideoLevel: inline:bGV2ZWw"},
                     {"strMaxBandwidth: ", "strMaxBandwidth: 64000\na=x inline:b25l and inline:dHdv\ttab"},
                     {"strFloorctrl: ", "strFloorctrl: c-s\na=x inline:Zmxvb3I"}}));
}

} // namespace
