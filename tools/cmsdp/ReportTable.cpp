// One block per stream, in the order of the record. A stream that did not come up shows why and nothing else:
// its other values are not what anything starts with.
//
// Tests: tests/tool/inspect.cases
#include "ReportTable.h"

#include "Keys.h"
#include "Names.h"
#include "Visible.h"
#include "Words.h"

namespace cmsdp {

namespace {

using Quor::media::rtp::CryptoParams;

// Rows of one block; what a stream has only when it is negotiated goes through Value.
class Rows {
public:
    Rows(std::string title, const Finding& finding, Secrets& secrets)
        : m_finding(finding), m_secrets(secrets) {
        m_block.title = std::move(title);
        const Mood mood = finding.negotiated ? Mood::kGood : Mood::kBad;
        m_block.rows.push_back({"state", {{finding.negotiated ? "negotiated" : "not negotiated", mood}}});
        m_block.rows.push_back({"why", {{Shown(finding.why)}}});
    }

    void Value(const char* label, const std::string& text) {
        m_block.rows.push_back({label, {{m_finding.negotiated ? Shown(text) : ""}}});
    }
    void Number(const char* label, std::int32_t number) { Value(label, std::to_string(number)); }
    void Security(const baseSDP& record, baseSDP::SRTP_M_LINE stream);

    Block Take() {
        std::string notes;
        for (const std::string& note : m_finding.notes) {
            notes += (notes.empty() ? "" : "\n") + Shown(note);
        }
        m_block.rows.push_back({"note", {{notes}}});
        return std::move(m_block);
    }

private:
    std::string Shown(const std::string& text) { return Visible(m_secrets.Hide(text)); }

    Block m_block;
    const Finding& m_finding;
    Secrets& m_secrets;
};

void Rows::Security(const baseSDP& record, baseSDP::SRTP_M_LINE stream) {
    const bool secure = record.cryptoAlgo[stream] != CryptoParams::CRYPTO_NONE;
    Value("suite", NameOf(SuiteNames(), record.cryptoAlgo[stream]));
    const bool shown = secure && m_finding.negotiated;
    Value("key", shown ? m_secrets.HideKey(InlineKey(record, stream)) : "");
}

std::string AddressAndPort(const std::string& address, std::int32_t port) {
    const bool colons = address.find(':') != std::string::npos;
    const std::string host = address.empty() ? "(no address)"
                             : colons        ? '[' + Short(address) + ']'
                                             : Short(address);
    return host + ':' + std::to_string(port);
}

std::string Limits(const VideoParms& video) {
    std::string limits;
    const auto add = [&limits](std::int32_t value, const char* unit) {
        if (value != 0) {
            limits += (limits.empty() ? "" : ", ") + std::to_string(value) + unit;
        }
    };
    add(video.iFmtpMaxMbps, " macroblocks/s");
    add(video.iFmtpMaxFrameSize, " macroblocks per frame");
    add(video.iFmtpMaxBitRate, " x1000 bit/s");
    const char* const otherwise = video.strVideoLevel.empty() ? "not given" : "those of the level";
    return limits.empty() ? otherwise : limits;
}

Block SessionBlock(const Report& report, Secrets& secrets) {
    const std::int32_t bandwidth = report.record.iMaxBandwidth;
    Block block{"session", {}};
    block.rows.push_back(
        {"bandwidth", {{bandwidth == 0 ? "not limited" : std::to_string(bandwidth) + " bit/s"}}});
    std::string notes;
    for (const std::string& note : report.notes) {
        notes += (notes.empty() ? "" : "\n") + Visible(secrets.Hide(note));
    }
    block.rows.push_back({"note", {{notes}}});
    return block;
}

Block Lines(const char* title, const char* label, const std::vector<std::string>& lines, Secrets& secrets) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\n") + Visible(secrets.Hide(line));
    }
    return {title, {{label, {{text}}}}};
}

Block AudioBlock(const Report& report, Secrets& secrets) {
    const RemoteSDP& record = report.record;
    Rows rows("audio", report.audio, secrets);
    rows.Value("codec", CodecInWords(record.eAudioCodec));
    rows.Number("payload type", record.iAudioPayload);
    rows.Value("DTMF payload", record.iDTMFPayload == 0 ? "none" : std::to_string(record.iDTMFPayload));
    rows.Value("address", AddressAndPort(record.strAudioIPAddr, record.iAudioRTPPort));
    rows.Value("direction", DirectionInWords(record.fAudioSend, record.fAudioRecv));
    rows.Security(record, baseSDP::SRTP_AUDIO);
    return rows.Take();
}

Block VideoBlock(const char* title, const Finding& finding, const VideoParms& video, const baseSDP& record,
                 baseSDP::SRTP_M_LINE stream, Secrets& secrets) {
    Rows rows(title, finding, secrets);
    rows.Value("codec", "H.264, packetization mode " + std::to_string(video.iFmtpPacketizationMode));
    rows.Number("payload type", video.iVideoPayload);
    rows.Value("address", AddressAndPort(video.strVideoIPAddr, video.iVideoRTPPort));
    rows.Value("direction", DirectionInWords(video.fVideoSend, video.fVideoRecv));
    rows.Value("level", video.strVideoLevel.empty() ? "not given" : video.strVideoLevel);
    rows.Value("limits", Limits(video));
    rows.Security(record, stream);
    return rows.Take();
}

Block FloorControlBlock(const Report& report, Secrets& secrets) {
    const RemoteSDP& record = report.record;
    Rows rows("floor control", report.floorControl, secrets);
    rows.Number("port", record.iVideoPresoControlPort);
    rows.Number("conference id", record.iBfcpConfid);
    rows.Number("user id", record.iBfcpUserid);
    rows.Value("far end", record.fBfcpIsServer ? "server only" : "client, or client and server");
    return rows.Take();
}

} // namespace

std::vector<Block> ReportBlocks(const Report& report, Secrets& secrets) {
    const RemoteSDP& record = report.record;
    std::vector<Block> blocks = {
        SessionBlock(report, secrets),
        AudioBlock(report, secrets),
        VideoBlock("main video", report.mainVideo, record.m_VideoMain, record, baseSDP::SRTP_VIDEO, secrets),
        VideoBlock("presentation", report.presentation, record.m_VideoPreso, record,
                   baseSDP::SRTP_VIDEO_PRESO, secrets),
        FloorControlBlock(report, secrets),
    };
    // A text that needs no repair, and an answer that everybody takes, are not worth a line.
    if (!report.answerNotes.empty()) {
        blocks.push_back(Lines("our answer", "note", report.answerNotes, secrets));
    }
    if (!report.answerNotes.empty() || !report.fit.repairs.empty()) {
        blocks.push_back(Lines("with --fit", "does", InWords(report.fit), secrets));
    }
    return blocks;
}

} // namespace cmsdp
