// The tables that reading and writing share: each exists once, for both directions.
//
// They are known at compile time; the searches of SDPKeyword.h are unrolled into comparisons with constants.
// Tests: tests/unit/SDPTablesTest.cpp, tests/unit/H264LevelTest.cpp
#pragma once

#include "SDP.h"
#include "SDPText.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace sdp {

using CRYPTO_PROFILE = Quor::media::rtp::CryptoParams::CRYPTO_PROFILE;
using CryptoParams = Quor::media::rtp::CryptoParams;

/// The first row of a table whose `field` has this value; null when no row has it.
template <typename Row, std::size_t N, typename Value>
constexpr const Row* FindRow(const Row (&table)[N], Value Row::*field, Value value) {
    for (const Row& row : table) {
        if (row.*field == value) {
            return &row;
        }
    }
    return nullptr;
}

/// One format of an "m=audio" line with its attribute lines (RFC 4566, 6):
///     a=rtpmap:104 G7221/16000
///     a=fmtp:104 bitrate=32000
struct AudioFormat {
    std::string_view payload; ///< payload type of the formats that are written
    std::string_view name;
    std::string_view parameters; ///< empty: no "a=fmtp:" line
};
inline constexpr AudioFormat kTelephoneEvent = {"101", "telephone-event/8000", "0-15"}; // RFC 4733

/// Audio codecs in the order in which a remote format is compared with them.
struct AudioCodec {
    PayloadType_t codec;
    bool isStatic; ///< read by its payload type (RFC 3551, 6), otherwise by name and parameters
    AudioFormat format;
};
inline constexpr AudioCodec kAudioCodecs[] = {
    {PAYLOAD_G722, true, {"9", "G722/8000", ""}},
    {PAYLOAD_G7221, false, {"104", "G7221/16000", "bitrate=32000"}},
    {PAYLOAD_G711U, true, {"0", "PCMU/8000", ""}},
    {PAYLOAD_G729, true, {"18", "G729/8000", "annexb=no"}},
};

/// The row of a codec; null for a value that is not exactly one of the audio codecs.
constexpr const AudioCodec* FindAudioCodec(std::int32_t codec) {
    return FindRow(kAudioCodecs, &AudioCodec::codec, static_cast<PayloadType_t>(codec));
}

/// The two H.264 bits of a stream's codec set.
inline constexpr std::int32_t kAnyH264 = PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0;

inline constexpr char kH264Name[] = "H264/90000"; ///< encoding name of both formats (RFC 6184, 8.2.1)
inline constexpr char kProfileLevelId[] = "profile-level-id";
inline constexpr char kPacketizationMode[] = "packetization-mode";

/// H.264 format parameters (RFC 6184, 8.1) in the order in which a remote parameter is compared with them.
struct H264Parameter {
    std::string_view name;
    std::int32_t VideoParms::*field; ///< null for the level, which is no number
    int place; ///< limits are written in this order, unless they are 0; a place of 0 is written apart
    /// [B12] Written odd, one higher when the value is even: the far end may send one macroblock more than
    /// the application asked for.
    bool isMadeOdd;
};
inline constexpr H264Parameter kH264Parameters[] = {
    {kProfileLevelId, nullptr, 0, false},                               // profile-level-id=42801f
    {"max-mbps", &VideoParms::iFmtpMaxMbps, 2, false},                  // max-mbps=108000
    {"max-fs", &VideoParms::iFmtpMaxFrameSize, 3, true},                // max-fs=3600
    {"max-br", &VideoParms::iFmtpMaxBitRate, 1, false},                 // max-br=2000
    {kPacketizationMode, &VideoParms::iFmtpPacketizationMode, 0, false} // packetization-mode=1
};

inline constexpr const H264Parameter* kWrittenLimits[] = {
    FindRow(kH264Parameters, &H264Parameter::place, 1),
    FindRow(kH264Parameters, &H264Parameter::place, 2),
    FindRow(kH264Parameters, &H264Parameter::place, 3),
};

// H.264 levels: name, number and the digits that profile-level-id ends in (RFC 6184, 8.1), row by row.
// [X05] Level 1b is 255 and "FF" in both directions. The code is private: RFC 6184 writes level 11 with
// constraint_set3, so only a far end of the same kind reads 1b here.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
inline constexpr int kH264Levels = 16;
inline constexpr char __H264Profile[kH264Levels][40] = {"1", "1.b", "1.1", "1.2", "1.3", "2",   "2.1", "2.2",
                                                        "3", "3.1", "3.2", "4",   "4.1", "4.2", "5",   "5.1"};
inline constexpr int __iH264Profile[kH264Levels] = {10, 255, 11, 12, 13, 20, 21, 22,
                                                    30, 31,  32, 40, 41, 42, 50, 51};
inline constexpr char __strH264Profile2[kH264Levels][40] = {"0A", "FF", "0B", "0C", "0D", "14", "15", "16",
                                                            "1E", "1F", "20", "28", "29", "2A", "32", "33"};
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)

/// Roles of video streams (RFC 4796, 5) and the labels that they are written with (RFC 4574, 4).
struct VideoRole {
    std::string_view keyword;
    VideoType_t role;
    std::string_view label;
};
inline constexpr VideoRole kVideoRoles[] = {
    {"a=content:main", VIDEOTYPE_MAIN, "8"},
    {"a=content:slides", VIDEOTYPE_PRESO, "9"},
};

/// SRTP suites (RFC 4568, 6.2).
struct Suite {
    std::string_view name;
    CRYPTO_PROFILE profile;
    bool isRead; ///< a remote line of this suite is read; otherwise the whole line is skipped
};
inline constexpr Suite kSuites[] = {
    {"AES_CM_128_HMAC_SHA1_32", CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32, true},
    {"AES_CM_128_HMAC_SHA1_80", CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_80, false},
    {"AES_CM_256_HMAC_SHA1_80", CryptoParams::CRYPTO_AES_CM_256_HMAC_SHA1_80, false},
    // [B14] The AEAD suites are written without a name, which leaves two blanks before "inline:". No word of
    // a line is empty, so these rows never match when a line is read.
    {"", CryptoParams::CRYPTO_AEAD_AES_GCM_128, false},
    {"", CryptoParams::CRYPTO_AEAD_AES_GCM_256, false},
};

/// The key of a crypto line (RFC 4568, 6.1): a key method, then 16 key and 14 salt bytes in base64.
inline constexpr std::string_view kKeyMethod = "inline:";
inline constexpr std::size_t kKeyTextLength = 40;

/// Bit/s of the whole budget that audio gets; video gets the rest.
inline constexpr std::int32_t kAudioShare = 64000;

/// Direction attributes (RFC 4566, 6): what the side that writes the line sends and receives. The far end's
/// `sends` is our fRecv and its `receives` our fSend.
struct Direction {
    std::string_view keyword;
    bool sends;
    bool receives;
};
inline constexpr Direction kDirections[] = {
    {"a=inactive", false, false},
    {"a=sendonly", true, false},
    {"a=recvonly", false, true},
    {"a=sendrecv", true, true},
};

/// Which remote section belongs to a stream, in the order of SRTP_M_LINE.
struct StreamMatch {
    MediaType_t media;
    VideoType_t content;
    bool isSecureByAnyContent; ///< the secure test matches sections of any content
    bool isTagOfAnyContent;    ///< the crypto line takes its tag from a section of any content
};
inline constexpr StreamMatch kStreams[baseSDP::SRTP_MAX] = {
    {MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, true, true},
    // [B13] A far end that secures only its presentation makes main video "SAVP" without a crypto line.
    {MEDIA_VIDEO, VIDEOTYPE_MAIN, true, false},
    {MEDIA_VIDEO, VIDEOTYPE_PRESO, false, false},
};

/// A floor control section, "m=application 50006 UDP/BFCP *" (RFC 4583, 3), whatever its transport.
inline bool IsBfcp(const MediaSession& ms) {
    return ms.eMedia == MEDIA_APPLICATION && Contains(ms.strFullMLine, "BFCP");
}

/// The far end is floor control server only (RFC 4583, 4).
inline bool IsFloorServer(const MediaSession& ms) {
    return ms.strFloorctrl == "s-only";
}

} // namespace sdp
