// Stage: build, the audio section and the rtpmap lines of every codec.
// Input: MyLocalSDP, the SRTP switch, the sections held. Output: one "m=audio" section.
// Touches nothing but the text that it appends to.
// The codec of an answer comes from the far end's sections, not from the record.
// Test: tests/unit/SDPBuildAudioTest.cpp
#include "SDPBuild.h"

#include "SDPTables.h"
#include "SDPText.h"

namespace {

void WriteFormat(sdp::Writer& out, const sdp::AudioFormat& format) {
    out << "a=rtpmap:" << format.payload << " " << format.name << "\r\n";
    if (!format.parameters.empty()) {
        out << "a=fmtp:" << format.payload << " " << format.parameters << "\r\n";
    }
}

} // namespace

void SDPHandler::Build::Audio() {
    // [B06] Without a preference there is no audio section, not even a rejected one.
    if (m_local.listAudioCodecPriority.empty()) {
        return;
    }
    const bool isSecure = m_handler.UseSecureParms(baseSDP::SRTP_AUDIO);
    const PayloadType_t codecs = m_handler.GetAudioPayload();
    m_out << "m=audio " << m_local.iAudioRTPPort << (isSecure ? " RTP/SAVP" : " RTP/AVP");
    for (const int preferred : m_local.listAudioCodecPriority) {
        const sdp::AudioCodec* const codec = sdp::FindAudioCodec(preferred);
        if (codec != nullptr && (codecs & preferred) != 0) {
            m_out << " " << codec->format.payload;
        }
    }
    // [B07] Telephone events are always listed, so an answer without a common codec still has a format.
    m_out << " " << sdp::kTelephoneEvent.payload << "\r\n";
    BandwidthTIAS(false);
    if (isSecure) {
        Crypto(baseSDP::SRTP_AUDIO);
    }
    for (const int preferred : m_local.listAudioCodecPriority) {
        const sdp::AudioCodec* const codec = sdp::FindAudioCodec(preferred);
        if (codec != nullptr && (codecs & preferred) != 0) {
            WriteFormat(m_out, codec->format);
        }
    }
    WriteFormat(m_out, sdp::kTelephoneEvent);
    Directional(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN);
    if (m_local.iAudioRTPPort != 0) {
        RTCPAttribute(sdp::WrappingAdd(m_local.iAudioRTPPort, 1));
    }
}

std::string SDPHandler::AddAudio() const {
    return Build::Lines(*this, &Build::Audio);
}

PayloadType_t SDPHandler::GetAudioPayload() const {
    if (vecRemoteMediaSession.empty()) {
        return MyLocalSDP.eAudioCodec;
    }
    PayloadType_t chosen = PAYLOAD_UNKNOWN;
    for (const MediaSession* const ms : vecRemoteMediaSession) {
        if (ms->eMedia != MEDIA_AUDIO) {
            continue;
        }
        // The far end's order decides, not the local one (RFC 3264, 6.1).
        for (const RtpMap* const rm : ms->vecRtpMap) {
            const PayloadType_t codec = MatchAudioCodec(rm);
            if (codec != PAYLOAD_UNKNOWN) {
                chosen = codec;
                break;
            }
        }
        // [X08] The loop goes on: the record is filled from the first audio section, the answer takes its
        // codec from the last one that has a common codec.
    }
    return chosen;
}

void SDPHandler::Build::RTPMap(PayloadType_t payload) {
    if (const sdp::AudioCodec* const codec = sdp::FindAudioCodec(payload)) {
        WriteFormat(m_out, codec->format);
    } else if (payload == PAYLOAD_H264) {
        m_out << "a=rtpmap:" << m_local.iVideoPayloadMode1 << " " << sdp::kH264Name << "\r\n";
    } else if (payload == PAYLOAD_H264_PACKETIZATION_0) {
        m_out << "a=rtpmap:" << m_local.iVideoPayloadMode0 << " " << sdp::kH264Name << "\r\n";
    } else {
        // [B08] A codec without a row leaves the bare prefix; no section asks for one.
        m_out << "a=rtpmap:";
    }
}

std::string SDPHandler::AddRTPMap(PayloadType_t payload) const {
    return Build::Lines(*this, &Build::RTPMap, payload);
}
