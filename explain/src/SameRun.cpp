// Stage: two runs of the component compared, so that the facts of a run that changed nothing are not made
// again. Input: records and sections of both. Output: whether they agree in every field that a fact is about.
// Touches nothing. A field that Facts*.cpp reads has to stand here.
// Test: tests/explain/SameRunTest.cpp
#include "State.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace explain {

namespace {

auto FieldsOf(const VideoParms& video) {
    return std::tie(video.fIsVideoValid, video.iVideoPayload, video.strVideoIPAddr, video.iVideoRTPPort,
                    video.fVideoSend, video.fVideoRecv, video.iFmtpPacketizationMode, video.strVideoLevel,
                    video.iFmtpMaxMbps, video.iFmtpMaxFrameSize, video.iFmtpMaxBitRate);
}

auto FieldsOf(const RemoteSDP& record) {
    return std::tie(record.fIsAudioValid, record.eAudioCodec, record.iAudioPayload, record.strAudioIPAddr,
                    record.iAudioRTPPort, record.fAudioSend, record.fAudioRecv, record.iDTMFPayload,
                    record.iVideoPresoControlPort, record.iBfcpConfid, record.iBfcpUserid,
                    record.fBfcpIsServer, record.iMaxBandwidth);
}

auto FieldsOf(const MediaSession& section) {
    return std::tie(section.eMedia, section.eContent, section.iPort, section.strFullMLine, section.cryptoAlgo,
                    section.iCryptoTag, section.striceufrag, section.stricepwd, section.vecCandidate);
}

bool IsSame(const MediaSession* one, const MediaSession* other) {
    return FieldsOf(*one) == FieldsOf(*other) &&
           std::equal(std::begin(one->bufSRTPKey), std::end(one->bufSRTPKey),
                      std::begin(other->bufSRTPKey)) &&
           std::equal(std::begin(one->bufSRTPSalt), std::end(one->bufSRTPSalt),
                      std::begin(other->bufSRTPSalt));
}

} // namespace

bool ReadSame(const State& one, const State& other) {
    if (FieldsOf(one.record) != FieldsOf(other.record) ||
        FieldsOf(one.record.m_VideoMain) != FieldsOf(other.record.m_VideoMain) ||
        FieldsOf(one.record.m_VideoPreso) != FieldsOf(other.record.m_VideoPreso)) {
        return false;
    }
    const RemoteSections sections = one.handler.GetRemoteSections();
    const RemoteSections others = other.handler.GetRemoteSections();
    return std::equal(sections.begin(), sections.end(), others.begin(), others.end(), IsSame);
}

} // namespace explain
