// The engine gets one of its media for each section of the offer; its own words decide about the answer.
#include "OfferAnswer.h"

#include <cstring>
#include <sstream>
#include <vector>

extern "C" {
#include <re.h>
}

namespace fit {

namespace {

struct Format {
    std::string number;
    std::string name; // "H264", from the rtpmap line; empty without one
    std::uint32_t rate = 0;
    std::uint8_t channels = 1;
    std::string parameters;
};

struct Section {
    std::string media;
    std::uint16_t port = 0;
    std::string transport;
    std::vector<Format> formats;
};

Section MediaLine(const std::string& value) {
    std::istringstream words(value);
    Section section;
    unsigned port = 0;
    std::string rest;
    words >> section.media >> port;
    section.port = static_cast<std::uint16_t>(port);
    words >> rest;
    section.transport = rest;
    if (!rest.empty() && rest[0] == '/') { // "5004/2"
        words >> section.transport;
    }
    for (std::string number; words >> number;) {
        section.formats.push_back({number, "", 0, 1, ""});
    }
    return section;
}

Format* FormatOf(Section& section, const std::string& number) {
    for (Format& format : section.formats) {
        if (format.number == number) {
            return &format;
        }
    }
    return nullptr;
}

void ReadRtpmap(Section& section, std::istringstream& words) {
    std::string number;
    std::string encoding;
    words >> number >> encoding;
    if (Format* const format = FormatOf(section, number)) {
        std::istringstream parts(encoding);
        std::string part;
        std::getline(parts, format->name, '/');
        std::getline(parts, part, '/');
        format->rate = static_cast<std::uint32_t>(std::strtoul(part.c_str(), nullptr, 10));
        std::getline(parts, part, '/');
        format->channels = static_cast<std::uint8_t>(std::strtoul(part.c_str(), nullptr, 10));
    }
}

void ReadFmtp(Section& section, std::istringstream& words) {
    std::string number;
    words >> number >> std::ws;
    if (Format* const format = FormatOf(section, number)) {
        std::getline(words, format->parameters);
    }
}

std::vector<Section> Sections(const std::string& offer) {
    std::vector<Section> sections;
    std::istringstream lines(offer);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        std::istringstream words(line.substr(std::min(line.find(':') + 1, line.size())));
        if (line.compare(0, 2, "m=") == 0) {
            sections.push_back(MediaLine(line.substr(2)));
        } else if (!sections.empty() && line.compare(0, 9, "a=rtpmap:") == 0) {
            ReadRtpmap(sections.back(), words);
        } else if (!sections.empty() && line.compare(0, 7, "a=fmtp:") == 0) {
            ReadFmtp(sections.back(), words);
        }
    }
    return sections;
}

bool AddMedia(sdp_session* session, const Section& section) {
    sdp_media* media = nullptr;
    if (sdp_media_add(&media, session, section.media.c_str(), section.port, section.transport.c_str()) != 0) {
        return false;
    }
    for (const Format& format : section.formats) {
        const char* const name = format.name.empty() ? nullptr : format.name.c_str();
        const char* const parameters = format.parameters.empty() ? nullptr : format.parameters.c_str();
        if (sdp_format_add(nullptr, media, false, format.number.c_str(), name, format.rate, format.channels,
                           nullptr, nullptr, nullptr, false, parameters != nullptr ? "%s" : nullptr,
                           parameters) != 0) {
            return false;
        }
    }
    return true;
}

bool Offer(sdp_session* session, const std::vector<Section>& sections) {
    for (const Section& section : sections) {
        if (!AddMedia(session, section)) {
            return false;
        }
    }
    mbuf* text = nullptr;
    const bool isOffered = sdp_encode(&text, session, true) == 0;
    mem_deref(text);
    return isOffered;
}

// Every section that the answer accepts has to be one of the engine's, with a format in common.
std::string WhatIsMissing(const sdp_session* session) {
    std::string missing;
    std::size_t place = 0;
    for (const le* entry = sdp_session_medial(session, true)->head; entry != nullptr; entry = entry->next) {
        const auto* const media = static_cast<const sdp_media*>(entry->data);
        const bool isFloor = std::strcmp(sdp_media_name(media), "application") == 0;
        if (sdp_media_rport(media) != 0 && !isFloor && sdp_media_rformat(media, nullptr) == nullptr) {
            missing += " section " + std::to_string(place) + " has no format in common;";
        }
        ++place;
    }
    return missing;
}

} // namespace

Exchange Exchanged(const std::string& offer, const std::string& answer) {
    Exchange exchange;
    sa address;
    sa_set_str(&address, "192.0.2.9", 0);
    sdp_session* session = nullptr;
    mbuf* buffer = mbuf_alloc(answer.size() + 1);
    if (buffer != nullptr && sdp_session_alloc(&session, &address) == 0) {
        exchange.isOffered = Offer(session, Sections(offer));
        mbuf_write_mem(buffer, reinterpret_cast<const std::uint8_t*>(answer.data()), answer.size());
        mbuf_set_pos(buffer, 0);
        const int error = sdp_decode(session, buffer, false);
        exchange.complaint = error != 0 ? std::strerror(error) : WhatIsMissing(session);
    }
    mem_deref(session);
    mem_deref(buffer);
    return exchange;
}

} // namespace fit
