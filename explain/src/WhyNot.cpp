// Stage: pairs of remote formats and local codecs.
// Input: everything that decides how the call comes up. Output: pairs.
// Touches nothing. Whether a format is a codec is decided by a run of the component on this format alone;
// the first test that failed is the first whose mending makes it a match.
// Test: tests/explain/WhyNotTest.cpp
#include "Reading.h"
#include "SDPTables.h"
#include "State.h"

#include <algorithm>
#include <iterator>

namespace explain {

namespace {

/// A format alone: what its m=, rtpmap and fmtp lines say.
struct Format {
    std::string media;
    std::string payload;
    std::string name;       ///< empty without an rtpmap line
    std::string parameters; ///< empty without an fmtp line
};

struct Codec {
    PayloadType_t codec;
    std::string_view media;
    std::string_view payload; ///< of a static codec; empty for one that is known by its name
    std::string_view name;
    std::string parameters; ///< that make the format this codec
};

std::vector<Codec> KnownCodecs() {
    std::vector<Codec> codecs;
    for (const sdp::AudioCodec& row : sdp::kAudioCodecs) {
        codecs.push_back(row.isStatic ? Codec{row.codec, "audio", row.format.payload, "", ""}
                                      : Codec{row.codec, "audio", "", row.format.name,
                                              std::string(row.format.parameters)});
    }
    const std::string mode = std::string(sdp::kPacketizationMode) + "=";
    codecs.push_back({PAYLOAD_H264, "video", "", sdp::kH264Name, mode + "1"});
    codecs.push_back({PAYLOAD_H264_PACKETIZATION_0, "video", "", sdp::kH264Name, mode + "0"});
    return codecs;
}

/// Whether the component takes the format for the codec.
bool IsTaken(const Format& format, const Codec& codec) {
    std::string text = "m=" + format.media + " 1 RTP/AVP " + format.payload + "\r\n";
    text += format.name.empty() ? "" : "a=rtpmap:" + format.payload + " " + format.name + "\r\n";
    text += format.parameters.empty() ? "" : "a=fmtp:" + format.payload + " " + format.parameters + "\r\n";
    SDPHandler handler;
    handler.MyLocalSDP.eAudioCodec = codec.codec;
    RemoteSDP record;
    handler.ParseTheSDP(text, record);
    if (codec.media == "audio") {
        return record.eAudioCodec == codec.codec;
    }
    const bool isMode1 = record.m_VideoMain.iFmtpPacketizationMode != 0;
    return record.m_VideoMain.iVideoPayload != 0 && isMode1 == (codec.codec == PAYLOAD_H264);
}

std::string FaultOf(const Format& format, const Codec& codec) {
    if (!codec.payload.empty()) {
        return "Its payload number is " + Shown(format.payload) + " and not " + std::string(codec.payload) +
               ", by which alone " + std::string(CodecName(codec.codec)) + " is known (X12).";
    }
    Format named = format;
    named.name = codec.name;
    Format complete = named;
    complete.parameters = codec.parameters;
    Format renamed = format;
    renamed.parameters = codec.parameters;
    if (!IsTaken(renamed, codec) && IsTaken(complete, codec)) {
        return (format.name.empty() ? std::string("It has no rtpmap line with the name ")
                                    : "Its name is " + Shown(format.name) + " and not ") +
               std::string(codec.name) +
               (IsTaken(named, codec) ? "." : "; its parameters do not fit either.");
    }
    return (format.parameters.empty() ? std::string("It has no fmtp line")
                                      : "None of its parameters is read as needed") +
           ": " + std::string(CodecName(codec.codec)) + " takes a parameter that begins with " +
           codec.parameters + (codec.media == "audio" ? " (X01)." : ".");
}

Format FormatAt(const Reading& reading, const MeantSection& section, std::string_view payload) {
    Format format{section.media, std::string(payload), "", ""};
    const auto rtpmap = section.rtpmap.find(payload);
    if (rtpmap != section.rtpmap.end()) {
        const std::vector<std::string_view> words = WordsOf(reading.lines[rtpmap->second].text, 3);
        format.name = words.size() > 1 ? std::string(words[1]) : "";
    }
    const auto fmtp = section.fmtp.find(payload);
    if (fmtp != section.fmtp.end()) {
        const std::string_view line = reading.lines[fmtp->second].text;
        format.parameters = line.substr(std::min(line.find(' '), line.size() - 1) + 1);
    }
    return format;
}

bool IsOurs(const LocalSDP& local, const Codec& codec) {
    return codec.media == "audio" ? (local.eAudioCodec & codec.codec) != 0
                                  : (local.m_VideoMain.eVideoCodec & codec.codec) != 0;
}

} // namespace

} // namespace explain

std::vector<ExplainPair> ExplainWhyNot(const ExplainInput& input) {
    using namespace explain;
    const Reading reading = Read(input.remote);
    const std::vector<Codec> codecs = KnownCodecs();
    std::vector<ExplainPair> pairs;
    for (const MeantSection& section : reading.sections) {
        for (const std::string_view payload : section.formats) {
            const Format format = FormatAt(reading, section, payload);
            for (const Codec& codec : codecs) {
                if (codec.media != section.media) {
                    continue;
                }
                ExplainPair pair;
                pair.line = reading.lines[section.line].number;
                pair.format = Shown(payload);
                pair.encoding = Shown(format.name);
                pair.codec = codec.codec;
                const bool isTaken = IsTaken(format, codec);
                pair.isMatch = isTaken && IsOurs(input.local, codec);
                pair.firstFault = !isTaken ? FaultOf(format, codec)
                                  : pair.isMatch
                                      ? ""
                                      : "This side does not have " + std::string(CodecName(codec.codec)) +
                                            " in its codec set.";
                pairs.push_back(std::move(pair));
            }
        }
    }
    return pairs;
}
