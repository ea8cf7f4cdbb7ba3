// SDPTables: every row of the shared tables, read and written through the handler, and the order of rows
// where it has an effect on the wire.
#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"

#include <SDPTables.h>

#include <iterator>
#include <string>

using namespace support;

namespace {

// Audio codecs.

struct Codec {
    PayloadType payload;
    const char* token;
    const char* lines;
    const char* remote;
};

const Codec kCodecs[] = {
    {PAYLOAD_G722, "9", "a=rtpmap:9 G722/8000\r\n", "m=audio 5000 RTP/AVP 9\r\n"},
    {PAYLOAD_G7221, "104", "a=rtpmap:104 G7221/16000\r\na=fmtp:104 bitrate=32000\r\n",
     "m=audio 5000 RTP/AVP 115\r\na=rtpmap:115 G7221/16000\r\na=fmtp:115 bitrate=32000\r\n"},
    {PAYLOAD_G711U, "0", "a=rtpmap:0 PCMU/8000\r\n", "m=audio 5000 RTP/AVP 0\r\n"},
    {PAYLOAD_G729, "18", "a=rtpmap:18 G729/8000\r\na=fmtp:18 annexb=no\r\n", "m=audio 5000 RTP/AVP 18\r\n"},
};

TEST(SDPTables, EveryAudioCodecIsReadAnsweredAndWritten) {
    ASSERT_EQ(std::size(sdp::kAudioCodecs), std::size(kCodecs));
    for (const Codec& codec : kCodecs) {
        SDPHandler h;
        LocalSDP local = AudioLocal();
        local.iAudioRTPPort = 0;
        Start(h, local);
        RemoteSDP remote;
        h.ParseTheSDP(codec.remote, remote);
        EXPECT_EQ(remote.eAudioCodec, codec.payload) << codec.token;
        EXPECT_EQ(h.GetAudioPayload(), codec.payload) << codec.token;
        EXPECT_TEXT(h.AddRTPMap(codec.payload), codec.lines);
        EXPECT_TEXT(h.AddAudio(), std::string("m=audio 0 RTP/AVP ") + codec.token + " 101\r\n" + codec.lines +
                                      "a=rtpmap:101 telephone-event/8000\r\n"
                                      "a=fmtp:101 0-15\r\n"
                                      "a=sendrecv\r\n");
    }
}

TEST(SDPTables, AudioCodecsAreTestedInTheirOrder) {
    for (std::size_t row = 0; row < std::size(kCodecs); ++row) {
        EXPECT_EQ(sdp::kAudioCodecs[row].codec, kCodecs[row].payload) << row;
    }
}

TEST(SDPTables, ACodecIsFoundByItsWholeValueOnly) {
    for (const Codec& codec : kCodecs) {
        const sdp::AudioCodec* row = sdp::FindAudioCodec(codec.payload);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->format.payload, codec.token);
    }
    for (const int value : {0, 2, 3, 4, 9, 32, 65, 89, 128, 256, -1}) {
        EXPECT_EQ(sdp::FindAudioCodec(value), nullptr) << value;
    }
}

// Suites: what is written, and whether a far end's line is read.

struct SuiteRow {
    CRYPTO_PROFILE profile;
    const char* offered;
    const char* name;
    bool isRead;
};

const SuiteRow kSuiteRows[] = {
    {kSuite32, "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n",
     "AES_CM_128_HMAC_SHA1_32", true},
    {kSuite80, "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n",
     "AES_CM_128_HMAC_SHA1_80", false},
    {kSuite256, "a=crypto:1 AES_CM_256_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n",
     "AES_CM_256_HMAC_SHA1_80", false},
    {kSuiteGcm128, "a=crypto:1  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n", "AEAD_AES_128_GCM",
     false},
    {kSuiteGcm256, "a=crypto:1  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n", "AEAD_AES_256_GCM",
     false},
};

TEST(SDPTables, EverySuiteIsWrittenAndTheOneIsRead) {
    for (const SuiteRow& row : kSuiteRows) {
        SDPHandler h;
        LocalSDP local = AudioLocal();
        GiveKeys(local, "near", row.profile);
        Start(h, local);
        EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO), row.offered);
        RemoteSDP remote;
        h.ParseTheSDP(std::string("m=audio 5000 RTP/SAVP 0\r\na=crypto:2 ") + row.name +
                          " inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n",
                      remote);
        EXPECT_EQ(remote.cryptoAlgo[baseSDP::SRTP_AUDIO], row.isRead ? kSuite32 : kSuiteNone) << row.name;
        EXPECT_EQ(h.IsRemoteSecure(baseSDP::SRTP_AUDIO), row.isRead) << row.name;
    }
}

// Directions: far end's line, our two flags, our answer.

struct DirectionRow {
    const char* read;
    int fSend;
    int fRecv;
    const char* answered;
};

const DirectionRow kDirectionRows[] = {
    {"a=inactive\r\n", 0, 0, "a=inactive\r\n"},
    {"a=sendonly\r\n", 0, 1, "a=recvonly\r\n"},
    {"a=recvonly\r\n", 1, 0, "a=sendonly\r\n"},
    {"a=sendrecv\r\n", 1, 1, "a=sendrecv\r\n"},
};

TEST(SDPTables, EveryDirectionIsReadMirroredAndAnswered) {
    for (const DirectionRow& row : kDirectionRows) {
        SDPHandler h;
        Start(h, AudioLocal());
        RemoteSDP remote;
        h.ParseTheSDP(std::string("m=audio 5000 RTP/AVP 0\r\n") + row.read, remote);
        EXPECT_EQ(remote.fAudioSend, row.fSend == 1) << row.read;
        EXPECT_EQ(remote.fAudioRecv, row.fRecv == 1) << row.read;
        EXPECT_TEXT(h.AddDirectional(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN), row.answered);
    }
}

TEST(SDPTables, TheFirstDirectionInTheirOrderWins) {
    for (std::size_t first = 0; first < std::size(kDirectionRows); ++first) {
        for (std::size_t second = first + 1; second < std::size(kDirectionRows); ++second) {
            SDPHandler h;
            Start(h, AudioLocal());
            RemoteSDP remote;
            const std::string later = kDirectionRows[second].read;
            h.ParseTheSDP("m=audio 5000 RTP/AVP 0\r\n" + later.substr(0, later.size() - 2) + " " +
                              kDirectionRows[first].read,
                          remote);
            EXPECT_EQ(remote.fAudioSend, kDirectionRows[first].fSend == 1) << first << second;
            EXPECT_EQ(remote.fAudioRecv, kDirectionRows[first].fRecv == 1) << first << second;
        }
    }
}

// Streams: one section of each kind, and which stream finds it.

struct StreamRow {
    MediaType eMedia;
    VIDEOTYPE eContent;
    const char* secure; ///< "AVP": the streams whose remote side counts as secure
    const char* line;   ///< "AVP": the streams that get a crypto line
};

const StreamRow kStreamRows[] = {
    {MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, "A", "A"},     {MEDIA_VIDEO, VIDEOTYPE_MAIN, "V", "V"},
    {MEDIA_VIDEO, VIDEOTYPE_PRESO, "VP", "P"},      {MEDIA_VIDEO, VIDEOTYPE_UNKNOWN, "V", ""},
    {MEDIA_APPLICATION, VIDEOTYPE_UNKNOWN, "", ""}, {MEDIA_UNKNOWN, VIDEOTYPE_UNKNOWN, "", ""},
};

TEST(SDPTables, EverySectionIsFoundByItsStreams) {
    for (const StreamRow& row : kStreamRows) {
        SDPHandler h;
        LocalSDP local = AudioLocal();
        GiveKeys(local, "near", kSuite32);
        Start(h, local);
        MediaSession& section = AddSection(h, row.eMedia, 5000);
        section.eContent = row.eContent;
        Secure(section, "audio");
        std::string secureText;
        std::string lineText;
        for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
            secureText += h.IsRemoteSecure(baseSDP::SRTP_M_LINE(n)) ? std::string(1, "AVP"[n]) : "";
            lineText += h.AddCrypto(baseSDP::SRTP_M_LINE(n)).empty() ? "" : std::string(1, "AVP"[n]);
        }
        EXPECT_EQ(secureText, row.secure) << row.eMedia << ' ' << row.eContent;
        EXPECT_EQ(lineText, row.line) << row.eMedia << ' ' << row.eContent;
    }
}

TEST(SDPTables, FloorControlSectionsAreToldByMediaAndLine) {
    MediaSession section;
    section.strFullMLine = "m=application 5070 UDP/BFCP *";
    for (const MediaType media : {MEDIA_AUDIO, MEDIA_VIDEO, MEDIA_UNKNOWN}) {
        section.eMedia = media;
        EXPECT_FALSE(sdp::IsBfcp(section)) << media;
    }
    section.eMedia = MEDIA_APPLICATION;
    EXPECT_TRUE(sdp::IsBfcp(section));
    section.strFullMLine = "m=application 5070 UDP/bfcp *";
    EXPECT_FALSE(sdp::IsBfcp(section));
}

} // namespace
