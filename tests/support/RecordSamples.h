// Records for the tests of resets, copies and dumps: in memory that held other bytes before, with every field
// changed, with one field changed.
#pragma once

#include "Expect.h"
#include "Fields.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

namespace samples {

using CryptoParams = Quor::media::rtp::CryptoParams;

/// A record made in memory that held other bytes before: a field that no constructor sets shows up.
template <typename Record>
class InDirtyMemory {
public:
    InDirtyMemory() {
        volatile unsigned char* const bytes = m_storage;
        for (std::size_t i = 0; i < sizeof m_storage; ++i) {
            bytes[i] = 0xA5;
        }
        m_record = ::new (static_cast<void*>(m_storage)) Record;
    }
    // Qualified, because LocalSDP dispatches virtually and its destructor does not.
    ~InDirtyMemory() { m_record->Record::~Record(); }
    InDirtyMemory(const InDirtyMemory&) = delete;
    InDirtyMemory& operator=(const InDirtyMemory&) = delete;

    Record& operator*() { return *m_record; }
    Record* operator->() { return m_record; }

private:
    alignas(Record) unsigned char m_storage[sizeof(Record)];
    Record* m_record;
};

/// The offset of a field in its record.
template <typename Record, typename Field>
std::ptrdiff_t At(const Record& record, const Field& field) {
    return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&record);
}

// Change(field, n) gives a field of a new record another value, a different one for each `n` where its type
// has so many.
inline void Change(std::int32_t& field, int n) {
    field = n;
}

inline void Change(bool& field, int /*n*/) {
    field = !field;
}

template <typename Enum, typename = std::enable_if_t<std::is_enum_v<Enum>>>
void Change(Enum& field, int n) {
    field = static_cast<Enum>(n);
}

inline void Change(std::string& field, int n) {
    field = "text " + std::to_string(n);
}

inline void Change(std::list<int>& field, int n) {
    field = {n, 8, 64};
}

inline void Change(std::vector<std::string>& field, int n) {
    field = {"text " + std::to_string(n), " more"};
}

inline void Change(std::vector<RtpMap*>& field, int /*n*/) {
    static RtpMap format = {"97", "H264/90000", {"profile-level-id=42801f", " packetization-mode=1"}};
    field = {&format};
}

/// Bytes that differ within a row and from zero, the spare byte included.
template <std::size_t Length>
void Change(unsigned char (&row)[Length], int n) {
    for (std::size_t i = 0; i < Length; ++i) {
        row[i] = static_cast<unsigned char>(static_cast<std::size_t>(n) + i);
    }
}

/// Changes every field; the first gets the number 101, the next 102, and so on.
template <typename Record>
void Fill(Record& record) {
    int n = 100;
    support::ForEachField(record, [&n](const std::string&, auto& field) { Change(field, ++n); });
}

/// A record in which no field has the value of a new record.
template <typename Record>
Record Filled() {
    Record record;
    Fill(record);
    return record;
}

/// ToDiag of Filled<baseSDP>(), with which the dumps of both descriptions begin.
inline const std::string kFilledBaseDump = R"(eAudioCodec: 101
iAudioRTPPort: 102
iVideoPresoControlPort: 103
iBfcpConfid: 104
iBfcpUserid: 105
fBfcpIsServer: true
iMaxBandwidth: 107
m_VideoMain:
iFmtpMaxMbps: 108
iFmtpMaxFrameSize: 109
iFmtpMaxBitRate: 110
eVideoCodec: 111
eVideoType: 112
iVideoRTPPort: 113
strVideoLevel: text 114
strVideoIPAddr: text 115
iVideoPayload: 116
iFmtpPacketizationMode: 117
fVideoSend: true
fVideoRecv: true
fIsVideoValid: true
m_VideoPreso:
iFmtpMaxMbps: 121
iFmtpMaxFrameSize: 122
iFmtpMaxBitRate: 123
eVideoCodec: 124
eVideoType: 125
iVideoRTPPort: 126
strVideoLevel: text 127
strVideoIPAddr: text 128
iVideoPayload: 129
iFmtpPacketizationMode: 130
fVideoSend: true
fVideoRecv: true
fIsVideoValid: true
cryptoAlgo[0]: 140
cryptoAlgo[1]: 141
cryptoAlgo[2]: 142
)";

/// Calls `check(record)` with a new record in which one field is changed, once for each field.
template <typename Record, typename Check>
void ForEachChanged(const Check& check) {
    int fields = 0;
    const Record fresh;
    support::ForEachField(fresh, [&fields](const std::string&, const auto&) { ++fields; });
    for (int changed = 1; changed <= fields; ++changed) {
        Record record;
        int n = 0;
        std::string which;
        support::ForEachField(record, [&](const std::string& name, auto& field) {
            if (++n == changed) {
                which = name;
                Change(field, 100 + n);
            }
        });
        SCOPED_TRACE("only " + which + " differs from a new record");
        check(record);
    }
}

template <typename Record>
void ExpectSame(const Record& actual, const Record& expected) {
    EXPECT_TEXT(support::FieldsText(actual), support::FieldsText(expected));
}

template <typename Record>
void ExpectNew(const Record& record) {
    ExpectSame(record, Record());
}

/// A flag that is set is the one line of the dump that differs from a new record's.
template <typename Record, typename Owner>
void ExpectFlagInDump(bool Owner::*flag, const std::string& name) {
    Record record;
    record.*flag = true;
    EXPECT_TEXT(record.ToDiag(), support::Replaced(Record().ToDiag(), name + ": false", name + ": true"));
}

} // namespace samples
