// Stage: build, the audio section and the rtpmap lines of every codec.
// Input: MyLocalSDP, the SRTP switch, the sections held. Output: one "m=audio" section.
// Touches nothing but the text at whose end it writes.
// The codec of an answer is asked of the far end's sections, not of the record.
// Test: tests/unit/SDPBuildAudioTest.cpp
#include "SDPHandler.h"

#include "SDPTables.h"
#include "SDPText.h"
#include "SDPWriter.h"

void SDPHandler::WriteAudio(sdp::Writer& sdp) const {
    // [B06] Without a preference there is no audio section, not even a rejected one.
    if (MyLocalSDP.listAudioCodecPriority.empty()) {
        return;
    }
    const bool fSecure = UseSecureParms(baseSDP::SRTP_AUDIO);
    const PayloadType_t pt = GetAudioPayload();
    sdp << "m=audio " << MyLocalSDP.iAudioRTPPort << (fSecure ? " RTP/SAVP" : " RTP/AVP");
    for (const int eCodec : MyLocalSDP.listAudioCodecPriority) {
        const sdp::AudioCodec* const codec = sdp::FindAudioCodec(eCodec);
        if (codec != nullptr && (pt & eCodec) != 0) {
            sdp << " " << codec->strPayload;
        }
    }
    // [B07] Telephone events are always listed, so an answer without a common codec is not without a format.
    sdp << " 101\r\n";
    WriteBandwidthTIAS(sdp, false);
    if (fSecure) {
        WriteCrypto(sdp, baseSDP::SRTP_AUDIO);
    }
    for (const int eCodec : MyLocalSDP.listAudioCodecPriority) {
        const sdp::AudioCodec* const codec = sdp::FindAudioCodec(eCodec);
        if (codec != nullptr && (pt & eCodec) != 0) {
            WriteRTPMap(sdp, codec->eCodec);
        }
    }
    sdp << "a=rtpmap:101 telephone-event/8000\r\n"
           "a=fmtp:101 0-15\r\n";
    WriteDirectional(sdp, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN);
    if (MyLocalSDP.iAudioRTPPort != 0) {
        WriteRTCPAttribute(sdp, sdp::WrappingAdd(MyLocalSDP.iAudioRTPPort, 1));
    }
}

PayloadType_t SDPHandler::GetAudioPayload() const {
    if (vecRemoteMediaSession.empty()) {
        return MyLocalSDP.eAudioCodec;
    }
    PayloadType_t pt = PAYLOAD_UNKNOWN;
    for (const MediaSession* const ms : vecRemoteMediaSession) {
        if (ms->eMedia != MEDIA_AUDIO) {
            continue;
        }
        // The far end's order decides, not the local one (RFC 3264, 6.1).
        for (const RtpMap* const rm : ms->vecRtpMap) {
            const PayloadType_t eCodec = MatchAudioCodec(rm);
            if (eCodec != PAYLOAD_UNKNOWN) {
                pt = eCodec;
                break;
            }
        }
        // [X08] The walk goes on: the record is filled from the first audio section, the answer takes its
        // codec from the last one that has one in common.
    }
    return pt;
}

void SDPHandler::WriteRTPMap(sdp::Writer& sdp, PayloadType_t payload) const {
    sdp << "a=rtpmap:";
    if (payload == PAYLOAD_H264) {
        sdp << MyLocalSDP.iVideoPayloadMode1 << " H264/90000\r\n";
    } else if (payload == PAYLOAD_H264_PACKETIZATION_0) {
        sdp << MyLocalSDP.iVideoPayloadMode0 << " H264/90000\r\n";
    } else if (const sdp::AudioCodec* const codec = sdp::FindAudioCodec(payload)) {
        sdp << codec->strLines;
    }
    // [B08] A codec without a line leaves the bare prefix; no section asks for one.
}
