// The repairs of far ends' texts: which there are, which are on, which were needed.
//
// Test: tests/negotiation/SDPRepairsTest.cpp
#pragma once

#include "SDPNegotiator.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace negotiation {

/// In the order of the table.
enum class RepairId : std::uint8_t {
    LineEnds,
    KeywordInside,
    Blanks,
    LetterCase,
    DynamicNumber,
    RenamedStatic,
    RepeatedNumber,
    JoinedParameters,
    UnlistedLevel,
    UnusableCrypto,
    EightyBitSuite,
    PlainCrypto,
    SessionDirection,
    SessionIce,
    SessionTias
};

class Repairs {
public:
    bool IsOn(RepairId id) const noexcept { return (m_on & Bit(id)) != 0; }
    /// Remembers that the text needed the repair.
    void Note(RepairId id) noexcept { m_needed |= Bit(id); }
    /// Asks for a repair where the text needs it: true, and remembered, when it is on.
    bool Use(RepairId id) noexcept {
        Note(id);
        return IsOn(id);
    }

    /// Forgets what the text before needed.
    void Begin() noexcept { m_needed = 0; }
    void SetAll(bool isOn) noexcept;
    bool Set(std::string_view id, bool isOn) noexcept;
    /// Those that the last text needed and that are on.
    std::vector<SDPNegotiator::Repair> Applied() const;
    static std::vector<SDPNegotiator::Repair> All();

private:
    static std::uint32_t Bit(RepairId id) noexcept { return std::uint32_t{1} << static_cast<unsigned>(id); }

    std::uint32_t m_on = ~std::uint32_t{0};
    std::uint32_t m_needed = 0;
};

} // namespace negotiation
