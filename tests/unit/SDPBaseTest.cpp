// baseSDP: what an assignment leaves, the key rows, their end, and the dump.
#include "SDP.h"

#include "Expect.h"
#include "Fields.h"
#include "RecordSamples.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <string>

namespace {

TEST(SDPBase, AssignmentLeavesTheBfcpIdentity) {
    auto target = samples::Filled<baseSDP>();
    target = baseSDP();
    const std::string expected = support::Replaced(support::FieldsText(baseSDP()),
                                                   {{"iBfcpConfid = 0", "iBfcpConfid = 104"},
                                                    {"iBfcpUserid = 0", "iBfcpUserid = 105"},
                                                    {"fBfcpIsServer = false", "fBfcpIsServer = true"}});
    EXPECT_TEXT(support::FieldsText(target), expected);
}

/// `text` with the bytes of one row replaced.
std::string WithRow(const std::string& text, const std::string& row, const std::string& digits) {
    const std::size_t at = text.find(row + " = ") + row.size() + 3;
    return std::string(text).replace(at, digits.size(), digits);
}

TEST(SDPBase, SetKeyCopiesSixteenBytesIntoItsRowAlone) {
    const unsigned char key[17] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17};
    for (int row = 0; row < 3; ++row) {
        auto record = samples::Filled<baseSDP>();
        const std::string before = support::FieldsText(record);
        record.setSRTPKey(static_cast<baseSDP::SRTP_M_LINE>(row), key);
        EXPECT_TEXT(support::FieldsText(record), WithRow(before, "bufSRTPKey[" + std::to_string(row) + "]",
                                                         "0102030405060708090a0b0c0d0e0f10"));
    }
}

TEST(SDPBase, SetSaltCopiesFourteenBytesIntoItsRowAlone) {
    const unsigned char salt[15] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    for (int row = 0; row < 3; ++row) {
        auto record = samples::Filled<baseSDP>();
        const std::string before = support::FieldsText(record);
        record.setSRTPSalt(static_cast<baseSDP::SRTP_M_LINE>(row), salt);
        EXPECT_TEXT(support::FieldsText(record), WithRow(before, "bufSRTPSalt[" + std::to_string(row) + "]",
                                                         "0102030405060708090a0b0c0d0e"));
    }
}

TEST(SDPBase, RowsOutsideTheArrayAreIgnored) {
    const unsigned char bytes[16] = {9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
    for (const int row : {-1, 3, 4, 100, -2147483647}) {
        auto record = samples::Filled<baseSDP>();
        record.setSRTPKey(static_cast<baseSDP::SRTP_M_LINE>(row), bytes);
        record.setSRTPSalt(static_cast<baseSDP::SRTP_M_LINE>(row), bytes);
        samples::ExpectSame(record, samples::Filled<baseSDP>());
    }
}

// Suites are shown; keys and salts are not shown in any form.
TEST(SDPBase, DumpShowsEveryFieldButTheKeys) {
    EXPECT_TEXT(samples::Filled<baseSDP>().ToDiag(), samples::kFilledBaseDump);
}

// Memory that this test owns, so that it may be read after the record in it has ended.
template <typename Record>
class OwnedMemory {
public:
    Record* Make() { return ::new (static_cast<void*>(m_storage)) Record; }

    // The bytes of a field as they are in memory now, whatever the optimiser believes them to be.
    template <typename Field>
    std::size_t NonZero(std::ptrdiff_t at) const {
        const volatile unsigned char* const bytes = m_storage + at;
        std::size_t count = 0;
        for (std::size_t i = 0; i < sizeof(Field); ++i) {
            count += bytes[i] != 0 ? 1 : 0;
        }
        return count;
    }

private:
    alignas(Record) unsigned char m_storage[sizeof(Record)];
};

template <typename Record>
void ExpectKeysWipedAtTheEnd() {
    OwnedMemory<Record> memory;
    Record* const record = memory.Make();
    const std::ptrdiff_t keyAt = samples::At(*record, record->bufSRTPKey);
    const std::ptrdiff_t saltAt = samples::At(*record, record->bufSRTPSalt);
    std::memset(&record->bufSRTPKey, 0x5A, sizeof record->bufSRTPKey);
    std::memset(&record->bufSRTPSalt, 0x5A, sizeof record->bufSRTPSalt);
    EXPECT_EQ(memory.template NonZero<decltype(record->bufSRTPKey)>(keyAt), sizeof record->bufSRTPKey);
    EXPECT_EQ(memory.template NonZero<decltype(record->bufSRTPSalt)>(saltAt), sizeof record->bufSRTPSalt);
    // Qualified, because LocalSDP dispatches virtually and its destructor does not.
    record->Record::~Record();
    EXPECT_EQ(memory.template NonZero<decltype(record->bufSRTPKey)>(keyAt), 0U);
    EXPECT_EQ(memory.template NonZero<decltype(record->bufSRTPSalt)>(saltAt), 0U);
}

TEST(SDPBase, KeysAreWipedWhenARecordOfAnyKindEnds) {
    ExpectKeysWipedAtTheEnd<baseSDP>();
    ExpectKeysWipedAtTheEnd<LocalSDP>();
    ExpectKeysWipedAtTheEnd<RemoteSDP>();
    ExpectKeysWipedAtTheEnd<MediaSession>();
}

} // namespace
