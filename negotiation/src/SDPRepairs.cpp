// Stage: prepare, the table of repairs.
// Input: what the reading of a text noted. Output: rows of the table.
// Touches nothing else; what each repair does is described where the lines of its kind are read.
// Test: tests/negotiation/SDPRepairsTest.cpp
#include "SDPRepairs.h"

#include <iterator>

namespace negotiation {
namespace {

struct Row {
    RepairId id;
    SDPNegotiator::Repair repair;
};

constexpr Row kRepairs[] = {
    {RepairId::LineEnds,
     {"R01", "P02 P03", "LF or CR alone ends a line as CR LF does, and the last line needs no end"}},
    {RepairId::KeywordInside,
     {"R02", "P01", "a line or parameter with another line's keyword in it is kept to what it begins with"}},
    {RepairId::Blanks, {"R03", "P09 X01 X09", "blanks around parameters and numbers are cut"}},
    {RepairId::LetterCase, {"R04", "X03 X12", "names of codecs count in any case of letters"}},
    {RepairId::DynamicNumber, {"R05", "X12", "a codec under a dynamic number is known by its name"}},
    {RepairId::RenamedStatic,
     {"R06", "X12", "a static number that an rtpmap line gives another name is what the name says"}},
    {RepairId::RepeatedNumber, {"R07", "P07", "a payload number listed twice counts once"}},
    {RepairId::JoinedParameters, {"R08", "P08", "several fmtp lines of one format are joined"}},
    {RepairId::UnlistedLevel,
     {"R09", "X05 X06", "level 1b is told by its constraint, a level above 5.1 counts as 5.1"}},
    {RepairId::UnusableCrypto,
     {"R10", "P11 P12 P19 P21", "crypto lines that cannot be used take no tag and no key"}},
    {RepairId::EightyBitSuite, {"R11", "P10 B21", "AES_CM_128_HMAC_SHA1_80 is read, and answered as itself"}},
    {RepairId::PlainCrypto, {"R12", "B21", "a crypto line of an RTP/AVP section is not answered"}},
    {RepairId::SessionDirection, {"R13", "P14", "a direction of the session counts in sections without one"}},
    {RepairId::SessionIce, {"R14", "P13", "ICE values of the session count in sections without their own"}},
    {RepairId::SessionTias, {"R15", "P15", "TIAS of the session is bit/s and not kbit/s"}},
};

constexpr bool AreRowsInOrder() {
    for (std::size_t index = 0; index < std::size(kRepairs); ++index) {
        if (static_cast<std::size_t>(kRepairs[index].id) != index) {
            return false;
        }
    }
    return true;
}
static_assert(AreRowsInOrder());

} // namespace

void Repairs::SetAll(bool isOn) noexcept {
    m_on = isOn ? ~std::uint32_t{0} : 0;
}

bool Repairs::Set(std::string_view id, bool isOn) noexcept {
    for (const Row& row : kRepairs) {
        if (row.repair.id == id) {
            m_on = isOn ? m_on | Bit(row.id) : m_on & ~Bit(row.id);
            return true;
        }
    }
    return false;
}

std::vector<SDPNegotiator::Repair> Repairs::Applied() const {
    std::vector<SDPNegotiator::Repair> applied;
    for (const Row& row : kRepairs) {
        if ((m_needed & m_on & Bit(row.id)) != 0) {
            applied.push_back(row.repair);
        }
    }
    return applied;
}

std::vector<SDPNegotiator::Repair> Repairs::All() {
    std::vector<SDPNegotiator::Repair> all;
    for (const Row& row : kRepairs) {
        all.push_back(row.repair);
    }
    return all;
}

} // namespace negotiation
