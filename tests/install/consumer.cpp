// A program of another project: one handler offers and another answers; the status is 0 if the answer has the
// codec. It is built with the installed package, with the subproject, and with the sources alone.
#include "CommonMediaTrace.h"
#include "SDP.h"
#include "SDPHandler.h"
#include "TalmoMedia.h"

#include <commonmedia/Platform.h>
#include <commonmedia/SDPHandler.h>
#include <commonmedia/VideoUtils.h>
#include <iostream>
#include <string>

namespace {

LocalSDP Capabilities() {
    LocalSDP local;
    local.eAudioCodec = PAYLOAD_G722;
    local.listAudioCodecPriority = {PAYLOAD_G722};
    local.iAudioRTPPort = 16384;
    local.m_VideoMain.eVideoCodec = PayloadType_t(0);
    return local;
}

} // namespace

int main() {
    SDPHandler offerer;
    offerer.InitializeLocalSDP(Capabilities());
    offerer.SetDefaultLocalIPAddr("192.0.2.1");
    SDPHandler answerer;
    answerer.InitializeLocalSDP(Capabilities());
    answerer.SetDefaultLocalIPAddr("192.0.2.2");

    RemoteSDP remote;
    answerer.ParseTheSDP(offerer.GetLocalSDP(), remote);
    offerer.ParseTheSDP(answerer.GetLocalSDP(), remote);

    const bool isDone = remote.fIsAudioValid && remote.eAudioCodec == PAYLOAD_G722 &&
                        remote.strAudioIPAddr == "192.0.2.2" && VideoUtils::ConvertInt(16384) == "16384";
    std::cout << "consumer: " << (isDone ? "negotiated" : "FAILED") << '\n';
    return isDone ? 0 : 1;
}
