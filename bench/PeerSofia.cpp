// sofia-sip, of libsofia-sip-ua-dev.
#include "Peer.h"

#include <sofia-sip/sdp.h>
#include <sofia-sip/su_alloc.h>

namespace bench {

namespace {

class Sofia : public Peer {
public:
    ~Sofia() override {
        if (m_parser != nullptr) {
            sdp_parser_free(m_parser);
        }
    }

    Taken Read(const std::string& text) override {
        sdp_parser_t* const parser = Parse(text);
        Taken taken;
        for (const sdp_media_t* media = sdp_session(parser)->sdp_media; media != nullptr;
             media = media->m_next) {
            ReadMedia(media, taken);
        }
        sdp_parser_free(parser);
        return taken;
    }

    void Hold(const std::string& text) override { m_parser = Parse(text); }

    std::size_t Write() override {
        sdp_printer_t* const printer = sdp_print(nullptr, sdp_session(m_parser), nullptr, 0, sdp_f_realloc);
        if (sdp_message(printer) == nullptr) {
            PeerFailed("sofia-sip", sdp_printing_error(printer));
        }
        const std::size_t length = sdp_message_size(printer);
        sdp_printer_free(printer);
        return length;
    }

private:
    static sdp_parser_t* Parse(const std::string& text) {
        sdp_parser_t* const parser = sdp_parse(nullptr, text.data(), static_cast<issize_t>(text.size()), 0);
        if (sdp_session(parser) == nullptr) {
            PeerFailed("sofia-sip", sdp_parsing_error(parser));
        }
        return parser;
    }

    static void ReadMedia(const sdp_media_t* media, Taken& taken) {
        for (const sdp_rtpmap_t* map = media->m_rtpmaps; map != nullptr; map = map->rm_next) {
            taken.looked += map->rm_pt;
            taken.Look(map->rm_encoding);
            taken.Look(map->rm_fmtp);
            ++taken.formats;
            taken.names += map->rm_encoding != nullptr ? 1 : 0;
            taken.parameters += map->rm_fmtp != nullptr ? 1 : 0;
        }
        for (const sdp_list_t* format = media->m_format; format != nullptr; format = format->l_next) {
            taken.Look(format->l_text);
            ++taken.formats;
        }
        for (const sdp_attribute_t* attribute = sdp_attribute_find(media->m_attributes, "crypto");
             attribute != nullptr; attribute = sdp_attribute_find(attribute->a_next, "crypto")) {
            taken.Look(attribute->a_value);
            ++taken.keys;
        }
        for (const sdp_attribute_t* attribute = sdp_attribute_find(media->m_attributes, "candidate");
             attribute != nullptr; attribute = sdp_attribute_find(attribute->a_next, "candidate")) {
            taken.Look(attribute->a_value);
            ++taken.candidates;
        }
        for (const char* const name : kSingleAttributes) {
            const sdp_attribute_t* const attribute = sdp_attribute_find(media->m_attributes, name);
            taken.Look(attribute != nullptr ? attribute->a_value : nullptr);
            taken.attributes += attribute != nullptr ? 1 : 0;
        }
        taken.attributes += media->m_mode == sdp_sendrecv ? 1 : 0;
        for (const sdp_bandwidth_t* b = media->m_bandwidths; b != nullptr; b = b->b_next) {
            taken.looked += b->b_value;
            ++taken.bandwidths;
        }
    }

    sdp_parser_t* m_parser = nullptr;
};

} // namespace

std::unique_ptr<Peer> MakeSofia() {
    return std::make_unique<Sofia>();
}

} // namespace bench
