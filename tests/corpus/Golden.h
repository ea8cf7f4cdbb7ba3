// GoldenText(record, answer): the component's results in the form of a golden file.
//
// README.md in this directory describes the form. The fields are in declared order, those of the base first.
#pragma once

#include <SDP.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>

namespace golden {

/// Printable ASCII unchanged, a backslash doubled, a quotation mark escaped in strings, other bytes as \xNN.
inline std::string Visible(std::string_view text, bool isString) {
    static const char* const digits = "0123456789abcdef";
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\' || (isString && c == '"')) {
            shown += '\\';
            shown += c;
        } else if (byte >= 0x20 && byte < 0x7f) {
            shown += c;
        } else {
            shown += "\\x";
            shown += digits[byte >> 4U];
            shown += digits[byte & 0xfU];
        }
    }
    return shown;
}

template <std::size_t N>
std::string Hex(const unsigned char (&row)[N]) {
    static const char* const digits = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : row) {
        text += digits[byte >> 4U];
        text += digits[byte & 0xfU];
    }
    return text;
}

class Lines {
public:
    void Add(const std::string& name, std::int32_t value) { m_out << name << " = " << value << "\n"; }
    void Add(const std::string& name, bool value) {
        m_out << name << " = " << (value ? "true" : "false") << "\n";
    }
    void Add(const std::string& name, const std::string& valueText) {
        m_out << name << " = \"" << Visible(valueText, true) << "\"\n";
    }
    void AddRow(const std::string& name, int n, const std::string& text) {
        m_out << name << "[" << n << "] = " << text << "\n";
    }
    void AddStream(const std::string& name, const VideoParms& stream) {
        Add(name + ".iFmtpMaxMbps", stream.iFmtpMaxMbps);
        Add(name + ".iFmtpMaxFrameSize", stream.iFmtpMaxFrameSize);
        Add(name + ".iFmtpMaxBitRate", stream.iFmtpMaxBitRate);
        Add(name + ".eVideoCodec", std::int32_t{stream.eVideoCodec});
        Add(name + ".eVideoType", std::int32_t{stream.eVideoType});
        Add(name + ".iVideoRTPPort", stream.iVideoRTPPort);
        Add(name + ".strVideoLevel", stream.strVideoLevel);
        Add(name + ".strVideoIPAddr", stream.strVideoIPAddr);
        Add(name + ".iVideoPayload", stream.iVideoPayload);
        Add(name + ".iFmtpPacketizationMode", stream.iFmtpPacketizationMode);
        Add(name + ".fVideoSend", stream.fVideoSend);
        Add(name + ".fVideoRecv", stream.fVideoRecv);
        Add(name + ".fIsVideoValid", stream.fIsVideoValid);
    }
    std::string Text() const { return m_out.str(); }

private:
    std::ostringstream m_out;
};

inline std::string RemoteBlock(const RemoteSDP& remote) {
    Lines lines;
    lines.Add("eAudioCodec", std::int32_t{remote.eAudioCodec});
    lines.Add("iAudioRTPPort", remote.iAudioRTPPort);
    lines.Add("iVideoPresoControlPort", remote.iVideoPresoControlPort);
    lines.Add("iBfcpConfid", remote.iBfcpConfid);
    lines.Add("iBfcpUserid", remote.iBfcpUserid);
    lines.Add("fBfcpIsServer", remote.fBfcpIsServer);
    lines.Add("iMaxBandwidth", remote.iMaxBandwidth);
    lines.AddStream("m_VideoMain", remote.m_VideoMain);
    lines.AddStream("m_VideoPreso", remote.m_VideoPreso);
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        lines.AddRow("bufSRTPKey", n, Hex(remote.bufSRTPKey[n]));
    }
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        lines.AddRow("bufSRTPSalt", n, Hex(remote.bufSRTPSalt[n]));
    }
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        lines.AddRow("cryptoAlgo", n, std::to_string(remote.cryptoAlgo[n]));
    }
    lines.Add("strAudioIPAddr", remote.strAudioIPAddr);
    lines.Add("iAudioPayload", remote.iAudioPayload);
    lines.Add("iDTMFPayload", remote.iDTMFPayload);
    lines.Add("fAudioSend", remote.fAudioSend);
    lines.Add("fAudioRecv", remote.fAudioRecv);
    lines.Add("fIsAudioValid", remote.fIsAudioValid);
    return lines.Text();
}

/// Every CR LF as \r\n and a new line; text without CR LF continues on the same line.
inline std::string AnswerBlock(std::string_view answer) {
    std::string shown;
    for (std::size_t end = answer.find("\r\n"); end != std::string_view::npos; end = answer.find("\r\n")) {
        shown += Visible(answer.substr(0, end), false) + "\\r\\n\n";
        answer.remove_prefix(end + 2);
    }
    if (!answer.empty()) {
        shown += Visible(answer, false) + "\n";
    }
    return shown;
}

inline std::string GoldenText(const RemoteSDP& remote, std::string_view answer) {
    return "[remote]\n" + RemoteBlock(remote) + "[answer]\n" + AnswerBlock(answer);
}

} // namespace golden
