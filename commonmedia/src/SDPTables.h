// The tables that reading and writing share. A row begins with an example line or the value it stands for;
// each table exists once, for both directions.
//
// Test: tests/unit/SDPTablesTest.cpp
#pragma once

#include "SDP.h"
#include "SDPText.h"

#include <string_view>

namespace sdp {

using CRYPTO_PROFILE = Quor::media::rtp::CryptoParams::CRYPTO_PROFILE;
using CryptoParams = Quor::media::rtp::CryptoParams;

/// Audio codecs in the order in which one payload entry is tested.
struct AudioCodec {
    PayloadType_t eCodec;
    std::string_view strPayload; ///< format token written into the "m=audio" line
    bool fStatic;                ///< a format with this token is the codec (RFC 3551, 6); else by its rtpmap
    std::string_view strLines;   ///< written behind "a=rtpmap:"
};
inline constexpr AudioCodec kAudioCodecs[] = {
    {PAYLOAD_G722, "9", true, "9 G722/8000\r\n"},
    {PAYLOAD_G7221, "104", false, "104 G7221/16000\r\na=fmtp:104 bitrate=32000\r\n"},
    {PAYLOAD_G711U, "0", true, "0 PCMU/8000\r\n"},
    {PAYLOAD_G729, "18", true, "18 G729/8000\r\na=fmtp:18 annexb=no\r\n"},
};

/// The row of one codec value; null for anything that is not exactly one of the audio codecs.
constexpr const AudioCodec* FindAudioCodec(std::int32_t eCodec) {
    for (const AudioCodec& codec : kAudioCodecs) {
        if (codec.eCodec == eCodec) {
            return &codec;
        }
    }
    return nullptr;
}

/// SRTP suites (RFC 4568, 6.2).
struct Suite {
    std::string_view strName;
    CRYPTO_PROFILE eProfile;
    bool fRead; ///< a remote line of this suite is read; otherwise the line is skipped whole
};
inline constexpr Suite kSuites[] = {
    {"AES_CM_128_HMAC_SHA1_32", CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32, true},
    {"AES_CM_128_HMAC_SHA1_80", CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_80, false},
    {"AES_CM_256_HMAC_SHA1_80", CryptoParams::CRYPTO_AES_CM_256_HMAC_SHA1_80, false},
    // [B14] The AEAD suites are written without a name, which leaves two blanks before "inline:"; no word of
    // a line is empty, so these rows are never read.
    {"", CryptoParams::CRYPTO_AEAD_AES_GCM_128, false},
    {"", CryptoParams::CRYPTO_AEAD_AES_GCM_256, false},
};

/// Direction attributes (RFC 4566, 6), each as its writer means it: what the writer sends and receives.
/// Read from the far end, sends is our fRecv and receives our fSend; written by us, each is our own.
struct Direction {
    std::string_view keyword;
    bool fSends;
    bool fReceives;
};
inline constexpr Direction kDirections[] = {
    {"a=inactive", false, false},
    {"a=sendonly", true, false},
    {"a=recvonly", false, true},
    {"a=sendrecv", true, true},
};

/// Which remote section belongs to a stream, in the order of SRTP_M_LINE.
struct StreamMatch {
    MediaType_t eMedia;
    VideoType_t eContent;
    bool fSecureAnyContent; ///< the secure test takes a section of any content
    bool fCryptoAnyContent; ///< the crypto line takes its tag from a section of any content
};
inline constexpr StreamMatch kStreams[baseSDP::SRTP_MAX] = {
    {MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, true, true},
    // [B13] A far end that secures only its presentation makes main video "SAVP" without a crypto line.
    {MEDIA_VIDEO, VIDEOTYPE_MAIN, true, false},
    {MEDIA_VIDEO, VIDEOTYPE_PRESO, false, false},
};

// H.264 levels: name, number and the digits of profile-level-id (RFC 6184, 8.1), row by row.
// [X05] Level 1b is 255 and "FF" in both directions. The code is private: RFC 6184 writes level 11 with
// constraint_set3, so only a far end of the same kind reads 1b here.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
inline constexpr int kH264Levels = 16;
inline constexpr char __H264Profile[kH264Levels][40] = {"1", "1.b", "1.1", "1.2", "1.3", "2",   "2.1", "2.2",
                                                        "3", "3.1", "3.2", "4",   "4.1", "4.2", "5",   "5.1"};
inline constexpr int __iH264Profile[kH264Levels] = {10, 255, 11, 12, 13, 20, 21, 22,
                                                    30, 31,  32, 40, 41, 42, 50, 51};
inline constexpr char __strH264Profile2[kH264Levels][40] = {"0A", "FF", "0B", "0C", "0D", "14", "15", "16",
                                                            "1E", "1F", "20", "28", "29", "2A", "32", "33"};
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

/// The two H.264 bits of a stream's codec set.
inline constexpr std::int32_t kAnyH264 = PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0;

/// A floor control section, "m=application 50006 UDP/BFCP *" (RFC 4583, 3), over whatever transport.
inline bool IsBfcp(const MediaSession& ms) {
    return ms.eMedia == MEDIA_APPLICATION && Contains(ms.strFullMLine, "BFCP");
}

} // namespace sdp
