// What the media engine starts with, and what changes between two descriptions.
#include "Texts.h"

#include <gtest/gtest.h>

namespace {

using support::Side;

TEST(ExplainStart, EachParameterIsOnePhrase) {
    const ExplainInput input = Side("v=0\r\n"
                                    "c=IN IP4 192.0.2.2\r\n"
                                    "b=AS:512\r\n"
                                    "m=audio 5004 RTP/AVP 9 101\r\n"
                                    "a=rtpmap:101 telephone-event/8000\r\n"
                                    "a=ice-ufrag:abcd\r\n"
                                    "a=ice-pwd:0123456789012345678901\r\n"
                                    "m=video 5006 RTP/AVP 97\r\n"
                                    "a=rtpmap:97 H264/90000\r\n"
                                    "a=fmtp:97 profile-level-id=42801f;packetization-mode=1\r\n"
                                    "a=recvonly\r\n"
                                    "m=application 5010 UDP/BFCP *\r\n"
                                    "a=floorctrl:s-only\r\n"
                                    "a=confid:15\r\n"
                                    "a=userid:16\r\n");
    const std::vector<std::string> expected = {
        "audio.codec: audio has G.722 as payload 9",
        "audio.send: audio is sent",
        "audio.receive: audio is received",
        "audio.send: audio is sent to the address 192.0.2.2 port 5004",
        "main.picture: main video has H.264 as payload 97",
        "main.send: main video is sent",
        "main.receive: main video is not received",
        "main.send: main video is sent to the address 192.0.2.2 port 5006",
        "main.picture: main video is sent with packetization mode 1, level 3.1",
        "slides: there is no section for the slides stream, all video counts as main video",
        "floor: floor control goes to port 5010",
        "floor: the conference is 15 and the user 16",
        "floor: the far end is the floor control server",
        "dtmf: tones are sent as payload 101",
        "bandwidth: the far end's limit is 512000 bit/s",
        "ice: audio section 1 has a user fragment, a password and 0 candidates for ICE",
    };
    EXPECT_EQ(ExplainStart(input), expected);
}

TEST(ExplainStart, AStreamThatDoesNotStartIsOnePhrase) {
    const std::vector<std::string> expected = {
        "audio.codec: audio has no codec",
        "main.picture: there is no section for main video",
        "slides: there is no section for the slides stream",
        "floor: there is no floor control section",
        "dtmf: tones have no payload and are not sent",
    };
    EXPECT_EQ(ExplainStart(Side("v=0\r\nc=IN IP4 192.0.2.2\r\nm=audio 5004 RTP/AVP 8\r\n")), expected);
}

TEST(ExplainStart, EncryptionIsSaidWhereThisSideCanEncrypt) {
    ExplainInput input =
        Side("v=0\r\n"
             "c=IN IP4 192.0.2.2\r\n"
             "m=audio 5004 RTP/SAVP 0\r\n"
             "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
             "m=video 5006 RTP/AVP 97\r\n"
             "a=rtpmap:97 H264/90000\r\n");
    input.srtp = true;
    const std::vector<std::string> expected = {
        "audio.codec: audio has G.711 mu-law as payload 0",
        "audio.send: audio is sent",
        "audio.receive: audio is received",
        "audio.send: audio is sent to the address 192.0.2.2 port 5004",
        "main.picture: main video has H.264 as payload 97",
        "main.send: main video is sent",
        "main.receive: main video is received",
        "main.send: main video is sent to the address 192.0.2.2 port 5006",
        "main.picture: main video is sent with packetization mode 0, no level",
        "slides: there is no section for the slides stream, all video counts as main video",
        "floor: there is no floor control section",
        "dtmf: tones have no payload and are not sent",
        "encryption.audio: audio has the suite AES_CM_128_HMAC_SHA1_32",
        "encryption.audio: audio is decrypted with the key of tag 1",
        "encryption.main: no suite is read for main video, so it is not encrypted",
    };
    EXPECT_EQ(ExplainStart(input), expected);
}

constexpr const char* kCall = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=audio 5004 RTP/AVP 0\r\n";

TEST(ExplainDifference, ALineWithoutEffectIsNoDifference) {
    const std::string newer = std::string(kCall) + "a=ptime:20\r\na=sendrecv\r\n";
    EXPECT_EQ(ExplainDifference(Side(""), kCall, newer), std::vector<std::string>());
}

TEST(ExplainDifference, ANewSectionWithoutIceIsNoIceDifference) {
    const std::string newer = std::string(kCall) + "m=video 5006 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n";
    const std::vector<std::string> expected = {
        "main.picture: main video has H.264 as payload 97; before, there is no section for main video",
        "main.send: main video is sent; before, main video is not sent",
        "main.receive: main video is received; before, main video is not received",
        "main.send: main video is sent to the address 192.0.2.2 port 5006; "
        "before, there is no section for main video",
        "main.picture: main video is sent with packetization mode 0, no level; "
        "before, main video has no picture format",
    };
    EXPECT_EQ(ExplainDifference(Side(""), kCall, newer), expected);
}

// The older description has main video without a known codec, the newer one has no section for it: its codec
// is no difference, and its address is one.
TEST(ExplainDifference, AStreamThatStartsInNeitherDescriptionIsNone) {
    const std::vector<std::string> expected = {
        "main.send: there is no section for main video; before, main video has port 0"};
    EXPECT_EQ(ExplainDifference(Side(""), std::string(kCall) + "m=video 0 RTP/AVP 31\r\n", kCall), expected);
}

TEST(ExplainDifference, HoldAndAnotherAddressAreSaid) {
    const std::string newer = "v=0\r\nc=IN IP4 192.0.2.9\r\nm=audio 5004 RTP/AVP 0\r\na=sendonly\r\n";
    const std::vector<std::string> expected = {
        "audio.send: audio is not sent; before, audio is sent",
        "audio.send: audio is sent to the address 192.0.2.9 port 5004; "
        "before, audio is sent to the address 192.0.2.2 port 5004",
    };
    EXPECT_EQ(ExplainDifference(Side(""), kCall, newer), expected);
}

TEST(ExplainDifference, ANewKeyIsSaidAndNotShown) {
    const std::string line = "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:";
    const std::string older = kCall + line + "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n";
    const std::string newer = kCall + line + "bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n";
    const std::vector<std::string> expected = {
        "encryption.audio: audio is decrypted with the key of tag 1, which is another one than before"};
    EXPECT_EQ(ExplainDifference(Side(""), older, newer), expected);
}

} // namespace
