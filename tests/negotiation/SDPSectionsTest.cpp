#include "Parts.h"

using namespace call;
using namespace negotiation;

namespace {

/// The sections of a text: "audio 30000 RTP/AVP [0 101] role 0, 2 lines".
std::string Sections(const std::string& text, bool isRepaired = true) {
    Repairs repairs;
    repairs.SetAll(isRepaired);
    std::string all;
    for (const Section& section : Cut(text, repairs).sections) {
        all += std::string(section.media) + " " + std::to_string(section.number) + " " +
               std::string(section.transport) + " [" + std::string(section.formats) + "] role " +
               std::to_string(section.role) + (section.isSecure ? ", secure, " : ", ") +
               std::to_string(section.last - section.first) + " lines\n";
    }
    return all;
}

TEST(Sections, MediumTransportAndContentTellTheRole) {
    EXPECT_TEXT(Sections(Text("v=0\r\n"
                              "m=audio 30000 RTP/AVP 0 101\na=sendrecv\na=ptime:20\na=unknown\n"
                              "m=Video 30002/2 rtp/savpf 97\n"
                              "m=video 30004 RTP/SAVP 97\na=content:speaker,slides\n"
                              "m=text 30006 RTP/AVP 98\n"
                              "m=application 30008 UDP/BFCP *\n"
                              "m=application 30010 TCP/BFCP *\n"
                              "m=video 30012 UDP/BFCP *\n"
                              "m=audio 30014 UDP/TLS/RTP/SAVP 0\n")),
                "audio 30000 RTP/AVP [0 101] role 0, 2 lines\n"
                "Video 30002 rtp/savpf [97] role 1, secure, 0 lines\n"
                "video 30004 RTP/SAVP [97] role 2, secure, 1 lines\n"
                "text 30006 RTP/AVP [98] role 4, 0 lines\n"
                "application 30008 UDP/BFCP [*] role 3, 0 lines\n"
                "application 30010 TCP/BFCP [*] role 4, 0 lines\n"
                "video 30012 UDP/BFCP [*] role 4, 0 lines\n"
                "audio 30014 UDP/TLS/RTP/SAVP [0] role 4, 0 lines\n");
}

TEST(Sections, APortIsANumberOf16Bits) {
    EXPECT_TEXT(Sections(Text("m=audio 65535 RTP/AVP 0\nm=audio 65536 RTP/AVP 0\nm=audio -1 RTP/AVP 0\n"
                              "m=audio 1234567890 RTP/AVP 0\nm=audio 3x RTP/AVP 0\nm=audio\nm=\n")),
                "audio 65535 RTP/AVP [0] role 0, 0 lines\n"
                "audio 0 RTP/AVP [0] role 0, 0 lines\n"
                "audio 0 RTP/AVP [0] role 0, 0 lines\n"
                "audio 0 RTP/AVP [0] role 0, 0 lines\n"
                "audio 0 RTP/AVP [0] role 0, 0 lines\n"
                "audio 0  [] role 4, 0 lines\n"
                " 0  [] role 4, 0 lines\n");
}

TEST(Sections, LinesEndInCrLfAndWithTheRepairInCrOrLfAlone) {
    constexpr std::string_view text =
        "m=audio 1 RTP/AVP 0\na=sendonly\rm=audio 2 RTP/AVP 0\r\n\r\na=recvonly";
    EXPECT_TEXT(Sections(std::string(text)), "audio 1 RTP/AVP [0] role 0, 1 lines\n"
                                             "audio 2 RTP/AVP [0] role 0, 1 lines\n");
    EXPECT_TEXT(Sections("m=audio 1 RTP/AVP 0\r\na=sendonly\r\na=recvonly", false),
                "audio 1 RTP/AVP [0] role 0, 1 lines\n");
}

TEST(Sections, TheSessionIsWhatComesBeforeTheFirstSection) {
    Repairs repairs;
    const std::string text =
        Text("c=IN IP4 192.0.2.1\nb=AS:1\na=sendonly\nm=audio 1 RTP/AVP 0\na=recvonly\n");
    const Description whole = Cut(text, repairs);
    EXPECT_EQ(whole.Session().end() - whole.Session().begin(), 3);
    EXPECT_EQ(whole.Session().Value(LineKind::Bandwidth), "AS:1");
    EXPECT_EQ(whole.Session().Find(LineKind::Time), nullptr);
    EXPECT_EQ(whole.Session().Value(LineKind::Time), "");
    const Description sessionAlone = Cut(std::string_view(text).substr(0, 30), repairs);
    EXPECT_EQ(sessionAlone.Session().end() - sessionAlone.Session().begin(), 2);
    const Description nothing = Cut("", repairs);
    EXPECT_EQ(nothing.Session().begin(), nothing.Session().end());
}

TEST(Sections, ALongerWordIsNoDirection) {
    const Given given("m=audio 1 RTP/AVP 0\na=sendonlyx\na=inactive \n");
    ASSERT_EQ(given.FirstLines().end() - given.FirstLines().begin(), 1);
    EXPECT_EQ(given.FirstLines().Find(LineKind::Direction)->text, "a=inactive ");
}

TEST(Sections, SlidesAreNamedInAnyCase) {
    for (const std::string_view content : {"slides", "SLIDES", "speaker,Slides"}) {
        const std::string section = "m=video 1 RTP/AVP 97\na=content:" + std::string(content) + "\n";
        EXPECT_EQ(Given(section).First().role, kSlides) << content;
        EXPECT_EQ(Given(section, false).First().role, content == "slides" ? kSlides : kMain) << content;
    }
}

TEST(Sections, TransportsAreFoundInAnyCase) {
    EXPECT_EQ(FindTransport("rtp/avpf")->secure, "RTP/SAVPF");
    EXPECT_EQ(FindTransport("RTP/SAVP")->plain, "RTP/AVP");
    EXPECT_EQ(FindTransport("UDP/TLS/RTP/SAVP"), nullptr);
    EXPECT_TRUE(IsSecure("rtp/savp"));
    EXPECT_FALSE(IsSecure("RTP/AVP"));
    EXPECT_FALSE(IsSecure("TCP/BFCP"));
}

TEST(Sections, NumbersHaveAtMostNineDigits) {
    EXPECT_EQ(NumberOrNone("0"), 0);
    EXPECT_EQ(NumberOrNone("999999999"), 999999999);
    for (const char* const none : {"", "1000000000", "-1", "+1", "1x", " 1"}) {
        EXPECT_EQ(NumberOrNone(none), -1) << none;
    }
}

} // namespace
