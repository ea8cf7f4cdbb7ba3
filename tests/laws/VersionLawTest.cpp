// The version of the origin line grows by one per description and wraps; the session id never changes.
#include "Law.h"

#include <cstdint>
#include <string>

using namespace support;

namespace {

// The origin line of a description.
std::string Origin(const std::string& text) {
    for (const std::string& line : CutLines(text)) {
        if (line.compare(0, 2, "o=") == 0) {
            return line;
        }
    }
    return "";
}

std::string ExpectedOrigin(const std::string& id, std::uint32_t version) {
    return "o=Quillmarshorizon " + id + " " + std::to_string(static_cast<std::int32_t>(version)) +
           " IN IP4 192.0.2.1\r\n";
}

TEST(LawVersion, EveryDescriptionAddsOneWhateverItIs) {
    for (const Switches& switches : AllSwitches()) {
        SDPHandler h;
        Start(h, PresentationLocal());
        Set(h, switches);
        RemoteSDP remote;
        std::uint32_t version = 1;
        for (const std::string& text : CapturedTexts()) {
            EXPECT_EQ(Origin(h.GetLocalSDP()), ExpectedOrigin("1000", ++version));
            h.ParseTheSDP(text, remote);
            EXPECT_EQ(Origin(h.GetLocalSDP()), ExpectedOrigin("1000", ++version));
            EXPECT_EQ(Origin(h.GetLocalSDP()), ExpectedOrigin("1000", ++version));
            h.ResetRemoteSDP();
        }
        EXPECT_EQ(h.m_iSessionVersion, version);
    }
}

TEST(LawVersion, NothingButADescriptionAddsOne) {
    SDPHandler h;
    Start(h, PresentationLocal());
    RemoteSDP remote;
    h.ParseTheSDP(kRichText, remote);
    h.GetRTPData(remote);
    h.IsOffer();
    h.SetBfcpSupport(true);
    h.ResetRemoteSDP();
    h.InitializeLocalSDP(PresentationLocal());
    h.ParseTheSDP("", remote);
    h.SetDefaultLocalIPAddr("");
    EXPECT_EQ(h.GetLocalSDP(), "");
    h.SetDefaultLocalIPAddr("192.0.2.1");
    EXPECT_EQ(Origin(h.GetLocalSDP()), ExpectedOrigin("1000", 2));
}

TEST(LawVersion, TheCountWrapsAndIsWrittenSigned) {
    for (const Switches& switches : AllSwitches()) {
        for (const std::uint32_t start : {0x7FFFFFFAU, 0xFFFFFFFAU}) {
            SDPHandler h;
            Start(h, AudioLocal());
            Set(h, switches);
            h.m_iSessionVersion = start;
            for (std::uint32_t i = 1; i <= 12; ++i) {
                EXPECT_EQ(Origin(h.GetLocalSDP()), ExpectedOrigin("1000", start + i));
            }
        }
        SDPHandler h;
        Start(h, AudioLocal());
        Set(h, switches);
        h.m_iSessionVersion = 0x7FFFFFFFU;
        EXPECT_EQ(Origin(h.GetLocalSDP()), "o=Quillmarshorizon 1000 -2147483648 IN IP4 192.0.2.1\r\n");
        h.m_iSessionVersion = 0xFFFFFFFEU;
        EXPECT_EQ(Origin(h.GetLocalSDP()), "o=Quillmarshorizon 1000 -1 IN IP4 192.0.2.1\r\n");
        EXPECT_EQ(Origin(h.GetLocalSDP()), "o=Quillmarshorizon 1000 0 IN IP4 192.0.2.1\r\n");
    }
}

TEST(LawVersion, TheSessionIdStaysForTheHandlersLife) {
    for (const Switches& switches : AllSwitches()) {
        SDPHandler h;
        h.InitializeLocalSDP(PresentationLocal());
        Set(h, switches);
        const std::string id = std::to_string(static_cast<std::uint32_t>(h.m_iSessionID));
        RemoteSDP remote;
        std::uint32_t version = 1;
        for (int round = 0; round < 20; ++round) {
            EXPECT_EQ(Origin(h.GetLocalSDP()), ExpectedOrigin(id, ++version));
            h.ParseTheSDP(kRichText, remote);
            EXPECT_EQ(Origin(h.GetLocalSDP()), ExpectedOrigin(id, ++version));
            h.InitializeLocalSDP(PresentationLocal());
            h.ResetRemoteSDP();
        }
    }
}

} // namespace
