// Writes a description: each member appends the lines of one part of it to one text.
//
//     Build build(handler);
//     build.Audio();
//     return build.Take();
//
// One text that everything is appended to costs an answer of four sections 4 allocations; strings that are
// returned and joined cost 41, and leave copies of the keys in freed memory.
// The members are defined in the SDPBuild sources, each above the operation of the handler that returns its
// lines alone.
// Test: tests/unit/SDPBuildTest.cpp
#pragma once

#include "SDPHandler.h"

#include "SDPWriter.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class SDPHandler::Build {
public:
    static constexpr std::size_t kSectionRoom = 512;      ///< bytes; enough for the usual section
    static constexpr std::size_t kDescriptionRoom = 2048; ///< bytes; enough for all sections and their keys

    /// @param room  bytes reserved; a longer text grows
    explicit Build(const SDPHandler& handler, std::size_t room = kSectionRoom)
        : m_handler(handler), m_local(handler.MyLocalSDP), m_sections(handler.vecRemoteMediaSession),
          m_out(room) {}

    /// The text written so far; nothing is left.
    std::string Take() { return m_out.Take(); }

    /// The lines of one part alone: `Lines(handler, &Build::Label, role)`.
    template <typename... Parameters, typename... Arguments>
    static std::string Lines(const SDPHandler& handler, void (Build::*write)(Parameters...),
                             const Arguments&... arguments) {
        Build build(handler);
        (build.*write)(arguments...);
        return build.Take();
    }

    // SDPBuild.cpp
    void Description();
    void OfferPreamble();
    void O();
    void C();
    void Application();
    void FloorControl();
    void Unsupported();

    // SDPBuildAttribute.cpp
    void Bandwidth();
    void BandwidthTIAS(bool isVideo);
    void Directional(MediaType media, VIDEOTYPE role);
    void RTCPAttribute(std::int32_t port);
    void Crypto(SRTP_M_LINE n);

    // SDPBuildAudio.cpp
    void Audio();
    void RTPMap(PayloadType_t payload);

    // SDPBuildVideo.cpp
    void Video(const VideoParms& parms);
    void H264Parameters(const VideoParms& parms, std::string_view levelDigits, bool isMode1);
    void Label(VIDEOTYPE role);
    void Content(VIDEOTYPE role);

private:
    const SDPHandler& m_handler;
    const LocalSDP& m_local;
    const std::vector<MediaSession*>& m_sections; ///< of the far end; none while an offer is written
    sdp::Writer m_out;
};
