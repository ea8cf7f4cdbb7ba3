// rtpmap and fmtp lines of one video and one audio section, H.264 levels and limits, G.722.1 and telephone
// events, against an independent model that shares no code with the component.
//
// Byte 0 chooses the local audio codecs, byte 1 how many formats there are; the rest is text: its first line
// lists formats, and every further line is one that the dispatch gives to the format handlers.
#include "Cost.h"
#include "Handling.h"
#include "Judged.h"
#include "Keys.h"
#include "Laws.h"
#include "Targets.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <vector>

namespace fuzz {

namespace {

constexpr Budget kFormats = {"format lines", 8192, 72, 8192, 96};

using Words = std::vector<std::string>;

Words SplitWords(const std::string& line) {
    std::istringstream stream(line);
    Words words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

/// The parts between separators, empty parts included; none for an empty text.
Words SplitAt(const std::string& text, char separator) {
    Words pieces;
    std::string piece;
    for (const char c : text) {
        if (c == separator) {
            pieces.push_back(piece);
            piece.clear();
        } else {
            piece += c;
        }
    }
    if (!text.empty()) {
        pieces.push_back(piece);
    }
    return pieces;
}

bool IsDigits(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

std::int32_t ToNumber(const std::string& text) {
    return static_cast<std::int32_t>(std::strtol(text.c_str(), nullptr, 10));
}

struct Format {
    std::string payload;
    std::string name;
    Words parms;
};

using Formats = std::vector<Format>;

Format* FindFormat(Formats& formats, const std::string& payload) {
    const auto found =
        std::find_if(formats.begin(), formats.end(), [&](const Format& f) { return f.payload == payload; });
    return found == formats.end() ? nullptr : &*found;
}

bool Has(const std::string& text, const char* keyword) {
    return text.find(keyword) != std::string::npos;
}

void ReadLine(Formats& formats, const std::string& line) {
    if (Has(line, "a=rtpmap")) {
        const Words words = SplitWords(line);
        if (words.size() < 2 || words[0].size() < 9) {
            return;
        }
        if (Format* const format = FindFormat(formats, words[0].substr(9))) {
            format->name = words[1];
        }
    } else if (Has(line, "a=fmtp:")) {
        const std::size_t blank = line.find(' ');
        if (blank == std::string::npos || blank < 7) {
            return;
        }
        const Words parms = SplitAt(line.substr(blank + 1), ';');
        Format* const format = FindFormat(formats, line.substr(7, blank - 7));
        if (format != nullptr && !parms.empty()) {
            format->parms = parms;
        }
    }
}

const char* const kLevels[] = {"1",   "1.1", "1.2", "1.3", "2",   "2.1", "2.2", "3",
                               "3.1", "3.2", "4",   "4.1", "4.2", "5",   "5.1"};

bool IsLevel(const std::string& name) {
    return name == "1.b" || std::find(std::begin(kLevels), std::end(kLevels), name) != std::end(kLevels);
}

/// Computes the levels: ten times the level in hexadecimal, and the private code of 1b.
std::string LevelName(const std::string& digits) {
    const unsigned long number = std::strtoul(digits.c_str(), nullptr, 16);
    if (number == 255) {
        return "1.b";
    }
    for (const char* const name : kLevels) {
        const std::string text(name);
        const unsigned long tenfold = static_cast<unsigned long>(text[0] - '0') * 10 +
                                      (text.size() == 3 ? static_cast<unsigned long>(text[2] - '0') : 0UL);
        if (tenfold == number) {
            return text;
        }
    }
    return "1.3";
}

void LoadParms(VideoParms& video, const Words& parms) {
    struct Row {
        const char* key;
        std::int32_t VideoParms::*field;
    };
    static constexpr Row rows[] = {{"max-mbps", &VideoParms::iFmtpMaxMbps},
                                   {"max-fs", &VideoParms::iFmtpMaxFrameSize},
                                   {"max-br", &VideoParms::iFmtpMaxBitRate},
                                   {"packetization-mode", &VideoParms::iFmtpPacketizationMode}};
    for (const std::string& parm : parms) {
        const Words pieces = SplitAt(parm, '=');
        // After a final "=" the value is an empty text, which no field accepts.
        if (pieces.size() < 2) {
            continue;
        }
        if (Has(pieces[0], "profile-level-id")) {
            if (pieces[1].size() >= 4) {
                video.strVideoLevel = LevelName(pieces[1].substr(4));
            }
            continue;
        }
        for (const Row& row : rows) {
            if (Has(pieces[0], row.key)) {
                if (IsDigits(pieces[1])) {
                    video.*row.field = ToNumber(pieces[1]);
                }
                break;
            }
        }
    }
}

VideoParms WantedVideo(const Formats& formats) {
    VideoParms video;
    video.eVideoCodec = PAYLOAD_H264;
    video.eVideoType = VIDEOTYPE_MAIN;
    video.iVideoRTPPort = 5002;
    video.strVideoIPAddr = "192.0.2.2";
    video.fVideoSend = video.fVideoRecv = video.fIsVideoValid = true;
    for (const Format& format : formats) {
        if (Has(format.name, "H264/9000")) {
            video.iVideoPayload = ToNumber(format.payload);
            LoadParms(video, format.parms);
            if (video.iFmtpPacketizationMode != 0) {
                break;
            }
        }
    }
    return video;
}

bool IsG7221(const Format& format) {
    return format.name == "G7221/16000" &&
           std::any_of(format.parms.begin(), format.parms.end(),
                       [](const std::string& parm) { return parm.rfind("bitrate=32000", 0) == 0; });
}

std::int32_t MatchCodec(const Format& format, std::int32_t local) {
    if (format.payload == "9" && (local & PAYLOAD_G722) != 0) {
        return PAYLOAD_G722;
    }
    if (IsG7221(format) && (local & PAYLOAD_G7221) != 0) {
        return PAYLOAD_G7221;
    }
    if (format.payload == "0" && (local & PAYLOAD_G711U) != 0) {
        return PAYLOAD_G711U;
    }
    return format.payload == "18" && (local & PAYLOAD_G729) != 0 ? PAYLOAD_G729 : PAYLOAD_UNKNOWN;
}

void WantAudio(RemoteSDP& wanted, const Formats& formats, std::int32_t local) {
    for (const Format& format : formats) {
        if (wanted.eAudioCodec == PAYLOAD_UNKNOWN && MatchCodec(format, local) != PAYLOAD_UNKNOWN) {
            wanted.eAudioCodec = PayloadType_t(MatchCodec(format, local));
            wanted.iAudioPayload = ToNumber(format.payload);
        }
        if (format.name == "telephone-event/8000") {
            wanted.iDTMFPayload = ToNumber(format.payload);
        }
    }
    wanted.iAudioRTPPort = 5000;
    wanted.strAudioIPAddr = "192.0.2.2";
    wanted.fAudioSend = wanted.fAudioRecv = wanted.eAudioCodec != PAYLOAD_UNKNOWN;
    wanted.fIsAudioValid = true;
}

std::string FormatsText(const Formats& formats) {
    std::string out;
    for (const Format& format : formats) {
        out += "format " + format.payload + " name " + format.name + "\n";
        for (const std::string& parm : format.parms) {
            out += "  parm " + parm + "\n";
        }
    }
    return out;
}

std::string FormatsText(const MediaSession& ms) {
    Formats formats;
    for (const RtpMap* const rm : ms.vecRtpMap) {
        formats.push_back({rm->strPayload, rm->strEncodingName, rm->vecFmtpParms});
    }
    return FormatsText(formats);
}

/// Returns the line if the dispatch gives it to a format handler, otherwise an empty text: it must contain no
/// keyword of an earlier row and no line end.
bool IsFormatLine(const std::string& line) {
    return !Has(line, "c=") && !Has(line, "m=") && line.find('\r') == std::string::npos &&
           (Has(line, "a=rtpmap") || Has(line, "a=fmtp:"));
}

/// Adds `many` formats, so that the section is large enough for the index of formats.
Formats ListFormats(const std::string& line, std::size_t many) {
    Formats formats;
    for (const std::string& word : SplitWords(line)) {
        formats.push_back({word, {}, {}});
    }
    for (std::size_t i = 0; i < many; ++i) {
        formats.push_back({std::to_string(i * 7 % 128), {}, {}});
    }
    return formats;
}

std::string MediaLine(const char* media, const Formats& formats) {
    std::string line = media;
    for (const Format& format : formats) {
        line += " " + format.payload;
    }
    return line + "\r\n";
}

/// Converts levels in both directions: each level name, and each text of the input.
void CheckLevels(SDPHandler& handler, const std::string& text) {
    for (const std::string& piece : SplitAt(text, ';')) {
        RequireSame("digits name a level", "wanted", LevelName(piece), "read",
                    Judged("level", handler.ConvertVideoLevel(piece)));
        std::string digits = handler.ReverseConvertVideoLevel(piece);
        Judged("digits", digits);
        RequireSame("a level's digits name it again", "wanted", IsLevel(piece) ? piece : "2", "read",
                    handler.ConvertVideoLevel(digits));
    }
}

void Run(Input input, std::uint64_t secret) {
    Side side = WholeSide(secret);
    side.local.eAudioCodec = PayloadType_t(input.Byte());
    const std::uint8_t size = input.Byte();
    const std::size_t many = size < 128 ? 0 : std::size_t{size} * 2;

    std::string line;
    std::istringstream lines(input.Rest());
    std::getline(lines, line);
    if (line.find('=') != std::string::npos) {
        line.clear();
    }
    Formats formats = ListFormats(line, many);
    if (formats.empty()) {
        formats.push_back({"97", {}, {}});
    }
    std::string body;
    while (std::getline(lines, line)) {
        if (IsFormatLine(line)) {
            body += line + "\r\n";
            ReadLine(formats, line);
        }
    }
    const std::string text = "c=IN IP4 192.0.2.2\r\n" + MediaLine("m=audio 5000 RTP/AVP", formats) + body +
                             MediaLine("m=video 5002 RTP/AVP", formats) + body;

    SDPHandler handler;
    Prepare(handler, side);
    RemoteSDP remote;
    const Meter meter;
    handler.ParseTheSDP(text, remote);
    CheckCost(kFormats, meter.Read(), text.size());

    Require(Judged("handler", handler).vecRemoteMediaSession.size() == 2, "two sections are opened", text,
            text);
    for (const MediaSession* const ms : handler.vecRemoteMediaSession) {
        RequireSame("formats carry what their lines say", "wanted", FormatsText(formats), "read",
                    FormatsText(*ms));
    }
    RemoteSDP wanted;
    WantAudio(wanted, formats, side.local.eAudioCodec);
    wanted.m_VideoMain = WantedVideo(formats);
    RequireSame("the record holds what the formats say", "wanted", RecordText(wanted), "read",
                RecordText(Judged("record", remote)));
    CheckLevels(handler, text);
    CheckGoodTextAfterwards(handler, side);
    CheckHandling(side, text, {});
}

} // namespace

} // namespace fuzz

void FuzzFormat(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, fuzz::Run);
}
