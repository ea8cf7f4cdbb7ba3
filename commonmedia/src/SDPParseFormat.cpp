// Stage: parse, "a=rtpmap:" and "a=fmtp:" lines to payload formats (RFC 4566, 6).
// Input: one line without its CR LF. Output: encoding name or parameters of one format.
// Touches the formats of the last section, which its "m=" line has created.
// A line for a format that the "m=" line does not list changes nothing.
// Test: tests/unit/SDPParseFormatTest.cpp
#include "SDPHandler.h"

#include "SDPPayloadIndex.h"
#include "SDPText.h"
#include "VideoUtils.h"

namespace {

constexpr std::string_view kRtpmap = "a=rtpmap:";
constexpr std::string_view ATTR_FMTP = "a=fmtp:";

/// Up to this many formats are compared one by one, which costs less than an index.
constexpr std::size_t kFewFormats = 8;

} // namespace

void SDPHandler::ProcessRTPMap(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty()) {
        return;
    }
    sdp::Words words(SDPLine);
    const std::string_view first = words.Next();
    const std::string_view name = words.Next();
    // [P22] The keyword needs no colon, and the payload type begins after nine characters in any case:
    // "a=rtpmapX97" names payload type 97.
    // [G01] A line without a payload type at that offset or without a second word is dropped.
    if (first.size() < kRtpmap.size() || name.empty()) {
        return;
    }
    RtpMap* const rm = FindRtpMap(*vecRemoteMediaSession.back(), first.substr(kRtpmap.size()));
    if (rm != nullptr) {
        rm->strEncodingName = std::string(name);
    }
}

void SDPHandler::ProcessFMTP(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty() || sdp::Find(SDPLine, ATTR_FMTP) == std::string_view::npos) {
        return;
    }
    const std::size_t loc = sdp::FindByte(SDPLine, ' ');
    // [G03] A line whose first blank precedes the offset of the payload type is dropped.
    // [P20] The keyword may occur anywhere, and the payload type begins at its fixed offset in any case, so a
    // line with text before the keyword names a payload type that is not listed.
    if (loc == SDPLine.size() || loc < ATTR_FMTP.size()) {
        return;
    }
    // [P09] The parameters keep the blanks that "; " leaves before them.
    std::vector<std::string> fmtp;
    VideoUtils::split(fmtp, sdp::After(SDPLine, loc + 1), ";");
    if (fmtp.empty()) {
        return;
    }
    // [G09] The whole parameter list is stored once. Storing it once per parameter would take time that grows
    // with the square of the line's length, which the far end chooses.
    SaveFmtpParmsToRtpMap(vecRemoteMediaSession.back(), std::move(fmtp),
                          SDPLine.substr(ATTR_FMTP.size(), loc - ATTR_FMTP.size()));
}

void SDPHandler::SaveFmtpParmsToRtpMap(MediaSession* ms, std::vector<std::string> fmtp,
                                       std::string_view strPayload) {
    // [P08] The last line of a payload type replaces earlier ones; their parameters are not merged.
    if (RtpMap* const rm = FindRtpMap(*ms, strPayload)) {
        rm->vecFmtpParms = std::move(fmtp);
    }
}

RtpMap* SDPHandler::FindRtpMap(MediaSession& ms, std::string_view strPayload) {
    // [P07] For a payload type that the "m=" line lists twice the first entry is found; the second stays
    // empty.
    if (ms.vecRtpMap.size() > kFewFormats && payloadIndex != nullptr) {
        if (!payloadIndex->IsFor(ms)) {
            payloadIndex->Build(ms);
        }
        return payloadIndex->Find(strPayload);
    }
    for (RtpMap* const rm : ms.vecRtpMap) {
        if (rm->strPayload == strPayload) {
            return rm;
        }
    }
    return nullptr;
}
