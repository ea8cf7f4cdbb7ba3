// The calls of one handler (parse, answer, offer, reset, setters) in the order that the input gives. After
// each call its state is compared with a simple model: version counter, offer or answer, session address,
// capabilities.
//
// The first bytes choose a side, the next one the start of the counters. Then each call is one byte, followed
// by its arguments.
#include "Handling.h"
#include "Judged.h"
#include "Laws.h"
#include "Targets.h"
#include "Trace.h"

#include <iterator>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

namespace fuzz {

namespace {

/// More calls show nothing new and take longer.
constexpr int kCalls = 48;

const char* const kLinePool[] = {
    "v=0\r\n",
    "o=- 1 1 IN IP4 192.0.2.2\r\n",
    "c=IN IP4 192.0.2.2\r\n",
    "c=IN IP4 192.0.2.7/127\r\n",
    "c=IN IP4\r\n",
    "b=AS:512\r\n",
    "b=TIAS:64000\r\n",
    "t=0 0\r\n",
    "m=audio 5004 RTP/SAVP 18 0 9 101\r\n",
    "m=audio 0 RTP/AVP 104\r\n",
    "m=video 5006 RTP/SAVP 97 126\r\n",
    "m=video 5008 RTP/AVP 97\r\n",
    "m=application 5010 UDP/BFCP *\r\n",
    "m=text 5012 RTP/AVP 98\r\n",
    "m=audio 5004 RTP/AVP\r\n",
    "a=rtpmap:97 H264/90000\r\n",
    "a=rtpmap:104 G7221/16000\r\n",
    "a=rtpmap:101 telephone-event/8000\r\n",
    "a=fmtp:97 profile-level-id=428029;packetization-mode=1;max-fs=8160\r\n",
    "a=fmtp:104 bitrate=32000\r\n",
    "a=crypto:7 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0|2^31\r\n",
    "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0\r\n",
    "a=content:slides\r\n",
    "a=content:main\r\n",
    "a=inactive\r\n",
    "a=sendonly\r\n",
    "a=recvonly\r\n",
    "a=sendrecv\r\n",
    "a=floorctrl:s-only\r\n",
    "a=floorctrl:c-s\r\n",
    "a=confid:12\r\n",
    "a=userid:34\r\n",
    "a=ice-ufrag:F7gI\r\n",
    "a=candidate:1 1 UDP 2130706431 192.0.2.2 5004 typ host\r\n",
    "\r\n",
    "a=c=b=m=\r\n",
    "a=x\n",
    "c=IN IP4 192.0.2.8",
};

/// A record that can be copied but not assigned, because assignment keeps the identity (M01).
struct Held final : LocalSDP {
    explicit Held(const LocalSDP& other) : LocalSDP(other) {}
};

/// The state that a handler must have after the calls so far.
struct Model {
    std::optional<Held> local = Held(LocalSDP());
    bool usesSrtp = false;
    bool usesBfcp = false;
    std::uint32_t served = 2;
    std::int32_t id = 0;
    std::uint32_t version = 1;
    std::size_t sections = 0;
    std::string address; ///< session address, kept by later parses
    std::string text;    ///< last text parsed; empty if no section is held
};

void ModelInitialize(Model& model, const LocalSDP& local) {
    // The copy has every field of `local`; then the identity of the model is restored.
    Held next(local);
    next.iBfcpConfid = model.local->iBfcpConfid;
    next.iBfcpUserid = model.local->iBfcpUserid;
    next.fBfcpIsServer = model.local->fBfcpIsServer;
    model.local.emplace(next);
}

void ModelParse(Model& model, const std::string& text) {
    const Reading reading = Read(text, model.address);
    model.sections = reading.sections.size();
    model.address = reading.address;
    model.text = text;
}

/// A new handler with the state of the model, and what it reads. The tested handler must read and write what
/// this one does.
struct Fresh {
    SDPHandler handler;
    RemoteSDP record;

    Fresh(const Model& model, const std::string& address) {
        handler.InitializeLocalSDP(*model.local);
        handler.m_bSRTP = model.usesSrtp;
        handler.SetBfcpSupport(model.usesBfcp);
        handler.SetMaxSupportedSessions(model.served);
        handler.m_iSessionID = model.id;
        handler.m_iSessionVersion = model.version;
        handler.strSessionIPAddr = address;
        handler.ParseTheSDP(model.text, record);
    }
};

std::string StateText(bool isOffer, const LocalSDP& local, bool usesSrtp, bool usesBfcp, std::uint32_t served,
                      std::int32_t id, std::uint32_t version, const std::string& address) {
    return "served=" + std::to_string(served) + " offer=" + std::to_string(isOffer) +
           " srtp=" + std::to_string(usesSrtp) + " bfcp=" + std::to_string(usesBfcp) +
           " id=" + std::to_string(id) + " version=" + std::to_string(version) + " address=" + address +
           "\n" + RecordText(local);
}

void CheckState(const SDPHandler& handler, const Model& model, const char* call) {
    RequireSame("the state is that of the model", (std::string("model, ") + call).c_str(),
                StateText(model.sections == 0, *model.local, model.usesSrtp, model.usesBfcp, model.served,
                          model.id, model.version, model.address),
                "handler",
                StateText(handler.IsOffer(), handler.MyLocalSDP, handler.m_bSRTP, handler.m_fBfcpSupported,
                          handler.m_iMaxSupportedSessions, handler.m_iSessionID, handler.m_iSessionVersion,
                          handler.strSessionIPAddr));
}

std::string OriginLine(const Model& model) {
    const LocalSDP& local = *model.local;
    std::ostringstream out;
    out << "o=Quillmarshorizon" << (local.strOExtension.empty() ? "" : "-") << local.strOExtension << " "
        << static_cast<std::uint32_t>(model.id) << " " << static_cast<std::int32_t>(model.version)
        << " IN IP4 " << (local.strMyIPAddr.empty() ? local.strDefaultIPAddr : local.strMyIPAddr) << "\r\n";
    return out.str();
}

class Life {
public:
    Life(const Side& side, std::uint8_t start) : m_trace(side.isTraced), m_plain(side.isPlain) {
        static constexpr std::uint32_t versions[] = {1, 0x7ffffffe, 0xfffffffd, 0};
        static constexpr std::int32_t ids[] = {1000, -1, 0x7fffffff, static_cast<std::int32_t>(0x80000000)};
        Prepare(m_handler, side);
        ModelInitialize(m_model, side.local);
        m_model.usesSrtp = side.usesSrtp;
        m_model.usesBfcp = side.usesBfcp;
        m_model.served = side.served;
        m_isTraced = side.isTraced;
        m_model.version = m_handler.m_iSessionVersion = versions[start & 3U];
        m_model.id = m_handler.m_iSessionID = ids[(start >> 2U) & 3U];
        CheckState(m_handler, m_model, "the state after preparation");
    }

    void Call(Input& input, std::uint64_t secret) {
        switch (input.Below(16)) {
        case 0:
        case 1:
        case 2:
        case 3:
            return Parse(AnyText(input));
        case 4:
        case 5:
            return Describe();
        case 6:
            return Reset();
        case 7:
            return Address(input);
        case 8:
            return Switch(input.Byte());
        case 9:
            m_handler.m_bSRTP = m_model.usesSrtp = (input.Byte() & 1U) != 0;
            return;
        case 10:
            return Initialize(AnySide(input, secret));
        case 11:
            m_handler.SetVideoICECandidate(input.Take(input.Byte()));
            return m_handler.SetAudioICECandidate("a=candidate:1 1 UDP 1 192.0.2.1 9 typ host");
        case 12:
            return Extract();
        case 13:
            return Parse("");
        case 14:
            return Identity(input);
        default:
            return Parse(m_last);
        }
    }

    void Check(const char* what) { CheckState(Judged("handler of a life", m_handler), m_model, what); }

    void End() {
        Watch watch;
        for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
            watch.Add(Key(m_model.local->bufSRTPKey[n], m_model.local->bufSRTPSalt[n]));
        }
        watch.Check("a dump", m_remote.ToDiag() + m_handler.MyLocalSDP.ToDiag());
        watch.Check("the trace", m_trace.Text());
        CheckGoodTextAfterwards(m_handler, OwnSide());
    }

private:
    /// The side whose handler has the state of the model.
    Side OwnSide() const {
        Side side;
        side.local = *m_model.local;
        // Not assigned with the rest (M01).
        side.local.iBfcpConfid = m_model.local->iBfcpConfid;
        side.local.iBfcpUserid = m_model.local->iBfcpUserid;
        side.local.fBfcpIsServer = m_model.local->fBfcpIsServer;
        side.usesSrtp = m_model.usesSrtp;
        side.usesBfcp = m_model.usesBfcp;
        side.served = m_model.served;
        side.isTraced = m_isTraced;
        side.isPlain = m_plain;
        return side;
    }

    void Switch(std::uint8_t bits) {
        m_model.usesBfcp = (bits & 1U) != 0;
        m_handler.SetBfcpSupport(m_model.usesBfcp);
        if ((bits & 2U) != 0) {
            m_model.served = bits >> 2U;
            m_handler.SetMaxSupportedSessions(m_model.served);
        }
    }

    /// Some lines of the pool, then bytes of the input.
    static std::string AnyText(Input& input) {
        std::string text;
        for (std::size_t lines = input.Below(12); lines > 0; --lines) {
            text += input.Pick(kLinePool);
        }
        return text + input.Take(input.Byte() / 4U);
    }

    void Parse(const std::string& text) {
        const std::string addressBefore = m_model.address;
        ModelParse(m_model, text);
        CheckReading(m_handler, OwnSide(), text);
        if (text.empty()) {
            Reached("an empty text was read");
            return;
        }
        Fresh fresh(m_model, addressBefore);
        m_handler.GetRTPData(m_remote);
        RequireSame("an old handler reads as a fresh one", "fresh", RecordText(fresh.record), "old",
                    RecordText(Judged("record of a life", m_remote)));
        RequireSame("an old handler holds what a fresh one does", "fresh", SectionsText(fresh.handler), "old",
                    SectionsText(Judged("handler of a life", m_handler)));
    }

    void Extract() {
        Fresh fresh(m_model, m_model.address);
        fresh.handler.GetRTPData(fresh.record);
        m_handler.GetRTPData(m_remote);
        RequireSame("extraction gives what a fresh handler reads", "fresh", RecordText(fresh.record), "old",
                    RecordText(Judged("record of a life", m_remote)));
    }

    void Describe() {
        Fresh fresh(m_model, m_model.address);
        const bool isOffer = m_model.sections == 0;
        const Reading remote = Read(m_model.text);
        std::string text = CheckWriting(m_handler, OwnSide(), remote, m_model.text.size());
        Judged("text of a life", text);
        RequireSame("an old handler writes as a fresh one", "fresh", fresh.handler.GetLocalSDP(), "old",
                    text);
        if (isOffer && m_model.local->strDefaultIPAddr.empty()) {
            RequireSame("no address, no offer", "wanted", "", "written", text);
            return;
        }
        ++m_model.version;
        const std::string origin = OriginLine(m_model);
        RequireSame("the origin line follows the counters", "wanted", origin, "written",
                    text.substr(0, 5 + origin.size()).erase(0, 5));
        Reached(isOffer ? "an offer was written" : "an answer was written");
        m_last = text;
    }

    void Reset() {
        Reached("the remote side was reset");
        m_handler.ResetRemoteSDP();
        m_model.sections = 0;
        m_model.text.clear();
    }

    void Address(Input& input) {
        static const char* const addresses[] = {"192.0.2.1", "", "2001:db8::1", "two words", "c=IN IP4 x"};
        const std::size_t which = input.Below(std::size(addresses));
        m_plain = m_plain && which < 3;
        m_model.local->strDefaultIPAddr = addresses[which];
        m_handler.SetDefaultLocalIPAddr(addresses[which]);
    }

    void Initialize(const Side& side) {
        m_plain = side.isPlain;
        m_handler.InitializeLocalSDP(side.local);
        ModelInitialize(m_model, side.local);
    }

    /// The application sets the floor control identity; assignment does not change it.
    void Identity(Input& input) {
        m_handler.MyLocalSDP.iBfcpConfid = m_model.local->iBfcpConfid = input.Pick(kNumbers);
        m_handler.MyLocalSDP.iBfcpUserid = m_model.local->iBfcpUserid = input.Pick(kNumbers);
        m_handler.MyLocalSDP.fBfcpIsServer = m_model.local->fBfcpIsServer = (input.Byte() & 1U) != 0;
    }

    SDPHandler m_handler;
    Model m_model;
    RemoteSDP m_remote;
    Trace m_trace;
    std::string m_last;
    bool m_isTraced = false;
    bool m_plain;
};

void Run(Input input, std::uint64_t secret) {
    const Side side = AnySide(input, secret);
    Life life(side, input.Byte());
    for (int call = 0; call < kCalls && !input.Empty(); ++call) {
        life.Call(input, secret);
        life.Check("the state after a call");
    }
    life.End();
}

} // namespace

} // namespace fuzz

void FuzzLife(const std::uint8_t* data, std::size_t size) {
    fuzz::Run(fuzz::Input(data, size), 0x11feU);
}
