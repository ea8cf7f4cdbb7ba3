// Whole answers, and which of them count as nothing negotiated.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace tool {

namespace {

class Answer : public ToolTest {};

constexpr const char* kNoPresentation = R"({"floor_control": {"enabled": false}})";
constexpr const char* kAudioOnly =
    R"({"video": {"main": {"codecs": []}}, "floor_control": {"enabled": false}, "served_sections": 2})";

TEST_F(Answer, AudioAndVideo) {
    Write("me.json", kNoPresentation);
    Write("offer.sdp", "v=0\r\n"
                       "o=- 1 1 IN IP4 198.51.100.7\r\n"
                       "s=-\r\n"
                       "c=IN IP4 198.51.100.7\r\n"
                       "t=0 0\r\n"
                       "m=audio 5004 RTP/AVP 8 0 18\r\n"
                       "a=rtpmap:8 PCMA/8000\r\n"
                       "m=video 5006 RTP/AVP 97\r\n"
                       "a=rtpmap:97 H264/90000\r\n"
                       "a=fmtp:97 profile-level-id=42801f;packetization-mode=1\r\n"
                       "a=sendonly\r\n");
    const Result run = Cmsdp({"answer", "--local", "me.json", "offer.sdp"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out),
                "v=0\r\n"
                "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                "s=-\r\n"
                "c=IN IP4 192.0.2.1\r\n"
                "b=AS:1064\r\n"
                "t=0 0\r\n"
                "m=audio 16384 RTP/AVP 0 101\r\n"
                "b=TIAS:64000\r\n"
                "a=rtpmap:0 PCMU/8000\r\n"
                "a=rtpmap:101 telephone-event/8000\r\n"
                "a=fmtp:101 0-15\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                "m=video 16386 RTP/AVP 97 126\r\n"
                "b=TIAS:1000000\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=recvonly\r\n"
                "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
    EXPECT_TEXT(run.err, "");
}

// An answer is due, and it says that nothing comes up: only telephone events and a declined port.
TEST_F(Answer, NoCodecInCommonIsStatusOne) {
    Write("me.json", kAudioOnly);
    const Result run = CmsdpReads("v=0\r\nm=audio 5004 RTP/AVP 8\r\n", {"answer", "--local", "me.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "b=AS:1064\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/AVP 101\r\n"
                                 "b=TIAS:64000\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(
        run.err,
        "cmsdp: nothing was negotiated: audio: no codec in common: the far end lists PCMA (8); this side "
        "takes "
        "G722 (9), G7221/16000 with bitrate=32000 in front, PCMU (0), G729 (18); main video: the far end has "
        "no video section; presentation: the far end has no video section marked a=content:slides\n");
}

TEST_F(Answer, PortZeroEverywhereIsStatusOne) {
    EXPECT_EQ(CmsdpReads("v=0\r\nm=audio 0 RTP/AVP 0\r\nm=video 0 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n",
                         {"answer"})
                  .status,
              1);
}

TEST_F(Answer, Vp8OnlyIsStatusOne) {
    EXPECT_EQ(CmsdpReads("v=0\r\nm=video 5006 RTP/AVP 96\r\na=rtpmap:96 VP8/90000\r\n", {"answer"}).status,
              1);
}

TEST_F(Answer, OnHoldIsStatusZero) {
    EXPECT_EQ(CmsdpReads("v=0\r\nm=audio 5004 RTP/AVP 0\r\na=inactive\r\n", {"answer"}).status, 0);
}

constexpr const char* kPresentation =
    "v=0\r\nm=video 5008 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\na=content:slides\r\n";

TEST_F(Answer, PresentationAloneIsStatusZero) {
    Write("on.json", R"({"audio": {"priority": []}, "video": {"main": {"codecs": []}},)"
                     R"( "floor_control": {"enabled": true}})");
    EXPECT_EQ(CmsdpReads(kPresentation, {"answer", "--local", "on.json"}).status, 0);
}

// The built-in set answers with floor control only what has it: otherwise its line would have no port (B15).
TEST_F(Answer, AutomaticFloorControlFollowsTheOffer) {
    Write("me.json", R"({"audio": {"priority": []}, "video": {"main": {"codecs": []}}})");
    const Result without = CmsdpReads(kPresentation, {"answer", "--local", "me.json"});
    EXPECT_EQ(without.status, 1);
    EXPECT_EQ(without.out.find("m=application"), std::string::npos);
    const Result with = CmsdpReads(kPresentation + std::string("m=application 5010 UDP/BFCP *\r\n"),
                                   {"answer", "--local", "me.json"});
    EXPECT_EQ(with.status, 0);
    EXPECT_NE(with.out.find("m=application 16390 UDP/BFCP *\r\n"), std::string::npos);
}

TEST_F(Answer, AsJson) {
    const Result run = CmsdpReads("v=0\nm=audio 5004 RTP/AVP 0\n", {"answer", "--json"});
    EXPECT_EQ(run.status, 0);
    const auto answer = nlohmann::json::parse(run.out);
    EXPECT_EQ(answer["schema"], "cmsdp.answer/1");
    EXPECT_EQ(answer["negotiated"], true);
    EXPECT_EQ(answer["notes"].size(), 1U);
    EXPECT_EQ(answer["audio"]["codec"], "G711U");
    EXPECT_TEXT(MaskId(answer["answer"]),
                MaskId(CmsdpReads("v=0\r\nm=audio 5004 RTP/AVP 0\r\n", {"answer"}).out));
    const Result none = CmsdpReads("v=0\r\n", {"answer", "--json"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(nlohmann::json::parse(none.out)["answer"], nullptr);
}

TEST_F(Answer, WithoutAMediaLineThereIsNone) {
    const Result run = CmsdpReads("v=0\r\ns=-\r\nm=audio 5004 RTP/AVP\r\n", {"answer"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: line 3, P05: an m= line of fewer than four words opens no section; the lines after "
                "it change the session\n"
                "cmsdp: nothing was negotiated: the offer has no media line with a port, a transport and "
                "a format, so there is nothing to answer\n");
}

// --- keys -------------------------------------------------------------------------------------------------

constexpr const char* kSecure = R"({
    "srtp": true, "max_bandwidth_bit_per_s": 0,
    "audio": {"codecs": ["G711U"], "key": "T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5"},
    "video": {"main": {"codecs": []}},
    "floor_control": {"enabled": false}
})";

constexpr const char* kSecureOffer = "v=0\r\n"
                                     "c=IN IP4 198.51.100.7\r\n"
                                     "m=audio 5004 RTP/SAVP 0\r\n"
                                     "a=crypto:4 AES_CM_128_HMAC_SHA1_32 "
                                     "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n";

TEST_F(Answer, KeysAreHidden) {
    Write("me.json", kSecure);
    const Result run = CmsdpReads(kSecureOffer, {"answer", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/SAVP 0 101\r\n"
                                 "a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:***\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(Answer, KeysAreShownWhenAsked) {
    Write("me.json", kSecure);
    const Result run = CmsdpReads(kSecureOffer, {"answer", "--local", "me.json", "--show-secrets"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("\r\na=crypto:4 AES_CM_128_HMAC_SHA1_32 "
                           "inline:T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5\r\n"),
              std::string::npos);
    EXPECT_TEXT(run.err, "");
}

// The rejected copy of a section repeats the far end's words, and a lost line end put a key among them.
TEST_F(Answer, AKeyInARejectedSectionIsHidden) {
    Write("me.json", kAudioOnly);
    const Result run = CmsdpReads("v=0\r\n"
                                  "c=IN IP4 198.51.100.7\r\n"
                                  "m=audio 5004 RTP/AVP 0\r\n"
                                  "m=video 0 RTP/AVP 97\r\n"
                                  "m=video 5008 RTP/SAVP 97\na=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                                  "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n",
                                  {"answer", "--exact", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "b=AS:1064\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/AVP 0 101\r\n"
                                 "b=TIAS:64000\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                                 "m=video 0 RTP/SAVP 97 a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:***\r\n");
    EXPECT_TEXT(run.err,
                "cmsdp: line 5, P03: joined to the line after it by a LF alone; both are read as one, "
                "and what the keyword in front does not read is lost\n"
                "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

// The same without the word "inline:", and with an address in which a key stands.
TEST_F(Answer, AKeyAmongTheWordsOfARejectedSectionIsHidden) {
    Write("me.json", kAudioOnly);
    const Result run = CmsdpReads("v=0\r\n"
                                  "c=IN IP4 198.51.100.7\r\n"
                                  "m=audio 5004 RTP/AVP 0\r\n"
                                  "m=video 0 RTP/AVP 97\r\n"
                                  "m=video 5008 WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz 97\r\n"
                                  "c=IN IP4 x.WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubc==\r\n",
                                  {"answer", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "b=AS:1064\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/AVP 0 101\r\n"
                                 "b=TIAS:64000\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                                 "m=video 0 *** 97\r\n"
                                 "c=IN IP4 x.***\r\n");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

// Every key that a captured far end sent, looked for in everything that is shown without --show-secrets.
TEST_F(Answer, NoKeyOfAnyCaptureIsEverShown) {
    Write("srtp.json", R"({"srtp": true})");
    std::size_t keys = 0;
    for (const std::string& name : Captures()) {
        const std::string text = Capture(name);
        if (text.find("inline:") == std::string::npos) {
            continue;
        }
        std::string joined = text;
        joined.erase(std::remove(joined.begin(), joined.end(), '\r'), joined.end());
        std::string shown;
        for (const std::string& input : {text, joined + "\r\n"}) {
            for (const std::vector<std::string>& arguments :
                 {std::vector<std::string>{"answer", "--exact", "--local", "srtp.json"},
                  {"inspect", "--exact", "--local", "srtp.json"},
                  {"inspect", "--exact", "--json", "--local", "srtp.json"}}) {
                const Result run = CmsdpReads(input, arguments);
                shown += run.out + run.err;
            }
        }
        for (std::size_t at = text.find("inline:"); at != std::string::npos;
             at = text.find("inline:", at + 1)) {
            const std::string key = text.substr(at + 7, 30);
            EXPECT_EQ(shown.find(key), std::string::npos) << name;
            ++keys;
        }
    }
    EXPECT_GE(keys, 10U);
}

// What each far end's description comes to, read off the file by hand.
TEST_F(Answer, CapturesAndTheirStatus) {
    const std::vector<std::pair<std::string, int>> expected = {
        {"rtpengine-conf-plain-offer.sdp", 0},        // audio, two videos with H.264, BFCP
        {"chromium-av-default-offer.sdp", 0},         // G.722 and PCMU among others, H.264
        {"vlc-pcmu-offer.sdp", 0},                    // payload 0
        {"ffmpeg-srtp32-pcmu-offer.sdp", 0},          // payload 0 with a key
        {"ffmpeg-pcma-offer.sdp", 1},                 // payload 8 alone
        {"ffmpeg-h263p-offer.sdp", 1},                // H.263 alone
        {"vlc-mp2t-offer.sdp", 1},                    // MP2T alone
        {"jami-av-to-audio-video-avp-answer.sdp", 1}, // port 0 twice
        {"jami-av-to-audio-g711-avp-answer.sdp", 1},  // port 0
    };
    for (const auto& [name, status] : expected) {
        EXPECT_EQ(CmsdpReads(Capture(name), {"answer"}).status, status) << name;
    }
}

} // namespace

} // namespace tool
