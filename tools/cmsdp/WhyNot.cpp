// cmsdp whynot: why was a codec not chosen?
//
// Tests: tests/tool/explain.cases
#include "ExplainText.h"
#include "Names.h"
#include "Outcome.h"
#include "Reading.h"
#include "RemoteText.h"
#include "SDPTables.h"
#include "SipHeaders.h"
#include "Timeline.h"
#include "Verbs.h"
#include "Words.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace cmsdp {

namespace {

// Whether a word is an encoding name, in any letter case, with its clock rate or without: "opus" and
// "OPUS/48000" of "opus/48000/2".
bool Names(const std::string& word, std::string_view encoding) {
    const std::string name = LowerCase(encoding);
    const std::string asked = LowerCase(word);
    return name.compare(0, asked.size(), asked) == 0 &&
           (name.size() == asked.size() || name[asked.size()] == '/');
}

struct KnownCodec {
    PayloadType_t codec;
    std::string_view encoding;
};

// The codecs that formats are compared with.
std::vector<KnownCodec> KnownCodecs() {
    std::vector<KnownCodec> known;
    for (const sdp::AudioCodec& row : sdp::kAudioCodecs) {
        known.push_back({row.codec, row.format.name});
    }
    known.push_back({PAYLOAD_H264, sdp::kH264Name});
    known.push_back({PAYLOAD_H264_PACKETIZATION_0, sdp::kH264Name});
    return known;
}

// The codecs of this side that a word names: "G711U", "PCMU", "h264".
std::set<PayloadType_t> CodecsNamed(const std::string& word) {
    std::set<PayloadType_t> codecs;
    for (const KnownCodec& known : KnownCodecs()) {
        if (Names(word, NameOf(CodecNames(), known.codec)) || Names(word, known.encoding)) {
            codecs.insert(known.codec);
        }
    }
    return codecs;
}

// "G711U (PCMU), G722, H264_MODE_1 (H264)"
std::string OurCodecs() {
    std::vector<std::string> words;
    for (const KnownCodec& known : KnownCodecs()) {
        std::string word = NameOf(CodecNames(), known.codec);
        const std::string_view encoding = known.encoding.substr(0, known.encoding.find('/'));
        if (word != encoding) {
            word.append(" (").append(encoding).append(")");
        }
        words.push_back(std::move(word));
    }
    return Listed(words, words.size());
}

// The name of a remote format; empty when neither its rtpmap line nor RFC 3551 gives one.
std::string NameOf(const ExplainPair& pair) {
    const char* const name = StaticName(pair.format);
    return !pair.encoding.empty() ? pair.encoding : name != nullptr ? name : "";
}

// Each format of the far end once.
std::vector<ExplainPair> FormatsOf(const std::vector<ExplainPair>& pairs) {
    std::vector<ExplainPair> formats;
    std::copy_if(pairs.begin(), pairs.end(), std::back_inserter(formats), [&](const ExplainPair& pair) {
        return formats.empty() || formats.back().line != pair.line || formats.back().format != pair.format;
    });
    return formats;
}

// The formats with that name, of a codec that this side has not.
std::vector<ExplainPair> FormatsNamed(const std::string& word, std::vector<ExplainPair> formats) {
    formats.erase(std::remove_if(formats.begin(), formats.end(),
                                 [&](const ExplainPair& pair) { return !Names(word, NameOf(pair)); }),
                  formats.end());
    for (ExplainPair& pair : formats) {
        pair.encoding = NameOf(pair);
        pair.isMatch = false;
        pair.firstFault = "This side has no such codec; it has " + OurCodecs() + ".";
    }
    return formats;
}

std::string TheirFormats(const std::vector<ExplainPair>& formats) {
    constexpr std::size_t most = 16;
    std::vector<std::string> words;
    words.reserve(formats.size());
    for (const ExplainPair& pair : formats) {
        const std::string name = NameOf(pair);
        words.push_back(name.empty() ? "payload " + pair.format : name + " (" + pair.format + ")");
    }
    return words.empty() ? "the far end lists no format" : "the far end lists " + Listed(words, most);
}

} // namespace

Outcome RunWhyNot(const CommandLine& line, const Screen& /*screen*/) {
    Outcome outcome;
    ExplainInput input = InputOf(SideOf(line.local));
    input.remote = CleanedPaste(line.remote, ReadDescription(line.remote.name), outcome.notes);
    std::vector<ExplainPair> pairs = ExplainWhyNot(input);
    const std::vector<ExplainPair> formats = FormatsOf(pairs);
    const std::set<PayloadType_t> codecs = CodecsNamed(line.codec);
    if (codecs.empty()) {
        outcome.text = PairsText(FormatsNamed(line.codec, formats));
        if (outcome.text.empty()) {
            throw ToolError(kUsage, Quoted(line.codec) + " is a codec of neither side; this side has " +
                                        OurCodecs() + ", and " + TheirFormats(formats));
        }
        return outcome;
    }
    pairs.erase(std::remove_if(pairs.begin(), pairs.end(),
                               [&](const ExplainPair& pair) { return codecs.count(pair.codec) == 0; }),
                pairs.end());
    outcome.text = PairsText(pairs);
    if (pairs.empty()) {
        outcome.notes.push_back("the far end lists no format for " + line.codec);
    }
    return outcome;
}

} // namespace cmsdp
