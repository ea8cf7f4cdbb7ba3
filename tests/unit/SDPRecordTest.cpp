// The records as plain data: the values of a new record, written out whole, and the laws that hold for each
// field by itself: a reset record is a new one, a copy and an assignment have every value.
// The operations that treat one field otherwise are tested in SDPBaseTest.cpp to SDPVideoTest.cpp.
#include "SDP.h"

#include "Expect.h"
#include "Fields.h"
#include "RecordSamples.h"

#include <string>
#include <type_traits>

namespace {

using support::FieldsText;

const std::string kNewVideo = R"(iFmtpMaxMbps = 0
iFmtpMaxFrameSize = 0
iFmtpMaxBitRate = 0
eVideoCodec = 256
eVideoType = 100
iVideoRTPPort = 0
strVideoLevel = ""
strVideoIPAddr = ""
iVideoPayload = 0
iFmtpPacketizationMode = 0
fVideoSend = false
fVideoRecv = false
fIsVideoValid = false
)";

/// The lines of a stream in a record.
std::string InRecord(const std::string& stream, const std::string& role) {
    std::string lines;
    for (const std::string& line :
         support::CutLines(support::Replaced(kNewVideo, "eVideoType = 100", "eVideoType = " + role))) {
        lines += stream + "." + line;
    }
    return lines;
}

const std::string kNewBase = R"(eAudioCodec = 256
iAudioRTPPort = 0
iVideoPresoControlPort = 0
iBfcpConfid = 0
iBfcpUserid = 0
fBfcpIsServer = false
iMaxBandwidth = 0
)" + InRecord("m_VideoMain", "0") +
                             InRecord("m_VideoPreso", "1") +
                             R"(bufSRTPKey[0] = 0000000000000000000000000000000000
bufSRTPKey[1] = 0000000000000000000000000000000000
bufSRTPKey[2] = 0000000000000000000000000000000000
bufSRTPSalt[0] = 000000000000000000000000000000
bufSRTPSalt[1] = 000000000000000000000000000000
bufSRTPSalt[2] = 000000000000000000000000000000
cryptoAlgo[0] = 0
cryptoAlgo[1] = 0
cryptoAlgo[2] = 0
)";

const std::string kNewLocal = kNewBase + R"(strMyIPAddr = ""
strOExtension = ""
strDefaultIPAddr = ""
iVideoPayloadMode0 = 0
iVideoPayloadMode1 = 0
fVideoTxMuted = false
listAudioCodecPriority = {}
)";

const std::string kNewRemote = kNewBase + R"(strAudioIPAddr = ""
iAudioPayload = 0
iDTMFPayload = 0
fAudioSend = false
fAudioRecv = false
fIsAudioValid = false
)";

const std::string kNewFormat = R"(strPayload = ""
strEncodingName = ""
vecFmtpParms = {}
)";

const std::string kNewSection = R"(eMedia = 256
eContent = 100
iPort = 0
strIPAddr = ""
vecRtpMap = {}
fSend = true
fRecv = true
strFullMLine = ""
strVideoLevel = ""
strMaxBandwidth = ""
iVideoLabel = 0
bufSRTPKey = 0000000000000000000000000000000000
bufSRTPSalt = 000000000000000000000000000000
cryptoAlgo = 0
iCryptoTag = 0
strBase64Key = ""
iBfcpConfid = 0
iBfcpUserid = 0
iBfcpFloorid = 0
strFloorctrl = ""
striceufrag = ""
stricepwd = ""
vecCandidate = {}
)";

template <typename Record>
std::string NewText() {
    samples::InDirtyMemory<Record> record;
    return FieldsText(*record);
}

TEST(SDPRecord, ANewRecordHasTheseValues) {
    EXPECT_TEXT(NewText<VideoParms>(), kNewVideo);
    EXPECT_TEXT(NewText<baseSDP>(), kNewBase);
    EXPECT_TEXT(NewText<LocalSDP>(), kNewLocal);
    EXPECT_TEXT(NewText<RemoteSDP>(), kNewRemote);
    EXPECT_TEXT(FieldsText(RtpMap()), kNewFormat);
    EXPECT_TEXT(NewText<MediaSession>(), kNewSection);
}

template <typename Record>
void ExpectResetTo(const std::string& expected) {
    samples::ForEachChanged<Record>([&expected](Record& changed) {
        changed.Reset();
        EXPECT_TEXT(FieldsText(changed), expected);
    });
    auto filled = samples::Filled<Record>();
    filled.Reset();
    EXPECT_TEXT(FieldsText(filled), expected);
}

TEST(SDPRecord, ResetReturnsEachFieldToThatOfANewRecord) {
    ExpectResetTo<VideoParms>(kNewVideo);
    ExpectResetTo<baseSDP>(kNewBase);
    ExpectResetTo<LocalSDP>(kNewLocal);
    ExpectResetTo<RemoteSDP>(kNewRemote);
}

template <typename Record>
void ExpectCopied(const Record& source) {
    const Record copy(source);
    samples::ExpectSame(copy, source);
}

/// An assignment carries every field but the BFCP identity, which belongs to the target.
template <typename Record>
void ExpectAssigned(const Record& source, Record target) {
    Record expected(source);
    if constexpr (std::is_base_of_v<baseSDP, Record>) {
        expected.iBfcpConfid = target.iBfcpConfid;
        expected.iBfcpUserid = target.iBfcpUserid;
        expected.fBfcpIsServer = target.fBfcpIsServer;
    }
    Record& result = (target = source);
    EXPECT_EQ(&result, &target);
    samples::ExpectSame(target, expected);
}

template <typename Record>
void ExpectCopiesOfEachField() {
    samples::ForEachChanged<Record>([](const Record& changed) {
        ExpectCopied(changed);
        ExpectAssigned(changed, Record());
        ExpectAssigned(changed, samples::Filled<Record>());
        ExpectAssigned(Record(), changed);
    });
    const auto filled = samples::Filled<Record>();
    ExpectCopied(filled);
    ExpectAssigned(filled, Record());
    ExpectAssigned(Record(), filled);
}

TEST(SDPRecord, ACopyAndAnAssignmentHaveTheValueOfEachField) {
    ExpectCopiesOfEachField<VideoParms>();
    ExpectCopiesOfEachField<baseSDP>();
    ExpectCopiesOfEachField<LocalSDP>();
    ExpectCopiesOfEachField<RemoteSDP>();
    ExpectCopiesOfEachField<RtpMap>();
    ExpectCopiesOfEachField<MediaSession>();
}

// The formats are shared, so a copy points to the same ones.
TEST(SDPRecord, ACopyOfASectionSharesItsFormats) {
    const auto section = samples::Filled<MediaSession>();
    const MediaSession copy(section);
    MediaSession assigned;
    assigned = section;
    EXPECT_EQ(copy.vecRtpMap, section.vecRtpMap);
    EXPECT_EQ(assigned.vecRtpMap, section.vecRtpMap);
}

template <typename Record>
void ExpectSelfAssignmentChangesNothing() {
    auto record = samples::Filled<Record>();
    const Record& itself = record;
    record = itself;
    samples::ExpectSame(record, samples::Filled<Record>());
}

TEST(SDPRecord, AnAssignmentToItselfChangesNothing) {
    ExpectSelfAssignmentChangesNothing<VideoParms>();
    ExpectSelfAssignmentChangesNothing<baseSDP>();
    ExpectSelfAssignmentChangesNothing<LocalSDP>();
    ExpectSelfAssignmentChangesNothing<RemoteSDP>();
    ExpectSelfAssignmentChangesNothing<MediaSession>();
}

/// Resets the base of a filled record, which leaves the fields of the record itself.
template <typename Record>
void ExpectOwnFieldsKeptByTheBase() {
    auto record = samples::Filled<Record>();
    const std::string before = FieldsText(record);
    baseSDP& base = record;
    const std::string own = before.substr(FieldsText(base).size());
    base.Reset();
    EXPECT_TEXT(FieldsText(record), kNewBase + own);
}

TEST(SDPRecord, ResetThroughTheBaseLeavesTheFieldsOfTheRecordItself) {
    ExpectOwnFieldsKeptByTheBase<LocalSDP>();
    ExpectOwnFieldsKeptByTheBase<RemoteSDP>();
}

} // namespace
