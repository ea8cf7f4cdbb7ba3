// Lines of formats and keys in the spelling that their writers meant; the other lines are in Canonical.cpp.
#pragma once

#include <string>
#include <string_view>

namespace explain {

/// A number without zeros at its start.
std::string WithoutZeros(std::string_view number);

/// "97" and what follows its blank, of "a=rtpmap:97 H264/90000"; no payload when the line has another form.
struct FormatLine {
    std::string_view payload;
    std::string_view rest;
};
/// The parts of a line that begins with `start`, "a=rtpmap:"; empty where the line has more blanks, a comma
/// or a zero before its payload.
FormatLine FormatLineOf(std::string_view line, std::string_view start);

/// "a=rtpmap:97 H264/90000" of "a=rtpmap: 97 h.264"; the line itself when it has no payload type.
std::string CanonicalRtpmap(std::string_view line);
/// A quick check: where it is true, a plain line is its own CanonicalRtpmap, as "a=rtpmap:97 H264/90000" is.
bool IsCanonicalRtpmap(std::string_view line);
/// "a=fmtp:97 max-fs=3600;packetization-mode=1" of "a=fmtp:97 Max-FS=3600, packetization_mode=1"; the line
/// itself when it has no payload type.
std::string CanonicalFmtp(std::string_view line);
/// A quick check: where it is true, a plain line is its own CanonicalFmtp, as "a=fmtp:97 max-fs=3600" is.
bool IsCanonicalFmtp(std::string_view line);
/// "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:KEY" of "a=crypto:1;aes_cm_128_hmac_sha1_32 KEY"; the line
/// itself when it names no suite.
std::string CanonicalCrypto(std::string_view line);

} // namespace explain
