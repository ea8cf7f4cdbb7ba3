#include "Laws.h"

#include "Judged.h"
#include "support/Fields.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

namespace {

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

} // namespace

std::string Visible(std::string_view text) {
    static const char* const digits = "0123456789abcdef";
    std::string out = "    ";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (text[i] == '\\') {
            out += "\\\\";
        } else if (byte >= 0x20 && byte < 0x7f) {
            out += text[i];
        } else if (text[i] == '\r') {
            out += "\\r";
        } else if (text[i] == '\n') {
            out += i + 1 < text.size() ? "\\n\n    " : "\\n";
        } else {
            out.append("\\x").append(1, digits[byte >> 4U]).append(1, digits[byte & 0xfU]);
        }
    }
    return out;
}

void Broken(const char* law, const char* left, std::string_view leftText, const char* right,
            std::string_view rightText) {
    std::fprintf(stderr, "LAW BROKEN: %s\n  %s (%zu bytes):\n%s\n  %s (%zu bytes):\n%s\n", law, left,
                 leftText.size(), Visible(leftText).c_str(), right, rightText.size(),
                 Visible(rightText).c_str());
    std::fflush(stderr);
    std::abort();
}

void RequireSame(const char* law, const char* left, std::string_view leftText, const char* right,
                 std::string_view rightText) {
    if (IsInForce(law) && leftText != rightText) {
        Broken(law, left, leftText, right, rightText);
    }
}

void Require(bool fact, const char* law, std::string_view found, std::string_view where) {
    if (IsInForce(law) && !fact) {
        Broken(law, "found", found, "in", where);
    }
}

std::string RecordText(const RemoteSDP& remote) {
    return support::FieldsText(remote);
}

std::string RecordText(const LocalSDP& local) {
    return support::FieldsText(local);
}

std::string SectionsText(const SDPHandler& handler) {
    std::string out;
    for (const MediaSession* const ms : handler.vecRemoteMediaSession) {
        out += "section\n" + support::FieldsText(*ms);
    }
    return out;
}

std::string SettingsText(const SDPHandler& handler) {
    return "srtp=" + std::to_string(handler.m_bSRTP) + " bfcp=" + std::to_string(handler.m_fBfcpSupported) +
           " served=" + std::to_string(handler.m_iMaxSupportedSessions) + "\n" +
           RecordText(handler.MyLocalSDP);
}

void CheckLines(const Side& side, const std::string& text) {
    if (text.empty()) {
        return;
    }
    static constexpr std::string_view bare = "a=label:a=content:";
    const auto noRole = [](const VideoParms& video) {
        return video.eVideoCodec != 0 && video.eVideoType != VIDEOTYPE_MAIN &&
               video.eVideoType != VIDEOTYPE_PRESO;
    };
    const bool mayBeBare =
        noRole(side.local.m_VideoMain) || (side.usesBfcp && noRole(side.local.m_VideoPreso));
    static constexpr std::string_view starts[] = {"v=0", "o=Quillmarshorizon", "s=-", "c=IN IP4 "};

    std::string_view rest = text;
    for (std::size_t number = 0; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\r'), rest.find('\n'));
        std::string_view line = rest.substr(0, end);
        const bool isEnded = StartsWith(rest.substr(line.size()), "\r\n");
        bool hasRole = true;
        while (StartsWith(line, bare)) {
            hasRole = false;
            line.remove_prefix(bare.size());
        }
        Require(hasRole || mayBeBare, "a bare label belongs to a stream without a role", rest, text);
        Require(isEnded || (!hasRole && line.empty() && end == std::string_view::npos),
                "every line ends in CR LF", rest, text);
        Require(!line.empty() || !hasRole, "no line is empty", rest, text);
        Require(line.find("a=rtpmap:") != 0 || line.size() > 9, "no rtpmap line is bare", rest, text);
        Require(number >= std::size(starts) || StartsWith(line, starts[number]),
                "the session lines come first", line, text);
        Require(line.empty() || (line.size() > 1 && line[1] == '=' && line[0] >= 'a' && line[0] <= 'z'),
                "a line begins with its type", line, text);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : std::min(rest.size(), end + 2));
    }
    Require(text.find("\r\nt=0 0\r\n") != std::string::npos, "the session lines end with t=", text, text);
}

void CheckDescription(const Side& side, const Reading& remote, const std::string& text) {
    if (text.empty()) {
        return;
    }
    const std::string surplus = Declined(remote, side.served);
    const std::size_t own = text.size() - std::min(surplus.size(), text.size());
    RequireSame("surplus sections are declined at the end", "declined", surplus, "end", text.substr(own));
    CheckLines(side, text.substr(0, own));
    CheckReadsBack(side, text.substr(0, own), remote.sections.empty());
}

namespace {

std::string SettingsOf(const Side& side) {
    SDPHandler fresh;
    Prepare(fresh, side);
    // Not copied by InitializeLocalSDP.
    fresh.MyLocalSDP.iBfcpConfid = side.local.iBfcpConfid;
    fresh.MyLocalSDP.iBfcpUserid = side.local.iBfcpUserid;
    fresh.MyLocalSDP.fBfcpIsServer = side.local.fBfcpIsServer;
    return SettingsText(fresh);
}

} // namespace

void CheckGoodTextAfterwards(SDPHandler& used, const Side& side) {
    // The first text has a session address. The second has an address in one section only, so its other
    // sections inherit the address of the first text.
    static constexpr struct {
        std::size_t sections;
        const char* text;
    } goods[] = {
        {4, "v=0\r\n"
            "o=far 1 1 IN IP4 192.0.2.2\r\n"
            "s=-\r\n"
            "c=IN IP4 192.0.2.2\r\n"
            "b=AS:1024\r\n"
            "t=0 0\r\n"
            "m=audio 20384 RTP/SAVP 18 104 9 0 101\r\n"
            "a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
            "a=rtpmap:104 G7221/16000\r\n"
            "a=fmtp:104 bitrate=32000\r\n"
            "a=rtpmap:101 telephone-event/8000\r\n"
            "a=fmtp:101 0-15\r\n"
            "a=sendonly\r\n"
            "m=video 20386 RTP/SAVP 109 110\r\n"
            "a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0\r\n"
            "a=rtpmap:109 H264/90000\r\n"
            "a=fmtp:109 profile-level-id=42801f; packetization-mode=1; max-mbps=108000; max-fs=3600\r\n"
            "a=rtpmap:110 H264/90000\r\n"
            "a=fmtp:110 profile-level-id=42801f\r\n"
            "a=label:8\r\n"
            "a=content:main\r\n"
            "m=video 20388 RTP/SAVP 109\r\n"
            "a=rtpmap:109 H264/90000\r\n"
            "a=fmtp:109 profile-level-id=428028;packetization-mode=1;max-br=1500\r\n"
            "a=content:slides\r\n"
            "a=recvonly\r\n"
            "m=application 20390 UDP/BFCP *\r\n"
            "a=floorctrl:s-only\r\n"
            "a=confid:7\r\n"
            "a=userid:8\r\n"},
        {3, "v=0\r\n"
            "o=far 1 2 IN IP4 192.0.2.3\r\n"
            "s=-\r\n"
            "t=0 0\r\n"
            "m=audio 30000 RTP/AVP 0\r\n"
            "b=TIAS:64000\r\n"
            "m=video 30002 RTP/AVP 97\r\n"
            "c=IN IP4 192.0.2.3\r\n"
            "a=rtpmap:97 H264/90000\r\n"
            "m=text 30004 RTP/AVP 98\r\n"},
    };
    RequireSame("a used handler has the settings of its side", "side", SettingsOf(side), "used",
                SettingsText(Judged("used handler", used)));
    for (const auto& [sections, text] : goods) {
        SDPHandler fresh;
        Prepare(fresh, side);
        fresh.m_iSessionID = used.m_iSessionID;
        fresh.m_iSessionVersion = used.m_iSessionVersion;
        fresh.strSessionIPAddr = used.strSessionIPAddr;
        RemoteSDP ofFresh;
        RemoteSDP ofUsed;
        fresh.ParseTheSDP(text, ofFresh);
        used.ParseTheSDP(text, ofUsed);
        Require(Judged("used handler after a good text", used).vecRemoteMediaSession.size() == sections,
                "a good text is read", SectionsText(used), text);
        RequireSame("a used handler reads as a fresh one does", "fresh", RecordText(ofFresh), "used",
                    RecordText(Judged("used record", ofUsed)));
        RequireSame("a used handler holds what a fresh one does", "fresh", SectionsText(fresh), "used",
                    SectionsText(used));
        RequireSame("a used handler answers as a fresh one does", "fresh", fresh.GetLocalSDP(), "used",
                    Judged("used answer", used.GetLocalSDP()));
    }
}

} // namespace fuzz
