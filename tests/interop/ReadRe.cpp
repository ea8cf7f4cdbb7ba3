// A description read by libre as an offer.
#include "ForeignReader.h"

#include <cstring>

extern "C" {
#include <re.h>
}

namespace interop {

namespace {

std::string SectionOf(const sdp_media* media) {
    std::string section = std::string(sdp_media_name(media)) + " " + std::to_string(sdp_media_rport(media)) +
                          " " + sdp_media_proto(media);
    for (const le* entry = sdp_media_format_lst(media, false)->head; entry != nullptr; entry = entry->next) {
        section += std::string(" ") + static_cast<const sdp_format*>(entry->data)->id;
    }
    return section;
}

} // namespace

Reading ReadWithRe(const std::string& text) {
    Reading reading;
    sa address;
    sa_set_str(&address, "192.0.2.9", 0);
    sdp_session* session = nullptr;
    mbuf* buffer = mbuf_alloc(text.size() + 1);
    if (buffer == nullptr || sdp_session_alloc(&session, &address) != 0) {
        mem_deref(buffer);
        return reading;
    }
    mbuf_write_mem(buffer, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    mbuf_set_pos(buffer, 0);
    const int error = sdp_decode(session, buffer, true);
    reading.isTaken = error == 0;
    if (error != 0) {
        reading.complaint = std::strerror(error);
    } else {
        for (const le* entry = sdp_session_medial(session, false)->head; entry != nullptr;
             entry = entry->next) {
            reading.sections.push_back(SectionOf(static_cast<const sdp_media*>(entry->data)));
        }
    }
    mem_deref(session);
    mem_deref(buffer);
    return reading;
}

} // namespace interop
