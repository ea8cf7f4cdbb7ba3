// The offering side of the manual at the top of SDPHandler.h, with the calls that come back empty-handed.
#include "SDPHandler.h"

#include <iostream>
#include <sstream>
#include <string>

namespace {

// All lines but the origin, whose session id comes from the clock.
void Print(const std::string& sdp) {
    std::istringstream lines(sdp);
    for (std::string line; std::getline(lines, line, '\r'); lines.ignore(1)) {
        if (line.compare(0, 2, "o=") != 0) {
            std::cout << "    " << line << '\n';
        }
    }
}

LocalSDP Capabilities() {
    LocalSDP local;
    local.eAudioCodec = PayloadType_t(PAYLOAD_G722 | PAYLOAD_G711U);
    local.listAudioCodecPriority = {PAYLOAD_G722, PAYLOAD_G711U};
    local.iAudioRTPPort = 16384;
    local.iMaxBandwidth = 768000;
    local.iVideoPayloadMode1 = 97;
    local.iVideoPayloadMode0 = 96;
    local.m_VideoMain.eVideoCodec = PayloadType_t(PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0);
    local.m_VideoMain.iVideoRTPPort = 16386;
    local.m_VideoMain.strVideoLevel = "3.1";
    return local;
}

} // namespace

int main() {
    SDPHandler handler;
    handler.InitializeLocalSDP(Capabilities());

    // Without a default local address there is nothing to offer.
    const std::string nothing = handler.GetLocalSDP();
    std::cout << "without an address: " << nothing.size() << " bytes\n";

    handler.SetDefaultLocalIPAddr("192.0.2.1");
    std::cout << "offer:\n";
    Print(handler.GetLocalSDP());

    const std::string answer = "v=0\r\n"
                               "o=- 1 1 IN IP4 198.51.100.7\r\n"
                               "s=-\r\n"
                               "c=IN IP4 198.51.100.7\r\n"
                               "t=0 0\r\n"
                               "m=audio 5004 RTP/AVP 0 101\r\n"
                               "a=rtpmap:101 telephone-event/8000\r\n"
                               "m=video 5006 RTP/AVP 97\r\n"
                               "a=rtpmap:97 H264/90000\r\n"
                               "a=fmtp:97 profile-level-id=42001F;packetization-mode=1\r\n"
                               "a=recvonly\r\n";
    RemoteSDP remote;
    std::cout << "reading the answer: " << handler.ParseTheSDP(answer, remote) << '\n';
    std::cout << "audio: G.711 " << (remote.eAudioCodec == PAYLOAD_G711U) << ", port " << remote.iAudioRTPPort
              << ", events on " << remote.iDTMFPayload << '\n';
    std::cout << "video: H.264 level " << remote.m_VideoMain.strVideoLevel << ", port "
              << remote.m_VideoMain.iVideoRTPPort << ", send " << remote.m_VideoMain.fVideoSend
              << ", receive " << remote.m_VideoMain.fVideoRecv << '\n';

    // An empty text is refused, and what was negotiated stays in the application's record.
    std::cout << "reading an empty text: " << handler.ParseTheSDP("", remote) << ", audio port still "
              << remote.iAudioRTPPort << '\n';
    // A line counts only when it ends in CR LF: this text has none, so the record is fresh again.
    std::cout << "reading a text without a line end: " << handler.ParseTheSDP("v=0", remote)
              << ", audio valid " << remote.fIsAudioValid << '\n';
    return 0;
}
