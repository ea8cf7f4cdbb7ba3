// SDPExtractVideo: one video section to one stream record, H.264 parameters, level names in both directions.
#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"

#include <string>
#include <vector>

using namespace support;

namespace {

// The stream record that a main video section with these formats at port 5002 gives.
std::string Take(const std::vector<Format>& formats) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_VIDEO, 5002);
    AddFormats(section, formats);
    RemoteSDP remote;
    h.GetVideoRTPData(remote, remote.m_VideoMain, &section);
    return Describe(remote.m_VideoMain);
}

// The stream record after one format with these parameters was loaded into a new one.
std::string Load(const std::vector<std::string>& parms) {
    const SDPHandler h;
    VideoParms stream;
    RtpMap format;
    format.vecFmtpParms = parms;
    h.LoadH264Parms(stream, &format);
    return Describe(stream);
}

// What Load gives for these values.
std::string Loaded(const std::string& strLevel, int mbps, int fs, int br, int mode) {
    return "codec=256 type=100 payload=0 mode=" + std::to_string(mode) + " level=" + strLevel +
           " mbps=" + std::to_string(mbps) + " fs=" + std::to_string(fs) + " br=" + std::to_string(br) +
           " addr= port=0 send=0 recv=0 valid=0\n";
}

// The section: row, codec, port, direction, address, role.

TEST(SDPExtractVideo, ASectionWithoutH264IsValidWithCodecH264) {
    const std::string withoutFormat =
        "codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 "
        "send=1 recv=1 valid=1\n";
    EXPECT_TEXT(Take({}), withoutFormat);
    EXPECT_TEXT(Take({{"96", "VP8/90000", {"packetization-mode=1"}}}), withoutFormat);
    EXPECT_TEXT(Take({{"96", "", {}}}), withoutFormat);
}

TEST(SDPExtractVideo, MainSectionFillsTheVideoKeyRow) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_VIDEO, 5002);
    Secure(section, "video");
    RemoteSDP remote;
    h.GetVideoRTPData(remote, remote.m_VideoMain, &section);
    EXPECT_TEXT(Describe(remote),
                "audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0\n"
                "main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 recv=1 "
                "valid=1\n"
                "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=1 key=away video key 1 salt=away videosalt\n"
                "srtp slide suite=0 key=- salt=-\n");
}

TEST(SDPExtractVideo, PresentationSectionFillsThePresentationKeyRow) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_VIDEO, 5004);
    section.eContent = VIDEOTYPE_PRESO;
    Secure(section, "slide");
    RemoteSDP remote;
    h.GetVideoRTPData(remote, remote.m_VideoPreso, &section);
    EXPECT_TEXT(Describe(remote),
                "audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0\n"
                "main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "preso codec=2 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5004 send=1 recv=1 "
                "valid=1\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=1 key=away slide key 1 salt=away slidesalt\n");
}

TEST(SDPExtractVideo, AnyOtherRoleFillsTheVideoKeyRowAndKeepsItsRole) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_VIDEO, 5004);
    section.eContent = VIDEOTYPE_UNKNOWN;
    Secure(section, "video");
    RemoteSDP remote;
    h.GetVideoRTPData(remote, remote.m_VideoMain, &section);
    EXPECT_EQ(remote.m_VideoMain.eVideoType, VIDEOTYPE_UNKNOWN);
    EXPECT_EQ(remote.cryptoAlgo[baseSDP::SRTP_AUDIO], kSuiteNone);
    EXPECT_EQ(remote.cryptoAlgo[baseSDP::SRTP_VIDEO], kSuite32);
    EXPECT_EQ(remote.cryptoAlgo[baseSDP::SRTP_VIDEO_PRESO], kSuiteNone);
}

TEST(SDPExtractVideo, ASectionWithoutKeysClearsTheRow) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_VIDEO, 5002);
    RemoteSDP remote;
    WriteKey(remote.bufSRTPKey[1], remote.bufSRTPSalt[1], "near", "stale");
    remote.cryptoAlgo[1] = kSuite32;
    h.GetVideoRTPData(remote, remote.m_VideoMain, &section);
    EXPECT_EQ(DescribeRow(remote.bufSRTPKey[1], 16, 17), "-");
    EXPECT_EQ(DescribeRow(remote.bufSRTPSalt[1], 14, 15), "-");
    EXPECT_EQ(remote.cryptoAlgo[1], kSuiteNone);
}

std::string Direction(std::int32_t port, bool fSend, bool fRecv) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_VIDEO, port);
    section.fSend = fSend;
    section.fRecv = fRecv;
    RemoteSDP remote;
    remote.m_VideoMain.fVideoSend = remote.m_VideoMain.fVideoRecv = true;
    h.GetVideoRTPData(remote, remote.m_VideoMain, &section);
    return Describe(remote.m_VideoMain);
}

TEST(SDPExtractVideo, DirectionFlagsAreThoseOfTheSection) {
    EXPECT_TEXT(Direction(5002, true, false), "codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= "
                                              "port=5002 send=1 recv=0 valid=1\n");
    EXPECT_TEXT(Direction(5002, false, true), "codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= "
                                              "port=5002 send=0 recv=1 valid=1\n");
    EXPECT_TEXT(Direction(5002, false, false), "codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 "
                                               "addr= port=5002 send=0 recv=0 valid=1\n");
    EXPECT_TEXT(Direction(1, true, true), "codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= "
                                          "port=1 send=1 recv=1 valid=1\n");
}

TEST(SDPExtractVideo, PortZeroClearsBothDirectionsAndTheRecordIsValid) {
    EXPECT_TEXT(Direction(0, true, true), "codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= "
                                          "port=0 send=0 recv=0 valid=1\n");
}

// The choice among the formats.

TEST(SDPExtractVideo, H264IsKnownByAPieceOfItsName) {
    const std::string taken = "codec=2 type=0 payload=97 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 "
                              "send=1 recv=1 valid=1\n";
    for (const char* name : {"H264/90000", "H264/9000", "H264/90001", "XH264/90000", "H264/90000/1"}) {
        EXPECT_TEXT(Take({{"97", name, {}}}), taken) << name;
    }
    const std::string skipped = "codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 "
                                "send=1 recv=1 valid=1\n";
    for (const char* name : {"h264/90000", "H264/8000", "H264/900", "H265/90000", "H264", "H264 /90000"}) {
        EXPECT_TEXT(Take({{"97", name, {}}}), skipped) << name;
    }
}

TEST(SDPExtractVideo, AFormatIsTakenByItsMode) {
    const struct {
        const char* why;
        std::vector<Format> formats;
        const char* taken;
    } rows[] = {
        {"mode 1 after mode 0 is taken",
         {{"97", "H264/90000", {"packetization-mode=0"}}, {"126", "H264/90000", {"packetization-mode=1"}}},
         "payload=126 mode=1 level= mbps=0 fs=0 br=0"},
        {"mode 1 ends the walk",
         {{"126", "H264/90000", {"packetization-mode=1"}},
          {"97", "H264/90000", {"packetization-mode=0", "max-fs=99"}}},
         "payload=126 mode=1 level= mbps=0 fs=0 br=0"},
        {"any mode but 0 does",
         {{"126", "H264/90000", {"packetization-mode=2"}}, {"97", "H264/90000", {"packetization-mode=1"}}},
         "payload=126 mode=2 level= mbps=0 fs=0 br=0"},
        {"the mode of another codec does not",
         {{"96", "VP8/90000", {"packetization-mode=1", "max-fs=99"}},
          {"97", "H264/90000", {"packetization-mode=1"}}},
         "payload=97 mode=1 level= mbps=0 fs=0 br=0"},
        {"without a mode the last format wins",
         {{"97", "H264/90000", {}}, {"98", "H264/90000", {}}, {"99", "VP8/90000", {}}},
         "payload=98 mode=0 level= mbps=0 fs=0 br=0"},
        {"and the values of all formats add up",
         {{"97", "H264/90000", {"profile-level-id=42801f", "max-mbps=1", "max-br=2"}},
          {"98", "H264/90000", {"max-mbps=3", "max-fs=4", "packetization-mode=0"}}},
         "payload=98 mode=0 level=3.1 mbps=3 fs=4 br=2"},
        {"they stay when mode 1 follows",
         {{"97", "H264/90000", {"profile-level-id=42801f", "max-fs=5"}},
          {"126", "H264/90000", {"packetization-mode=1", "max-br=6"}}},
         "payload=126 mode=1 level=3.1 mbps=0 fs=5 br=6"},
        {"a payload is read as far as it is digits",
         {{"97/2", "H264/90000", {}}},
         "payload=97 mode=0 level= mbps=0 fs=0 br=0"},
        {"and is 0 without any",
         {{"97", "H264/90000", {}}, {"*", "H264/90000", {}}},
         "payload=0 mode=0 level= mbps=0 fs=0 br=0"},
    };
    for (const auto& row : rows) {
        EXPECT_TEXT(Take(row.formats),
                    std::string("codec=2 type=0 ") + row.taken + " addr= port=5002 send=1 recv=1 valid=1\n")
            << row.why;
    }
}

TEST(SDPExtractVideo, AModeThatTheRecordAlreadyHasEndsTheWalkAtTheFirstH264) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_VIDEO, 5002);
    AddFormat(section, "97", "H264/90000");
    AddFormat(section, "98", "H264/90000");
    RemoteSDP remote;
    remote.m_VideoMain.iFmtpPacketizationMode = 1;
    h.GetVideoRTPData(remote, remote.m_VideoMain, &section);
    EXPECT_EQ(remote.m_VideoMain.iVideoPayload, 97);
}

// The format parameters.

TEST(SDPExtractVideo, EveryKeyFillsItsField) {
    EXPECT_TEXT(Load({"profile-level-id=42801f"}), Loaded("3.1", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"max-mbps=108000"}), Loaded("", 108000, 0, 0, 0));
    EXPECT_TEXT(Load({"max-fs=3601"}), Loaded("", 0, 3601, 0, 0));
    EXPECT_TEXT(Load({"max-br=1500"}), Loaded("", 0, 0, 1500, 0));
    EXPECT_TEXT(Load({"packetization-mode=1"}), Loaded("", 0, 0, 0, 1));
    EXPECT_TEXT(Load({"packetization-mode=1", "max-br=1500", "max-fs=3601", "max-mbps=108000",
                      "profile-level-id=42801f"}),
                Loaded("3.1", 108000, 3601, 1500, 1));
}

TEST(SDPExtractVideo, AKeyMayHaveBlanksOrMoreAroundIt) {
    EXPECT_TEXT(Load({" profile-level-id=42801f"}), Loaded("3.1", 0, 0, 0, 0));
    EXPECT_TEXT(Load({" max-mbps =1"}), Loaded("", 1, 0, 0, 0));
    EXPECT_TEXT(Load({"x-max-fs-y=2"}), Loaded("", 0, 2, 0, 0));
    EXPECT_TEXT(Load({"\tmax-br=3"}), Loaded("", 0, 0, 3, 0));
    EXPECT_TEXT(Load({"  packetization-mode=1"}), Loaded("", 0, 0, 0, 1));
}

TEST(SDPExtractVideo, AKeyInAnotherCaseIsIgnored) {
    EXPECT_TEXT(
        Load({"Profile-level-id=42801f", "MAX-MBPS=1", "Max-fs=1", "max-BR=1", "packetization-Mode=1"}),
        Loaded("", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, OtherParametersAreIgnored) {
    EXPECT_TEXT(Load({"max-rcmd-nalu-size=32000", "level-asymmetry-allowed=1", "max-dpb=891", "max-cpb=7",
                      "sprop-parameter-sets=Z0IAKeKQFAe2AtwEBAaQeJEV,aM48gA==", "42801f", "=1", "", "="}),
                Loaded("", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, AKeyWithoutAValuePieceIsIgnored) {
    EXPECT_TEXT(Load({"profile-level-id", "max-mbps", "max-fs", "max-br", "packetization-mode"}),
                Loaded("", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, AKeyAfterTheEqualsSignDoesNotCount) {
    EXPECT_TEXT(Load({"x=max-mbps", "x=max-fs=5", "=max-br=5"}), Loaded("", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, TheValueEndsAtASecondEqualsSign) {
    EXPECT_TEXT(Load({"max-mbps=5=6", "profile-level-id=42801f=42800a"}), Loaded("3.1", 5, 0, 0, 0));
    EXPECT_TEXT(Load({"max-fs==6"}), Loaded("", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, ALaterParameterReplacesAnEarlierOne) {
    EXPECT_TEXT(Load({"max-fs=1", "max-fs=2", "profile-level-id=42801f", "profile-level-id=42800a"}),
                Loaded("1", 0, 2, 0, 0));
}

TEST(SDPExtractVideo, TheFirstKeyInTheRowsOrderTakesTheParameter) {
    EXPECT_TEXT(Load({"max-mbps profile-level-id=428020"}), Loaded("3.2", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"max-fs max-mbps=5"}), Loaded("", 5, 0, 0, 0));
    EXPECT_TEXT(Load({"max-br max-fs=5"}), Loaded("", 0, 5, 0, 0));
    EXPECT_TEXT(Load({"packetization-mode max-br=5"}), Loaded("", 0, 0, 5, 0));
}

TEST(SDPExtractVideo, ARejectedValueIsNotOfferedToALaterKey) {
    EXPECT_TEXT(Load({"profile-level-id max-mbps=42"}), Loaded("", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"packetization-mode profile-level-id=1"}), Loaded("", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, LevelNeedsFourCharactersAndReadsFromTheFifth) {
    EXPECT_TEXT(Load({"profile-level-id="}), Loaded("", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=42"}), Loaded("", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=42e"}), Loaded("", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=42e0"}), Loaded("1.3", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=42e01"}), Loaded("1.3", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=42e01f"}), Loaded("3.1", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=42e01f0"}), Loaded("1.3", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=42800b"}), Loaded("1.1", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=4280FF"}), Loaded("1.b", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=428034"}), Loaded("1.3", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, ProfileAndConstraintsAreNotLookedAt) {
    EXPECT_TEXT(Load({"profile-level-id=64001f"}), Loaded("3.1", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=zzzz28"}), Loaded("4", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, AShortLevelLeavesTheLevelThatStood) {
    EXPECT_TEXT(Load({"profile-level-id=428028", "profile-level-id=42"}), Loaded("4", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, AValueThatIsNoNumberLeavesWhatStood) {
    for (const char* value : {"abc", "", "-1", "+1", " 9", "9 ", "0x10", "1.5"}) {
        const std::string valueText = value;
        EXPECT_TEXT(
            Load({"max-mbps=1", "max-mbps=" + valueText, "max-fs=2", "max-fs=" + valueText, "max-br=3",
                  "max-br=" + valueText, "packetization-mode=4", "packetization-mode=" + valueText}),
            Loaded("", 1, 2, 3, 4))
            << value;
    }
}

TEST(SDPExtractVideo, NothingIsResetBeforeTheParametersAreLoaded) {
    const SDPHandler h;
    VideoParms stream;
    stream.strVideoLevel = "2";
    stream.iFmtpMaxMbps = 1;
    stream.iFmtpMaxFrameSize = 2;
    stream.iFmtpMaxBitRate = 3;
    stream.iFmtpPacketizationMode = 4;
    RtpMap format;
    h.LoadH264Parms(stream, &format);
    EXPECT_TEXT(Describe(stream), Loaded("2", 1, 2, 3, 4));
    format.vecFmtpParms = {"max-fs=9"};
    h.LoadH264Parms(stream, &format);
    EXPECT_TEXT(Describe(stream), Loaded("2", 1, 9, 3, 4));
}

TEST(SDPExtractVideo, NamesCutShortAreNoKeys) {
    EXPECT_TEXT(Load({"profile-level-i=42801f", "rofile-level-id=42801f", "max-mbp=1", "ax-mbps=1", "max-f=2",
                      "ax-fs=2", "max-b=3", "ax-br=3", "packetization-mod=1", "acketization-mode=1"}),
                Loaded("", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, ALevelEndsAtAnotherEqualsSign) {
    EXPECT_TEXT(Load({"profile-level-id=42801f=0123456789abcdef"}), Loaded("3.1", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=4280=1f"}), Loaded("1.3", 0, 0, 0, 0));
    EXPECT_TEXT(Load({"profile-level-id=428=01f0123456789abcdef"}), Loaded("", 0, 0, 0, 0));
}

TEST(SDPExtractVideo, NumbersMayHaveLeadingZeros) {
    EXPECT_TEXT(Load({"max-mbps=0010", "max-fs=0", "packetization-mode=01"}), Loaded("", 10, 0, 0, 1));
}

} // namespace
