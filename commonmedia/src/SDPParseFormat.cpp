// Stage: parse, "a=rtpmap:" and "a=fmtp:" lines to payload formats (RFC 4566, 6).
// Input: one line without its CR LF. Output: encoding name or parameters of one format.
// Touches the formats of the last section; the formats themselves were made by its "m=" line.
// A line for a format that the "m=" line does not list changes nothing.
// Test: tests/unit/SDPParseFormatTest.cpp
#include "SDPHandler.h"

#include "SDPPayloadIndex.h"
#include "SDPText.h"
#include "VideoUtils.h"

namespace {

constexpr std::string_view kRtpmap = "a=rtpmap:";
constexpr std::string_view ATTR_FMTP = "a=fmtp:";

/// Up to this many formats are searched one by one, which is cheaper than an index for them.
constexpr std::size_t kFewFormats = 8;

} // namespace

void SDPHandler::ProcessRTPMap(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty()) {
        return;
    }
    sdp::Words words(SDPLine);
    const std::string_view first = words.Next();
    const std::string_view name = words.Next();
    // [P22] The keyword needs no colon, the payload is cut behind nine characters all the same: "a=rtpmapX97"
    // names payload 97.
    // [G01] The payload is cut at a fixed position and the name is the second word: a line that has neither
    // is dropped whole.
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
    // [G03] A blank in front of the payload's place leaves no payload to cut; the line is dropped whole.
    // [P20] The keyword may stand anywhere, the payload is cut at its fixed place all the same, so a line
    // with something in front of the keyword names a payload that nobody listed.
    if (loc == SDPLine.size() || loc < ATTR_FMTP.size()) {
        return;
    }
    // [P09] The pieces keep their blanks, as "; " in the line leaves them; who reads them knows.
    std::vector<std::string> fmtp;
    VideoUtils::split(fmtp, sdp::Behind(SDPLine, loc + 1), ";");
    if (fmtp.empty()) {
        return;
    }
    // [G09] Once is enough: attaching the same list again for each of its pieces would change nothing and
    // let the far end ask for the square of its text.
    SaveFmtpParmsToRtpMap(vecRemoteMediaSession.back(), std::move(fmtp),
                          SDPLine.substr(ATTR_FMTP.size(), loc - ATTR_FMTP.size()));
}

void SDPHandler::SaveFmtpParmsToRtpMap(MediaSession* ms, std::vector<std::string> fmtp,
                                       std::string_view strPayload) {
    // [P08] The last line of a payload stands alone; parameters of earlier lines are not merged into it.
    if (RtpMap* const rm = FindRtpMap(*ms, strPayload)) {
        rm->vecFmtpParms = std::move(fmtp);
    }
}

RtpMap* SDPHandler::FindRtpMap(MediaSession& ms, std::string_view strPayload) {
    // [P07] A payload that the "m=" line lists twice is the first of the two; the second stays bare.
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
