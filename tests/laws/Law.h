// Shared by the laws: texts to try, and the state of a handler as a text for comparison.
#pragma once

#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"
#include "Fields.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace support {

/// Every captured description of the corpus, in the order of the file names.
inline std::vector<std::string> CapturedTexts() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(COMMONMEDIA_CORPUS_DIR)) {
        if (entry.path().extension() == ".sdp") {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    EXPECT_GE(paths.size(), 30U) << COMMONMEDIA_CORPUS_DIR;
    std::vector<std::string> texts;
    for (const std::filesystem::path& path : paths) {
        std::ifstream in(path, std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return texts;
}

/// A description with everything that is read: audio, both video streams, keys, floor control.
inline const char* const kRichText =
    "v=0\r\n"
    "o=far 1 2 IN IP4 198.51.100.1\r\n"
    "s=-\r\n"
    "c=IN IP4 198.51.100.1\r\n"
    "t=0 0\r\n"
    "m=audio 5000 RTP/SAVP 115 9 0 18 101\r\n"
    "b=TIAS:64000\r\n"
    "a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0|2^31|1:1\r\n"
    "a=rtpmap:115 G7221/16000\r\n"
    "a=fmtp:115 bitrate=32000\r\n"
    "a=rtpmap:101 telephone-event/8000\r\n"
    "a=fmtp:101 0-15\r\n"
    "a=sendonly\r\n"
    "a=ice-ufrag:F7gI\r\n"
    "a=ice-pwd:x9cml/YzichV2+XlhiMu8g\r\n"
    "a=candidate:1 1 UDP 2130706431 198.51.100.1 5000 typ host\r\n"
    "m=video 5002 RTP/SAVP 96 97 98\r\n"
    "c=IN IP4 198.51.100.2\r\n"
    "b=TIAS:936000\r\n"
    "a=rtpmap:96 VP8/90000\r\n"
    "a=rtpmap:97 H264/90000\r\n"
    "a=fmtp:97 profile-level-id=42801f; packetization-mode=0;max-br=900\r\n"
    "a=rtpmap:98 H264/90000\r\n"
    "a=fmtp:98 profile-level-id=428014; packetization-mode=1;max-mbps=40500;max-fs=1620\r\n"
    "a=content:main\r\n"
    "m=video 5004 RTP/AVP 97\r\n"
    "a=rtpmap:97 H264/90000\r\n"
    "a=fmtp:97 profile-level-id=428028\r\n"
    "a=content:slides\r\n"
    "a=recvonly\r\n"
    "m=application 5006 UDP/BFCP *\r\n"
    "a=floorctrl:s-only\r\n"
    "a=confid:7\r\n"
    "a=userid:8\r\n"
    "m=text 5008 RTP/AVP 99\r\n";

/// A short description without an address, so the record shows the session address of the text before it.
inline const char* const kAddressless = "v=0\r\n"
                                        "m=audio 5000 RTP/AVP 0\r\n"
                                        "m=video 5002 RTP/AVP 97\r\n"
                                        "a=rtpmap:97 H264/90000\r\n";

/// Every field of every section of a handler.
inline std::string Sections(const SDPHandler& handler) {
    std::string text;
    for (const MediaSession* section : handler.vecRemoteMediaSession) {
        text += FieldsText(*section) + '\n';
    }
    return text;
}

/// The whole result of a parse: the record, the sections, the session values.
inline std::string Outcome(const SDPHandler& handler, const RemoteSDP& remote) {
    return Describe(remote) + "session " + handler.strSessionIPAddr + ' ' + handler.strMaxSessionBandwidth +
           '\n' + Sections(handler);
}

/// What an application switches. Every law holds for each combination: with all of them on, nothing would
/// show that a text has switched one on.
struct Switches {
    bool usesSrtp;
    bool usesBfcp;
    bool isMuted;
    std::uint32_t served;
};

inline std::vector<Switches> AllSwitches() {
    std::vector<Switches> all;
    for (unsigned bits = 0; bits < 16; ++bits) {
        all.push_back({(bits & 1U) != 0, (bits & 2U) != 0, (bits & 4U) != 0, (bits & 8U) != 0 ? 4U : 2U});
    }
    return all;
}

inline void Set(SDPHandler& handler, const Switches& switches) {
    handler.m_bSRTP = switches.usesSrtp;
    handler.SetBfcpSupport(switches.usesBfcp);
    handler.MyLocalSDP.fVideoTxMuted = switches.isMuted;
    handler.SetMaxSupportedSessions(switches.served);
}

/// What the application has set: switches and capabilities.
inline std::string Settings(const SDPHandler& handler) {
    std::ostringstream out;
    out << "srtp=" << handler.m_bSRTP << " bfcp=" << handler.m_fBfcpSupported
        << " served=" << handler.m_iMaxSupportedSessions << " id=" << handler.m_iSessionID << '\n'
        << handler.MyLocalSDP.ToDiag();
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        const LocalSDP& local = handler.MyLocalSDP;
        out << DescribeRow(local.bufSRTPKey[n], baseSDP::kKeyLength, sizeof local.bufSRTPKey[n]) << ' '
            << DescribeRow(local.bufSRTPSalt[n], baseSDP::kSaltLength, sizeof local.bufSRTPSalt[n]) << '\n';
    }
    return out.str();
}

/// Parses into a new record and returns the whole result.
inline std::string ParseInto(SDPHandler& handler, const std::string& text) {
    RemoteSDP remote;
    EXPECT_EQ(handler.ParseTheSDP(text, remote), text.empty() ? 1 : 0);
    return Outcome(handler, remote);
}

/// Calls `check(handler, record)` when a handler with each combination of switches has read each text.
template <typename Check>
void ForEachReading(const std::vector<std::string>& texts, const Check& check) {
    for (const Switches& switches : AllSwitches()) {
        for (const std::string& text : texts) {
            SDPHandler h;
            Start(h, PresentationLocal());
            Set(h, switches);
            RemoteSDP remote;
            h.ParseTheSDP(text, remote);
            check(h, remote);
        }
    }
}

} // namespace support
