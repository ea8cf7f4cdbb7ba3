// gst-sdp, of libgstreamer-plugins-base1.0-dev.
#include "Peer.h"

#include <gst/sdp/gstsdpmessage.h>

namespace bench {

namespace {

class Gst : public Peer {
public:
    ~Gst() override {
        if (m_held != nullptr) {
            gst_sdp_message_free(m_held);
        }
    }

    Taken Read(const std::string& text) override {
        GstSDPMessage* const message = Parse(text);
        Taken taken;
        for (guint i = 0; i < gst_sdp_message_medias_len(message); ++i) {
            ReadMedia(gst_sdp_message_get_media(message, i), taken);
        }
        gst_sdp_message_free(message);
        return taken;
    }

    void Hold(const std::string& text) override { m_held = Parse(text); }

    std::size_t Write() override {
        char* const text = gst_sdp_message_as_text(m_held);
        const std::size_t length = std::strlen(text);
        g_free(text);
        return length;
    }

private:
    static GstSDPMessage* Parse(const std::string& text) {
        GstSDPMessage* message = nullptr;
        gst_sdp_message_new(&message);
        if (gst_sdp_message_parse_buffer(reinterpret_cast<const guint8*>(text.data()),
                                         static_cast<guint>(text.size()), message) != GST_SDP_OK) {
            PeerFailed("gst-sdp", "parse");
        }
        return message;
    }

    /// The library leaves rtpmap and fmtp among the attributes; a client attaches them by payload number.
    static void ReadMedia(const GstSDPMedia* media, Taken& taken) {
        bool listed[128] = {};
        for (guint i = 0; i < gst_sdp_media_formats_len(media); ++i) {
            const char* const format = gst_sdp_media_get_format(media, i);
            taken.Look(format);
            ++taken.formats;
            listed[std::strtoul(format, nullptr, 10) % 128] = true;
        }
        for (guint i = 0; i < gst_sdp_media_attributes_len(media); ++i) {
            const GstSDPAttribute* const attribute = gst_sdp_media_get_attribute(media, i);
            TakeAttribute(attribute->key, attribute->value, listed, taken);
        }
        for (const char* const name : kSingleAttributes) {
            const char* const value = gst_sdp_media_get_attribute_val(media, name);
            taken.Look(value);
            taken.attributes += value != nullptr ? 1 : 0;
        }
        for (guint i = 0; i < gst_sdp_media_bandwidths_len(media); ++i) {
            taken.looked += gst_sdp_media_get_bandwidth(media, i)->bandwidth;
            ++taken.bandwidths;
        }
    }

    GstSDPMessage* m_held = nullptr;
};

} // namespace

std::unique_ptr<Peer> MakeGst() {
    return std::make_unique<Gst>();
}

} // namespace bench
