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
    std::array<Piece, 3> codec;
    std::string_view address;
    std::int32_t port = 0;
    bool send = false;
    bool receive = false;
};

/// Adds the limits of a picture to what was said last.
void SayLimits(State& state, const VideoParms& video) {
    state.SayMore({"packetization mode ", video.iFmtpPacketizationMode, ", ",
                   video.strVideoLevel.empty() ? "no level" : "level ", video.strVideoLevel});
    const auto limit = [&state](const char* name, std::int32_t value) {
        if (value != 0) {
            state.SayMore({", ", name, " ", value});
        }
    };
    limit("max-mbps", video.iFmtpMaxMbps);
    limit("max-fs", video.iFmtpMaxFrameSize);
    limit("max-br", video.iFmtpMaxBitRate);
}

View ViewOf(const RemoteSDP& record, baseSDP::SRTP_M_LINE stream) {
    if (stream == baseSDP::SRTP_AUDIO) {
        View view{record.fIsAudioValid, record.eAudioCodec != PAYLOAD_UNKNOWN,
                  {"no codec", "", ""}, record.strAudioIPAddr,
                  record.iAudioRTPPort, record.fAudioSend,
                  record.fAudioRecv};
        if (view.hasCodec) {
            view.codec = {CodecName(record.eAudioCodec), " as payload ", record.iAudioPayload};
        }
        return view;
    }
    const VideoParms& video = stream == baseSDP::SRTP_VIDEO ? record.m_VideoMain : record.m_VideoPreso;
    View view{video.fIsVideoValid,  video.iVideoPayload != 0, {"no H.264 format", "", ""},
              video.strVideoIPAddr, video.iVideoRTPPort,      video.fVideoSend,
              video.fVideoRecv};
    if (view.hasCodec) {
        view.codec = {"H.264 as payload ", video.iVideoPayload, ""};
    }
    return view;
}

unsigned char Which(baseSDP::SRTP_M_LINE stream) {
    return static_cast<unsigned char>(stream);
}

/// What a declined section lists is used by nobody (RFC 3264, 5.1 and 6).
bool IsDeclined(const View& view) {
    return view.isThere && view.port == 0;
}

bool IsDeadPlace(const View& view) {
    return view.address.empty() || view.address == "0.0.0.0" || view.port <= 0 || view.port > 65535;
}

void AddTheirs(State& state, const ExplainInput& input, baseSDP::SRTP_M_LINE stream) {
    const View view = ViewOf(state.record, stream);
    const char* const name = kStreamNames[stream];
    const unsigned char which = Which(stream);
    const bool runs = view.isThere && view.hasCodec;
    const bool isMuted = stream == baseSDP::SRTP_VIDEO && input.local.fVideoTxMuted;
    const auto& [carries, sends, receives] = kTopics[stream];
    const bool isTakenAsMain = stream == baseSDP::SRTP_VIDEO_PRESO && state.record.m_VideoMain.fIsVideoValid;
    if (IsDeclined(view)) {
        state.Say({carries, About::Codec, which, true, true}, {name, " is declined"});
    } else if (view.isThere) {
        state.Say({carries, About::Codec, which, !runs, true},
                  {name, " has ", view.codec[0], view.codec[1], view.codec[2]});
    } else {
        state.Say(
            {carries, About::Codec, which, !runs, true},
            {"there is no section for ", name, isTakenAsMain ? ", all video counts as main video" : ""});
    }
    const bool isSent = runs && view.send && !isMuted;
    state.Say({sends, About::Sending, which, !isSent, false, !runs},
              {name, isSent ? " is sent" : " is not sent"});
    const bool isReceived = runs && view.receive;
    state.Say({receives, About::Receiving, which, !isReceived, false, !runs},
              {name, isReceived ? " is received" : " is not received"});
    if (!view.isThere) {
        state.Say({sends, About::Place, which, true, true, true}, {"there is no section for ", name});
    } else if (view.address.empty()) {
        state.Say({sends, About::Place, which, true, true, !runs}, {name, " has no address to be sent to"});
    } else if (view.port == 0) {
        state.Say({sends, About::Place, which, true, true, !runs}, {name, " has port 0"});
    } else {
        state.Say({sends, About::Place, which, IsDeadPlace(view), true, !runs},
                  {name, " is sent to the address ", AsShown(view.address), " port ", view.port});
    }
    if (stream != baseSDP::SRTP_AUDIO && runs && !IsDeclined(view)) {
        state.Say({carries, About::Limits, which}, {name, " is sent with "});
        SayLimits(state,
                  stream == baseSDP::SRTP_VIDEO ? state.record.m_VideoMain : state.record.m_VideoPreso);
    } else if (stream != baseSDP::SRTP_AUDIO) {
        state.Say({carries, About::Limits, which, true, false, true}, {name, " has no picture format"});
    }
}

void AddOurCodec(State& state, baseSDP::SRTP_M_LINE stream, const View& view, const char* text) {
    const OurSection* const section = OurStream(state, stream);
    state.Say({kTopics[stream][0], About::OurCodec, Which(stream), !view.hasCodec},
              {text, " has ", view.codec[0], view.codec[1], view.codec[2], " for ", kStreamNames[stream]});
    if (stream != baseSDP::SRTP_AUDIO && view.hasCodec) {
        state.SayMore({" and "});
        SayLimits(state, stream == baseSDP::SRTP_VIDEO ? state.ours->read.m_VideoMain
                                                       : state.ours->read.m_VideoPreso);
    }
    if (section != nullptr && stream == baseSDP::SRTP_AUDIO) {
        const char* before = ", formats ";
        for (const std::string_view format : section->formats) {
            state.SayMore({before, format});
            before = " ";
        }
    }
}

void AddOurs(State& state, const ExplainInput& input, baseSDP::SRTP_M_LINE stream) {
    const char* const text = input.remoteAnswers ? "our offer" : "our answer";
    const char* const name = kStreamNames[stream];
    const unsigned char which = Which(stream);
    const View view = ViewOf(state.ours->read, stream);
    const auto& [carries, sends, receives] = kTopics[stream];
    if (!view.isThere) {
        const Pieces clause = {text, " has no section for ", name};
        state.Say({carries, About::OurCodec, which, true}, clause);
        state.Say({sends, About::OurSending, which, true}, clause);
        state.Say({receives, About::OurReceiving, which, true}, clause);
        return;
    }
    if (input.remoteAnswers || !IsDeclined(ViewOf(state.record, stream))) {
        AddOurCodec(state, stream, view, text);
    }
    state.Say({sends, About::OurSending, which, !view.receive},
              {text, " says that ", name, view.receive ? " is sent" : " is not sent"});
    if (view.send) {
        state.Say({receives, About::OurReceiving, which, IsDeadPlace(view)},
                  {text, " asks for ", name, " at ", AsShown(view.address), " port ", view.port});
    } else {
        state.Say({receives, About::OurReceiving, which, true}, {text, " does not ask for ", name});
    }
}

/// Whether the codec that is started is the one that our answer lists.
void AddMatch(State& state, const ExplainInput& input) {
    const PayloadType_t theirs = state.record.eAudioCodec;
    const PayloadType_t ours = state.ours->read.eAudioCodec;
    const bool areThere = theirs != PAYLOAD_UNKNOWN && ours != PAYLOAD_UNKNOWN;
    const bool isOther = !input.remoteAnswers && areThere && theirs != ours;
    for (const Topic topic : {Topic::AudioSend, Topic::AudioReceive, Topic::AudioCodec}) {
        if (isOther) {
            state.Say({topic, About::Match, 0, true, true},
                      {"audio is started as ", CodecName(theirs), " and our answer lists ", CodecName(ours)});
        } else {
            state.Say({topic, About::Match, 0, false, true}, {"our text has the codec that is started"});
        }
    }
}

/// Tones are sent in the RTP stream of the audio (RFC 4733, 2.1).
void AddPayload(State& state) {
    const View audio = ViewOf(state.record, baseSDP::SRTP_AUDIO);
    const std::int32_t tones = state.record.iDTMFPayload;
    if (tones == 0) {
        state.Say({Topic::Dtmf, About::Payload, 0, true, true}, {"tones have no payload and are not sent"});
    } else if (!audio.isThere || !audio.hasCodec || !audio.send || IsDeadPlace(audio)) {
        state.Say({Topic::Dtmf, About::Payload, 0, true, true},
                  {"tones are not sent, because audio is not sent"});
    } else {
        state.Say({Topic::Dtmf, About::Payload, 0, false, true}, {"tones are sent as payload ", tones});
    }
}

void AddAddress(State& state, baseSDP::SRTP_M_LINE stream) {
    const View view = ViewOf(state.record, stream);
    if (!view.isThere) {
        return;
    }
    const bool isLost = view.address.empty() || view.address == "0.0.0.0";
    state.Say({Topic::Call, About::AddressOf, Which(stream), isLost, true},
              {kStreamNames[stream],
               view.address.empty() ? " has no address to be sent to" : " is sent to the address ",
               AsShown(view.address)});
}

/// What is sent to the far end and what our text asks for.
void AddStream(State& state, const ExplainInput& input, baseSDP::SRTP_M_LINE stream) {
    AddAddress(state, stream);
    AddTheirs(state, input, stream);
    AddOurs(state, input, stream);
}

} // namespace

void AddAudio(State& state, const ExplainInput& input, const Sections& /*sections*/) {
    AddStream(state, input, baseSDP::SRTP_AUDIO);
}

void AddMain(State& state, const ExplainInput& input, const Sections& /*sections*/) {
    AddStream(state, input, baseSDP::SRTP_VIDEO);
}

void AddSlides(State& state, const ExplainInput& input, const Sections& /*sections*/) {
    AddStream(state, input, baseSDP::SRTP_VIDEO_PRESO);
}

void AddFloor(State& state, const ExplainInput& input, const Sections& sections) {
    const RemoteSDP& record = state.record;
    const RemoteSDP& read = state.ours->read;
    bool isThere = false;
    for (const MediaSession* const section : sections) {
        isThere = isThere || sdp::IsBfcp(*section);
    }
    const Fact port{Topic::Floor, About::Port, 0,
                    record.iVideoPresoControlPort <= 0 || record.iVideoPresoControlPort > 65535, true};
    if (isThere) {
        state.Say(port, {"floor control goes to port ", record.iVideoPresoControlPort});
    } else {
        state.Say(port, {"there is no floor control section"});
    }
    state.Say({Topic::Floor, About::Ids, 0, false, false, !isThere},
              {"the conference is ", record.iBfcpConfid, " and the user ", record.iBfcpUserid});
    state.Say({Topic::Floor, About::Role, 0, false, false, !isThere},
              {record.fBfcpIsServer ? "the far end is the floor control server"
                                    : "the far end is taken as floor control client"});
    const char* const text = input.remoteAnswers ? "our offer" : "our answer";
    const Fact ours{Topic::Floor, About::OurFloor, 0, isThere && read.iVideoPresoControlPort <= 0};
    if (read.iVideoPresoControlPort == 0) {
        state.Say(ours, {text, " has no floor control"});
    } else {
        state.Say(ours, {text, " has floor control at port ", read.iVideoPresoControlPort,
                         read.fBfcpIsServer ? " as server" : " as client or both"});
    }
}

void AddTones(State& state, const ExplainInput& input, const Sections& /*sections*/) {
    AddMatch(state, input);
    AddPayload(state);
}

void AddBandwidth(State& state, const ExplainInput& /*input*/, const Sections& /*sections*/) {
    const std::int32_t theirs = state.record.iMaxBandwidth;
    if (theirs == 0) {
        state.Say({Topic::Bandwidth, About::Bandwidth, 0, false, false, true},
                  {"the far end's bandwidth is not limited"});
    } else {
        state.Say({Topic::Bandwidth, About::Bandwidth}, {"the far end's limit is ", theirs, " bit/s"});
    }
    const std::int32_t ours = state.ours->read.iMaxBandwidth;
    if (ours == 0) {
        state.Say({Topic::Bandwidth, About::OurBandwidth}, {"our text gives no bandwidth"});
    } else {
        state.Say({Topic::Bandwidth, About::OurBandwidth}, {"our text gives ", ours, " bit/s in all"});
    }
}

} // namespace explain
