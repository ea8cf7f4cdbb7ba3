// Stage: parse, content, direction, bandwidth and floor control lines (RFC 4796, 4566, 3890, 4583).
// Input: one line without its CR LF. Output: one value.
// Touches the last section; a bandwidth before the first section is the session's.
// A value is the rest of the line after its keyword, trailing blanks included.
// Test: tests/unit/SDPParseAttributeTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "VideoUtils.h"

namespace {

/// Reads a line such as "a=confid:15": sets the target when a number follows the keyword.
void ReadNumber(std::string_view line, std::string_view keyword, std::int32_t& target) {
    const auto text = sdp::TextAfter(line, keyword);
    if (text && VideoUtils::IsNumber(*text)) {
        target = sdp::Number(*text);
    }
}

} // namespace

void SDPHandler::ProcessContent(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty() || vecRemoteMediaSession.back()->eMedia != MEDIA_VIDEO) {
        return;
    }
    if (const sdp::VideoRole* const row = sdp::FirstKeyword<sdp::kVideoRoles>(SDPLine)) {
        vecRemoteMediaSession.back()->eContent = row->role;
    }
}

void SDPHandler::ParseDirectionalAttribute(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty()) {
        return;
    }
    // [P14] The flags are this side's: it receives what the far end sends, and sends what the far end
    // receives.
    if (const sdp::Direction* const direction = sdp::FirstKeyword<sdp::kDirections>(SDPLine)) {
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
    if (vecRemoteMediaSession.empty()) {
        return;
    }
    // [P17] The floor control values are stored in the last section of any kind; only those of a BFCP section
    // are used.
    if (const auto text = sdp::TextAfter(SDPLine, "a=floorctrl:")) {
        vecRemoteMediaSession.back()->strFloorctrl = *text;
    }
}

void SDPHandler::ProcessBfcpConfid(std::string_view SDPLine) {
    if (!vecRemoteMediaSession.empty()) {
        ReadNumber(SDPLine, "a=confid:", vecRemoteMediaSession.back()->iBfcpConfid);
    }
}

void SDPHandler::ProcessBfcpUserid(std::string_view SDPLine) {
    if (!vecRemoteMediaSession.empty()) {
        ReadNumber(SDPLine, "a=userid:", vecRemoteMediaSession.back()->iBfcpUserid);
    }
}
