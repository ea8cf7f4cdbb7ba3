// A description read by the parser of oSIP.
#include "ForeignReader.h"

#include <cstdlib>
#include <osipparser2/osip_port.h>
#include <osipparser2/sdp_message.h>

namespace interop {

Reading ReadWithOsip(const std::string& text) {
    Reading reading;
    sdp_message_t* message = nullptr;
    if (sdp_message_init(&message) != 0) {
        return reading;
    }
    reading.isTaken = sdp_message_parse(message, text.c_str()) == 0;
    for (int n = 0; reading.isTaken && sdp_message_endof_media(message, n) == 0; ++n) {
        std::string section = std::string(sdp_message_m_media_get(message, n)) + " " +
                              sdp_message_m_port_get(message, n) + " " + sdp_message_m_proto_get(message, n);
        for (int format = 0; sdp_message_m_payload_get(message, n, format) != nullptr; ++format) {
            section += std::string(" ") + sdp_message_m_payload_get(message, n, format);
        }
        reading.sections.push_back(section);
    }
    sdp_message_free(message);
    return reading;
}

} // namespace interop
