// Finds the payload format of an rtpmap or fmtp line in a section that lists many.
//
// Fifty thousand formats with a line each would otherwise be searched fifty thousand times: 440 KB of text
// for seconds of work. The index is built when a large section is first asked, and lives while one text is
// read: nothing but the text changes the section meanwhile.
// Test: tests/unit/SDPPayloadIndexTest.cpp
#pragma once

#include "SDP.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace sdp {

class PayloadIndex {
public:
    /// True when the index was built for this section with as many formats as it has.
    bool IsFor(const MediaSession& ms) const;

    /// Indexes the formats of a section in place of those of another.
    void Build(const MediaSession& ms);

    /// The first format in "m=" line order whose payload is this text; null when there is none.
    RtpMap* Find(std::string_view strPayload);

private:
    /// RFC 3550, 5.1 gives seven bits to the payload type; one more costs nothing.
    static constexpr std::size_t kNumbers = 256;

    /// A payload that is no plain number. Nearly every comparison is settled by the first eight bytes.
    struct Entry {
        explicit Entry(std::string_view strPayload, RtpMap* pFormat = nullptr);
        bool operator<(const Entry& other) const;

        std::uint64_t start; ///< the first eight bytes, as a number that orders as they do
        std::string_view text;
        RtpMap* format;
    };

    /// The payload as a number below kNumbers; kNumbers for any text that such a number is not written as.
    static std::size_t PlainNumber(std::string_view strPayload);

    const MediaSession* m_pSection = nullptr;
    std::size_t m_formats = 0;
    std::array<RtpMap*, kNumbers> m_byNumber; ///< plain numbers
    std::vector<Entry> m_byText;              ///< everything else, sorted
    const Entry* m_pLast = nullptr;           ///< the one found last
};

} // namespace sdp
