#include "SDPPrepare.h"
#include "Parts.h"
#include "SDPRepeat.h"

using namespace call;
using namespace negotiation;

namespace {

/// The copy that the component reads of an offer.
std::string Prepared(const std::string& offer, bool isRepaired = true, Srtp srtp = Srtp::Off) {
    Repairs repairs;
    repairs.SetAll(isRepaired);
    Wishes wishes;
    wishes.local = Local();
    wishes.srtp = srtp;
    const Description description = Cut(offer, repairs);
    sdp::Writer text(offer.size());
    WritePrepared(text, description, Choose(description, wishes, Session(), repairs).taken, repairs);
    return text.Take();
}

TEST(Prepare, SectionsAreInTheComponentsOrderUnderItsNumbers) {
    EXPECT_TEXT(
        Prepared(
            Far("m=application 30006 UDP/BFCP *\na=confid:4711\na=userid:x\na=floorctrl:s-only\n"
                "m=video 30004 RTP/AVP 100\na=rtpmap:100 H264/90000\na=content:slides\n"
                "m=audio 30000 RTP/SAVPF 99 100 101\na=rtpmap:99 G7221/16000\na=fmtp:99 bitrate=32000\n"
                "a=rtpmap:100 telephone-event/8000\n"
                "a=crypto:3 AES_CM_128_HMAC_SHA1_80 inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl|2^20\n"
                "m=video 30002 RTP/AVPF 120 121\na=rtpmap:121 H264/90000\na=fmtp:121 max-fs=3600\n"
                "a=fmtp:121 packetization-mode=1\na=rtpmap:120 VP8/90000\n"),
            true, Srtp::Wanted),
        Text(R"(m=audio 30000 RTP/AVP 104 101
a=rtpmap:104 G7221/16000
a=fmtp:104 bitrate=32000
a=rtpmap:101 telephone-event/8000
c=IN IP4 198.51.100.7
m=video 30002 RTP/AVP 97
a=rtpmap:97 H264/90000
a=fmtp:97 max-fs=3600;packetization-mode=1;
c=IN IP4 198.51.100.7
m=video 30004 RTP/AVP 96
a=rtpmap:96 H264/90000
c=IN IP4 198.51.100.7
a=content:slides
m=application 30006 UDP/BFCP *
a=floorctrl:s-only
a=confid:4711
a=userid:
c=IN IP4 198.51.100.7
)"));
}

TEST(Prepare, AnAddressWithoutAKeywordIsWritten) {
    const std::string head = "v=0\r\no=far 7 1 IN IP4 198.51.100.7\r\ns=-\r\nt=0 0\r\n";
    const std::string section = "m=audio 30000 RTP/AVP 0\r\n";
    EXPECT_TEXT(Prepared(head + section), section);
    EXPECT_TEXT(Prepared(head + section + "c=IN IP4 m=audio\r\n"), section);
    EXPECT_TEXT(Prepared(head + section + "c=IN IP6 2001:db8::9\r\n"), section + "c=IN IP4 2001:db8::9\r\n");
    EXPECT_TEXT(Prepared(head + "c=IN IP4 192.0.2.8\r\n" + section + "c=IN\r\n"), section);
}

TEST(Prepare, TheLastDirectionCountsTheSectionsBeforeTheSessions) {
    constexpr struct {
        std::string_view section;
        std::string_view session;
        std::string_view way;
        std::string_view unrepaired;
    } kCases[] = {
        {"", "", "a=sendrecv", "a=sendrecv"},
        {"a=sendonly\n", "", "a=sendonly", "a=sendonly"},
        {"a=sendonly\na=recvonly\n", "", "a=recvonly", "a=recvonly"},
        {"a=sendonly\n", "a=inactive\n", "a=sendonly", "a=sendonly"},
        {"", "a=inactive\n", "a=inactive", "a=sendrecv"},
    };
    for (const auto& one : kCases) {
        const std::string text = Far("m=audio 30000 RTP/AVP 0\n" + std::string(one.section), one.session);
        Repairs repairs;
        const Description description = Cut(text, repairs);
        EXPECT_EQ(KeywordOf(WayOf(description, description.sections[0], repairs)), one.way);
        repairs.SetAll(false);
        EXPECT_EQ(KeywordOf(WayOf(description, description.sections[0], repairs)), one.unrepaired);
    }
}

} // namespace
