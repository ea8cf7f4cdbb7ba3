// Stage: two runs of the component compared, so that what is the same in both is not made again.
// Input: records, sections and our texts of both. Output: the parts whose facts may differ; whether the
// component writes the same answer.
// Touches nothing. A field that Facts*.cpp reads has to be here, and a field of the far end's sections
// that an answer is written from.
// Test: tests/explain/SameRunTest.cpp
#include "State.h"

#include "SDPTables.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace explain {

namespace {

auto AudioOf(const RemoteSDP& record) {
    return std::tie(record.fIsAudioValid, record.eAudioCodec, record.iAudioPayload, record.strAudioIPAddr,
                    record.iAudioRTPPort, record.fAudioSend, record.fAudioRecv);
}

auto FloorOf(const RemoteSDP& record) {
    return std::tie(record.iVideoPresoControlPort, record.iBfcpConfid, record.iBfcpUserid,
                    record.fBfcpIsServer);
}

auto FieldsOf(const VideoParms& video) {
    return std::tie(video.fIsVideoValid, video.iVideoPayload, video.strVideoIPAddr, video.iVideoRTPPort,
                    video.fVideoSend, video.fVideoRecv, video.iFmtpPacketizationMode, video.strVideoLevel,
                    video.iFmtpMaxMbps, video.iFmtpMaxFrameSize, video.iFmtpMaxBitRate);
}

auto FieldsOf(const OurSection& section) {
    return std::tie(section.media, section.port, section.transport, section.formats, section.tag,
                    section.suite, section.hasKey, section.isSlides, section.hasPort);
}

bool IsSame(const OurSection* one, const OurSection* other) {
    return one == nullptr || other == nullptr ? one == other : FieldsOf(*one) == FieldsOf(*other);
}

auto IceOf(const MediaSession& section) {
    return std::tie(section.eMedia, section.striceufrag, section.stricepwd, section.vecCandidate);
}

auto ShapeOf(const MediaSession& section) {
    return std::tie(section.eMedia, section.eContent, section.iPort, section.strFullMLine,
                    section.cryptoAlgo);
}

/// Suite, tag, key and transport.
bool HasSameKey(const MediaSession* one, const MediaSession* other) {
    if (one == nullptr || other == nullptr) {
        return one == other;
    }
    return one->cryptoAlgo == other->cryptoAlgo && one->iCryptoTag == other->iCryptoTag &&
           one->strFullMLine == other->strFullMLine &&
           std::equal(std::begin(one->bufSRTPKey), std::end(one->bufSRTPKey),
                      std::begin(other->bufSRTPKey)) &&
           std::equal(std::begin(one->bufSRTPSalt), std::end(one->bufSRTPSalt),
                      std::begin(other->bufSRTPSalt));
}

/// Whether both have equally many sections, and those in one place match.
template <typename Matches>
bool AreSame(const Sections& one, const Sections& other, Matches matches) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [matches](const MediaSession* a, const MediaSession* b) { return matches(*a, *b); });
}

bool HasSameFormats(const MediaSession& one, const MediaSession& other) {
    return std::equal(one.vecRtpMap.begin(), one.vecRtpMap.end(), other.vecRtpMap.begin(),
                      other.vecRtpMap.end(), [](const RtpMap* a, const RtpMap* b) {
                          return a->strPayload == b->strPayload && a->strEncodingName == b->strEncodingName &&
                                 a->vecFmtpParms == b->vecFmtpParms;
                      });
}

/// What an answer says of a section that is served.
auto AnsweredOf(const MediaSession& section) {
    return std::tie(section.eMedia, section.eContent, section.iPort, section.fSend, section.fRecv,
                    section.cryptoAlgo, section.iCryptoTag, section.strFloorctrl);
}

/// Notes that the part differs, once a comparison of it fails.
void Compare(Parts& parts, Part part, bool isSame) {
    parts[static_cast<std::size_t>(part)] = parts[static_cast<std::size_t>(part)] || !isSame;
}

void CompareTheirs(const State& one, const State& other, Parts& parts) {
    const Sections& a = one.sections;
    const Sections& b = other.sections;
    const auto isBfcp = [](const MediaSession* section) { return sdp::IsBfcp(*section); };
    const bool isSameAudio = AudioOf(one.record) == AudioOf(other.record);
    Compare(parts, Part::Audio, isSameAudio);
    Compare(parts, Part::Main, FieldsOf(one.record.m_VideoMain) == FieldsOf(other.record.m_VideoMain));
    // Slides that are not there may be taken as main video.
    Compare(parts, Part::Slides,
            FieldsOf(one.record.m_VideoPreso) == FieldsOf(other.record.m_VideoPreso) &&
                one.record.m_VideoMain.fIsVideoValid == other.record.m_VideoMain.fIsVideoValid);
    Compare(parts, Part::Floor,
            FloorOf(one.record) == FloorOf(other.record) &&
                std::any_of(a.begin(), a.end(), isBfcp) == std::any_of(b.begin(), b.end(), isBfcp));
    Compare(parts, Part::Tones, isSameAudio && one.record.iDTMFPayload == other.record.iDTMFPayload);
    Compare(parts, Part::Bandwidth, one.record.iMaxBandwidth == other.record.iMaxBandwidth);
    for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
        Compare(parts, static_cast<Part>(static_cast<int>(Part::AudioKey) + stream),
                HasSameKey(SectionOfStream(a, stream), SectionOfStream(b, stream)));
    }
    Compare(parts, Part::Ice,
            AreSame(a, b, [](const auto& x, const auto& y) { return IceOf(x) == IceOf(y); }));
    Compare(parts, Part::Call,
            AreSame(a, b, [](const auto& x, const auto& y) { return ShapeOf(x) == ShapeOf(y); }));
}

void CompareOurs(const OurText& one, const OurText& other, Parts& parts) {
    const bool isSameAudio = AudioOf(one.read) == AudioOf(other.read);
    Compare(parts, Part::Audio, isSameAudio);
    Compare(parts, Part::Main, FieldsOf(one.read.m_VideoMain) == FieldsOf(other.read.m_VideoMain));
    Compare(parts, Part::Slides, FieldsOf(one.read.m_VideoPreso) == FieldsOf(other.read.m_VideoPreso));
    Compare(parts, Part::Floor, FloorOf(one.read) == FloorOf(other.read));
    Compare(parts, Part::Tones, isSameAudio);
    Compare(parts, Part::Bandwidth, one.read.iMaxBandwidth == other.read.iMaxBandwidth);
    for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
        const bool isSame = IsSame(OurStream(one, stream), OurStream(other, stream));
        Compare(parts, static_cast<Part>(stream), isSame);
        Compare(parts, static_cast<Part>(static_cast<int>(Part::AudioKey) + stream), isSame);
    }
    Compare(
        parts, Part::Call,
        one.text.empty() == other.text.empty() &&
            std::equal(one.sections.begin(), one.sections.end(), other.sections.begin(), other.sections.end(),
                       [](const OurSection& a, const OurSection& b) { return FieldsOf(a) == FieldsOf(b); }));
}

} // namespace

Parts DifferentParts(const State& one, const State& other) {
    Parts parts;
    CompareTheirs(one, other, parts);
    if (one.ours != other.ours) {
        CompareOurs(*one.ours, *other.ours, parts);
    }
    return parts;
}

bool WritesSameAnswer(const State& one, const State& other, std::size_t servedSections) {
    std::size_t place = 0;
    return AreSame(one.sections, other.sections, [&](const MediaSession& a, const MediaSession& b) {
        // The codec comes from an audio section; a section that is not served is repeated.
        const bool isServed = place++ < servedSections;
        return AnsweredOf(a) == AnsweredOf(b) && sdp::IsBfcp(a) == sdp::IsBfcp(b) &&
               (a.eMedia != MEDIA_AUDIO || HasSameFormats(a, b)) &&
               (isServed || (a.strFullMLine == b.strFullMLine && a.strIPAddr == b.strIPAddr));
    });
}

} // namespace explain
