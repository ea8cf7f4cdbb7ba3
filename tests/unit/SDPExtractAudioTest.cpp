// SDPExtract, the audio section: which codec is chosen, telephone events, direction, address and keys.
#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"

#include <string>
#include <vector>

using namespace support;

namespace {

// What Describe gives for everything but the audio.
const std::string kRest = std::string(kFreshRemote).substr(std::string(kFreshRemote).find("main "));

const Format kG7221 = {"104", "G7221/16000", {"bitrate=32000"}};

// The line that Describe gives for the audio of a section with these formats at port 5000.
std::string Choose(PayloadType_t local, const std::vector<Format>& formats) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = local;
    MediaSession& section = AddSection(h, MEDIA_AUDIO, 5000);
    AddFormats(section, formats);
    RemoteSDP remote;
    h.GetRTPData(remote);
    const std::string allText = Describe(remote);
    const std::string::size_type end = allText.find('\n');
    EXPECT_TEXT(allText.substr(end + 1), kRest);
    return allText.substr(0, end);
}

TEST(SDPExtractAudio, StaticPayloadsAreKnownByTheirNumber) {
    EXPECT_EQ(Choose(PAYLOAD_G722, {{"9", "", {}}}),
              "audio codec=64 payload=9 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(PAYLOAD_G711U, {{"0", "", {}}}),
              "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(PAYLOAD_G729, {{"18", "", {}}}),
              "audio codec=8 payload=18 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
}

TEST(SDPExtractAudio, G7221IsKnownByItsMapAndBitRate) {
    EXPECT_EQ(Choose(PAYLOAD_G7221, {kG7221}),
              "audio codec=16 payload=104 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(PAYLOAD_G7221, {{"104", "G7221/16000", {"bitrate=24000"}}}),
              "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1");
    EXPECT_EQ(Choose(PAYLOAD_G7221, {{"115", "G7221/16000", {"bitrate=32000"}}}),
              "audio codec=16 payload=115 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
}

TEST(SDPExtractAudio, EachCodecNeedsItsOwnLocalBit) {
    const std::string noneText = "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1";
    EXPECT_EQ(Choose(PayloadType_t(kAllAudio & ~PAYLOAD_G722), {{"9", "G722/8000", {}}}), noneText);
    EXPECT_EQ(Choose(PayloadType_t(kAllAudio & ~PAYLOAD_G7221), {kG7221}), noneText);
    EXPECT_EQ(Choose(PayloadType_t(kAllAudio & ~PAYLOAD_G711U), {{"0", "PCMU/8000", {}}}), noneText);
    EXPECT_EQ(Choose(PayloadType_t(kAllAudio & ~PAYLOAD_G729), {{"18", "G729/8000", {}}}), noneText);
    EXPECT_EQ(Choose(kNoCodec, {{"9", "", {}}, kG7221, {"0", "", {}}, {"18", "", {}}}), noneText);
}

TEST(SDPExtractAudio, StaticNumbersAreComparedWhole) {
    const std::string noneText = "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1";
    for (const char* payload : {"09", "90", "19", "00", "018", "180", "8", "1", "", "9.", "-0", "*"}) {
        EXPECT_EQ(Choose(kAllAudio, {{payload, "", {}}}), noneText) << payload;
    }
}

TEST(SDPExtractAudio, FarEndOrderDecidesAmongCommonCodecs) {
    EXPECT_EQ(
        Choose(PayloadType_t(PAYLOAD_G711U | PAYLOAD_G722), {{"18", "", {}}, {"0", "", {}}, {"9", "", {}}}),
        "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(kAllAudio, {{"18", "", {}}, {"0", "", {}}, {"9", "", {}}}),
              "audio codec=8 payload=18 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(kAllAudio, {{"8", "PCMA/8000", {}}, kG7221, {"9", "", {}}}),
              "audio codec=16 payload=104 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(kAllAudio, {{"9", "", {}}, kG7221, {"0", "", {}}, {"18", "", {}}}),
              "audio codec=64 payload=9 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
}

TEST(SDPExtractAudio, LocalPriorityIsNotConsulted) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = kAllAudio;
    h.MyLocalSDP.listAudioCodecPriority = {PAYLOAD_G722};
    MediaSession& section = AddSection(h, MEDIA_AUDIO, 5000);
    AddFormat(section, "18");
    AddFormat(section, "9");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_EQ(remote.eAudioCodec, PAYLOAD_G729);
    h.MyLocalSDP.listAudioCodecPriority.clear();
    h.GetRTPData(remote);
    EXPECT_EQ(remote.eAudioCodec, PAYLOAD_G729);
}

TEST(SDPExtractAudio, OneEntryThatPassesSeveralTestsFollowsTheirOrder) {
    // G.722 before G.722.1 before G.711 before G.729, whatever name the far end gave to a static number.
    const std::vector<std::string> rate = {"bitrate=32000"};
    EXPECT_EQ(Choose(kAllAudio, {{"9", "G7221/16000", rate}}),
              "audio codec=64 payload=9 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(kAllAudio, {{"0", "G7221/16000", rate}}),
              "audio codec=16 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(kAllAudio, {{"18", "G7221/16000", rate}}),
              "audio codec=16 payload=18 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(PayloadType_t(kAllAudio & ~PAYLOAD_G722), {{"9", "G7221/16000", rate}}),
              "audio codec=16 payload=9 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(PAYLOAD_G711U, {{"0", "G7221/16000", rate}}),
              "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
}

TEST(SDPExtractAudio, PayloadTextIsConvertedByItsLeadingDigits) {
    EXPECT_EQ(Choose(kAllAudio, {{"104/2", "G7221/16000", {"bitrate=32000"}}}),
              "audio codec=16 payload=104 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Choose(kAllAudio, {{"*", "G7221/16000", {"bitrate=32000"}}}),
              "audio codec=16 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
}

// Telephone events.

TEST(SDPExtractAudio, TelephoneEventsAreKnownByTheirExactName) {
    EXPECT_EQ(Choose(kAllAudio, {{"0", "", {}}, {"101", "telephone-event/8000", {"0-15"}}}),
              "audio codec=1 payload=0 dtmf=101 addr= port=5000 send=1 recv=1 valid=1");
    for (const char* name :
         {"telephone-event/16000", "telephone-event", "Telephone-Event/8000", "telephone-event/8000/1",
          "telephone-event/80000", "xtelephone-event/8000", ""}) {
        EXPECT_EQ(Choose(kAllAudio, {{"0", "", {}}, {"101", name, {}}}),
                  "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1")
            << name;
    }
}

TEST(SDPExtractAudio, LastTelephoneEventWins) {
    EXPECT_EQ(Choose(kAllAudio, {{"96", "telephone-event/8000", {}},
                                 {"0", "", {}},
                                 {"101", "telephone-event/8000", {}},
                                 {"97", "telephone-event/16000", {}}}),
              "audio codec=1 payload=0 dtmf=101 addr= port=5000 send=1 recv=1 valid=1");
}

TEST(SDPExtractAudio, TelephoneEventsAreFoundWithoutACodec) {
    EXPECT_EQ(Choose(kAllAudio, {{"8", "PCMA/8000", {}}, {"101", "telephone-event/8000", {}}}),
              "audio codec=256 payload=0 dtmf=101 addr= port=5000 send=0 recv=0 valid=1");
}

TEST(SDPExtractAudio, OneEntryCanBeCodecAndTelephoneEvent) {
    EXPECT_EQ(Choose(kAllAudio, {{"9", "telephone-event/8000", {}}}),
              "audio codec=64 payload=9 dtmf=9 addr= port=5000 send=1 recv=1 valid=1");
}

TEST(SDPExtractAudio, ASectionWithoutFormatsIsValidWithoutACodec) {
    EXPECT_EQ(Choose(kAllAudio, {}),
              "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1");
}

// Port and direction.

std::string Direction(std::int32_t port, bool fSend, bool fRecv, const char* payload) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = PAYLOAD_G711U;
    MediaSession& section = AddSection(h, MEDIA_AUDIO, port);
    section.fSend = fSend;
    section.fRecv = fRecv;
    AddFormat(section, payload);
    RemoteSDP remote;
    h.GetRTPData(remote);
    const std::string allText = Describe(remote);
    return allText.substr(0, allText.find('\n'));
}

TEST(SDPExtractAudio, DirectionFlagsAreThoseOfTheSection) {
    EXPECT_EQ(Direction(5000, true, true, "0"),
              "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
    EXPECT_EQ(Direction(5000, true, false, "0"),
              "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=0 valid=1");
    EXPECT_EQ(Direction(5000, false, true, "0"),
              "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=0 recv=1 valid=1");
    EXPECT_EQ(Direction(5000, false, false, "0"),
              "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1");
}

TEST(SDPExtractAudio, PortZeroClearsBothDirections) {
    EXPECT_EQ(Direction(0, true, true, "0"),
              "audio codec=1 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=1");
}

TEST(SDPExtractAudio, PortOneAndNegativePortsKeepTheDirections) {
    EXPECT_EQ(Direction(1, true, true, "0"),
              "audio codec=1 payload=0 dtmf=0 addr= port=1 send=1 recv=1 valid=1");
    EXPECT_EQ(Direction(-1, true, true, "0"),
              "audio codec=1 payload=0 dtmf=0 addr= port=-1 send=1 recv=1 valid=1");
}

TEST(SDPExtractAudio, WithoutACodecBothDirectionsAreClear) {
    EXPECT_EQ(Direction(5000, true, true, "8"),
              "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1");
}

// Keys, and which section.

TEST(SDPExtractAudio, KeysGoToTheAudioRow) {
    SDPHandler h;
    MediaSession& section = AddSection(h, MEDIA_AUDIO, 5000);
    Secure(section, "audio");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote),
                "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1\n"
                "main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
}

TEST(SDPExtractAudio, TheSuiteIsTheSectionsOwn) {
    for (const CRYPTO_PROFILE suite :
         {kSuiteNone, kSuite32, kSuite80, kSuite256, kSuiteGcm128, kSuiteGcm256}) {
        SDPHandler h;
        AddSection(h, MEDIA_AUDIO, 5000).cryptoAlgo = suite;
        RemoteSDP remote;
        h.GetRTPData(remote);
        EXPECT_EQ(remote.cryptoAlgo[baseSDP::SRTP_AUDIO], suite);
        EXPECT_EQ(remote.cryptoAlgo[baseSDP::SRTP_VIDEO], kSuiteNone);
        EXPECT_EQ(remote.cryptoAlgo[baseSDP::SRTP_VIDEO_PRESO], kSuiteNone);
    }
}

TEST(SDPExtractAudio, OnlyTheFirstAudioSectionIsUsed) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = kAllAudio;
    MediaSession& first = AddSection(h, MEDIA_AUDIO, 5000);
    first.strIPAddr = "192.0.2.10";
    AddFormat(first, "8");
    MediaSession& second = AddSection(h, MEDIA_AUDIO, 5002);
    second.strIPAddr = "192.0.2.11";
    second.strMaxBandwidth = "64000";
    AddFormat(second, "0");
    AddFormat(second, "101", "telephone-event/8000");
    Secure(second, "other");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote),
                "audio codec=256 payload=0 dtmf=0 addr=192.0.2.10 port=5000 send=0 recv=0 valid=1\n" + kRest);
}

TEST(SDPExtractAudio, AudioIsFoundAfterOtherSections) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = kAllAudio;
    AddSection(h, MEDIA_UNKNOWN, 4000);
    AddSection(h, MEDIA_APPLICATION, 4002);
    AddFormat(AddSection(h, MEDIA_AUDIO, 5000), "18");
    RemoteSDP remote;
    h.GetRTPData(remote);
    EXPECT_TEXT(Describe(remote),
                "audio codec=8 payload=18 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" + kRest);
}

// The G.722.1 test by itself.

bool Negotiated(PayloadType_t local, const std::string& encoding, const std::vector<std::string>& parms) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = local;
    RtpMap format;
    format.strPayload = "104";
    format.strEncodingName = encoding;
    format.vecFmtpParms = parms;
    return h.IsG7221Negotiated(&format);
}

TEST(SDPExtractAudio, G7221NeedsTheLocalBit) {
    EXPECT_TRUE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"bitrate=32000"}));
    EXPECT_TRUE(Negotiated(kAllAudio, "G7221/16000", {"bitrate=32000"}));
    EXPECT_FALSE(Negotiated(PayloadType_t(~PAYLOAD_G7221), "G7221/16000", {"bitrate=32000"}));
}

TEST(SDPExtractAudio, G7221NeedsItsExactName) {
    for (const char* name :
         {"G7221/32000", "g7221/16000", "G7221/16000/1", "xG7221/16000", "G7221", "G722/8000", ""}) {
        EXPECT_FALSE(Negotiated(PAYLOAD_G7221, name, {"bitrate=32000"})) << name;
    }
}

TEST(SDPExtractAudio, G7221BitRateStandsAtTheFrontOfAParameter) {
    EXPECT_TRUE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"x=1", "bitrate=32000"}));
    EXPECT_TRUE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"bitrate=24000", "bitrate=32000"}));
    EXPECT_TRUE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"bitrate=32000 and more"}));
    EXPECT_TRUE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"bitrate=320000"}));
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {" bitrate=32000"}));
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"x,bitrate=32000"}));
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"Bitrate=32000"}));
}

TEST(SDPExtractAudio, OtherBitRatesAreNotG7221) {
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {}));
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {""}));
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"bitrate=24000"}));
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"bitrate=48000"}));
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"bitrate=3200"}));
    EXPECT_FALSE(Negotiated(PAYLOAD_G7221, "G7221/16000", {"bitrate="}));
}

} // namespace
