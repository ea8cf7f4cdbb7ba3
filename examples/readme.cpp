#include "SDPHandler.h"
#include <iostream>
int main() {
    SDPHandler handler;
    LocalSDP& local = handler.MyLocalSDP; // or a LocalSDP given to InitializeLocalSDP
    local.eAudioCodec = PAYLOAD_G722;
    local.listAudioCodecPriority = {PAYLOAD_G722};
    local.iAudioRTPPort = 16384;
    local.m_VideoMain.eVideoCodec = PayloadType_t(0); // no video section
    local.strDefaultIPAddr = "192.0.2.1";
    std::string offer = handler.GetLocalSDP(); // this goes out, and an answer comes back:
    RemoteSDP remote;
    handler.ParseTheSDP("v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 9 101\r\n", remote);
    std::cout << (remote.eAudioCodec == PAYLOAD_G722 ? "G.722 to " : "? ") << remote.iAudioRTPPort << '\n';
}
