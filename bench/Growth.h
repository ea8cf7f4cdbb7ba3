// Texts that grow by one kind of unit, to measure what one more unit costs.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

struct Growth {
    const char* unit; ///< the unit that the text contains `count` times
    std::string (*make)(std::size_t count);
};

namespace growth {

inline std::string Repeated(const char* head, const char* line, std::size_t count) {
    std::string text = head;
    for (std::size_t i = 0; i < count; ++i) {
        text += line;
    }
    return text;
}

inline constexpr const char* kSession = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=audio 5004 RTP/SAVP 9\r\n";

inline std::string Sections(std::size_t count) {
    return Repeated("v=0\r\nc=IN IP4 192.0.2.2\r\n", "m=audio 5004 RTP/SAVP 9\r\n", count);
}

inline std::string Formats(std::size_t count) {
    std::string text = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=video 5004 RTP/SAVP";
    std::string lines;
    for (std::size_t i = 0; i < count; ++i) {
        text += " " + std::to_string(i);
        lines += "a=rtpmap:" + std::to_string(i) + " H264/90000\r\na=fmtp:" + std::to_string(i) +
                 " profile-level-id=42801f;max-fs=3600\r\n";
    }
    return text + "\r\n" + lines;
}

inline std::string Lines(std::size_t count) {
    return Repeated(kSession, "a=rtcp-fb:* nack pli\r\n", count);
}

inline std::string Candidates(std::size_t count) {
    return Repeated(kSession, "a=candidate:1 1 UDP 2130706431 10.11.0.5 50000 typ host\r\n", count);
}

inline std::string Keys(std::size_t count) {
    return Repeated(kSession,
                    "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:biTRu3i9/uYaIVY7ZPhWaqIgtoCMbHoFMiC31aYp\r\n",
                    count);
}

} // namespace growth

inline constexpr Growth kGrowths[] = {
    {"section of one format", growth::Sections},
    {"format with rtpmap and fmtp", growth::Formats},
    {"attribute line that nobody reads", growth::Lines},
    {"candidate", growth::Candidates},
    {"crypto line", growth::Keys},
};

inline constexpr std::size_t kCounts[] = {10, 100, 1000, 10000};

} // namespace bench
