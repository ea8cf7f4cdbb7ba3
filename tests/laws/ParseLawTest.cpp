// The result of a parse depends only on the text, the local codec set and the previous session address. Not
// promised: that parsing a text and writing it again returns the same text.
#include "Law.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

using namespace support;

namespace {

std::vector<std::string> Texts() {
    std::vector<std::string> texts = CapturedTexts();
    texts.insert(texts.end(), {kRichText, kAddressless, "", "v=0\r\n", "v=0", "\r\n"});
    return texts;
}

// Changes everything in a handler and its capabilities that a parse must not depend on.
const std::vector<std::function<void(SDPHandler&)>>& Changes() {
    static const std::vector<std::function<void(SDPHandler&)>> changes = {
        [](SDPHandler& h) { h.m_bSRTP = true; },
        [](SDPHandler& h) { h.m_iSessionID = -1; },
        [](SDPHandler& h) { h.m_iSessionVersion = 0xFFFFFFFFU; },
        [](SDPHandler& h) { h.SetBfcpSupport(true); },
        [](SDPHandler& h) { h.m_iMaxSupportedSessions = 0; },
        [](SDPHandler& h) { h.SetDefaultLocalIPAddr(""); },
        [](SDPHandler& h) { h.MyLocalSDP.strMyIPAddr = "203.0.113.1"; },
        [](SDPHandler& h) { h.MyLocalSDP.strOExtension = "x"; },
        [](SDPHandler& h) { h.MyLocalSDP.listAudioCodecPriority.clear(); },
        [](SDPHandler& h) {
            h.MyLocalSDP.listAudioCodecPriority = {PAYLOAD_G729, PAYLOAD_G711U};
        },
        [](SDPHandler& h) { h.MyLocalSDP.iAudioRTPPort = std::numeric_limits<std::int32_t>::max(); },
        [](SDPHandler& h) { h.MyLocalSDP.iMaxBandwidth = 64000; },
        [](SDPHandler& h) { h.MyLocalSDP.fVideoTxMuted = true; },
        [](SDPHandler& h) { h.MyLocalSDP.iVideoPayloadMode1 = h.MyLocalSDP.iVideoPayloadMode0 = 97; },
        [](SDPHandler& h) { h.MyLocalSDP.m_VideoMain.eVideoCodec = kNoCodec; },
        [](SDPHandler& h) { h.MyLocalSDP.m_VideoPreso.Reset(); },
        [](SDPHandler& h) { h.MyLocalSDP.iVideoPresoControlPort = 1; },
        [](SDPHandler& h) { h.MyLocalSDP.iBfcpConfid = h.MyLocalSDP.iBfcpUserid = 5; },
        [](SDPHandler& h) { GiveKeys(h.MyLocalSDP, "near", kSuite80); },
        [](SDPHandler& h) { h.SetAudioICECandidate("a=candidate:1"); },
        [](SDPHandler& h) { h.SetVideoICECandidate("a=candidate:1"); },
        [](SDPHandler& h) { h.GetLocalSDP(); },
        [](SDPHandler& h) { h.ResetRemoteSDP(); },
    };
    return changes;
}

TEST(LawParse, TheSameTextGivesTheSameResultInEveryHandler) {
    std::vector<std::function<void(SDPHandler&)>> changes = Changes();
    for (const Switches& switches : AllSwitches()) {
        changes.emplace_back([switches](SDPHandler& h) { Set(h, switches); });
    }
    for (const std::string& text : Texts()) {
        SDPHandler plain;
        Start(plain, PresentationLocal());
        const std::string expected = ParseInto(plain, text);
        for (std::size_t i = 0; i < changes.size(); ++i) {
            SDPHandler changed;
            Start(changed, PresentationLocal());
            changes[i](changed);
            EXPECT_TEXT(ParseInto(changed, text), expected) << "change " << i;
        }
    }
}

TEST(LawParse, TheSameTextTwiceGivesTheSameResult) {
    for (const Switches& switches : AllSwitches()) {
        for (const std::string& text : Texts()) {
            SDPHandler h;
            Start(h, PresentationLocal());
            Set(h, switches);
            const std::string firstText = ParseInto(h, text);
            EXPECT_TEXT(ParseInto(h, text), firstText);
            h.GetLocalSDP();
            EXPECT_TEXT(ParseInto(h, text), firstText);
        }
    }
}

TEST(LawParse, EarlierTextsLeaveNothingButTheSessionAddress) {
    for (const Switches& switches : AllSwitches()) {
        const std::vector<std::string> texts = Texts();
        SDPHandler used;
        Start(used, PresentationLocal());
        Set(used, switches);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            ParseInto(used, texts[(i * 7 + 3) % texts.size()]);
            SDPHandler fresh;
            Start(fresh, PresentationLocal());
            Set(fresh, switches);
            fresh.strSessionIPAddr = used.strSessionIPAddr;
            EXPECT_TEXT(ParseInto(used, texts[i]), ParseInto(fresh, texts[i]));
        }
    }
}

TEST(LawParse, WhatTheRecordHeldDoesNotMatter) {
    for (const Switches& switches : AllSwitches()) {
        RemoteSDP used;
        for (const std::string& text : CapturedTexts()) {
            SDPHandler one;
            SDPHandler two;
            RemoteSDP fresh;
            Start(one, PresentationLocal());
            Set(one, switches);
            Start(two, PresentationLocal());
            Set(two, switches);
            one.ParseTheSDP(text, used);
            two.ParseTheSDP(text, fresh);
            EXPECT_TEXT(Describe(used), Describe(fresh));
        }
    }
}

TEST(LawParse, AnEmptyTextLeavesTheRecordAlone) {
    ForEachReading(Texts(), [](SDPHandler& h, RemoteSDP& remote) {
        const std::string before = Describe(remote);
        EXPECT_EQ(h.ParseTheSDP("", remote), 1);
        EXPECT_TEXT(Describe(remote), before);
        EXPECT_TRUE(h.IsOffer());
        EXPECT_EQ(h.strMaxSessionBandwidth, "");
    });
}

TEST(LawParse, TheLocalCodecSetMatters) {
    const struct {
        int codecs;
        const char* audio;
    } rows[] = {
        {0, "audio codec=256 payload=0 dtmf=101 addr=198.51.100.1 port=5000 send=0 recv=0 valid=1"},
        {PAYLOAD_G711U, "audio codec=1 payload=0 dtmf=101 addr=198.51.100.1 port=5000 send=0 recv=1 valid=1"},
        {PAYLOAD_G722, "audio codec=64 payload=9 dtmf=101 addr=198.51.100.1 port=5000 send=0 recv=1 valid=1"},
        {PAYLOAD_G729, "audio codec=8 payload=18 dtmf=101 addr=198.51.100.1 port=5000 send=0 recv=1 valid=1"},
        {kAllAudio, "audio codec=16 payload=115 dtmf=101 addr=198.51.100.1 port=5000 send=0 recv=1 valid=1"},
    };
    for (const auto& row : rows) {
        SDPHandler h;
        h.MyLocalSDP.eAudioCodec = PayloadType_t(row.codecs);
        const std::string outcome = ParseInto(h, kRichText);
        EXPECT_EQ(outcome.substr(0, outcome.find('\n')), row.audio);
    }
}

TEST(LawParse, TheLocalCodecSetTouchesNothingButAudio) {
    SDPHandler none;
    SDPHandler all;
    all.MyLocalSDP.eAudioCodec = kAllAudio;
    for (const std::string& text : CapturedTexts()) {
        const std::string noneText = ParseInto(none, text);
        const std::string allText = ParseInto(all, text);
        EXPECT_TEXT(noneText.substr(noneText.find('\n')), allText.substr(allText.find('\n')));
    }
}

TEST(LawParse, ThePreviousSessionAddressMatters) {
    SDPHandler h;
    RemoteSDP remote;
    h.ParseTheSDP(kAddressless, remote);
    EXPECT_EQ(remote.strAudioIPAddr, "");
    EXPECT_EQ(remote.m_VideoMain.strVideoIPAddr, "");
    h.ParseTheSDP(kRichText, remote);
    EXPECT_EQ(remote.strAudioIPAddr, "198.51.100.1");
    h.ParseTheSDP(kAddressless, remote);
    EXPECT_EQ(remote.strAudioIPAddr, "198.51.100.1");
    EXPECT_EQ(remote.m_VideoMain.strVideoIPAddr, "198.51.100.1");
}

} // namespace
