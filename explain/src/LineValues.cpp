// Stage: the values that lines set, read off sections of the component.
// Input: a section before or after a line, or a handler that is given one line. Output: texts to compare.
// Touches nothing outside.
// Test: tests/explain/LawTest.cpp, tests/tool/explain_outputs.py
#include "LineValues.h"

#include "Reading.h"
#include "SDPLines.h"
#include "SDPText.h"
#include "State.h"

namespace explain {

namespace {

const RtpMap* FormatOf(const SDPLine& line, std::string_view text, Formats& formats) {
    if (formats.section != line.section) {
        formats.byPayload.clear();
        formats.section = line.section;
        for (const RtpMap* const format : line.section->vecRtpMap) {
            formats.byPayload.emplace(format->strPayload, format);
        }
    }
    const auto found = formats.byPayload.find(PayloadTaken(line, text));
    return found == formats.byPayload.end() ? nullptr : found->second;
}

LineValue ValueOfFormat(const SDPLine& line, std::string_view text, Formats& formats) {
    const RtpMap* const format = FormatOf(line, text, formats);
    LineValue value;
    value.field = line.row == SDPRow::Rtpmap ? "strEncodingName" : "vecFmtpParms";
    if (format != nullptr && line.row == SDPRow::Rtpmap) {
        value.compared = format->strEncodingName;
    } else if (format != nullptr) {
        for (const std::string& parameter : format->vecFmtpParms) {
            value.compared += parameter + ";";
        }
    }
    value.shown = Shown(value.compared);
    return value;
}

LineValue Plain(std::string_view field, const std::string& text) {
    return {field, text, Shown(text)};
}

LineValue ValueOfIce(const MediaSession& section, std::string_view text) {
    if (text.find("a=ice-pwd") != std::string_view::npos &&
        text.find("a=ice-ufrag") == std::string_view::npos) {
        return Plain("stricepwd", section.stricepwd);
    }
    return Plain("striceufrag", section.striceufrag);
}

/// A handler that has read one section and this line, after a line that gives the field another value.
LineValue ValueAlone(const SDPLine& line, std::string_view text, const char* before) {
    const std::string payload(PayloadTaken(line, text));
    const char* const media = line.section->eMedia == MEDIA_VIDEO   ? "video"
                              : line.section->eMedia == MEDIA_AUDIO ? "audio"
                                                                    : "application";
    std::string alone =
        std::string("m=") + media + " 1 RTP/AVP " + (payload.empty() ? "0" : payload) + "\r\n" + before;
    const auto after = alone.find('%');
    if (after != std::string::npos) {
        alone.replace(after, 1, payload);
    }
    alone.append(text).append("\r\n");
    SDPHandler handler;
    RemoteSDP record;
    handler.ParseTheSDP(alone, record);
    const RemoteSections sections = handler.GetRemoteSections();
    if (sections.empty()) {
        return {};
    }
    Formats formats;
    const SDPLine last = {line.row, 0, 0, sections[0]};
    return ValueOfLine(last, text, formats);
}

/// Two lines that leave the field of a row with different values.
struct Opposites {
    const char* one;
    const char* other;
};
constexpr Opposites kOpposites[] = {
    {"c=IN IP4 1\r\n", "c=IN IP4 2\r\n"},
    {"", ""},
    {"a=rtpmap:% 1\r\n", "a=rtpmap:% 2\r\n"},
    {"a=fmtp:% 1\r\n", "a=fmtp:% 2\r\n"},
    {"a=crypto:98 X inline:0123456789012345678901234567890123456789\r\n",
     "a=crypto:99 X inline:0123456789012345678901234567890123456789\r\n"},
    {"a=ice-ufrag:1\r\na=ice-pwd:1\r\n", "a=ice-ufrag:2\r\na=ice-pwd:2\r\n"},
    {"", ""},
    {"a=content:main\r\n", "a=content:slides\r\n"},
    {"b=TIAS:1\r\n", "b=TIAS:2\r\n"},
    {"a=floorctrl:1\r\n", "a=floorctrl:2\r\n"},
    {"a=confid:1\r\n", "a=confid:2\r\n"},
    {"a=userid:1\r\n", "a=userid:2\r\n"},
    {"a=inactive\r\n", "a=sendrecv\r\n"},
};

} // namespace

std::string_view PayloadTaken(const SDPLine& line, std::string_view text) {
    const bool isRtpmap = line.row == SDPRow::Rtpmap;
    const std::string_view first = isRtpmap ? sdp::Words(text).Next() : text.substr(0, text.find(' '));
    const std::size_t at = isRtpmap ? sizeof "a=rtpmap:" - 1 : sizeof "a=fmtp:" - 1;
    return first.size() < at ? std::string_view() : first.substr(at);
}

LineValue ValueOfLine(const SDPLine& line, std::string_view text, Formats& formats) {
    if (line.section == nullptr) {
        return {};
    }
    const MediaSession& section = *line.section;
    switch (line.row) {
    case SDPRow::Connection:
        return Plain("strIPAddr", section.strIPAddr);
    case SDPRow::Rtpmap:
    case SDPRow::Fmtp:
        return ValueOfFormat(line, text, formats);
    case SDPRow::Crypto:
        return {"cryptoAlgo",
                std::to_string(section.cryptoAlgo) + "/" + std::to_string(section.iCryptoTag) + "/" +
                    section.strBase64Key,
                std::string(SuiteName(section.cryptoAlgo)) + ", tag " + std::to_string(section.iCryptoTag) +
                    (section.strBase64Key.empty() ? "" : ", key ***")};
    case SDPRow::Ice:
        return ValueOfIce(section, text);
    case SDPRow::Candidate:
        return Plain("vecCandidate", std::to_string(section.vecCandidate.size()));
    case SDPRow::Content:
        return Plain("eContent", section.eContent == VIDEOTYPE_PRESO  ? "slides"
                                 : section.eContent == VIDEOTYPE_MAIN ? "main"
                                                                      : "none");
    case SDPRow::Bandwidth:
        return Plain("strMaxBandwidth", section.strMaxBandwidth);
    case SDPRow::FloorControl:
        return Plain("strFloorctrl", section.strFloorctrl);
    case SDPRow::ConferenceId:
        return Plain("iBfcpConfid", std::to_string(section.iBfcpConfid));
    case SDPRow::UserId:
        return Plain("iBfcpUserid", std::to_string(section.iBfcpUserid));
    case SDPRow::Direction:
        return Plain("fSend, fRecv",
                     std::string(section.fSend ? "yes" : "no") + ", " + (section.fRecv ? "yes" : "no"));
    default:
        return {};
    }
}

bool IsUnderstood(const SDPLine& line, std::string_view text, Formats& formats) {
    if (line.row == SDPRow::None || line.row == SDPRow::Media || line.row == SDPRow::Candidate) {
        return false;
    }
    const bool isFormat = line.row == SDPRow::Rtpmap || line.row == SDPRow::Fmtp;
    if (isFormat && FormatOf(line, text, formats) == nullptr) {
        return false;
    }
    const Opposites& opposites = kOpposites[static_cast<std::size_t>(line.row)];
    const std::string one = ValueAlone(line, text, opposites.one).compared;
    const std::string other = ValueAlone(line, text, opposites.other).compared;
    if (line.row == SDPRow::Crypto) {
        // A line without a key or with an unknown suite leaves those of the line before it, and sets the tag.
        return one != ValueAlone(line, {}, opposites.one).compared ||
               other != ValueAlone(line, {}, opposites.other).compared;
    }
    // Whatever stood before it, a line that is understood leaves its own value.
    return one == other;
}

bool SaysAlone(const SDPLine& line, std::string_view text, const LineValue& value) {
    return ValueAlone(line, text, "").compared == value.compared;
}

SessionValue SessionValueOf(const SDPLine& line, std::string_view text) {
    SDPHandler handler;
    RemoteSDP record;
    handler.ParseTheSDP(std::string(text) + "\r\nm=audio 1 RTP/AVP 0\r\nb=TIAS:1\r\n", record);
    if (line.row == SDPRow::Connection) {
        return {!record.strAudioIPAddr.empty(), Shown(record.strAudioIPAddr)};
    }
    // A session bandwidth, a number or not, keeps the one of the section from being counted.
    return {record.iMaxBandwidth != 1, std::to_string(record.iMaxBandwidth) + " bit/s"};
}

std::size_t KeywordAt(std::string_view text, SDPRow row) {
    return text.find(sdp::kLineRows[static_cast<std::size_t>(row)].keyword);
}

std::string DigestOf(const ExplainInput& input) {
    SDPHandler handler;
    PrepareHandler(handler, input);
    RemoteSDP record;
    handler.ParseTheSDP(input.remote, record);
    std::string digest = record.ToDiag();
    for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
        digest.append(reinterpret_cast<const char*>(record.bufSRTPKey[stream]), baseSDP::kKeyLength);
        digest.append(reinterpret_cast<const char*>(record.bufSRTPSalt[stream]), baseSDP::kSaltLength);
    }
    for (const MediaSession* const section : handler.GetRemoteSections()) {
        digest += section->ToDiag() + section->strFullMLine + "\n" + section->strBase64Key +
                  std::to_string(section->iCryptoTag) + std::to_string(section->cryptoAlgo) +
                  section->striceufrag + section->stricepwd + std::to_string(section->eMedia);
        for (const std::string& candidate : section->vecCandidate) {
            digest += candidate + "\n";
        }
    }
    // The session id differs between runs, so the lines before "s=" are not compared.
    const std::string ours = input.remoteAnswers || handler.IsOffer() ? std::string() : handler.GetLocalSDP();
    const std::size_t origin = ours.find("\r\ns=");
    return digest + (origin == std::string::npos ? ours : ours.substr(origin));
}

} // namespace explain
