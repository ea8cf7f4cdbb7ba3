// Lines of formats and keys in the spelling that their writers meant; the other lines are in Canonical.cpp.
#pragma once

#include <string>
#include <string_view>

namespace explain {

/// A number without zeros at its start.
std::string WithoutZeros(std::string_view number);
/// "a=rtpmap:97 H264/90000" of "a=rtpmap: 97 h.264"; the line itself when it has no payload type.
std::string CanonicalRtpmap(std::string_view line);
/// "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:KEY" of "a=crypto:1;aes_cm_128_hmac_sha1_32 KEY"; the line
/// itself when it names no suite.
std::string CanonicalCrypto(std::string_view line);
/// Whether a plain line is seen at once to be its own CanonicalRtpmap: "a=rtpmap:97 H264/90000".
bool IsCanonicalRtpmap(std::string_view line);
/// "a=fmtp:97 max-fs=3600;packetization-mode=1" of "a=fmtp:97 Max-FS=3600, packetization_mode=1"; the line
/// itself when it has no payload type.
std::string CanonicalFmtp(std::string_view line);

/// Whether a plain line is seen at once to be its own CanonicalFmtp: "a=fmtp:97 max-fs=3600".
bool IsCanonicalFmtp(std::string_view line);

} // namespace explain
