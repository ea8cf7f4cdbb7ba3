// A SIP agent for one call: libre for SIP, SDPNegotiator for the descriptions, ffmpeg for the media.
//
//     example_call --call sip:bob@192.0.2.7 --hang-up-after 10
//     example_call --audio PCMU --srtp required --hold-after 3 --resume-after 6 --hang-up-after 9
//
// The first calls, the second waits for a call. --help lists everything.
#include "Agent.h"

int main(int argc, char** argv) {
    call::Options options;
    int status = 0;
    if (!call::ParseOptions(argc, argv, options, status)) {
        return status;
    }
    return call::Agent(options).Run();
}
