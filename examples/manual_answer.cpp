// The answering side of the manual at the top of SDPHandler.h, with a key text that cannot be used.
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
    local.m_VideoMain.eVideoCodec = PayloadType_t(0); // no video section
    return local;
}

} // namespace

int main() {
    SDPHandler handler;
    handler.InitializeLocalSDP(Capabilities());
    handler.SetDefaultLocalIPAddr("192.0.2.1");

    const std::string offer = "v=0\r\n"
                              "o=- 1 1 IN IP4 198.51.100.7\r\n"
                              "s=-\r\n"
                              "c=IN IP4 198.51.100.7\r\n"
                              "t=0 0\r\n"
                              "m=audio 5004 RTP/AVP 18 0 9 101\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=sendonly\r\n";
    RemoteSDP remote;
    std::cout << "reading the offer: " << handler.ParseTheSDP(offer, remote) << '\n';
    if (remote.eAudioCodec != PAYLOAD_UNKNOWN && remote.iAudioRTPPort != 0) {
        std::cout << "audio: payload type " << remote.iAudioPayload << " to " << remote.strAudioIPAddr
                  << " port " << remote.iAudioRTPPort << ", send " << remote.fAudioSend << ", receive "
                  << remote.fAudioRecv << '\n';
    }
    std::cout << "answer:\n";
    Print(handler.GetLocalSDP());

    // Dropping the far end's sections turns the next description into an offer.
    handler.ResetRemoteSDP();
    std::cout << "offering again: " << handler.IsOffer() << '\n';

    // 40 characters that are not base64 decode to nothing.
    const std::string noKey(40, '!');
    unsigned char key[baseSDP::kKeyLength] = {7};
    unsigned char salt[baseSDP::kSaltLength] = {7};
    const bool isDecoded = ExtractSRTPKey(reinterpret_cast<const unsigned char*>(noKey.data()), key, salt);
    std::cout << "a key that is no base64: " << isDecoded
              << ", key and salt keep their bytes: " << (key[0] == 7 && salt[0] == 7) << '\n';
    return 0;
}
