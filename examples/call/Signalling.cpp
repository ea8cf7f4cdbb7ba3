// SIP with libre: sockets, session, timers. libre calls the static functions of Sip, which translate to
// SignallingListener. Exercised by the calls of tests/realcall.
#include "Signalling.h"

#include <cstdio>

extern "C" {
#include <re.h>
}

namespace call {

namespace {

constexpr std::uint64_t kTick = 50; ///< ms
const char* const kDescription = "application/sdp";

std::string_view BodyOf(const sip_msg* message) {
    return {reinterpret_cast<const char*>(mbuf_buf(message->mb)), mbuf_get_left(message->mb)};
}

/// A buffer of libre that holds the text; null for an empty text.
mbuf* BufferWith(std::string_view text) {
    mbuf* buffer = text.empty() ? nullptr : mbuf_alloc(text.size());
    if (buffer != nullptr) {
        mbuf_write_mem(buffer, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        mbuf_set_pos(buffer, 0);
    }
    return buffer;
}

/// Status of a final refusal of an INVITE, 0 for any other message. libre repeats a request that got 491 by
/// itself and ends the session after 408 and 481.
int RefusalIn(std::string_view packet) {
    mbuf* buffer = BufferWith(packet);
    sip_msg* message = nullptr;
    int status = 0;
    if (buffer != nullptr && sip_msg_decode(&message, buffer) == 0 && !message->req &&
        pl_strcmp(&message->cseq.met, "INVITE") == 0 && message->scode >= 300 && message->scode != 408 &&
        message->scode != 481 && message->scode != 491) {
        status = message->scode;
    }
    mem_deref(message);
    mem_deref(buffer);
    return status;
}

} // namespace

struct Signalling::Sip {
    SignallingListener* listener = nullptr;
    std::string address; ///< "127.0.0.1:17060"
    std::FILE* log = nullptr;
    sip* stack = nullptr;
    sipsess_sock* socket = nullptr;
    sipsess* session = nullptr;
    bool isOfferOut = false; ///< a re-INVITE of ours waits for its response
    int refusal = 0;         ///< status of that response, to be told at the next tick
    tmr tick{};

    static void OnInvite(const sip_msg* message, void* self);
    static int OnOffer(mbuf** answer, const sip_msg* message, void* self);
    static int OnAnswer(const sip_msg* message, void* self);
    static void OnProgress(const sip_msg* /*message*/, void* /*self*/) {}
    static void OnEstablished(const sip_msg* message, void* self);
    static void OnInfo(sip* stack, const sip_msg* message, void* self);
    static void OnClosed(int error, const sip_msg* message, void* self);
    static void OnMessage(bool isSent, sip_transp transport, const sa* source, const sa* destination,
                          const std::uint8_t* packet, std::size_t length, void* self);
    static void OnTick(void* self);
};

void Signalling::Sip::OnInvite(const sip_msg* message, void* self) {
    auto* sip = static_cast<Sip*>(self);
    if (sip->session != nullptr) {
        sip_treply(nullptr, sip->stack, message, 486, "Busy Here");
        return;
    }
    const SignallingListener::Reply reply = sip->listener->OnOffer(BodyOf(message));
    if (reply.status != 200) {
        sip_treply(nullptr, sip->stack, message, static_cast<std::uint16_t>(reply.status),
                   "Not Acceptable Here");
        return;
    }
    mbuf* body = BufferWith(reply.body);
    sipsess_accept(&sip->session, sip->socket, message, 200, "OK", "alice", kDescription, body, nullptr,
                   nullptr, false, OnOffer, OnAnswer, OnEstablished, OnInfo, nullptr, OnClosed, self,
                   nullptr);
    mem_deref(body);
}

/// A re-INVITE came, or the response to our INVITE without an offer. After an error libre answers 488.
int Signalling::Sip::OnOffer(mbuf** answer, const sip_msg* message, void* self) {
    const SignallingListener::Reply reply = static_cast<Sip*>(self)->listener->OnOffer(BodyOf(message));
    *answer = reply.status == 200 ? BufferWith(reply.body) : nullptr;
    return *answer == nullptr ? EPROTO : 0;
}

int Signalling::Sip::OnAnswer(const sip_msg* message, void* self) {
    auto* sip = static_cast<Sip*>(self);
    sip->isOfferOut = false;
    sip->listener->OnAnswer(BodyOf(message));
    return 0;
}

void Signalling::Sip::OnEstablished(const sip_msg* /*message*/, void* self) {
    static_cast<Sip*>(self)->listener->OnEstablished();
}

void Signalling::Sip::OnInfo(sip* stack, const sip_msg* message, void* /*self*/) {
    sip_reply(stack, message, 200, "OK");
}

void Signalling::Sip::OnClosed(int /*error*/, const sip_msg* message, void* self) {
    auto* sip = static_cast<Sip*>(self);
    sip->session = static_cast<sipsess*>(mem_deref(sip->session));
    sip->listener->OnClosed(message == nullptr ? 0 : message->scode);
}

/// Sees every message. libre tells nobody that a re-INVITE was refused, so it is found here. The log gets the
/// heads alone: a body may carry keys.
void Signalling::Sip::OnMessage(bool isSent, sip_transp /*transport*/, const sa* /*source*/,
                                const sa* /*destination*/, const std::uint8_t* packet, std::size_t length,
                                void* self) {
    auto* sip = static_cast<Sip*>(self);
    const std::string_view text(reinterpret_cast<const char*>(packet), length);
    const std::string_view head = text.substr(0, text.find("\r\n\r\n"));
    std::fprintf(sip->log, "%s\n%.*s\n\n", isSent ? "sent" : "received", static_cast<int>(head.size()),
                 head.data());
    if (!isSent && sip->isOfferOut) {
        sip->refusal = RefusalIn(text);
        sip->isOfferOut = sip->refusal == 0;
    }
}

void Signalling::Sip::OnTick(void* self) {
    auto* sip = static_cast<Sip*>(self);
    tmr_start(&sip->tick, kTick, OnTick, self);
    if (sip->refusal != 0) {
        const int status = sip->refusal;
        sip->refusal = 0;
        sip->listener->OnOfferRefused(status);
    }
    sip->listener->OnTick();
}

Signalling::Signalling(const std::string& address, int port, const std::string& log,
                       SignallingListener& listener)
    : m_sip(std::make_unique<Sip>()) {
    m_sip->listener = &listener;
    m_sip->address = address + ":" + std::to_string(port);
    m_sip->log = std::fopen(log.c_str(), "w");
    sa local;
    if (m_sip->log == nullptr || libre_init() != 0 ||
        sa_decode(&local, m_sip->address.data(), m_sip->address.size()) != 0 ||
        sip_alloc(&m_sip->stack, nullptr, 32, 32, 32, "commonmedia call", nullptr, m_sip.get()) != 0 ||
        sip_transp_add(m_sip->stack, SIP_TRANSP_UDP, &local) != 0 ||
        sipsess_listen(&m_sip->socket, m_sip->stack, 32, Sip::OnInvite, m_sip.get()) != 0) {
        m_sip->socket = static_cast<sipsess_sock*>(mem_deref(m_sip->socket));
        return;
    }
    sip_set_trace_handler(m_sip->stack, Sip::OnMessage);
    tmr_init(&m_sip->tick);
    tmr_start(&m_sip->tick, kTick, Sip::OnTick, m_sip.get());
}

Signalling::~Signalling() {
    tmr_cancel(&m_sip->tick);
    mem_deref(m_sip->session);
    mem_deref(m_sip->socket);
    if (m_sip->stack != nullptr) {
        sip_close(m_sip->stack, true);
    }
    mem_deref(m_sip->stack);
    libre_close();
    if (m_sip->log != nullptr) {
        std::fclose(m_sip->log);
    }
}

bool Signalling::IsOpen() const {
    return m_sip->socket != nullptr;
}

bool Signalling::Call(const std::string& uri, const std::string& offer) {
    const std::string own = "sip:alice@" + m_sip->address;
    mbuf* body = BufferWith(offer);
    const int error = sipsess_connect(&m_sip->session, m_sip->socket, uri.c_str(), nullptr, own.c_str(),
                                      "alice", nullptr, 0, kDescription, body, nullptr, nullptr, false,
                                      Sip::OnOffer, Sip::OnAnswer, Sip::OnProgress, Sip::OnEstablished,
                                      Sip::OnInfo, nullptr, Sip::OnClosed, m_sip.get(), nullptr);
    mem_deref(body);
    return error == 0;
}

bool Signalling::Reoffer(const std::string& offer) {
    mbuf* body = BufferWith(offer);
    m_sip->isOfferOut = m_sip->session != nullptr && sipsess_modify(m_sip->session, body) == 0;
    mem_deref(body);
    return m_sip->isOfferOut;
}

void Signalling::RequestPicture() {
    mbuf* body = BufferWith("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                            "<media_control><vc_primitive><to_encoder><picture_fast_update/>"
                            "</to_encoder></vc_primitive></media_control>\r\n");
    if (m_sip->session != nullptr) {
        sipsess_info(m_sip->session, "application/media_control+xml", body, nullptr, nullptr);
    }
    mem_deref(body);
}

void Signalling::HangUp() {
    m_sip->session = static_cast<sipsess*>(mem_deref(m_sip->session));
}

void Signalling::Run() {
    re_main(nullptr);
}

void Signalling::Stop() {
    re_cancel();
}

} // namespace call
