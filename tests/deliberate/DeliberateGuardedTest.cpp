// The guarded matters that need code, the letter G of commonmedia/DELIBERATE.md: what no rule of SDP decides
// has one defined outcome. Each test shows the unusual input with its whole outcome, and beside it the usual
// one. Those that read a text are in guarded.cases.
#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"
#include "oom/Allocations.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

using namespace support;

namespace {

// The record of G.711 at port 5000 and nothing else.
const std::string kOnlyAudio =
    Replaced(kFreshRemote, "audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0",
             "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1");
const std::string kKeyText = "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0";

// Reads one text into a handler with all audio codecs.
struct Reading {
    SDPHandler h;
    RemoteSDP remote;

    explicit Reading(const std::string& text) {
        Start(h, AudioLocal());
        EXPECT_EQ(h.ParseTheSDP(text, remote), 0);
    }
    std::string Record() const { return Describe(remote); }
    const MediaSession& Section() const { return *h.vecRemoteMediaSession.at(0); }
    const RtpMap& Format(std::size_t i) const { return *Section().vecRtpMap.at(i); }
};

TEST(Deliberate, G09_FmtpParametersAreAttachedOnce) {
    // Forty thousand parameters of one line: attached once per parameter this would copy a thousand million.
    std::string lineText = "a=fmtp:97 ";
    for (int i = 0; i < 40000; ++i) {
        lineText += "p=" + std::to_string(i) + ";";
    }
    lineText += "q=1\r\n";
    const allocations::Scope scope;
    const Reading many("m=video 5002 RTP/AVP 97\r\n" + lineText);
    EXPECT_LE(scope.bytes(), 64 * 1024 + 64 * lineText.size());
    const std::vector<std::string>& parms = many.Format(0).vecFmtpParms;
    ASSERT_EQ(parms.size(), 40001U);
    EXPECT_TEXT(parms[0], "p=0");
    EXPECT_TEXT(parms[39999], "p=39999");
    EXPECT_TEXT(parms[40000], "q=1");
    const Reading few("m=video 5002 RTP/AVP 97\r\na=fmtp:97 p=0;p=1;q=1\r\n");
    EXPECT_EQ(few.Format(0).vecFmtpParms, (std::vector<std::string>{"p=0", "p=1", "q=1"}));
}

TEST(Deliberate, G10_SectionWithoutAWordIsNotRejected) {
    SDPHandler h;
    Start(h, AudioLocal());
    h.m_iMaxSupportedSessions = 0;
    AddSection(h, MEDIA_UNKNOWN, 0).strFullMLine = "";
    MediaSession& blank = AddSection(h, MEDIA_UNKNOWN, 0);
    blank.strFullMLine = " \t\r\n ";
    blank.strIPAddr = "192.0.2.9";
    MediaSession& text = AddSection(h, MEDIA_UNKNOWN, 6000);
    text.strFullMLine = "m=text 6000 RTP/AVP 98";
    text.strIPAddr = "192.0.2.10";
    EXPECT_TEXT(h.AddUnsupported(), "m=text 0 RTP/AVP 98\r\n"
                                    "c=IN IP4 192.0.2.10\r\n");
}

TEST(Deliberate, G11_TextIsCutWithACursor) {
    // A hundred thousand short lines: copying the rest for each of them would move some hundred thousand
    // million bytes.
    std::string text = "m=audio 5000 RTP/AVP 0\r\n";
    for (int i = 0; i < 100000; ++i) {
        text += "a=candidate:" + std::to_string(i) + "\r\n";
    }
    const allocations::Scope scope;
    const Reading many(text);
    EXPECT_LE(scope.bytes(), 64 * 1024 + 64 * text.size());
    ASSERT_EQ(many.Section().vecCandidate.size(), 100000U);
    EXPECT_TEXT(many.Section().vecCandidate[0], "a=candidate:0");
    EXPECT_TEXT(many.Section().vecCandidate[99999], "a=candidate:99999");
    EXPECT_TEXT(many.Record(), kOnlyAudio);
    const Reading one("m=audio 5000 RTP/AVP 0\r\na=candidate:0\r\n");
    EXPECT_EQ(one.Section().vecCandidate, std::vector<std::string>{"a=candidate:0"});
}

TEST(Deliberate, G12_StreamIndexOutOfRangeIsIgnored) {
    const unsigned char bytes[17] = "0123456789abcdef";
    RemoteSDP remote;
    for (const int n : {-1, 3, 1000}) {
        remote.setSRTPKey(static_cast<baseSDP::SRTP_M_LINE>(n), bytes);
        remote.setSRTPSalt(static_cast<baseSDP::SRTP_M_LINE>(n), bytes);
    }
    EXPECT_TEXT(Describe(remote), kFreshRemote);
    remote.setSRTPKey(baseSDP::SRTP_VIDEO_PRESO, bytes);
    remote.setSRTPSalt(baseSDP::SRTP_VIDEO_PRESO, bytes);
    EXPECT_TEXT(Describe(remote), Replaced(kFreshRemote, "srtp slide suite=0 key=- salt=-",
                                           "srtp slide suite=0 key=0123456789abcdef salt=0123456789abcd"));
    // Builders take an index as well.
    SDPHandler h;
    LocalSDP local = AudioLocal();
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    EXPECT_TEXT(h.AddCrypto(static_cast<baseSDP::SRTP_M_LINE>(3)), "");
    EXPECT_TEXT(h.AddCrypto(static_cast<baseSDP::SRTP_M_LINE>(-1)), "");
    EXPECT_FALSE(h.IsRemoteSecure(static_cast<baseSDP::SRTP_M_LINE>(3)));
    EXPECT_FALSE(h.IsRemoteSecure(static_cast<baseSDP::SRTP_M_LINE>(-1)));
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO),
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
}

// Memory that the test owns, so that its bytes can be read before and after a record lives in it.
template <typename Record>
class OwnedMemory {
public:
    explicit OwnedMemory(unsigned char fill) {
        volatile unsigned char* const bytes = m_storage;
        for (std::size_t i = 0; i < sizeof m_storage; ++i) {
            bytes[i] = fill;
        }
    }
    Record* Make() { return ::new (static_cast<void*>(m_storage)) Record; }
    // The bytes as they are in memory now, whatever the optimiser believes of a record that has ended.
    std::string Bytes(std::ptrdiff_t at, std::size_t length) const {
        const volatile unsigned char* const bytes = m_storage;
        std::string copied;
        for (std::size_t i = 0; i < length; ++i) {
            copied += static_cast<char>(bytes[static_cast<std::size_t>(at) + i]);
        }
        return copied;
    }
    std::ptrdiff_t At(const void* field) const {
        return static_cast<const unsigned char*>(field) - static_cast<const unsigned char*>(m_storage);
    }

private:
    alignas(Record) unsigned char m_storage[sizeof(Record)];
};

TEST(Deliberate, G15_FieldsThatNoLineSetsStartAtZero) {
    OwnedMemory<MediaSession> memory(0xA5);
    MediaSession* const section = memory.Make();
    EXPECT_EQ(section->iVideoLabel, 0);
    EXPECT_EQ(section->iCryptoTag, 0);
    EXPECT_EQ(section->iBfcpFloorid, 0);
    EXPECT_EQ(DescribeRow(section->bufSRTPKey, 16, 17), "-");
    EXPECT_EQ(DescribeRow(section->bufSRTPSalt, 14, 15), "-");
    std::destroy_at(section);
    // Without a crypto line the record gets these zeros, not what the memory held before.
    EXPECT_TEXT(Reading("m=audio 5000 RTP/AVP 0\r\n").Record(), kOnlyAudio);
    const std::string crypto = "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kKeyText + "\r\n";
    EXPECT_TEXT(Reading("m=audio 5000 RTP/SAVP 0\r\n" + crypto).Record(),
                Replaced(kOnlyAudio, "srtp audio suite=0 key=- salt=-",
                         "srtp audio suite=1 key=away audio key 1 salt=away audiosalt"));
}

template <typename Record>
void ExpectWipedAtTheEnd() {
    OwnedMemory<Record> memory(0);
    Record* const record = memory.Make();
    const std::ptrdiff_t keyAt = memory.At(&record->bufSRTPKey);
    const std::ptrdiff_t saltAt = memory.At(&record->bufSRTPSalt);
    const std::size_t keyLength = sizeof record->bufSRTPKey;
    const std::size_t saltLength = sizeof record->bufSRTPSalt;
    std::memset(&record->bufSRTPKey, 'K', keyLength);
    std::memset(&record->bufSRTPSalt, 'S', saltLength);
    // While the record lives its bytes are what was written.
    EXPECT_EQ(memory.Bytes(keyAt, keyLength), std::string(keyLength, 'K'));
    EXPECT_EQ(memory.Bytes(saltAt, saltLength), std::string(saltLength, 'S'));
    // Qualified, because LocalSDP dispatches virtually and its destructor does not.
    record->Record::~Record();
    EXPECT_EQ(memory.Bytes(keyAt, keyLength), std::string(keyLength, '\0'));
    EXPECT_EQ(memory.Bytes(saltAt, saltLength), std::string(saltLength, '\0'));
}

TEST(Deliberate, G17_KeyMaterialIsWipedWhenItEnds) {
    ExpectWipedAtTheEnd<baseSDP>();
    ExpectWipedAtTheEnd<LocalSDP>();
    ExpectWipedAtTheEnd<RemoteSDP>();
    ExpectWipedAtTheEnd<MediaSession>();
    // A reset ends key material as well, the spare bytes included.
    LocalSDP local = AudioLocal();
    std::memset(&local.bufSRTPKey, 'K', sizeof local.bufSRTPKey);
    std::memset(&local.bufSRTPSalt, 'S', sizeof local.bufSRTPSalt);
    local.Reset();
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        EXPECT_EQ(DescribeRow(local.bufSRTPKey[n], 17, 17), "-");
        EXPECT_EQ(DescribeRow(local.bufSRTPSalt[n], 15, 15), "-");
    }
}

} // namespace
