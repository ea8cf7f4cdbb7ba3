// The members of the capability file, each described once; its reader and its writer visit the description.
//
// A visitor has these members. What follows the name is the variable of the member: the writer reads it, the
// reader assigns it.
//   Schema(text)              Object(name, visitor of its members)
//   Text(name, string)        Number(name, int32)          Flag(name, bool)
//   Named(name, enum, table)  CodecSet(name, set)          CodecList(name, list)
//   Count(name, uint32)       Floor(name, FloorControl)
//   Key(name, capabilities, stream)    Srtp(name, capabilities)
//   FarEnd(name, whether to write it, visitor of its members)    FarEndFlag(name, bool)
//
// Tests: tests/tool/CapabilitiesTest.cpp
#pragma once

#include "Capabilities.h"
#include "Names.h"

namespace cmsdp {

constexpr const char* kCapabilitiesSchema = "cmsdp.capabilities/1";

template <typename Visitor>
void VisitKey(Visitor& v, Capabilities& c, baseSDP::SRTP_M_LINE stream) {
    v.Named("suite", c.local.cryptoAlgo[stream], SuiteNames());
    v.Key("key", c, stream);
}

template <typename Visitor>
void VisitVideo(Visitor& v, Capabilities& c, VideoParms& video, baseSDP::SRTP_M_LINE stream) {
    v.Number("port", video.iVideoRTPPort);
    v.CodecSet("codecs", video.eVideoCodec);
    v.Named("role", video.eVideoType, RoleNames());
    v.Text("level", video.strVideoLevel);
    v.Number("max_macroblocks_per_s", video.iFmtpMaxMbps);
    v.Number("max_frame_macroblocks", video.iFmtpMaxFrameSize);
    v.Number("max_bit_rate_x1000_bit_per_s", video.iFmtpMaxBitRate);
    VisitKey(v, c, stream);
    // What a description of the far end fills in. No local description says any of it, so it is written only
    // when a file sets it.
    const VideoParms none;
    const bool set = !video.strVideoIPAddr.empty() || video.iVideoPayload != none.iVideoPayload ||
                     video.iFmtpPacketizationMode != none.iFmtpPacketizationMode || video.fVideoSend ||
                     video.fVideoRecv || video.fIsVideoValid;
    v.FarEnd("far_end", set, [&] {
        v.Text("address", video.strVideoIPAddr);
        v.Number("payload_type", video.iVideoPayload);
        v.Number("packetization_mode", video.iFmtpPacketizationMode);
        v.Flag("sends", video.fVideoSend);
        v.Flag("receives", video.fVideoRecv);
        v.Flag("valid", video.fIsVideoValid);
    });
}

template <typename Visitor>
void VisitCapabilities(Visitor& v, Capabilities& c) {
    LocalSDP& local = c.local;
    v.Schema(kCapabilitiesSchema);
    v.Text("default_address", local.strDefaultIPAddr);
    v.Text("origin_address", local.strMyIPAddr);
    v.Text("origin_extension", local.strOExtension);
    v.Number("max_bandwidth_bit_per_s", local.iMaxBandwidth);
    v.Count("served_sections", c.servedSections);
    v.Srtp("srtp", c);
    v.Object("audio", [&] {
        v.Number("port", local.iAudioRTPPort);
        v.CodecSet("codecs", local.eAudioCodec);
        v.CodecList("priority", local.listAudioCodecPriority);
        VisitKey(v, c, baseSDP::SRTP_AUDIO);
    });
    v.Object("video", [&] {
        v.Number("payload_type_mode_1", local.iVideoPayloadMode1);
        v.Number("payload_type_mode_0", local.iVideoPayloadMode0);
        v.Flag("muted", local.fVideoTxMuted);
        v.Object("main", [&] { VisitVideo(v, c, local.m_VideoMain, baseSDP::SRTP_VIDEO); });
        v.Object("presentation", [&] { VisitVideo(v, c, local.m_VideoPreso, baseSDP::SRTP_VIDEO_PRESO); });
    });
    v.Object("floor_control", [&] {
        v.Floor("enabled", c.floorControl);
        v.Number("port", local.iVideoPresoControlPort);
        v.Number("conference_id", local.iBfcpConfid);
        v.Number("user_id", local.iBfcpUserid);
        v.FarEndFlag("far_end_is_server", local.fBfcpIsServer);
    });
}

} // namespace cmsdp
