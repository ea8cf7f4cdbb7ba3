// Texts that try to cost more than their length: numbers that must not be expanded, large texts without
// meaning, and bytes that a terminal or another reader would interpret.
#include "Hostile.h"

#include "CommonMediaTrace.h"
#include "oom/Allocations.h"

namespace {

using namespace hostile;

constexpr std::size_t kMillion = 1000000;

TEST(Hostile, C54_ThirtyBytesAskForKilobytesAtMost) {
    for (const std::string text :
         {"c=IN IP4 224.0.0.1/1/4294967295\r\n", "m=audio 1/4294967295 RTP/AVP 0\r\n",
          "m=audio 1 RTP/AVP 4294967295\r\n", "b=AS:99999999999999999999999\r\n",
          "a=rtpmap:4294967295 X/4294967295/4294967295\r\n"}) {
        Endpoint near;
        {
            const allocations::Scope scope;
            near.handler.ParseTheSDP(text, near.remote);
            EXPECT_LT(scope.bytes(), 4096U) << text;
        }
        ExpectAsFresh(near.handler);
    }
}

TEST(Hostile, C55_DirectionsAHundredThousandTimes) {
    EXPECT_TEXT(Changes(With("a=sendonly",
                             "a=inactive\r\n" + Repeated("a=sendrecv\r\na=sendonly\r\n", 50000) + "a=x")),
                "");
}

TEST(Hostile, C56_MillionBlanks) {
    const std::string blanks(kMillion, ' ');
    EXPECT_TEXT(Changes(With("a=sendrecv", "a=" + blanks + "\r\na=sendrecv")), "");
    EXPECT_TEXT(Changes(With("a=sendrecv", blanks + "a=sendrecv" + blanks)), "");
    EXPECT_TEXT(Changes(With("a=rtpmap:9 G722/8000", blanks + "a=rtpmap:9" + blanks + "G722/8000" + blanks)),
                "");
    EXPECT_TEXT(Changes(With("c=IN IP4 192.0.2.2", "c=IN" + blanks + "IP4" + blanks + "192.0.2.2")), "");
    EXPECT_TEXT(Changes(With("a=crypto:2 AES", "a=crypto:2" + blanks + "AES")), "");
    EXPECT_TEXT(Changes(With("UDP/BFCP *", "UDP/BFCP" + blanks + "*")),
                "-3 line m=application 20390 UDP/BFCP *\n"
                "+3 line m=application 20390 UDP/BFCP            ...(1000029 bytes)\n");
    EXPECT_TEXT(Changes(With("a=sendrecv", "m=" + blanks + "\r\nc=" + blanks + "\r\na=sendrecv")), "");
}

TEST(Hostile, C56_MillionSemicolons) {
    const std::string semicolons(kMillion, ';');
    EXPECT_TEXT(Changes(With("a=sendrecv", "a=" + semicolons + "\r\na=sendrecv")), "");
    Endpoint near;
    near.handler.ParseTheSDP(With("a=fmtp:101 0-15", "a=fmtp:101 " + semicolons), near.remote);
    EXPECT_EQ(near.handler.vecRemoteMediaSession[0]->vecRtpMap[2]->vecFmtpParms,
              std::vector<std::string>(kMillion + 1));
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C56_MillionEqualSigns) {
    const std::string equals(kMillion, '=');
    EXPECT_TEXT(Changes(With("a=sendrecv", "a=" + equals + "\r\na=sendrecv")), "");
    EXPECT_TEXT(Changes(With("a=sendrecv", equals + "\r\na=sendrecv")), "");
    EXPECT_TEXT(Changes(With("a=sendrecv", "a=x" + Repeated("a=", kMillion) + "\r\na=sendrecv")), "");
    EXPECT_TEXT(Changes(With("a=sendrecv", Repeated("c=", kMillion) + "\r\na=sendrecv")), "");
    EXPECT_TEXT(
        Changes(With("a=fmtp:101 0-15", "a=fmtp:101 " + equals)),
        "-0 format 101 telephone-event/8000 [0-15]\n"
        "+0 format 101 telephone-event/8000 [========================================...(1000000 bytes)]\n");
    EXPECT_TEXT(Changes(With("max-fs=3601", "max-fs=3601" + equals)),
                "-1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                "[packetization-mode=1]\n"
                "+1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] "
                "[max-fs=3601=============================...(1000011 bytes)] [packetization-mode=1]\n");
}

TEST(Hostile, C56_MillionColonsAndCarriageReturns) {
    EXPECT_TEXT(Changes(With("a=sendrecv", "a=" + std::string(kMillion, ':') + "\r\na=sendrecv")), "");
    EXPECT_TEXT(Changes(With("a=crypto:1 ", "a=crypto:" + std::string(kMillion, ':') + " ")), "");
    EXPECT_TEXT(Changes(With("a=sendrecv\r\n", "a=sendrecv" + std::string(kMillion, '\r') + "\r\n")), "");
    EXPECT_TEXT(Changes(With("a=sendrecv\r\n", "a=sendrecv" + std::string(kMillion, '\n') + "\r\n")), "");
}

/// Bytes that printf, a shell, JSON, a terminal or a bidirectional display would interpret.
const std::string kIll = "%s%n%1000000d\"'{}\\\x1b[2J\x07\xe2\x80\xae\xe2\x81\xa6";

TEST(Hostile, C57_DirectivesAndEscapesInATraceAreText) {
    std::string trace;
    const CommonMediaTraceSink sink = {[](void* context, const char*, const char*, int, const char* text) {
                                           *static_cast<std::string*>(context) += text;
                                       },
                                       &trace};
    Endpoint near;
    SetCommonMediaTraceSink(&sink);
    near.handler.ParseTheSDP("m=audio 5004 RTP/AVP 0" + kIll + "\r\n" + "c=IN IP4 " + kIll + "\r\n" +
                                 "a=rtpmap:0" + kIll + " " + kIll + "\r\n" + "a=fmtp:0" + kIll + " " + kIll +
                                 ";" + kIll + "\r\n" + "b=TIAS:" + kIll + "\r\n" + "a=floorctrl:" + kIll +
                                 "\r\n",
                             near.remote);
    SetCommonMediaTraceSink(nullptr);
    EXPECT_TEXT(trace, "Dump Media Session: \n"
                       "eContent: 100\n"
                       "iPort: 5004\n"
                       "strIPAddr: " +
                           kIll +
                           "\n"
                           "\tRtpMap[0]: Payload-0" +
                           kIll + " EncodingName-" + kIll +
                           "\n"
                           "\t\tFmtp Parm-" +
                           kIll +
                           "\n"
                           "\t\tFmtp Parm-" +
                           kIll +
                           "\n"
                           "fRecv: true\n"
                           "fSend: true\n"
                           "strVideoLevel: \n"
                           "strMaxBandwidth: " +
                           kIll +
                           "\n"
                           "iBfcpConfid: 0\n"
                           "iBfcpUserid: 0\n"
                           "strFloorctrl: " +
                           kIll + "\n\n\n");
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C57_DirectivesAndEscapesInDumpsAndAnswersAreText) {
    Endpoint near;
    near.remote.strAudioIPAddr = kIll;
    near.remote.m_VideoMain.strVideoIPAddr = kIll;
    near.remote.m_VideoMain.strVideoLevel = kIll;
    const std::string remote = near.remote.ToDiag();
    EXPECT_EQ(Count(remote, "strAudioIPAddr: " + kIll + "\n"), 1U);
    EXPECT_EQ(Count(remote, "strVideoIPAddr: " + kIll + "\n"), 1U);
    EXPECT_EQ(Count(remote, "strVideoLevel: " + kIll + "\n"), 1U);
    near.handler.MyLocalSDP.strOExtension = kIll;
    near.handler.MyLocalSDP.strMyIPAddr = kIll;
    near.handler.MyLocalSDP.strDefaultIPAddr = kIll;
    const std::string local = near.handler.MyLocalSDP.ToDiag();
    EXPECT_EQ(Count(local, ": " + kIll + "\n"), 3U);
    const std::string offer = near.handler.GetLocalSDP();
    EXPECT_TEXT(LineOf(offer, "o="), "o=Quillmarshorizon-" + kIll + " 1000 2 IN IP4 " + kIll);
    EXPECT_TEXT(LineOf(offer, "c="), "c=IN IP4 " + kIll);
    near.handler.InitializeLocalSDP(ConferenceLocal());
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C57_DirectivesAndEscapesInEveryLine) {
    std::string text;
    for (const std::string& line : Lines(kConference)) {
        text += line.substr(0, line.size() - 2) + kIll + "\r\n";
    }
    Outcome(text);
    Outcome(text + text);
}

} // namespace
