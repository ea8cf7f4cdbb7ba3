#include "SDPHandler.h"
#include <iostream>
int main() {
    LocalSDP local;
    local.eAudioCodec = PayloadType_t(PAYLOAD_G722 | PAYLOAD_G711U);
    local.listAudioCodecPriority = {PAYLOAD_G722, PAYLOAD_G711U};
    local.iAudioRTPPort = 16384;
    local.m_VideoMain.eVideoCodec = PayloadType_t(0); // no video section
    SDPHandler handler;
    handler.InitializeLocalSDP(local);
    handler.SetDefaultLocalIPAddr("192.0.2.1");
    std::string offer = handler.GetLocalSDP(); // goes out; this comes back:
    std::string answer = "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 9 101\r\n";
    RemoteSDP remote;
    handler.ParseTheSDP(answer, remote);
    std::cout << "G.722: " << (remote.eAudioCodec == PAYLOAD_G722 ? "yes" : "no") << ", send to "
              << remote.strAudioIPAddr << " port " << remote.iAudioRTPPort << "\n";
}
