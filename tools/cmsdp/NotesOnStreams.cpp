// Notes on a stream's format, address and direction.
//
// Tests: tests/tool/notes.cases, NotesTest.cpp
#include "Notes.h"

#include "SDPTables.h"
#include "SDPText.h"
#include "Words.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace cmsdp {

namespace {

std::int32_t ChosenPayload(const StreamView& view) {
    return view.video != nullptr ? view.video->iVideoPayload : view.reading.record.iAudioPayload;
}

Note ReplacedParameters(const StreamView& view) {
    const std::string payload = std::to_string(ChosenPayload(view));
    const ReadLine* last = nullptr;
    Note note{0, "P08", ""};
    for (const ReadLine& line : view.section.lines) {
        if (line.row != SDPRow::Fmtp || PayloadOf(line) != payload) {
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

// The level digits of the chosen format as the far end wrote them: what follows the four characters of the
// profile. Nothing when it wrote no such parameter.
std::optional<std::string> LevelDigits(const StreamView& view) {
    constexpr std::size_t profile = 4;
    const std::string payload = std::to_string(ChosenPayload(view));
    std::optional<std::string> digits;
    for (const RtpMap* format : view.section.session->vecRtpMap) {
        for (const std::string& parameter : format->vecFmtpParms) {
            const std::size_t equals = parameter.find('=');
            const bool level =
                format->strPayload == payload && equals != std::string::npos &&
                sdp::Contains(std::string_view(parameter).substr(0, equals), sdp::kProfileLevelId) &&
                parameter.size() > equals + profile;
            digits = level ? parameter.substr(equals + 1 + profile) : digits;
        }
    }
    return digits;
}

Note UnknownLevel(const StreamView& view) {
    if (view.video == nullptr || view.video->strVideoLevel.empty()) {
        return {};
    }
    const std::optional<std::string> digits = LevelDigits(view);
    const bool known = digits && std::any_of(std::begin(sdp::__iH264Profile), std::end(sdp::__iH264Profile),
                                             [number = sdp::HexNumber(*digits)](int level) {
                                                 return static_cast<std::uint64_t>(level) == number;
                                             });
    return known || !digits
               ? Note{}
               : Note{LineOf(view.section, SDPRow::Fmtp, std::to_string(ChosenPayload(view))), "X06",
                      (digits->empty()
                           ? "profile-level-id ends before the level, which is"
                           : "the level digits " + Quoted(*digits) + " are unknown here and are") +
                          (" read as level " + view.video->strVideoLevel) +
                          ", so the picture that we send is small"};
}

std::string AddressOf(const StreamView& view) {
    return view.video != nullptr ? view.video->strVideoIPAddr : view.reading.record.strAudioIPAddr;
}

Note NoAddress(const StreamView& view) {
    return AddressOf(view).empty()
               ? Note{view.section.line, "P18",
                      "neither the section nor the session has an address; in a first description media goes "
                      "nowhere, in a later one it stays where it went before"}
               : Note{};
}

bool Sends(const StreamView& view) {
    return view.video != nullptr ? view.video->fVideoSend : view.reading.record.fAudioSend;
}

// ICE lines of a section count, and so do those of the session, although the component keeps none of them.
bool OffersIce(const StreamView& view) {
    const std::vector<ReadLine>& lines = view.reading.lines;
    return std::any_of(lines.begin(), lines.end(), [&view](const ReadLine& line) {
        return (line.row == SDPRow::Ice || line.row == SDPRow::Candidate) &&
               (line.section == 0 || line.section == view.section.index + 1);
    });
}

Note UnspecifiedAddress(const StreamView& view) {
    if (AddressOf(view) != "0.0.0.0") {
        return {};
    }
    if (OffersIce(view)) {
        return {view.section.line, "G16",
                "the address is 0.0.0.0 and the far end relies on ICE, which this side records and does not "
                "answer; no media comes up"};
    }
    return Sends(view) ? Note{view.section.line, "P14",
                              "the address is 0.0.0.0, a hold as RFC 2543 wrote it; only the direction "
                              "attributes count here, so the stream is not shown as held, and nothing may be "
                              "sent"}
                       : Note{};
}

Note Muted(const StreamView& view) {
    if (view.stream != baseSDP::SRTP_VIDEO || !view.side.local.fVideoTxMuted) {
        return {};
    }
    return view.answers
               ? Note{view.section.line, "B19",
                      std::string("video.muted of this side is true, so our answer says ") +
                          (view.video->fVideoRecv ? "recvonly" : "inactive") + " and nothing is sent"}
               : Note{view.section.line, "B19",
                      "video.muted of this side is true, so our offer said recvonly and nothing is "
                      "sent"};
}

constexpr NoteRule kStreamRules[] = {
    {"a=fmtp:97 packetization-mode=1\na=fmtp:97 max-fs=3600", ReplacedParameters},
    {"a=fmtp:97 profile-level-id=42e034", UnknownLevel},
    {"m=audio 5004 RTP/AVP 0", NoAddress},
    {"c=IN IP4 0.0.0.0", UnspecifiedAddress},
    {"m=video 5006 RTP/AVP 97", Muted},
};

} // namespace

std::vector<std::string> NotesOnStream(const StreamView& view) {
    return NotesBy(kStreamRules, view);
}

} // namespace cmsdp
