// Numbers are the record's own: 0 is what SDP.h says it is there. Enumerations are written by name, null for
// what is not there at all.
//
// Tests: tests/tool/inspect.cases
#include "ReportJson.h"

#include "Fit.h"
#include "FitJson.h"
#include "Keys.h"
#include "Names.h"

#include <nlohmann/json.hpp>

namespace cmsdp {

namespace {

using nlohmann::ordered_json;
using Quor::media::rtp::CryptoParams;

class Json {
public:
    Json(const Report& report, Secrets& secrets) : m_report(report), m_secrets(secrets) {}
    void Whole(ordered_json& root);
    ordered_json Notes(const std::vector<std::string>& notes);
    ordered_json Fit();

private:
    void Verdict(ordered_json& object, const Finding& finding);
    void Direction(ordered_json& object, bool send, bool recv);
    void Security(ordered_json& object, baseSDP::SRTP_M_LINE stream);
    ordered_json Audio();
    ordered_json Video(const Finding& finding, const VideoParms& video, baseSDP::SRTP_M_LINE stream);
    ordered_json FloorControl();

    const Report& m_report;
    Secrets& m_secrets;
};

ordered_json Json::Notes(const std::vector<std::string>& notes) {
    ordered_json list = ordered_json::array();
    for (const std::string& note : notes) {
        list.push_back(m_secrets.Hide(note));
    }
    return list;
}

void Json::Verdict(ordered_json& object, const Finding& finding) {
    object["negotiated"] = finding.negotiated;
    object["why"] = finding.negotiated ? ordered_json() : ordered_json(m_secrets.Hide(finding.why));
    object["notes"] = Notes(finding.notes);
}

void Json::Direction(ordered_json& object, bool send, bool recv) {
    object["sends"] = send;
    object["receives"] = recv;
}

void Json::Security(ordered_json& object, baseSDP::SRTP_M_LINE stream) {
    const RemoteSDP& record = m_report.record;
    const bool secure = record.cryptoAlgo[stream] != CryptoParams::CRYPTO_NONE;
    object["suite"] = secure ? ordered_json(NameOf(SuiteNames(), record.cryptoAlgo[stream])) : ordered_json();
    object["key"] = secure ? ordered_json(m_secrets.HideKey(InlineKey(record, stream))) : ordered_json();
}

ordered_json Json::Audio() {
    const RemoteSDP& record = m_report.record;
    const bool codec = record.eAudioCodec != PAYLOAD_UNKNOWN;
    ordered_json object;
    Verdict(object, m_report.audio);
    object["section_found"] = record.fIsAudioValid;
    object["codec"] = codec ? ordered_json(NameOf(CodecNames(), record.eAudioCodec)) : ordered_json();
    object["payload_type"] = record.iAudioPayload;
    object["dtmf_payload_type"] = record.iDTMFPayload;
    object["address"] = m_secrets.Hide(record.strAudioIPAddr);
    object["port"] = record.iAudioRTPPort;
    Direction(object, record.fAudioSend, record.fAudioRecv);
    Security(object, baseSDP::SRTP_AUDIO);
    return object;
}

ordered_json Json::Video(const Finding& finding, const VideoParms& video, baseSDP::SRTP_M_LINE stream) {
    ordered_json object;
    Verdict(object, finding);
    object["section_found"] = video.fIsVideoValid;
    object["codec"] = finding.hasCodec ? ordered_json("H264") : ordered_json();
    object["packetization_mode"] = video.iFmtpPacketizationMode;
    object["payload_type"] = video.iVideoPayload;
    object["address"] = m_secrets.Hide(video.strVideoIPAddr);
    object["port"] = video.iVideoRTPPort;
    Direction(object, video.fVideoSend, video.fVideoRecv);
    object["level"] = video.strVideoLevel;
    object["max_macroblocks_per_s"] = video.iFmtpMaxMbps;
    object["max_frame_macroblocks"] = video.iFmtpMaxFrameSize;
    object["max_bit_rate_x1000_bit_per_s"] = video.iFmtpMaxBitRate;
    Security(object, stream);
    return object;
}

ordered_json Json::FloorControl() {
    const RemoteSDP& record = m_report.record;
    ordered_json object;
    Verdict(object, m_report.floorControl);
    object["port"] = record.iVideoPresoControlPort;
    object["conference_id"] = record.iBfcpConfid;
    object["user_id"] = record.iBfcpUserid;
    object["far_end_is_server"] = record.fBfcpIsServer;
    return object;
}

ordered_json Json::Fit() {
    ordered_json object;
    object["why"] = m_report.fit.why.empty() ? ordered_json() : ordered_json(m_report.fit.why);
    object["repairs"] = RepairsJson(m_report.fit.repairs);
    object["sections"] = ordered_json::array();
    for (const SDPNegotiator::Stream& stream : m_report.fit.streams) {
        const bool isKept = IsAgreed(stream);
        object["sections"].push_back({{"section", stream.section},
                                      {"kept", isKept},
                                      {"why", isKept ? ordered_json() : ordered_json(stream.reason)}});
    }
    return object;
}

void Json::Whole(ordered_json& root) {
    const RemoteSDP& record = m_report.record;
    root["negotiated"] = AnythingNegotiated(m_report);
    root["max_bandwidth_bit_per_s"] = record.iMaxBandwidth;
    root["notes"] = Notes(m_report.inputNotes);
    for (const ordered_json& note : Notes(m_report.notes)) {
        root["notes"].push_back(note);
    }
    root["audio"] = Audio();
    root["main_video"] = Video(m_report.mainVideo, record.m_VideoMain, baseSDP::SRTP_VIDEO);
    root["presentation"] = Video(m_report.presentation, record.m_VideoPreso, baseSDP::SRTP_VIDEO_PRESO);
    root["floor_control"] = FloorControl();
}

} // namespace

std::string InspectJson(const Report& report, Secrets& secrets) {
    ordered_json root;
    root["schema"] = "cmsdp.inspect/1";
    Json json(report, secrets);
    json.Whole(root);
    root["our_answer"]["notes"] = json.Notes(report.answerNotes);
    root["fit"] = json.Fit();
    return Written(root);
}

std::string AnswerJson(const Report& report, Secrets& secrets) {
    ordered_json root;
    root["schema"] = "cmsdp.answer/1";
    root["answer"] = TextJson(report.answer, secrets);
    Json(report, secrets).Whole(root);
    return Written(root);
}

} // namespace cmsdp
