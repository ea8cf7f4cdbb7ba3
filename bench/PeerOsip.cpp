// osip2, of libosip2-dev.
#include "Peer.h"

// The library's headers rely on these.
#include <sys/time.h>
#include <time.h>

#include <osipparser2/osip_parser.h>
#include <osipparser2/sdp_message.h>

#include <cstring>

namespace bench {

namespace {

/// Calls `each` with every element of a list, walking it once.
template <typename Element, typename Each>
void ForEach(const osip_list_t& list, Each each) {
    osip_list_iterator_t at;
    for (void* element = osip_list_get_first(&list, &at); osip_list_iterator_has_elem(at);
         element = osip_list_get_next(&at)) {
        each(static_cast<const Element*>(element));
    }
}

class Osip : public Peer {
public:
    Osip() { parser_init(); }
    ~Osip() override { sdp_message_free(m_held); }

    Taken Read(const std::string& text) override {
        sdp_message_t* const message = Parse(text);
        Taken taken;
        ForEach<sdp_media_t>(message->m_medias, [&](const sdp_media_t* media) { ReadMedia(media, taken); });
        sdp_message_free(message);
        return taken;
    }

    void Hold(const std::string& text) override { m_held = Parse(text); }

    std::size_t Write() override {
        char* text = nullptr;
        if (sdp_message_to_str(m_held, &text) != 0) {
            PeerFailed("osip2", "write");
        }
        const std::size_t length = std::strlen(text);
        osip_free(text);
        return length;
    }

private:
    static sdp_message_t* Parse(const std::string& text) {
        sdp_message_t* message = nullptr;
        if (sdp_message_init(&message) != 0 || sdp_message_parse(message, text.c_str()) != 0) {
            PeerFailed("osip2", "parse");
        }
        return message;
    }

    /// The library leaves rtpmap and fmtp among the attributes; a client attaches them by payload number.
    static void ReadMedia(const sdp_media_t* media, Taken& taken) {
        bool listed[128] = {};
        ForEach<char>(media->m_payloads, [&](const char* format) {
            taken.Look(format);
            ++taken.formats;
            listed[std::strtoul(format, nullptr, 10) % 128] = true;
        });
        ForEach<sdp_attribute_t>(media->a_attributes, [&](const sdp_attribute_t* attribute) {
            if (!TakeAttribute(attribute->a_att_field, attribute->a_att_value, listed, taken)) {
                ReadSingle(attribute, taken);
            }
        });
        ForEach<sdp_bandwidth_t>(media->b_bandwidths, [&](const sdp_bandwidth_t* bandwidth) {
            taken.Look(bandwidth->b_bandwidth);
            ++taken.bandwidths;
        });
    }

    static void ReadSingle(const sdp_attribute_t* attribute, Taken& taken) {
        for (const char* const name : kSingleAttributes) {
            if (std::strcmp(attribute->a_att_field, name) == 0) {
                taken.Look(attribute->a_att_value);
                ++taken.attributes;
                return;
            }
        }
    }

    sdp_message_t* m_held = nullptr;
};

} // namespace

std::unique_ptr<Peer> MakeOsip() {
    return std::make_unique<Osip>();
}

} // namespace bench
