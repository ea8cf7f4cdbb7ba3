// baseSDP: the state of a new record, Reset, assignment, the key rows, their end, and the dump.
#include "SDP.h"

#include "Expect.h"
#include "RecordSamples.h"

#include <cstring>
#include <new>

namespace {

using samples::InDirtyMemory;

TEST(SDPBase, NewRecordIsEmptyAndItsStreamsHaveTheirRoles) {
    InDirtyMemory<baseSDP> record;
    samples::ExpectNewBase(*record);
}

TEST(SDPBase, ResetReturnsEveryFieldToTheStateOfANewRecord) {
    baseSDP record;
    samples::FillBase(record);
    record.Reset();
    samples::ExpectNewBase(record);
}

TEST(SDPBase, AssignmentReplacesEverythingButTheBfcpIdentity) {
    baseSDP source;
    samples::FillBase(source);
    baseSDP target;
    target.iBfcpConfid = 7;
    target.iBfcpUserid = 8;
    target.fBfcpIsServer = false;
    baseSDP& result = (target = source);
    EXPECT_EQ(&result, &target);
    samples::ExpectSameCarried(target, source);
    EXPECT_EQ(target.iBfcpConfid, 7);
    EXPECT_EQ(target.iBfcpUserid, 8);
    EXPECT_FALSE(target.fBfcpIsServer);
}

TEST(SDPBase, AssignmentKeepsASetServerFlagAgainstAClearOne) {
    const baseSDP source;
    baseSDP target;
    target.fBfcpIsServer = true;
    target = source;
    EXPECT_TRUE(target.fBfcpIsServer);
}

TEST(SDPBase, AssignmentCopiesKeyRowsWholeSpareByteIncluded) {
    baseSDP source;
    for (int n = 0; n < 3; ++n) {
        source.bufSRTPKey[n][16] = static_cast<unsigned char>(0x10 + n);
        source.bufSRTPSalt[n][14] = static_cast<unsigned char>(0x20 + n);
    }
    baseSDP target;
    target = source;
    EXPECT_EQ(target.bufSRTPKey[0][16], 0x10);
    EXPECT_EQ(target.bufSRTPKey[1][16], 0x11);
    EXPECT_EQ(target.bufSRTPKey[2][16], 0x12);
    EXPECT_EQ(target.bufSRTPSalt[0][14], 0x20);
    EXPECT_EQ(target.bufSRTPSalt[1][14], 0x21);
    EXPECT_EQ(target.bufSRTPSalt[2][14], 0x22);
}

TEST(SDPBase, AssignmentFromANewRecordEmptiesKeysAndStreams) {
    baseSDP target;
    samples::FillBase(target);
    target = baseSDP();
    samples::ExpectSameCarried(target, baseSDP());
    EXPECT_EQ(target.iBfcpConfid, 103);
    EXPECT_EQ(target.iBfcpUserid, 104);
    EXPECT_TRUE(target.fBfcpIsServer);
}

TEST(SDPBase, AssignmentToItselfChangesNothing) {
    baseSDP record;
    samples::FillBase(record);
    const baseSDP before(record);
    const baseSDP& itself = record;
    record = itself;
    samples::ExpectSameCarried(record, before);
    samples::ExpectSameBfcp(record, before);
}

// The copy constructor has no earlier identity to keep, so it copies its source's.
TEST(SDPBase, CopyConstructorCopiesTheBfcpIdentityToo) {
    baseSDP source;
    samples::FillBase(source);
    const baseSDP copy(source);
    samples::ExpectSameCarried(copy, source);
    EXPECT_EQ(copy.iBfcpConfid, 103);
    EXPECT_EQ(copy.iBfcpUserid, 104);
    EXPECT_TRUE(copy.fBfcpIsServer);
}

TEST(SDPBase, SetKeyCopiesSixteenBytesIntoItsRowAlone) {
    const unsigned char key[17] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17};
    for (int row = 0; row < 3; ++row) {
        baseSDP record;
        samples::FillRows(record.bufSRTPKey, 100);
        samples::FillRows(record.bufSRTPSalt, 30);
        unsigned char keys[3][17];
        unsigned char salts[3][15];
        std::memcpy(keys, record.bufSRTPKey, sizeof keys);
        std::memcpy(salts, record.bufSRTPSalt, sizeof salts);
        std::memcpy(keys[row], key, 16);
        record.setSRTPKey(static_cast<baseSDP::SRTP_M_LINE>(row), key);
        samples::ExpectSameRows(record.bufSRTPKey, keys);
        samples::ExpectSameRows(record.bufSRTPSalt, salts);
        EXPECT_EQ(record.cryptoAlgo[row], samples::CryptoParams::CRYPTO_NONE);
    }
}

TEST(SDPBase, SetSaltCopiesFourteenBytesIntoItsRowAlone) {
    const unsigned char salt[15] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    for (int row = 0; row < 3; ++row) {
        baseSDP record;
        samples::FillRows(record.bufSRTPKey, 100);
        samples::FillRows(record.bufSRTPSalt, 30);
        unsigned char keys[3][17];
        unsigned char salts[3][15];
        std::memcpy(keys, record.bufSRTPKey, sizeof keys);
        std::memcpy(salts, record.bufSRTPSalt, sizeof salts);
        std::memcpy(salts[row], salt, 14);
        record.setSRTPSalt(static_cast<baseSDP::SRTP_M_LINE>(row), salt);
        samples::ExpectSameRows(record.bufSRTPKey, keys);
        samples::ExpectSameRows(record.bufSRTPSalt, salts);
        EXPECT_EQ(record.cryptoAlgo[row], samples::CryptoParams::CRYPTO_NONE);
    }
}

TEST(SDPBase, RowsOutsideTheArrayAreIgnored) {
    const unsigned char bytes[16] = {9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
    for (const int row : {-1, 3, 4, 100, -2147483647}) {
        baseSDP record;
        samples::FillBase(record);
        const baseSDP before(record);
        record.setSRTPKey(static_cast<baseSDP::SRTP_M_LINE>(row), bytes);
        record.setSRTPSalt(static_cast<baseSDP::SRTP_M_LINE>(row), bytes);
        samples::ExpectSameCarried(record, before);
        samples::ExpectSameBfcp(record, before);
    }
}

// Suites are shown; keys and salts are not shown in any form.
TEST(SDPBase, DumpShowsEveryFieldButTheKeys) {
    baseSDP record;
    samples::FillBase(record);
    EXPECT_TEXT(record.ToDiag(), "eAudioCodec: 8\n"
                                 "iAudioRTPPort: 101\n"
                                 "iVideoPresoControlPort: 102\n"
                                 "iBfcpConfid: 103\n"
                                 "iBfcpUserid: 104\n"
                                 "fBfcpIsServer: true\n"
                                 "iMaxBandwidth: 105\n"
                                 "m_VideoMain:\n"
                                 "iFmtpMaxMbps: 201\n"
                                 "iFmtpMaxFrameSize: 202\n"
                                 "iFmtpMaxBitRate: 203\n"
                                 "eVideoCodec: 4\n"
                                 "eVideoType: 1\n"
                                 "iVideoRTPPort: 204\n"
                                 "strVideoLevel: level 200\n"
                                 "strVideoIPAddr: address 200\n"
                                 "iVideoPayload: 205\n"
                                 "iFmtpPacketizationMode: 206\n"
                                 "fVideoSend: true\n"
                                 "fVideoRecv: true\n"
                                 "fIsVideoValid: true\n"
                                 "m_VideoPreso:\n"
                                 "iFmtpMaxMbps: 301\n"
                                 "iFmtpMaxFrameSize: 302\n"
                                 "iFmtpMaxBitRate: 303\n"
                                 "eVideoCodec: 4\n"
                                 "eVideoType: 0\n"
                                 "iVideoRTPPort: 304\n"
                                 "strVideoLevel: level 300\n"
                                 "strVideoIPAddr: address 300\n"
                                 "iVideoPayload: 305\n"
                                 "iFmtpPacketizationMode: 306\n"
                                 "fVideoSend: true\n"
                                 "fVideoRecv: true\n"
                                 "fIsVideoValid: true\n"
                                 "cryptoAlgo[0]: 2\n"
                                 "cryptoAlgo[1]: 4\n"
                                 "cryptoAlgo[2]: 5\n");
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
