// Stage: build, each piece of a description as a text of its own.
// Input: what the piece's writer takes. Output: the lines that it writes, alone.
// Touches nothing; the session version, which the origin line advances, is the exception.
// A whole description is written into one text; the pieces are for callers that look at one of them.
// Test: the tests of the writers, tests/unit/SDPBuild*Test.cpp, and tests/unit/SDPBuildPiecesTest.cpp
#include "SDPHandler.h"

#include "SDPWriter.h"

namespace {

/// Room for a section; a piece that is longer grows.
constexpr std::size_t kPieceLength = 512;

} // namespace

template <typename... Taken, typename... Given>
std::string SDPHandler::Piece(void (SDPHandler::*write)(sdp::Writer&, Taken...) const,
                              const Given&... given) const {
    sdp::Writer sdp(kPieceLength);
    (this->*write)(sdp, given...);
    return sdp.Take();
}

std::string SDPHandler::AddOfferPreamble() {
    sdp::Writer sdp(kPieceLength);
    WriteOfferPreamble(sdp);
    return sdp.Take();
}

std::string SDPHandler::AddO() {
    sdp::Writer sdp(kPieceLength);
    WriteO(sdp);
    return sdp.Take();
}

std::string SDPHandler::AddC() const {
    return Piece(&SDPHandler::WriteC);
}

std::string SDPHandler::AddBandwidth() const {
    return Piece(&SDPHandler::WriteBandwidth);
}

std::string SDPHandler::AddBandwidthTIAS(bool IsVideo) const {
    return Piece(&SDPHandler::WriteBandwidthTIAS, IsVideo);
}

std::string SDPHandler::AddAudio() const {
    return Piece(&SDPHandler::WriteAudio);
}

std::string SDPHandler::AddRTPMap(PayloadType_t payload) const {
    return Piece(&SDPHandler::WriteRTPMap, payload);
}

std::string SDPHandler::AddVideo(const VideoParms& parms) const {
    return Piece(&SDPHandler::WriteVideo, parms);
}

std::string SDPHandler::AddLabel(VIDEOTYPE v) const {
    return Piece(&SDPHandler::WriteLabel, v);
}

std::string SDPHandler::AddContent(VIDEOTYPE v) const {
    return Piece(&SDPHandler::WriteContent, v);
}

std::string SDPHandler::AddH264Profile(const VideoParms& parms) const {
    return Piece(&SDPHandler::WriteH264Profile, parms);
}

std::string SDPHandler::AddH264ProfilePacketization0(const VideoParms& parms) const {
    return Piece(&SDPHandler::WriteH264ProfilePacketization0, parms);
}

std::string SDPHandler::AddCrypto(SRTP_M_LINE n) const {
    return Piece(&SDPHandler::WriteCrypto, n);
}

std::string SDPHandler::AddApplication() const {
    return Piece(&SDPHandler::WriteApplication);
}

std::string SDPHandler::AddFloorControl() const {
    return Piece(&SDPHandler::WriteFloorControl);
}

std::string SDPHandler::AddUnsupported() const {
    return Piece(&SDPHandler::WriteUnsupported);
}

std::string SDPHandler::AddDirectional(MediaType m, VIDEOTYPE v) const {
    return Piece(&SDPHandler::WriteDirectional, m, v);
}

std::string SDPHandler::AddRTCPAttribute(int port) const {
    return Piece(&SDPHandler::WriteRTCPAttribute, port);
}
