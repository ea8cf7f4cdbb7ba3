// libre, of libre-dev.
#include "Peer.h"

extern "C" {
#include <re.h>
}

namespace bench {

namespace {

class Re : public Peer {
public:
    Re() { sa_set_str(&m_address, "192.0.2.1", 0); }
    ~Re() override {
        mem_deref(m_session);
        mem_deref(m_text);
    }

    Taken Read(const std::string& text) override {
        // A SIP stack hands over the buffer that the message arrived in.
        if (m_text == nullptr || m_text->end != text.size()) {
            mem_deref(m_text);
            m_text = mbuf_alloc(text.size());
            mbuf_write_mem(m_text, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        }
        mbuf_set_pos(m_text, 0);
        sdp_session* session = nullptr;
        if (sdp_session_alloc(&session, &m_address) != 0 || sdp_decode(session, m_text, true) != 0) {
            PeerFailed("libre", "parse");
        }
        Taken taken;
        for (const le* at = list_head(sdp_session_medial(session, false)); at != nullptr; at = at->next) {
            ReadMedia(static_cast<const sdp_media*>(at->data), taken);
        }
        mem_deref(session);
        return taken;
    }

    /// Decoding fills the remote side of a session and encoding writes its local side, so a local description
    /// like `text` is built by hand.
    void Hold(const std::string& /*text*/) override {
        sdp_session_alloc(&m_session, &m_address);
        sdp_session_set_lbandwidth(m_session, SDP_BANDWIDTH_CT, 4096);
        sdp_media* const audio = Add("audio", 50000, "RTP/SAVP");
        sdp_media_set_lbandwidth(audio, SDP_BANDWIDTH_TIAS, 64000);
        AddFormat(audio, "9", "G722", 8000, "");
        AddFormat(audio, "99", "G7221", 16000, "bitrate=32000");
        AddFormat(audio, "0", "PCMU", 8000, "");
        AddFormat(audio, "8", "PCMA", 8000, "");
        AddFormat(audio, "18", "G729", 8000, "annexb=no");
        AddFormat(audio, "101", "telephone-event", 8000, "0-15");
        sdp_media_set_lattr(audio, false, "ptime", "20");
        AddVideo(50002, 1920, "profile-level-id=42801F;packetization-mode=%d;max-mbps=108000;max-fs=3600",
                 "11", "main");
        AddVideo(50004, 1152, "profile-level-id=428014;packetization-mode=%d;max-fs=8160;max-fps=500", "12",
                 "slides");
        sdp_media* const bfcp = Add("application", 50006, "UDP/BFCP");
        AddFormat(bfcp, "*", nullptr, 0, "");
        sdp_media_set_lattr(bfcp, false, "floorctrl", "c-s");
        sdp_media_set_lattr(bfcp, false, "setup", "actpass");
        sdp_media_set_lattr(bfcp, false, "connection", "new");
        sdp_media_set_lattr(bfcp, false, "confid", "1");
        sdp_media_set_lattr(bfcp, false, "userid", "2");
        sdp_media_set_lattr(bfcp, false, "floorid", "1 mstrm:12");
    }

    std::size_t Write() override {
        mbuf* text = nullptr;
        if (sdp_encode(&text, m_session, true) != 0) {
            PeerFailed("libre", "write");
        }
        const std::size_t length = text->end;
        mem_deref(text);
        return length;
    }

    bool CanNegotiate() const override { return true; }

    std::size_t Negotiate(const std::string& offer) override {
        if (m_text == nullptr || m_text->end != offer.size()) {
            mem_deref(m_text);
            m_text = mbuf_alloc(offer.size());
            mbuf_write_mem(m_text, reinterpret_cast<const std::uint8_t*>(offer.data()), offer.size());
        }
        mbuf_set_pos(m_text, 0);
        mbuf* answer = nullptr;
        if (sdp_decode(m_session, m_text, true) != 0 || sdp_encode(&answer, m_session, false) != 0) {
            PeerFailed("libre", "negotiate");
        }
        const std::size_t length = answer->end;
        mem_deref(answer);
        return length;
    }

private:
    sdp_media* Add(const char* name, std::uint16_t port, const char* proto) {
        sdp_media* media = nullptr;
        if (sdp_media_add(&media, m_session, name, port, proto) != 0) {
            PeerFailed("libre", "add a section");
        }
        if (port <= 50004) {
            sdp_media_set_lattr(
                media, false, "crypto",
                "1 AES_CM_128_HMAC_SHA1_80 inline:mNMImG2L3BInlbVfkKCqKQgxVUYNPj61jYsIWOvI|2^48");
            sdp_media_set_lattr(
                media, false, "crypto",
                "2 AES_CM_128_HMAC_SHA1_32 inline:biTRu3i9/uYaIVY7ZPhWaqIgtoCMbHoFMiC31aYp|2^48");
        }
        return media;
    }

    static void AddFormat(sdp_media* media, const char* id, const char* name, std::uint32_t rate,
                          const char* parameters) {
        if (sdp_format_add(nullptr, media, false, id, name, rate, 1, nullptr, nullptr, nullptr, false,
                           parameters[0] != '\0' ? "%s" : nullptr, parameters) != 0) {
            PeerFailed("libre", "add a format");
        }
    }

    void AddVideo(std::uint16_t port, std::int32_t kilobits, const char* parameters, const char* label,
                  const char* content) {
        sdp_media* const video = Add("video", port, "RTP/SAVP");
        sdp_media_set_lbandwidth(video, SDP_BANDWIDTH_AS, kilobits);
        sdp_media_set_lbandwidth(video, SDP_BANDWIDTH_TIAS, kilobits * 1000);
        for (const int mode : {0, 1}) {
            char written[128];
            re_snprintf(written, sizeof written, parameters, mode);
            AddFormat(video, mode == 0 ? "97" : "98", "H264", 90000, written);
        }
        sdp_media_set_lattr(video, false, "rtcp-fb", "* nack pli");
        sdp_media_set_lattr(video, false, "rtcp-fb", "* ccm fir");
        sdp_media_set_lattr(video, false, "label", "%s", label);
        sdp_media_set_lattr(video, false, "content", "%s", content);
    }

    static bool Count(const char* /*name*/, const char* value, void* count) {
        *static_cast<std::size_t*>(count) += value != nullptr ? 1 : 0;
        return false; // go on
    }

    static void ReadMedia(const sdp_media* media, Taken& taken) {
        for (const le* at = list_head(sdp_media_format_lst(media, false)); at != nullptr; at = at->next) {
            const auto* const format = static_cast<const sdp_format*>(at->data);
            taken.Look(format->id);
            taken.Look(format->name);
            taken.Look(format->params);
            ++taken.formats;
            taken.names += format->name != nullptr ? 1 : 0;
            taken.parameters += format->params != nullptr ? 1 : 0;
        }
        sdp_media_rattr_apply(media, "crypto", Count, &taken.keys);
        sdp_media_rattr_apply(media, "candidate", Count, &taken.candidates);
        for (const char* const name : kSingleAttributes) {
            const char* const value = sdp_media_rattr(media, name);
            taken.Look(value);
            taken.attributes += value != nullptr ? 1 : 0;
        }
        taken.attributes += sdp_media_rdir(media) == SDP_SENDRECV ? 1 : 0;
        for (int type = SDP_BANDWIDTH_MIN; type < SDP_BANDWIDTH_MAX; ++type) {
            const std::int32_t bandwidth = sdp_media_rbandwidth(media, static_cast<sdp_bandwidth>(type));
            taken.bandwidths += bandwidth > 0 ? 1 : 0;
        }
    }

    sa m_address{};
    mbuf* m_text = nullptr;
    sdp_session* m_session = nullptr;
};

} // namespace

std::unique_ptr<Peer> MakeRe() {
    return std::make_unique<Re>();
}

} // namespace bench
