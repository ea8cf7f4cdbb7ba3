// Stage: extract, sections to the record that the media engine starts from.
// Input: the sections held, the local codec set, the session address and bandwidth. Output: a RemoteSDP.
// Touches the record only; the sections are not changed, so extracting twice gives the same.
// Video streams are filled in SDPExtractVideo.cpp.
// Test: tests/unit/SDPExtractTest.cpp
#include "SDPHandler.h"

#include "CommonMediaTrace.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "VideoUtils.h"

void SDPHandler::GetRTPData(RemoteSDP& ParsedSDP) {
    ParsedSDP.Reset();
    if (VideoUtils::IsNumber(strMaxSessionBandwidth)) {
        // [G05] Kilobits that do not fit the field as bits wrap, and so does the sum of the sections below: a
        // far end that asks for more than an int holds gets a wrong number, and nothing is undefined.
        ParsedSDP.iMaxBandwidth = sdp::WrappingMultiply(sdp::Number(strMaxSessionBandwidth), 1000);
    }
    const auto countBandwidth = [&](const MediaSession& ms) {
        // [X09] A session bandwidth, numeric or not, replaces the sum of the sections.
        if (strMaxSessionBandwidth.empty() && VideoUtils::IsNumber(ms.strMaxBandwidth)) {
            ParsedSDP.iMaxBandwidth =
                sdp::WrappingAdd(ParsedSDP.iMaxBandwidth, sdp::Number(ms.strMaxBandwidth));
        }
    };
    for (const MediaSession* const ms : vecRemoteMediaSession) {
        if (CommonMediaTraceEnabled()) {
            CommonMediaTrace(__FILE__, "GetRTPData", __LINE__, "Dump Media Session: \n%s",
                             ms->ToDiag().c_str());
        }
        if (sdp::IsBfcp(*ms)) {
            // [X11] Every floor control section is read, so the last one counts.
            GetBfcpData(ParsedSDP, ms);
        } else if (ms->eMedia == MEDIA_VIDEO) {
            VideoParms& stream =
                ms->eContent == VIDEOTYPE_PRESO ? ParsedSDP.m_VideoPreso : ParsedSDP.m_VideoMain;
            const bool hasRole = ms->eContent == VIDEOTYPE_PRESO || ms->eContent == VIDEOTYPE_MAIN;
            if (hasRole && !stream.fIsVideoValid) {
                GetVideoRTPData(ParsedSDP, stream, ms);
                // [X10] The presentation's bandwidth never counts: it shares what main video was given.
                if (ms->eContent == VIDEOTYPE_MAIN) {
                    countBandwidth(*ms);
                }
            }
        } else if (ms->eMedia == MEDIA_AUDIO && !ParsedSDP.fIsAudioValid) {
            GetAudioRTPData(ParsedSDP, ms);
            countBandwidth(*ms);
        }
    }
}

void SDPHandler::GetAudioRTPData(RemoteSDP& ParsedSDP, const MediaSession* ms) const {
    for (const RtpMap* const rm : ms->vecRtpMap) {
        if (ParsedSDP.eAudioCodec == PAYLOAD_UNKNOWN) {
            ParsedSDP.eAudioCodec = MatchAudioCodec(rm);
            if (ParsedSDP.eAudioCodec != PAYLOAD_UNKNOWN) {
                ParsedSDP.iAudioPayload = sdp::Number(rm->strPayload);
            }
        }
        // [X02] Of several telephone-event formats the last one counts (RFC 4733, 2.4).
        if (rm->strEncodingName == sdp::kTelephoneEvent.name) {
            ParsedSDP.iDTMFPayload = sdp::Number(rm->strPayload);
        }
    }
    // [X07] The record is valid without a codec: the section exists and cannot carry anything.
    const bool isUsable = ms->iPort != 0 && ParsedSDP.eAudioCodec != PAYLOAD_UNKNOWN;
    ParsedSDP.iAudioRTPPort = ms->iPort;
    ParsedSDP.fAudioRecv = isUsable && ms->fRecv;
    ParsedSDP.fAudioSend = isUsable && ms->fSend;
    ParsedSDP.strAudioIPAddr = ms->strIPAddr.empty() ? strSessionIPAddr : ms->strIPAddr;
    ParsedSDP.setSRTPKey(baseSDP::SRTP_AUDIO, ms->bufSRTPKey);
    ParsedSDP.setSRTPSalt(baseSDP::SRTP_AUDIO, ms->bufSRTPSalt);
    ParsedSDP.cryptoAlgo[baseSDP::SRTP_AUDIO] = ms->cryptoAlgo;
    ParsedSDP.fIsAudioValid = true;
}

PayloadType_t SDPHandler::MatchAudioCodec(const RtpMap* rm) const {
    for (const sdp::AudioCodec& row : sdp::kAudioCodecs) {
        if ((MyLocalSDP.eAudioCodec & row.codec) == 0) {
            continue;
        }
        // [X12] A static payload type is recognised by its number alone (RFC 3551, 6): it needs no rtpmap,
        // and an rtpmap that renames it is ignored.
        if (row.isStatic ? rm->strPayload == row.format.payload : IsG7221Negotiated(rm)) {
            return row.codec;
        }
    }
    return PAYLOAD_UNKNOWN;
}

bool SDPHandler::IsG7221Negotiated(const RtpMap* rm) const {
    constexpr const sdp::AudioFormat& format = sdp::FindAudioCodec(PAYLOAD_G7221)->format;
    if ((MyLocalSDP.eAudioCodec & PAYLOAD_G7221) == 0 || rm->strEncodingName != format.name) {
        return false;
    }
    // [X01] The bit rate counts at the very start of a parameter only: after the blank that "; " leaves it is
    // not recognised. Other rates are not supported (RFC 5577, 4.1 makes the parameter mandatory).
    for (const std::string& parm : rm->vecFmtpParms) {
        if (sdp::StartsWith(parm, format.parameters)) {
            return true;
        }
    }
    return false;
}

void SDPHandler::GetBfcpData(RemoteSDP& ParsedSDP, const MediaSession* ms) const {
    ParsedSDP.iVideoPresoControlPort = ms->iPort;
    ParsedSDP.iBfcpConfid = ms->iBfcpConfid;
    ParsedSDP.iBfcpUserid = ms->iBfcpUserid;
    ParsedSDP.fBfcpIsServer = sdp::IsFloorServer(*ms);
}
