// Stage: parse, "a=rtpmap:" and "a=fmtp:" lines to payload formats (RFC 4566, 6).
// Input: one line without its CR LF. Output: encoding name or parameters of one format.
// Touches the formats of the last section, which its "m=" line has created, and the index of them.
// A line for a format that the "m=" line does not list changes nothing.
// Tests: tests/unit/SDPParseFormatTest.cpp, tests/unit/SDPPayloadIndexTest.cpp
#include "SDPHandler.h"

#include "SDPPayloadIndex.h"
#include "SDPText.h"
#include "VideoUtils.h"

#include <algorithm>

void SDPHandler::ProcessRTPMap(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty()) {
        return;
    }
    constexpr std::string_view keyword = "a=rtpmap:";
    sdp::Words words(SDPLine);
    const std::string_view first = words.Next();
    const std::string_view name = words.Next();
    // [P22] The keyword needs no colon, and the payload type begins after nine characters in any case:
    // "a=rtpmapX97" names payload type 97.
    // [G01] A line without a payload type at that offset or without a second word is dropped.
    if (first.size() < keyword.size() || name.empty()) {
        return;
    }
    RtpMap* const rm = FindRtpMap(*vecRemoteMediaSession.back(), first.substr(keyword.size()));
    if (rm != nullptr) {
        rm->strEncodingName = std::string(name);
    }
}

void SDPHandler::ProcessFMTP(std::string_view SDPLine) {
    constexpr std::string_view keyword = "a=fmtp:";
    if (vecRemoteMediaSession.empty() || sdp::Find(SDPLine, keyword) == std::string_view::npos) {
        return;
    }
    const std::size_t loc = sdp::FindByte(SDPLine, ' ');
    // [G03] A line whose first blank precedes the offset of the payload type is dropped.
    // [P20] The keyword may occur anywhere, and the payload type begins at its fixed offset in any case, so a
    // line with text before the keyword names a payload type that is not listed.
    if (loc == SDPLine.size() || loc < keyword.size()) {
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
                          SDPLine.substr(keyword.size(), loc - keyword.size()));
}

void SDPHandler::SaveFmtpParmsToRtpMap(MediaSession* ms, std::vector<std::string> fmtp,
                                       std::string_view strPayload) {
    // [P08] The last line of a payload type replaces earlier ones; their parameters are not merged.
    if (RtpMap* const rm = FindRtpMap(*ms, strPayload)) {
        rm->vecFmtpParms = std::move(fmtp);
    }
}

RtpMap* SDPHandler::FindRtpMap(MediaSession& ms, std::string_view strPayload) {
    // Up to this many formats are compared one by one, which costs less than an index.
    constexpr std::size_t fewFormats = 8;
    // [P07] Of two entries for one payload type the first is found; the second stays empty.
    if (ms.vecRtpMap.size() > fewFormats && payloadIndex != nullptr) {
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

std::size_t SDPHandler::PayloadIndex::PlainNumber(std::string_view payload) {
    if (payload.empty() || (payload.front() == '0' && payload.size() > 1)) {
        return kNumbers;
    }
    std::size_t number = 0;
    for (const char c : payload) {
        number = number * 10 + static_cast<std::size_t>(c - '0');
        if (!sdp::IsDigit(c) || number >= kNumbers) {
            return kNumbers;
        }
    }
    return number;
}

void SDPHandler::PayloadIndex::Build(const MediaSession& ms) {
    m_section = nullptr;
    m_byNumber.fill(nullptr);
    m_byText.clear();
    for (RtpMap* const rm : ms.vecRtpMap) {
        const std::size_t number = PlainNumber(rm->strPayload);
        if (number == kNumbers) {
            m_byText.push_back(rm);
        } else if (m_byNumber[number] == nullptr) {
            m_byNumber[number] = rm;
        }
    }
    // Stable, so that the first of equal payloads stays first.
    std::stable_sort(m_byText.begin(), m_byText.end(),
                     [](const RtpMap* a, const RtpMap* b) { return a->strPayload < b->strPayload; });
    m_section = &ms;
    m_formats = ms.vecRtpMap.size();
}

RtpMap* SDPHandler::PayloadIndex::Find(std::string_view payload) const {
    const std::size_t number = PlainNumber(payload);
    if (number != kNumbers) {
        return m_byNumber[number];
    }
    const auto found =
        std::lower_bound(m_byText.begin(), m_byText.end(), payload,
                         [](const RtpMap* rm, std::string_view text) { return rm->strPayload < text; });
    return found != m_byText.end() && (*found)->strPayload == payload ? *found : nullptr;
}
