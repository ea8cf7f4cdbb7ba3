// Notes on a stream's format, address and direction.
//
// Tests: tests/tool/NotesTest.cpp
#include "Notes.h"

#include "H264Level.h"
#include "SDPTables.h"
#include "Words.h"

#include <algorithm>
#include <iterator>

namespace cmsdp {

namespace {

// The payload type of an "a=fmtp:" line; empty when the line names none.
std::string_view PayloadOf(const ReadLine& line) {
    constexpr std::size_t keyword = 7;
    const std::size_t blank = line.text.find(' ');
    return line.row != SDPRow::Fmtp || blank == std::string_view::npos || blank < keyword
               ? ""
               : line.text.substr(keyword, blank - keyword);
}

std::int32_t ChosenPayload(const StreamView& view) {
    return view.video != nullptr ? view.video->iVideoPayload : view.reading.record.iAudioPayload;
}

Note ReplacedParameters(const StreamView& view) {
    const std::string payload = std::to_string(ChosenPayload(view));
    const ReadLine* last = nullptr;
    Note note{0, "P08", ""};
    for (const ReadLine& line : view.section.lines) {
        if (PayloadOf(line) != payload) {
            continue;
        }
        if (last != nullptr) {
            note.line = line.number;
            note.text = "this fmtp line of payload type " + payload + " replaces that of line " +
                        std::to_string(last->number) + ", whose parameters are lost";
        }
        last = &line;
    }
    return note;
}

// The line that gives the chosen format its parameters.
std::uint32_t ParameterLine(const StreamView& view) {
    const std::string payload = std::to_string(ChosenPayload(view));
    std::uint32_t number = view.section.line;
    for (const ReadLine& line : view.section.lines) {
        number = PayloadOf(line) == payload ? line.number : number;
    }
    return number;
}

// The level digits of the chosen format as the far end wrote them; empty when it wrote none.
std::string LevelDigits(const StreamView& view) {
    constexpr std::size_t profile = 4;
    const std::string payload = std::to_string(ChosenPayload(view));
    std::string digits;
    for (const RtpMap* format : view.section.session->vecRtpMap) {
        for (const std::string& parameter : format->vecFmtpParms) {
            const std::size_t equals = parameter.find('=');
            const bool level =
                format->strPayload == payload && equals != std::string::npos &&
                sdp::Contains(std::string_view(parameter).substr(0, equals), sdp::kProfileLevelId) &&
                parameter.size() > equals + profile;
            digits = level ? parameter.substr(equals + 1 + profile, 2) : digits;
        }
    }
    std::transform(digits.begin(), digits.end(), digits.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return digits;
}

Note UnknownLevel(const StreamView& view) {
    if (view.video == nullptr || view.video->strVideoLevel.empty()) {
        return {};
    }
    const std::string digits = LevelDigits(view);
    const bool known = std::find(std::begin(sdp::__strH264Profile2), std::end(sdp::__strH264Profile2),
                                 digits) != std::end(sdp::__strH264Profile2);
    return known || digits.empty()
               ? Note{}
               : Note{ParameterLine(view), "X06",
                      "the level digits " + Quoted(digits) + " are unknown here and are read as level " +
                          view.video->strVideoLevel + ", so the picture that we send is small"};
}

std::string AddressOf(const StreamView& view) {
    return view.video != nullptr ? view.video->strVideoIPAddr : view.reading.record.strAudioIPAddr;
}

Note NoAddress(const StreamView& view) {
    return AddressOf(view).empty()
               ? Note{view.section.line, "P18",
                      "neither the section nor the session has a c= line; in a first description media goes "
                      "nowhere, in a later one it stays where it went before"}
               : Note{};
}

Note UnspecifiedAddress(const StreamView& view) {
    if (AddressOf(view) != "0.0.0.0") {
        return {};
    }
    const MediaSession& session = *view.section.session;
    const bool ice = !session.vecCandidate.empty() || !session.striceufrag.empty();
    return ice ? Note{view.section.line, "G16",
                      "the address is 0.0.0.0 and the far end relies on ICE, which this side records and "
                      "does "
                      "not answer; no media comes up"}
               : Note{view.section.line, "P14",
                      "the address is 0.0.0.0, a hold as RFC 2543 wrote it; only the direction attributes "
                      "count here, so the stream is not shown as held, and nothing may be sent"};
}

Note Muted(const StreamView& view) {
    const bool muted = view.stream == baseSDP::SRTP_VIDEO && view.side.local.fVideoTxMuted;
    return muted ? Note{view.section.line, "B19",
                        std::string("video.muted of this side is true, so our answer says ") +
                            (view.video->fVideoRecv ? "recvonly" : "inactive") + " and nothing is sent"}
                 : Note{};
}

constexpr NoteRule kRules[] = {
    {"a=fmtp:97 packetization-mode=1\na=fmtp:97 max-fs=3600", ReplacedParameters},
    {"a=fmtp:97 profile-level-id=42e034", UnknownLevel},
    {"m=audio 5004 RTP/AVP 0", NoAddress},
    {"c=IN IP4 0.0.0.0", UnspecifiedAddress},
    {"m=video 5006 RTP/AVP 97", Muted},
};

} // namespace

std::vector<std::string> NotesOnStream(const StreamView& view) {
    return NotesBy(kRules, view);
}

} // namespace cmsdp
