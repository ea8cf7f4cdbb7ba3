// Canonical(): the spelling that a line's writer meant. IsCanonical(): a quick check; where it is true, the
// line has that spelling already.
#include "Reading.h"
#include "Suspect.h"

#include "Texts.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using support::AllTexts;
using support::NamedText;

struct Spelling {
    const char* line;
    const char* canonical;
    bool isCanonical;
};

// Each line is read after an "m=audio" line.
constexpr Spelling kSpellings[] = {
    {"m=audio 5004 RTP/AVP 0 101", "m=audio 5004 RTP/AVP 0 101", true},
    {"m=audio 5004 rtp/avp 0 101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio 5004 RTP/AVP 00 101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio 5004\tRTP/AVP 0 101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio 5004  RTP/AVP 0 101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio 5004 RTP/AVP 0,101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio 5004 0 101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio RTP/AVP 5004 0 101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio 5004/RTP/AVP 0 101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio 5004,RTP/AVP,0,101", "m=audio 5004 RTP/AVP 0 101", false},
    {"m=audio 5,004 RTP/AVP 0 101", "m=audio 5,004 RTP/AVP 0 101", false},
    {"m=audio 5004 RTP/AVP PCMU G729", "m=audio 5004 RTP/AVP 0 18", false},
    {"m=audio\xC2\xA0"
     "5004 RTP/AVP 0 101",
     "m=audio 5004 RTP/AVP 0 101", false},
    {"m=application 5070 *", "m=application 5070 UDP/BFCP *", false},
    {"m=application 5070 UDP/BFCP*", "m=application 5070 UDP/BFCP *", false},
    {"c=IN IP4 192.0.2.1", "c=IN IP4 192.0.2.1", true},
    {"c=IN/IP4/192.0.2.1", "c=IN IP4 192.0.2.1", false},
    {"c=IN IP4 192.0.2.1;", "c=IN IP4 192.0.2.1", false},
    {"c=IN IP4  192.0.2.1", "c=IN IP4 192.0.2.1", false},
    {"c=IN IP6 2001:db8::1", "c=IN IP6 2001:db8::1", false},
    {"c=IN IP6 [2001:db8::1]", "c=IN IP6 2001:db8::1", false},
    {"c=IN IP6 ::ffff:192.0.2.1", "c=IN IP6 ::ffff:192.0.2.1", false},
    {"c=IN IP4 192.0.2.1:5004", "c=IN IP4 192.0.2.1", false},
    {"c=IN IP4 sip:192.0.2.1", "c=IN IP4 192.0.2.1", false},
    {"c=IN IP4 http://192.0.2.1/", "c=IN IP4 192.0.2.1", false},
    {"c=IN IP4 (192.0.2.1)", "c=IN IP4 192.0.2.1", false},
    {"c=IN IP4 ip-192.0.2.1.example", "c=IN IP4 ip-192.0.2.1.example", false},
    {"a=rtpmap:97 H264/90000", "a=rtpmap:97 H264/90000", true},
    {"a=rtpmap:111 opus/48000/2", "a=rtpmap:111 opus/48000/2", true},
    {"a=rtpmap:9 G722/8000", "a=rtpmap:9 G722/8000", true},
    {"a=rtpmap:97 h264/90000", "a=rtpmap:97 H264/90000", false},
    {"a=rtpmap:97 H.264/90000", "a=rtpmap:97 H264/90000", false},
    {"a=rtpmap:097 H264/90000", "a=rtpmap:97 H264/90000", false},
    {"a=rtpmap:97  H264/90000", "a=rtpmap:97 H264/90000", false},
    {"a=rtpmap:97 opus/48000;", "a=rtpmap:97 opus/48000", false},
    {"a=rtpmap:101 telephone-events/8000", "a=rtpmap:101 telephone-event/8000", false},
    {"a=rtpmap:101 audio/telephone-event/8000", "a=rtpmap:101 telephone-event/8000", false},
    {"a=rtpmap:101 telephone\xE2\x80\x93"
     "event/8000",
     "a=rtpmap:101 telephone-event/8000", false},
    {"a=fmtp:97 packetization-mode=1;max-fs=3600", "a=fmtp:97 packetization-mode=1;max-fs=3600", true},
    {"a=fmtp:97 profile-level-id=42e01F", "a=fmtp:97 profile-level-id=42e01F", true},
    {"a=fmtp:97 profile-level-id=42-e0-1f", "a=fmtp:97 profile-level-id=42e01f", false},
    {"a=fmtp:97 profile-level-id=baseline", "a=fmtp:97 profile-level-id=baseline", false},
    {"a=fmtp:101 0-15", "a=fmtp:101 0-15", true},
    {"a=fmtp:97 max-fs=3600;", "a=fmtp:97 max-fs=3600", false},
    {"a=fmtp:97 max-fs=3600;;max-br=1", "a=fmtp:97 max-fs=3600;max-br=1", false},
    {"a=fmtp:97 max-fs=3600; max-br=1", "a=fmtp:97 max-fs=3600;max-br=1", false},
    {"a=fmtp:97 Max-FS=3600", "a=fmtp:97 max-fs=3600", false},
    {"a=fmtp:97 max_fs=3600", "a=fmtp:97 max-fs=3600", false},
    {"a=fmtp:97 packetisation-mode=1", "a=fmtp:97 packetization-mode=1", false},
    {"a=fmtp:97 max-fs=+3600", "a=fmtp:97 max-fs=3600", false},
    {"a=fmtp:97 profile-level-id=0x42e01f", "a=fmtp:97 profile-level-id=42e01f", false},
    {"a=fmtp:97 packetization-mode==1", "a=fmtp:97 packetization-mode=1", false},
    {"a=fmtp:97 packetization-mode:1", "a=fmtp:97 packetization-mode=1", false},
    {"a=fmtp97 max-fs=3600", "a=fmtp:97 max-fs=3600", false},
    {"a=content=slides", "a=content:slides", false},
    {"a=confid=15", "a=confid:15", false},
    {"a=ice-ufrag=F7gI", "a=ice-ufrag:F7gI", false},
    {"a=ice-ufrag F7gI", "a=ice-ufrag:F7gI", false},
    {"a=candidate=1 1 UDP 1 192.0.2.1 5004 typ host", "a=candidate:1 1 UDP 1 192.0.2.1 5004 typ host", false},
    {"b=AS:512 kbit/s", "b=AS:512", false},
    {"b=AS:-1", "b=AS:-1", false},
};

TEST(Canonical, IsTheSpellingThatTheWriterMeant) {
    for (const Spelling& spelling : kSpellings) {
        const std::string text = std::string("m=audio 5004 RTP/AVP 97\r\n") + spelling.line + "\r\n";
        const explain::Reading reading = explain::Read(text);
        ASSERT_EQ(reading.lines.size(), 2U) << spelling.line;
        EXPECT_EQ(explain::Canonical(reading.lines[1], reading), spelling.canonical) << spelling.line;
        EXPECT_EQ(explain::IsCanonical(reading.lines[1]), spelling.isCanonical) << spelling.line;
    }
}

TEST(Canonical, OfTheNamesInAMediaLineTheFirstAreReplaced) {
    std::string names;
    std::string numbers;
    for (int i = 0; i < 20; ++i) {
        names += " PCMU";
        numbers += i < 16 ? " 0" : " PCMU";
    }
    const std::string text = "m=audio 5004 RTP/AVP" + names + "\r\n";
    const explain::Reading reading = explain::Read(text);
    EXPECT_EQ(explain::Canonical(reading.lines[0], reading), "m=audio 5004 RTP/AVP" + numbers);
}

/// Every line of the sample texts, once.
std::set<std::string> AllLines() {
    std::set<std::string> lines;
    for (const NamedText& named : AllTexts()) {
        for (const explain::TextLine& line : explain::Read(named.text).lines) {
            lines.emplace(line.text);
        }
    }
    return lines;
}

TEST(Canonical, ALineThatTheQuickCheckAcceptsIsItsOwnSpelling) {
    const std::string inserted = " \t\v,;:.=/_+-'\"0HhMpx";
    std::size_t seen = 0;
    for (const std::string& line : AllLines()) {
        for (std::size_t i = 0; i < line.size() && i < 60; ++i) {
            std::string changed = line;
            changed.insert(i, 1, inserted[(i + line.size()) % inserted.size()]);
            const explain::Reading reading = explain::Read(changed);
            for (const explain::TextLine& each : reading.lines) {
                if (explain::IsCanonical(each)) {
                    ++seen;
                    ASSERT_EQ(explain::Canonical(each, reading), each.text);
                }
            }
        }
    }
    EXPECT_GT(seen, 10000U);
}

} // namespace
