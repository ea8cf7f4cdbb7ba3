// A description read by Sofia-SIP's strict parser.
#include "ForeignReader.h"

#include <sofia-sip/sdp.h>
#include <sofia-sip/su_alloc.h>

namespace interop {

Reading ReadWithSofia(const std::string& text) {
    Reading reading;
    auto* home = static_cast<su_home_t*>(su_home_new(sizeof(su_home_t)));
    sdp_parser_t* parser = sdp_parse(home, text.data(), static_cast<issize_t>(text.size()), sdp_f_strict);
    const sdp_session_t* session = sdp_session(parser);
    reading.isTaken = session != nullptr;
    if (session == nullptr) {
        reading.complaint = sdp_parsing_error(parser);
    } else {
        for (const sdp_media_t* media = session->sdp_media; media != nullptr; media = media->m_next) {
            std::string section = std::string(media->m_type_name) + " " + std::to_string(media->m_port) +
                                  " " + media->m_proto_name;
            // The formats of an RTP section are in its maps, with an entry per number of the line.
            for (const sdp_rtpmap_t* map = media->m_rtpmaps; map != nullptr; map = map->rm_next) {
                section += " " + std::to_string(map->rm_pt);
            }
            for (const sdp_list_t* format = media->m_format; format != nullptr; format = format->l_next) {
                section += std::string(" ") + format->l_text;
            }
            reading.sections.push_back(section);
        }
    }
    sdp_parser_free(parser);
    su_home_unref(home);
    return reading;
}

} // namespace interop
