// SDPExtract, everything but the audio section (SDPExtractAudioTest.cpp): the reset, the trace, the session
// and media bandwidth, the choice of video sections and the floor control channel.
#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"
#include "RecordSamples.h"
#include "TraceKeeper.h"

#include <string>
#include <vector>

using namespace support;

namespace {

// One video section that is worth `tias` bit/s.
MediaSession& AddVideoSection(SDPHandler& h, VIDEOTYPE role, std::int32_t port, const char* tias = "") {
    MediaSession& section = AddSection(h, MEDIA_VIDEO, port);
    section.eContent = role;
    section.strMaxBandwidth = tias;
    return section;
}

TEST(SDPExtract, WithoutSectionsTheRecordIsReset) {
    SDPHandler h;
    auto remote = samples::Filled<RemoteSDP>();
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote), kFreshRemote);
}

TEST(SDPExtract, WithoutSectionsTheSessionBandwidthStillStands) {
    SDPHandler h;
    h.strMaxSessionBandwidth = "512";
    h.strSessionIPAddr = "192.0.2.9";
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote), Replaced(kFreshRemote, "bandwidth=0", "bandwidth=512000"));
}

TEST(SDPExtract, ASecondExtractionStartsFromAResetRecord) {
    SDPHandler h;
    AddFormat(AddSection(h, MEDIA_AUDIO, 5000), "0");
    RemoteSDP fresh;
    auto used = samples::Filled<RemoteSDP>();
    h.GetRTPData(fresh);
    h.GetRTPData(used);
    EXPECT_TEXT(Describe(used), Describe(fresh));
    h.GetRTPData(used);
    EXPECT_TEXT(Describe(used), Describe(fresh));
}

TEST(SDPExtract, TheSectionsAreOnlyRead) {
    SDPHandler h;
    MediaSession& video = AddVideoSection(h, VIDEOTYPE_MAIN, 5002, "900000");
    AddFormat(video, "97", "H264/90000", {"profile-level-id=42801f", " packetization-mode=1"});
    MediaSession& audio = AddSection(h, MEDIA_AUDIO, 5000);
    AddFormat(audio, "0", "PCMU/8000");
    h.strMaxSessionBandwidth = "";
    const std::string videoText = video.ToDiag();
    const std::string audioText = audio.ToDiag();
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(video.ToDiag(), videoText);
    EXPECT_TEXT(audio.ToDiag(), audioText);
    EXPECT_EQ(h.vecRemoteMediaSession.size(), 2U);
    EXPECT_EQ(h.m_iSessionVersion, 1U);
}

TEST(SDPExtract, OwnAddressGoesBeforeTheSessionAddress) {
    SDPHandler h;
    h.strSessionIPAddr = "192.0.2.9";
    MediaSession& audio = AddSection(h, MEDIA_AUDIO, 5000);
    MediaSession& main = AddVideoSection(h, VIDEOTYPE_MAIN, 5002);
    MediaSession& preso = AddVideoSection(h, VIDEOTYPE_PRESO, 5004);
    const auto addresses = [&h] {
        RemoteSDP remote;
        h.GetRTPData(remote);
        return remote.strAudioIPAddr + " " + remote.m_VideoMain.strVideoIPAddr + " " +
               remote.m_VideoPreso.strVideoIPAddr;
    };
    EXPECT_EQ(addresses(), "192.0.2.9 192.0.2.9 192.0.2.9");
    audio.strIPAddr = "192.0.2.10";
    main.strIPAddr = "192.0.2.11";
    EXPECT_EQ(addresses(), "192.0.2.10 192.0.2.11 192.0.2.9");
    preso.strIPAddr = "192.0.2.12";
    EXPECT_EQ(addresses(), "192.0.2.10 192.0.2.11 192.0.2.12");
    EXPECT_EQ(h.strSessionIPAddr, "192.0.2.9");
}

// Session bandwidth: kilobits on the wire, bits in the record.

std::int32_t SessionBandwidth(const char* text) {
    SDPHandler h;
    h.strMaxSessionBandwidth = text;
    RemoteSDP remote;
    h.GetRTPData(remote);
    return remote.iMaxBandwidth;
}

TEST(SDPExtract, SessionBandwidthIsATextOfKilobits) {
    EXPECT_EQ(SessionBandwidth("1"), 1000);
    EXPECT_EQ(SessionBandwidth("384"), 384000);
    EXPECT_EQ(SessionBandwidth("0384"), 384000);
    EXPECT_EQ(SessionBandwidth("0"), 0);
}

TEST(SDPExtract, SessionBandwidthThatIsNoNumberCountsAsNone) {
    EXPECT_EQ(SessionBandwidth(""), 0);
    EXPECT_EQ(SessionBandwidth("384 "), 0);
    EXPECT_EQ(SessionBandwidth(" 384"), 0);
    EXPECT_EQ(SessionBandwidth("-384"), 0);
    EXPECT_EQ(SessionBandwidth("384k"), 0);
}

// Media bandwidth: audio and main video as far as they were taken, unless the session has a text of its own.

std::int32_t MediaBandwidth(const char* session, const char* audio, const char* main, const char* preso) {
    SDPHandler h;
    h.strMaxSessionBandwidth = session;
    AddSection(h, MEDIA_AUDIO, 5000).strMaxBandwidth = audio;
    AddVideoSection(h, VIDEOTYPE_MAIN, 5002, main);
    AddVideoSection(h, VIDEOTYPE_PRESO, 5004, preso);
    AddBfcpSection(h, 5006).strMaxBandwidth = "7000000";
    RemoteSDP remote;
    h.GetRTPData(remote);
    return remote.iMaxBandwidth;
}

TEST(SDPExtract, MediaBandwidthIsTheSumOfAudioAndMainVideo) {
    const struct {
        const char* session;
        const char* audio;
        const char* main;
        const char* preso;
        std::int32_t bits;
    } rows[] = {
        {"", "64000", "936000", "", 1000000},
        {"", "64000", "", "", 64000},
        {"", "", "936000", "", 936000},
        // Presentation and floor control never count.
        {"", "", "", "936000", 0},
        {"", "64000", "936000", "500000", 1000000},
        // What is no number is skipped.
        {"", "64000x", "936000", "", 936000},
        {"", "64000", " 936000", "", 64000},
        {"", "-1", "-2", "", 0},
        // A limit of the session replaces the sum, also when it is no number.
        {"512", "64000", "936000", "", 512000},
        {"0", "64000", "936000", "", 0},
        {"many", "64000", "936000", "", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(MediaBandwidth(row.session, row.audio, row.main, row.preso), row.bits)
            << row.session << " | " << row.audio << " | " << row.main << " | " << row.preso;
    }
}

TEST(SDPExtract, OnlyTheTakenSectionsCountTowardBandwidth) {
    SDPHandler h;
    AddSection(h, MEDIA_AUDIO, 5000).strMaxBandwidth = "1";
    AddSection(h, MEDIA_AUDIO, 5002).strMaxBandwidth = "20";
    AddVideoSection(h, VIDEOTYPE_MAIN, 5004, "300");
    AddVideoSection(h, VIDEOTYPE_MAIN, 5006, "4000");
    AddVideoSection(h, VIDEOTYPE_UNKNOWN, 5008, "50000");
    AddSection(h, MEDIA_UNKNOWN, 5010).strMaxBandwidth = "600000";
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_EQ(remote.iMaxBandwidth, 301);
}

TEST(SDPExtract, BandwidthCountsForSectionsThatWereDeclinedToo) {
    SDPHandler h;
    AddSection(h, MEDIA_AUDIO, 0).strMaxBandwidth = "1";
    AddVideoSection(h, VIDEOTYPE_MAIN, 0, "300");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_EQ(remote.iMaxBandwidth, 301);
}

// The trace.

TEST(SDPExtract, EverySectionIsTracedInOrder) {
    SDPHandler h;
    AddFormat(AddSection(h, MEDIA_AUDIO, 5000), "0", "PCMU/8000", {"a", "b"});
    AddVideoSection(h, VIDEOTYPE_PRESO, 5002, "64000").strIPAddr = "100%s%n";
    AddSection(h, MEDIA_UNKNOWN, 5004).fSend = false;
    AddBfcpSection(h, 5006, "c-s").iBfcpConfid = 15;
    RemoteSDP remote;
    TraceKeeper keeper;
    h.GetRTPData(remote);
    ASSERT_EQ(keeper.Traces().size(), 4U);
    for (const Trace& trace : keeper.Traces()) {
        EXPECT_NE(trace.file.find("SDPExtract"), std::string::npos);
        EXPECT_EQ(trace.function, "GetRTPData");
        EXPECT_GT(trace.line, 0);
    }
    EXPECT_TEXT(keeper.Traces()[0].text,
                "Dump Media Session: \n"
                "eContent: 100\niPort: 5000\nstrIPAddr: \n"
                "\tRtpMap[0]: Payload-0 EncodingName-PCMU/8000\n\t\tFmtp Parm-a\n\t\tFmtp Parm-b\n"
                "fRecv: true\nfSend: true\nstrVideoLevel: \nstrMaxBandwidth: \n"
                "iBfcpConfid: 0\niBfcpUserid: 0\nstrFloorctrl: \n\n\n");
    EXPECT_TEXT(keeper.Traces()[1].text, "Dump Media Session: \n"
                                         "eContent: 1\niPort: 5002\nstrIPAddr: 100%s%n\n"
                                         "fRecv: true\nfSend: true\nstrVideoLevel: \nstrMaxBandwidth: 64000\n"
                                         "iBfcpConfid: 0\niBfcpUserid: 0\nstrFloorctrl: \n\n\n");
    EXPECT_TEXT(keeper.Traces()[2].text, "Dump Media Session: \n"
                                         "eContent: 100\niPort: 5004\nstrIPAddr: \n"
                                         "fRecv: true\nfSend: false\nstrVideoLevel: \nstrMaxBandwidth: \n"
                                         "iBfcpConfid: 0\niBfcpUserid: 0\nstrFloorctrl: \n\n\n");
    EXPECT_TEXT(keeper.Traces()[3].text, "Dump Media Session: \n"
                                         "eContent: 100\niPort: 5006\nstrIPAddr: \n"
                                         "fRecv: true\nfSend: true\nstrVideoLevel: \nstrMaxBandwidth: \n"
                                         "iBfcpConfid: 15\niBfcpUserid: 0\nstrFloorctrl: c-s\n\n\n");
}

TEST(SDPExtract, SectionsThatAreNotTakenAreTracedToo) {
    SDPHandler h;
    AddSection(h, MEDIA_AUDIO, 5000);
    AddSection(h, MEDIA_AUDIO, 5002);
    RemoteSDP remote;
    TraceKeeper keeper;
    h.GetRTPData(remote);
    EXPECT_EQ(keeper.Traces().size(), 2U);
}

TEST(SDPExtract, WithoutSectionsNothingIsTraced) {
    SDPHandler h;
    h.strMaxSessionBandwidth = "512";
    RemoteSDP remote;
    TraceKeeper keeper;
    h.GetRTPData(remote);
    EXPECT_TRUE(keeper.Traces().empty());
}

// Video sections: the first of each role.

TEST(SDPExtract, FirstMainAndFirstPresentationSectionAreTaken) {
    SDPHandler h;
    AddVideoSection(h, VIDEOTYPE_PRESO, 5000);
    AddVideoSection(h, VIDEOTYPE_MAIN, 5002);
    AddFormat(AddVideoSection(h, VIDEOTYPE_PRESO, 5004), "98", "H264/90000");
    AddFormat(AddVideoSection(h, VIDEOTYPE_MAIN, 5006), "97", "H264/90000");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote),
                "audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0\n"
                "main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 recv=1 "
                "valid=1\n"
                "preso codec=2 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5000 send=1 recv=1 "
                "valid=1\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
}

TEST(SDPExtract, SkippedVideoSectionsLeaveTheKeysOfTheTakenOnes) {
    SDPHandler h;
    Secure(AddVideoSection(h, VIDEOTYPE_MAIN, 5002), "video");
    Secure(AddVideoSection(h, VIDEOTYPE_PRESO, 5004), "slide");
    Secure(AddVideoSection(h, VIDEOTYPE_MAIN, 5006), "other");
    Secure(AddVideoSection(h, VIDEOTYPE_PRESO, 5008), "other");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_EQ(remote.m_VideoMain.iVideoRTPPort, 5002);
    EXPECT_EQ(remote.m_VideoPreso.iVideoRTPPort, 5004);
    EXPECT_EQ(std::string(remote.bufSRTPKey[1], remote.bufSRTPKey[1] + 16), "away video key 1");
    EXPECT_EQ(std::string(remote.bufSRTPKey[2], remote.bufSRTPKey[2] + 16), "away slide key 1");
}

TEST(SDPExtract, VideoSectionsOfAnotherRoleAreSkipped) {
    SDPHandler h;
    AddVideoSection(h, VIDEOTYPE_UNKNOWN, 5000, "64000");
    AddVideoSection(h, VIDEOTYPE_MAX, 5002, "64000");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote), kFreshRemote);
}

TEST(SDPExtract, SectionsOfUnknownMediaAreSkipped) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_UNKNOWN, 5000);
    section.strFullMLine = "m=text 5000 UDP/BFCP 0";
    section.eContent = VIDEOTYPE_MAIN;
    section.strMaxBandwidth = "64000";
    AddFormat(section, "0");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote), kFreshRemote);
}

// Floor control.

std::string FloorControl(const std::string& mediaLine, const std::string& strFloorctrl) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_APPLICATION, 5070);
    section.strFullMLine = mediaLine;
    section.strFloorctrl = strFloorctrl;
    section.iBfcpConfid = 21;
    section.iBfcpUserid = 22;
    RemoteSDP remote;
    h.GetRTPData(remote);
    const std::string allText = Describe(remote);
    const std::string::size_type begin = allText.find("bfcp ");
    return allText.substr(begin, allText.find('\n', begin) - begin);
}

TEST(SDPExtract, FloorControlSectionIsToldByBfcpInItsLine) {
    EXPECT_EQ(FloorControl("m=application 5070 UDP/BFCP *", "c-s"),
              "bfcp port=5070 conf=21 user=22 server=0");
    EXPECT_EQ(FloorControl("m=application 5070 TCP/BFCP *", "c-s"),
              "bfcp port=5070 conf=21 user=22 server=0");
    EXPECT_EQ(FloorControl("m=application 5070 TCP/TLS/BFCP *", ""),
              "bfcp port=5070 conf=21 user=22 server=0");
    EXPECT_EQ(FloorControl("m=application 5070 RTP/AVP BFCP", ""), "bfcp port=5070 conf=21 user=22 server=0");
}

TEST(SDPExtract, ApplicationSectionWithoutBfcpIsSkipped) {
    EXPECT_EQ(FloorControl("m=application 5070 UDP/bfcp *", "s-only"), "bfcp port=0 conf=0 user=0 server=0");
    EXPECT_EQ(FloorControl("m=application 5070 RTP/AVP 100", "s-only"), "bfcp port=0 conf=0 user=0 server=0");
    EXPECT_EQ(FloorControl("", "s-only"), "bfcp port=0 conf=0 user=0 server=0");
}

TEST(SDPExtract, FarEndIsServerOnlyByExactlySOnly) {
    const std::string lineText = "m=application 5070 UDP/BFCP *";
    EXPECT_EQ(FloorControl(lineText, "s-only"), "bfcp port=5070 conf=21 user=22 server=1");
    EXPECT_EQ(FloorControl(lineText, "c-only"), "bfcp port=5070 conf=21 user=22 server=0");
    EXPECT_EQ(FloorControl(lineText, "c-s"), "bfcp port=5070 conf=21 user=22 server=0");
    EXPECT_EQ(FloorControl(lineText, ""), "bfcp port=5070 conf=21 user=22 server=0");
    EXPECT_EQ(FloorControl(lineText, "s-only "), "bfcp port=5070 conf=21 user=22 server=0");
    EXPECT_EQ(FloorControl(lineText, "S-only"), "bfcp port=5070 conf=21 user=22 server=0");
    EXPECT_EQ(FloorControl(lineText, "c-only s-only"), "bfcp port=5070 conf=21 user=22 server=0");
}

TEST(SDPExtract, EveryFloorControlSectionIsTakenAndTheLastStands) {
    SDPHandler h;
    MediaSession& first = AddBfcpSection(h, 5070, "s-only");
    first.iBfcpConfid = 1;
    first.iBfcpUserid = 2;
    AddBfcpSection(h, 0);
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote), kFreshRemote);
}

TEST(SDPExtract, BfcpInAnAudioOrVideoLineIsNoFloorControl) {
    SDPHandler h;
    for (const MediaType media : {MEDIA_AUDIO, MEDIA_VIDEO}) {
        MediaSession& section = AddSection(h, media, 5000);
        section.strFullMLine = "m=audio 5000 UDP/BFCP 0";
        section.iBfcpConfid = section.iBfcpUserid = 3;
        section.strFloorctrl = "s-only";
    }
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_EQ(remote.iVideoPresoControlPort, 0);
    EXPECT_EQ(remote.iBfcpConfid, 0);
    EXPECT_EQ(remote.iBfcpUserid, 0);
    EXPECT_FALSE(remote.fBfcpIsServer);
}

TEST(SDPExtract, GetBfcpDataClearsAServerFlagThatStood) {
    SDPHandler h;
    RemoteSDP remote;
    remote.fBfcpIsServer = true;
    remote.iMaxBandwidth = 5;
    MediaSession section;
    section.iPort = 5070;
    section.iBfcpConfid = 31;
    section.iBfcpUserid = 32;
    section.strFloorctrl = "c-only";
    h.GetBfcpData(remote, &section);
    EXPECT_EQ(remote.iVideoPresoControlPort, 5070);
    EXPECT_EQ(remote.iBfcpConfid, 31);
    EXPECT_EQ(remote.iBfcpUserid, 32);
    EXPECT_FALSE(remote.fBfcpIsServer);
    EXPECT_EQ(remote.iMaxBandwidth, 5);
}

TEST(SDPExtract, AudioVideoAndFloorControlTogetherFillTheWholeRecord) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = kAllAudio;
    h.strSessionIPAddr = "192.0.2.2";
    MediaSession& audio = AddSection(h, MEDIA_AUDIO, 5000);
    audio.strMaxBandwidth = "64000";
    AddFormat(audio, "0");
    AddFormat(audio, "101", "telephone-event/8000", {"0-15"});
    Secure(audio, "audio");
    MediaSession& main = AddVideoSection(h, VIDEOTYPE_MAIN, 5002, "936000");
    AddFormat(main, "97", "H264/90000",
              {"profile-level-id=42801f", "max-br=1", "max-mbps=2", "max-fs=3", "packetization-mode=1"});
    Secure(main, "video");
    MediaSession& preso = AddVideoSection(h, VIDEOTYPE_PRESO, 5004, "936000");
    preso.strIPAddr = "192.0.2.3";
    preso.fSend = false;
    AddFormat(preso, "98", "H264/90000", {"profile-level-id=428028"});
    Secure(preso, "slide");
    MediaSession& bfcp = AddBfcpSection(h, 5006, "s-only");
    bfcp.iBfcpConfid = 15;
    bfcp.iBfcpUserid = 16;
    auto remote = samples::Filled<RemoteSDP>();
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=5000 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=2 fs=3 br=1 addr=192.0.2.2 port=5002 "
                "send=1 recv=1 valid=1\n"
                "preso codec=2 type=1 payload=98 mode=0 level=4 mbps=0 fs=0 br=0 addr=192.0.2.3 port=5004 "
                "send=0 recv=1 valid=1\n"
                "bfcp port=5006 conf=15 user=16 server=1\n"
                "bandwidth=1000000\n"
                "srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
                "srtp video suite=1 key=away video key 1 salt=away videosalt\n"
                "srtp slide suite=1 key=away slide key 1 salt=away slidesalt\n");
}

} // namespace
