// Finds the payload format of an rtpmap or fmtp line in a section that lists many.
//
// Comparing every line with every format would cost the square of the text: 440 KB with fifty thousand
// formats took seconds. Plain numbers are looked up in an array, other texts by binary search: a far end can
// choose texts that make hashing slow, but none that make sorting slow.
// Test: tests/unit/SDPPayloadIndexTest.cpp
#pragma once

#include "SDPHandler.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

/// Built for a large section when one of its formats is first looked up, and dropped at the end of the parse;
/// nothing but the text changes the section in between.
class SDPHandler::PayloadIndex {
public:
    /// True when the index was built for this section and its present number of formats.
    bool IsFor(const MediaSession& ms) const { return m_section == &ms && m_formats == ms.vecRtpMap.size(); }

    /// Indexes the formats of a section and forgets those of the previous one.
    void Build(const MediaSession& ms);

    /// The first format in "m=" line order with this payload text; null when there is none.
    RtpMap* Find(std::string_view payload) const;

private:
    /// Payload types have seven bits (RFC 3550, 5.1); an eighth is cheap.
    static constexpr std::size_t kNumbers = 256;

    /// The payload as a number below kNumbers; kNumbers for a text that is not the plain decimal of one.
    static std::size_t PlainNumber(std::string_view payload);

    const MediaSession* m_section = nullptr;
    std::size_t m_formats = 0;
    std::array<RtpMap*, kNumbers> m_byNumber; ///< formats of plain numbers; set by Build
    std::vector<RtpMap*> m_byText;            ///< every other format, sorted by payload
};
