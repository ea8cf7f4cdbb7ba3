// Stage: parse, from a payload text to its format in a section that lists many.
// Input: the formats of one section. Output: the first format of a payload.
// Touches nothing but itself; it points into the section, which outlives it.
// Real payload numbers are looked up, other texts searched by halves: sorting cannot be made slow by choosing
// texts, as hashing can.
// Test: tests/unit/SDPPayloadIndexTest.cpp
#include "SDPPayloadIndex.h"

#include <algorithm>

sdp::PayloadIndex::Entry::Entry(std::string_view strPayload, RtpMap* pFormat)
    : start(0), text(strPayload), format(pFormat) {
    const std::size_t length = std::min(text.size(), sizeof start);
    for (std::size_t n = 0; n < length; ++n) {
        start = start << 8U | static_cast<unsigned char>(text[n]);
    }
    start <<= 8 * (sizeof start - std::max<std::size_t>(length, 1));
}

bool sdp::PayloadIndex::Entry::operator<(const Entry& other) const {
    return start != other.start ? start < other.start : text < other.text;
}

std::size_t sdp::PayloadIndex::PlainNumber(std::string_view strPayload) {
    constexpr std::size_t longest = 3;
    const bool fLeadingZero = strPayload.size() > 1 && strPayload.front() == '0';
    if (strPayload.empty() || strPayload.size() > longest || fLeadingZero) {
        return kNumbers;
    }
    std::size_t number = 0;
    for (const char c : strPayload) {
        if (c < '0' || c > '9') {
            return kNumbers;
        }
        number = number * 10 + static_cast<std::size_t>(c - '0');
    }
    return std::min(number, kNumbers);
}

bool sdp::PayloadIndex::IsFor(const MediaSession& ms) const {
    return m_pSection == &ms && m_formats == ms.vecRtpMap.size();
}

void sdp::PayloadIndex::Build(const MediaSession& ms) {
    m_pSection = nullptr;
    m_pLast = nullptr;
    m_byNumber.fill(nullptr);
    m_byText.clear();
    for (RtpMap* const rm : ms.vecRtpMap) {
        const std::size_t number = PlainNumber(rm->strPayload);
        if (number == kNumbers) {
            m_byText.emplace_back(rm->strPayload, rm);
        } else if (m_byNumber[number] == nullptr) {
            m_byNumber[number] = rm;
        }
    }
    // Stable, so that the first of equal payloads stays first.
    std::stable_sort(m_byText.begin(), m_byText.end());
    m_pSection = &ms;
    m_formats = ms.vecRtpMap.size();
}

RtpMap* sdp::PayloadIndex::Find(std::string_view strPayload) {
    const std::size_t number = PlainNumber(strPayload);
    if (number != kNumbers) {
        return m_byNumber[number];
    }
    // The fmtp line of a format follows its rtpmap line more often than not.
    if (m_pLast == nullptr || m_pLast->text != strPayload) {
        const auto found = std::lower_bound(m_byText.begin(), m_byText.end(), Entry(strPayload));
        if (found == m_byText.end() || found->text != strPayload) {
            return nullptr;
        }
        m_pLast = &*found;
    }
    return m_pLast->format;
}
