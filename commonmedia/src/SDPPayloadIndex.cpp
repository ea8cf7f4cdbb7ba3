// Stage: parse, from a payload text to its format in a section that lists many.
// Input: the formats of one section. Output: the first format with a payload text.
// Touches nothing but itself; it points into the section, which outlives it.
// Plain numbers are looked up in an array, other texts by binary search: a far end can choose texts that make
// hashing slow, but none that make sorting slow.
// Test: tests/unit/SDPPayloadIndexTest.cpp
#include "SDPPayloadIndex.h"

#include "SDPText.h"

#include <algorithm>

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
