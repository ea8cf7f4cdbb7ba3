// Stage: parse, content, direction, bandwidth and floor control lines (RFC 4796, 4566, 3890, 4583).
// Input: one line without its CR LF. Output: one value.
// Touches the last section; only the bandwidth has a place for the session as well.
// A value is the rest of the line behind its keyword, trailing blanks included.
// Test: tests/unit/SDPParseAttributeTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "VideoUtils.h"

namespace {

/// Reads "a=confid:15" and its like: the number behind the keyword, when it is one.
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
    // [P14] The flags are this side's: what the far end sends this side receives, and the other way round.
    if (const sdp::Direction* const direction = sdp::FirstKeyword<sdp::kDirections>(SDPLine)) {
        vecRemoteMediaSession.back()->fSend = direction->receives;
        vecRemoteMediaSession.back()->fRecv = direction->sends;
    }
}

void SDPHandler::ProcessBandwidth(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty()) {
        // [P15] "AS:" occurs inside "TIAS:", so a session-level TIAS line is taken as kilobits.
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
    // [P17] The floor control values land in whatever section is last; only a BFCP section's are ever used.
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
