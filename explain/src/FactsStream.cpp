// Stage: the facts about codecs, pictures, addresses, directions, tones, floor control and bandwidth.
// Input: a record, our own text as a far end reads it. Output: clauses.
// Touches the state's facts.
// Test: tests/explain/judge_cases.py
#include "State.h"

#include "Reading.h"
#include "SDPTables.h"

#include <array>

namespace explain {

namespace {

using Topic = ExplainTopic;

/// Topics of a stream: what it carries, sending, receiving.
constexpr std::array<Topic, 3> kTopics[baseSDP::SRTP_MAX] = {
    {Topic::AudioCodec, Topic::AudioSend, Topic::AudioReceive},
    {Topic::MainPicture, Topic::MainSend, Topic::MainReceive},
    {Topic::Slides, Topic::Slides, Topic::Slides},
};

/// One stream of a record, audio and video alike.
struct View {
    bool isThere = false;
    bool hasCodec = false;
    std::string codec;
    std::string address;
    std::int32_t port = 0;
    bool send = false;
    bool receive = false;
};

std::string LimitsOf(const VideoParms& video) {
    const auto limit = [](const char* name, std::int32_t value) {
        return value == 0 ? std::string() : std::string(", ") + name + " " + std::to_string(value);
    };
    return "packetization mode " + std::to_string(video.iFmtpPacketizationMode) + ", " +
           (video.strVideoLevel.empty() ? "no level" : "level " + video.strVideoLevel) +
           limit("max-mbps", video.iFmtpMaxMbps) + limit("max-fs", video.iFmtpMaxFrameSize) +
           limit("max-br", video.iFmtpMaxBitRate);
}

View ViewOf(const RemoteSDP& record, baseSDP::SRTP_M_LINE stream) {
    if (stream == baseSDP::SRTP_AUDIO) {
        const bool hasCodec = record.eAudioCodec != PAYLOAD_UNKNOWN;
        return {record.fIsAudioValid,
                hasCodec,
                hasCodec
                    ? CodecName(record.eAudioCodec) + " as payload " + std::to_string(record.iAudioPayload)
                    : "no codec",
                record.strAudioIPAddr,
                record.iAudioRTPPort,
                record.fAudioSend,
                record.fAudioRecv};
    }
    const VideoParms& video = stream == baseSDP::SRTP_VIDEO ? record.m_VideoMain : record.m_VideoPreso;
    const bool hasCodec = video.iVideoPayload != 0;
    return {video.fIsVideoValid,
            hasCodec,
            hasCodec ? "H.264 as payload " + std::to_string(video.iVideoPayload) : "no H.264 format",
            video.strVideoIPAddr,
            video.iVideoRTPPort,
            video.fVideoSend,
            video.fVideoRecv};
}

void Add(State& state, Topic topic, const std::string& name, std::string clause, bool isDead,
         bool isHard = false) {
    state.facts.push_back({topic, name, std::move(clause), isDead, isHard, 0});
}

std::string Place(const View& view) {
    return Shown(view.address) + " port " + std::to_string(view.port);
}

bool IsDeadPlace(const View& view) {
    return view.address.empty() || view.address == "0.0.0.0" || view.port <= 0 || view.port > 65535;
}

void AddTheirs(State& state, const ExplainInput& input, baseSDP::SRTP_M_LINE stream) {
    const View view = ViewOf(state.record, stream);
    const std::string name = kStreamNames[stream];
    const bool runs = view.isThere && view.hasCodec;
    const bool isMuted = stream == baseSDP::SRTP_VIDEO && input.local.fVideoTxMuted;
    const auto& topics = kTopics[stream];
    Add(state, topics[0], "codec" + name,
        !view.isThere ? "there is no section for " + name +
                            (stream == baseSDP::SRTP_VIDEO_PRESO ? ", all video counts as main video" : "")
                      : name + " has " + view.codec,
        !runs, true);
    Add(state, topics[1], "send" + name, name + (runs && view.send && !isMuted ? " is sent" : " is not sent"),
        !runs || !view.send || isMuted);
    Add(state, topics[2], "receive" + name,
        name + (runs && view.receive ? " is received" : " is not received"), !runs || !view.receive);
    if (view.isThere) {
        Add(state, topics[1], "place" + name,
            view.address.empty() ? name + " has no address to be sent to"
                                 : name + " is sent to the address " + Place(view),
            IsDeadPlace(view), true);
    } else {
        Add(state, topics[1], "place" + name, "there is no section for " + name, true, true);
    }
    if (stream != baseSDP::SRTP_AUDIO && runs) {
        const VideoParms& video =
            stream == baseSDP::SRTP_VIDEO ? state.record.m_VideoMain : state.record.m_VideoPreso;
        Add(state, topics[0], "limits" + name, name + " is sent with " + LimitsOf(video), false);
    } else if (stream != baseSDP::SRTP_AUDIO) {
        Add(state, topics[0], "limits" + name, name + " has no picture format", true);
    }
}

/// What a far end of the same kind, with every codec, reads in our text.
RemoteSDP ReadByFarEnd(const std::string& ours) {
    SDPHandler farEnd;
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        farEnd.MyLocalSDP.eAudioCodec =
            static_cast<PayloadType_t>((farEnd.MyLocalSDP.eAudioCodec & ~PAYLOAD_UNKNOWN) | codec.codec);
    }
    RemoteSDP record;
    farEnd.ParseTheSDP(ours, record);
    return record;
}

void AddOurs(State& state, const ExplainInput& input, const RemoteSDP& read, baseSDP::SRTP_M_LINE stream) {
    const std::string text = input.remoteAnswers ? "our offer" : "our answer";
    const std::string name = kStreamNames[stream];
    const View view = ViewOf(read, stream);
    const auto& topics = kTopics[stream];
    if (!view.isThere) {
        for (std::size_t i = 0; i < topics.size(); ++i) {
            std::string clause = text;
            clause.append(" has no section for ").append(name);
            Add(state, topics[i], "ours" + std::to_string(i) + name, std::move(clause), true);
        }
        return;
    }
    const OurSection* const section = OurStream(state, stream);
    std::string codec = text + " has " + view.codec + " for " + name;
    if (stream != baseSDP::SRTP_AUDIO && view.hasCodec) {
        codec += " and " + LimitsOf(stream == baseSDP::SRTP_VIDEO ? read.m_VideoMain : read.m_VideoPreso);
    }
    if (section != nullptr && stream == baseSDP::SRTP_AUDIO) {
        for (const std::string& format : section->formats) {
            codec += (&format == &section->formats.front() ? ", formats " : " ") + format;
        }
    }
    Add(state, topics[0], "ours0" + name, codec, !view.hasCodec);
    Add(state, topics[1], "ours1" + name,
        text + (view.receive ? " says that " + name + " is sent" : " says that no " + name + " is sent"),
        !view.receive);
    Add(state, topics[2], "ours2" + name,
        text + (view.send ? " asks for " + name + " at " + Place(view) : " asks for no " + name),
        !view.send || IsDeadPlace(view));
}

/// Whether the codec that is started is the one that our answer lists.
void AddMatch(State& state, const ExplainInput& input, const RemoteSDP& read) {
    const bool areThere = state.record.eAudioCodec != PAYLOAD_UNKNOWN && read.eAudioCodec != PAYLOAD_UNKNOWN;
    const bool isOther = !input.remoteAnswers && areThere && state.record.eAudioCodec != read.eAudioCodec;
    for (const Topic topic : {Topic::AudioSend, Topic::AudioReceive, Topic::AudioCodec}) {
        Add(state, topic, "match",
            isOther ? "audio is started as " + CodecName(state.record.eAudioCodec) +
                          " and our answer lists " + CodecName(read.eAudioCodec)
                    : "our text has the codec that is started",
            isOther, true);
    }
}

void AddFloor(State& state, const ExplainInput& input, const RemoteSDP& read,
              const RemoteSections& sections) {
    const RemoteSDP& record = state.record;
    bool isThere = false;
    for (const MediaSession* const section : sections) {
        isThere = isThere || sdp::IsBfcp(*section);
    }
    Add(state, Topic::Floor, "port",
        !isThere ? "there is no floor control section"
                 : "floor control goes to port " + std::to_string(record.iVideoPresoControlPort),
        record.iVideoPresoControlPort <= 0 || record.iVideoPresoControlPort > 65535, true);
    Add(state, Topic::Floor, "ids",
        "the conference is " + std::to_string(record.iBfcpConfid) + " and the user " +
            std::to_string(record.iBfcpUserid),
        false);
    Add(state, Topic::Floor, "role",
        record.fBfcpIsServer ? "the far end is the floor control server"
                             : "the far end is taken as floor control client",
        false);
    const std::string text = input.remoteAnswers ? "our offer" : "our answer";
    Add(state, Topic::Floor, "ours",
        read.iVideoPresoControlPort == 0
            ? text + " has no floor control"
            : text + " has floor control at port " + std::to_string(read.iVideoPresoControlPort) +
                  (read.fBfcpIsServer ? " as server" : " as client or both"),
        isThere && read.iVideoPresoControlPort <= 0);
}

} // namespace

void AddStreamFacts(State& state, const ExplainInput& input, const RemoteSections& sections) {
    const RemoteSDP read = ReadByFarEnd(state.ours);
    for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
        const View view = ViewOf(state.record, stream);
        if (view.isThere) {
            const bool isLost = view.address.empty() || view.address == "0.0.0.0";
            Add(state, Topic::Call, std::string("address of ") + kStreamNames[stream],
                std::string(kStreamNames[stream]) + (view.address.empty()
                                                         ? " has no address to be sent to"
                                                         : " is sent to the address " + Shown(view.address)),
                isLost, true);
        }
        AddTheirs(state, input, stream);
        AddOurs(state, input, read, stream);
    }
    AddFloor(state, input, read, sections);
    AddMatch(state, input, read);
    const RemoteSDP& record = state.record;
    Add(state, Topic::Dtmf, "payload",
        record.iDTMFPayload == 0 ? "tones have no payload and are not sent"
                                 : "tones are sent as payload " + std::to_string(record.iDTMFPayload),
        record.iDTMFPayload == 0, true);
    Add(state, Topic::Bandwidth, "theirs",
        record.iMaxBandwidth == 0
            ? "the far end's bandwidth is not limited"
            : "the far end's limit is " + std::to_string(record.iMaxBandwidth) + " bit/s",
        false);
    Add(state, Topic::Bandwidth, "ours",
        read.iMaxBandwidth == 0 ? "our text gives no bandwidth"
                                : "our text gives " + std::to_string(read.iMaxBandwidth) + " bit/s in all",
        false);
}

} // namespace explain
