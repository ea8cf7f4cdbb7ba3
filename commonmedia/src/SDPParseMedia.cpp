// Stage: parse, sections and their values (RFC 4566, 5 and 6; RFC 4796, 3890, 4583).
// Input: one line without its CR LF. Output: a new section with its formats, or one value.
// Touches the list of sections, the last section, the session's address and bandwidth.
// White space separates words; the value of an attribute is the rest of its line, trailing blanks included.
// Tests: tests/unit/SDPParseMediaTest.cpp, tests/unit/SDPParseAttributeTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "VideoUtils.h"

#include <algorithm>
#include <memory>

namespace {

struct Media {
    std::string_view name;
    MediaType_t eMedia;
    VideoType_t eContent;
};

// A video section is main video until a content attribute says otherwise (RFC 4796, 5).
constexpr Media kMedia[] = {
    {"m=audio", MEDIA_AUDIO, VIDEOTYPE_UNKNOWN},
    {"m=video", MEDIA_VIDEO, VIDEOTYPE_MAIN},
    {"m=application", MEDIA_APPLICATION, VIDEOTYPE_UNKNOWN},
};

/// Reads a line such as "a=confid:15": sets a field of the last section when a number follows the keyword.
void ReadNumber(const std::vector<MediaSession*>& sections, std::string_view line, std::string_view keyword,
                std::int32_t MediaSession::*field) {
    const auto text = sdp::TextAfter(line, keyword);
    if (!sections.empty() && text && VideoUtils::IsNumber(*text)) {
        sections.back()->*field = sdp::Number(*text);
    }
}

} // namespace

void SDPHandler::ProcessMedia(std::string_view SDPLine) {
    sdp::Words words(SDPLine);
    const std::string_view media = words.Next();
    const std::string_view port = words.Next();
    words.Next(); // The transport is not examined; strFullMLine contains it.
    std::string_view format = words.Next();
    // [P05] Without a format the line opens no section, and the following lines belong to the previous one.
    if (format.empty()) {
        return;
    }
    // The handler owns the section before it is filled, so that nothing leaks when an allocation fails.
    auto section = std::make_unique<MediaSession>();
    vecRemoteMediaSession.push_back(section.get());
    MediaSession* const ms = section.release();

    ms->strFullMLine = std::string(SDPLine);
    // [P06] Any other medium gets a section too: its position decides what the answer rejects.
    if (const Media* const row = sdp::FindNamed<kMedia>(media)) {
        ms->eMedia = row->eMedia;
        ms->eContent = row->eContent;
    }
    ms->iPort = sdp::Number(port);
    // A format and its blank are at least two characters, so no push_back below allocates, and no format
    // leaks between new and push_back.
    constexpr std::size_t usualFormats = 8;
    ms->vecRtpMap.reserve(std::max(usualFormats, 1 + words.Left() / 2));
    for (; !format.empty(); format = words.Next()) {
        ms->vecRtpMap.push_back(new RtpMap{std::string(format), {}, {}});
    }
}

void SDPHandler::ProcessConnect(std::string_view SDPLine) {
    sdp::Words words(SDPLine);
    words.Next();
    words.Next();
    const std::string_view address = words.Next();
    if (address.empty()) {
        return;
    }
    // A multicast suffix such as "/127/3" stays part of the text: expanding it would let thirty bytes request
    // any number of addresses.
    (vecRemoteMediaSession.empty() ? strSessionIPAddr : vecRemoteMediaSession.back()->strIPAddr) = address;
}

void SDPHandler::ProcessContent(std::string_view SDPLine) {
    const sdp::VideoRole* const row = sdp::FirstKeyword<sdp::kVideoRoles>(SDPLine);
    const bool isInVideo =
        !vecRemoteMediaSession.empty() && vecRemoteMediaSession.back()->eMedia == MEDIA_VIDEO;
    if (row != nullptr && isInVideo) {
        vecRemoteMediaSession.back()->eContent = row->role;
    }
}

void SDPHandler::ParseDirectionalAttribute(std::string_view SDPLine) {
    const sdp::Direction* const direction = sdp::FirstKeyword<sdp::kDirections>(SDPLine);
    // [P14] The flags are this side's: it receives what the far end sends, and sends what that receives.
    if (direction != nullptr && !vecRemoteMediaSession.empty()) {
        vecRemoteMediaSession.back()->fSend = direction->receives;
        vecRemoteMediaSession.back()->fRecv = direction->sends;
    }
}

void SDPHandler::ProcessBandwidth(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty()) {
        // [P15] "TIAS:" contains "AS:", so a session-level TIAS line is read as kilobits.
        if (const auto text = sdp::TextAfter(SDPLine, "AS:")) {
            strMaxSessionBandwidth = *text;
        }
        return;
    }
    // [P16] Inside a section only TIAS counts; "b=AS:" there is ignored.
    if (const auto text = sdp::TextAfter(SDPLine, "TIAS:")) {
        vecRemoteMediaSession.back()->strMaxBandwidth = *text;
    }
}

void SDPHandler::ProcessBfcpFloorCtrl(std::string_view SDPLine) {
    const auto text = sdp::TextAfter(SDPLine, "a=floorctrl:");
    // [P17] Floor control values are stored in a section of any kind; only those of a BFCP section are used.
    if (text && !vecRemoteMediaSession.empty()) {
        vecRemoteMediaSession.back()->strFloorctrl = *text;
    }
}

void SDPHandler::ProcessBfcpConfid(std::string_view SDPLine) {
    ReadNumber(vecRemoteMediaSession, SDPLine, "a=confid:", &MediaSession::iBfcpConfid);
}

void SDPHandler::ProcessBfcpUserid(std::string_view SDPLine) {
    ReadNumber(vecRemoteMediaSession, SDPLine, "a=userid:", &MediaSession::iBfcpUserid);
}
