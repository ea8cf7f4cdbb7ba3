// Stage: extract, sections to the record that the media engine starts from.
// Input: the sections held, the local codec set, the session address and bandwidth. Output: a RemoteSDP.
// Touches the record only; the sections stay as they are, so extracting twice gives the same.
// Video streams are filled in SDPExtractVideo.cpp.
// Test: tests/unit/SDPExtractTest.cpp
#include "SDPHandler.h"

#include "CommonMediaTrace.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "VideoUtils.h"

namespace {

constexpr std::string_view kG7221 = "G7221/16000";
constexpr std::string_view kTelephoneEvent = "telephone-event/8000";

/// Adds a section's "b=TIAS:" to the total, bit/s.
void CountBandwidth(RemoteSDP& ParsedSDP, const MediaSession& ms) {
    if (VideoUtils::IsNumber(ms.strMaxBandwidth)) {
        ParsedSDP.iMaxBandwidth = sdp::WrappingAdd(ParsedSDP.iMaxBandwidth, sdp::Number(ms.strMaxBandwidth));
    }
}

} // namespace

void SDPHandler::GetRTPData(RemoteSDP& ParsedSDP) {
    ParsedSDP.Reset();
    if (VideoUtils::IsNumber(strMaxSessionBandwidth)) {
        // [G05] Kilobits beyond the range of the field wrap when they become bits, and so does the sum of the
        // sections below: a far end that asks for more than an int holds gets a wrong number, not a crash.
        ParsedSDP.iMaxBandwidth = sdp::WrappingMultiply(sdp::Number(strMaxSessionBandwidth), 1000);
    }
    // [X09] A session bandwidth, numeric or not, replaces the sum of the sections.
    const bool fCountSections = strMaxSessionBandwidth.empty();
    for (const MediaSession* const ms : vecRemoteMediaSession) {
        if (CommonMediaTraceEnabled()) {
            CommonMediaTrace(__FILE__, "GetRTPData", __LINE__, "Dump Media Session: \n%s",
                             ms->ToDiag().c_str());
        }
        if (sdp::IsBfcp(*ms)) {
            // [X11] Every floor control section is taken, so the last one stands.
            GetBfcpData(ParsedSDP, ms);
        } else if (ms->eMedia == MEDIA_VIDEO) {
            VideoParms& stream =
                ms->eContent == VIDEOTYPE_PRESO ? ParsedSDP.m_VideoPreso : ParsedSDP.m_VideoMain;
            const bool fKnown = ms->eContent == VIDEOTYPE_PRESO || ms->eContent == VIDEOTYPE_MAIN;
            if (fKnown && !stream.fIsVideoValid) {
                GetVideoRTPData(ParsedSDP, stream, ms);
                // [X10] The presentation never counts: it shares what main video was given.
                if (fCountSections && ms->eContent == VIDEOTYPE_MAIN) {
                    CountBandwidth(ParsedSDP, *ms);
                }
            }
        } else if (ms->eMedia == MEDIA_AUDIO && !ParsedSDP.fIsAudioValid) {
            GetAudioRTPData(ParsedSDP, ms);
            if (fCountSections) {
                CountBandwidth(ParsedSDP, *ms);
            }
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
        // [X02] Of several telephone-event formats the last one stands (RFC 4733, 2.4).
        if (rm->strEncodingName == kTelephoneEvent) {
            ParsedSDP.iDTMFPayload = sdp::Number(rm->strPayload);
        }
    }
    // [X07] The record is valid without a codec: the section is there, it just cannot carry anything.
    const bool fUsable = ms->iPort != 0 && ParsedSDP.eAudioCodec != PAYLOAD_UNKNOWN;
    ParsedSDP.iAudioRTPPort = ms->iPort;
    ParsedSDP.fAudioRecv = fUsable && ms->fRecv;
    ParsedSDP.fAudioSend = fUsable && ms->fSend;
    ParsedSDP.strAudioIPAddr = ms->strIPAddr.empty() ? strSessionIPAddr : ms->strIPAddr;
    ParsedSDP.setSRTPKey(baseSDP::SRTP_AUDIO, ms->bufSRTPKey);
    ParsedSDP.setSRTPSalt(baseSDP::SRTP_AUDIO, ms->bufSRTPSalt);
    ParsedSDP.cryptoAlgo[baseSDP::SRTP_AUDIO] = ms->cryptoAlgo;
    ParsedSDP.fIsAudioValid = true;
}

PayloadType_t SDPHandler::MatchAudioCodec(const RtpMap* rm) const {
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        if ((MyLocalSDP.eAudioCodec & codec.eCodec) == 0) {
            continue;
        }
        // [X12] A static payload is known by its number alone (RFC 3551, 6): no rtpmap is needed, and one
        // that renames it is not looked at.
        if (codec.fStatic ? rm->strPayload == codec.strPayload : IsG7221Negotiated(rm)) {
            return codec.eCodec;
        }
    }
    return PAYLOAD_UNKNOWN;
}

bool SDPHandler::IsG7221Negotiated(const RtpMap* rm) const {
    if ((MyLocalSDP.eAudioCodec & PAYLOAD_G7221) == 0 || rm->strEncodingName != kG7221) {
        return false;
    }
    // [X01] The bit rate counts at the very start of a parameter: behind the blank that "; " leaves it is not
    // seen, and other rates are not spoken at all (RFC 5577, 4.1 makes the parameter mandatory).
    for (const std::string& parm : rm->vecFmtpParms) {
        if (sdp::StartsWith(parm, "bitrate=32000")) {
            return true;
        }
    }
    return false;
}

void SDPHandler::GetBfcpData(RemoteSDP& ParsedSDP, const MediaSession* ms) const {
    ParsedSDP.iVideoPresoControlPort = ms->iPort;
    ParsedSDP.iBfcpConfid = ms->iBfcpConfid;
    ParsedSDP.iBfcpUserid = ms->iBfcpUserid;
    ParsedSDP.fBfcpIsServer = ms->strFloorctrl == "s-only";
}
