// The handler: its first state, the setters, the release of remote sections, and the choice between offer and
// answer.
#include "SDPHandler.h"

#include "Expect.h"
#include "Fields.h"
#include "Platform.h"
#include "RecordSamples.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <list>
#include <malloc.h>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using samples::At;
using samples::InDirtyMemory;

template <typename A, typename B>
constexpr bool Same = std::is_same_v<A, B>;

const char kTwoSections[] = "v=0\r\n"
                            "c=IN IP4 192.0.2.10\r\n"
                            "b=AS:384\r\n"
                            "m=audio 5000 RTP/AVP 0 18\r\n"
                            "m=video 5002 RTP/AVP 97\r\n";

// No audio priority and no video codec: the whole description is the session block.
LocalSDP NoMedia() {
    LocalSDP local;
    local.m_VideoMain.eVideoCodec = static_cast<PayloadType_t>(0);
    return local;
}

TEST(SDPHandlerLife, NewHandlerHasItsInitialState) {
    const std::uint32_t before = GetTickCount();
    InDirtyMemory<SDPHandler> handler;
    const std::uint32_t after = GetTickCount();
    EXPECT_FALSE(handler->m_bSRTP);
    samples::ExpectNew(handler->MyLocalSDP);
    EXPECT_TRUE(handler->vecRemoteMediaSession.empty());
    EXPECT_EQ(handler->strSessionIPAddr, "");
    EXPECT_EQ(handler->strMaxSessionBandwidth, "");
    EXPECT_LE(static_cast<std::uint32_t>(handler->m_iSessionID) - before, after - before);
    EXPECT_EQ(handler->m_iSessionVersion, 1U);
    EXPECT_FALSE(handler->m_fBfcpSupported);
    EXPECT_EQ(handler->m_iMaxSupportedSessions, 2U);
    EXPECT_TRUE(handler->IsOffer());
}

TEST(SDPHandlerLife, HandlerHasTheseFieldsInThisOrder) {
    static_assert(Same<decltype(SDPHandler::m_bSRTP), bool>);
    static_assert(Same<decltype(SDPHandler::MyLocalSDP), LocalSDP>);
    static_assert(Same<decltype(SDPHandler::vecRemoteMediaSession), std::vector<MediaSession*>>);
    static_assert(Same<decltype(SDPHandler::strSessionIPAddr), std::string>);
    static_assert(Same<decltype(SDPHandler::strMaxSessionBandwidth), std::string>);
    static_assert(Same<decltype(SDPHandler::m_iSessionID), std::int32_t>);
    static_assert(Same<decltype(SDPHandler::m_iSessionVersion), std::uint32_t>);
    static_assert(Same<decltype(SDPHandler::m_fBfcpSupported), bool>);
    static_assert(Same<decltype(SDPHandler::m_iMaxSupportedSessions), std::uint32_t>);
    static_assert(!std::is_polymorphic_v<SDPHandler>);
    const SDPHandler h;
    const std::ptrdiff_t offsets[] = {At(h, h.m_bSRTP),
                                      At(h, h.MyLocalSDP),
                                      At(h, h.vecRemoteMediaSession),
                                      At(h, h.strSessionIPAddr),
                                      At(h, h.strMaxSessionBandwidth),
                                      At(h, h.m_iSessionID),
                                      At(h, h.m_iSessionVersion),
                                      At(h, h.m_fBfcpSupported),
                                      At(h, h.m_iMaxSupportedSessions)};
    EXPECT_EQ(offsets[0], 0);
    EXPECT_TRUE(std::is_sorted(std::begin(offsets), std::end(offsets)));
}

TEST(SDPHandlerLife, HandlerIsNotCopied) {
    static_assert(!std::is_copy_constructible_v<SDPHandler>);
    static_assert(!std::is_copy_assignable_v<SDPHandler>);
    static_assert(!std::is_move_constructible_v<SDPHandler>);
}

TEST(SDPHandlerLife, PublicOperationsHaveTheirSignatures) {
    static_assert(Same<decltype(&SDPHandler::ParseTheSDP), int (SDPHandler::*)(std::string, RemoteSDP&)>);
    static_assert(Same<decltype(&SDPHandler::InitializeLocalSDP), void (SDPHandler::*)(const LocalSDP&)>);
    static_assert(Same<decltype(&SDPHandler::GetRTPData), void (SDPHandler::*)(RemoteSDP&)>);
    static_assert(Same<decltype(&SDPHandler::GetLocalSDP), std::string (SDPHandler::*)()>);
    static_assert(Same<decltype(&SDPHandler::ResetRemoteSDP), void (SDPHandler::*)()>);
    static_assert(Same<decltype(&SDPHandler::SetDefaultLocalIPAddr), void (SDPHandler::*)(std::string)>);
    static_assert(Same<decltype(&SDPHandler::SetVideoICECandidate), void (SDPHandler::*)(std::string)>);
    static_assert(Same<decltype(&SDPHandler::SetAudioICECandidate), void (SDPHandler::*)(std::string)>);
    static_assert(Same<decltype(&SDPHandler::SetBfcpSupport), void (SDPHandler::*)(bool)>);
    static_assert(Same<decltype(std::declval<const SDPHandler&>().IsOffer()), bool>);
}

TEST(SDPHandlerLife, InitializeTakesACopyOfEveryCapability) {
    auto local = samples::Filled<LocalSDP>();
    SDPHandler handler;
    handler.InitializeLocalSDP(local);
    const std::string kept = support::FieldsText(handler.MyLocalSDP);
    EXPECT_TEXT(support::Replaced(kept, {{"iBfcpConfid = 0", "iBfcpConfid = 104"},
                                         {"iBfcpUserid = 0", "iBfcpUserid = 105"},
                                         {"fBfcpIsServer = false", "fBfcpIsServer = true"}}),
                support::FieldsText(local));
    samples::Change(local.strMyIPAddr, 1);
    EXPECT_TEXT(support::FieldsText(handler.MyLocalSDP), kept);
}

TEST(SDPHandlerLife, InitializeKeepsTheBfcpIdentityOfTheHandler) {
    LocalSDP local;
    local.iBfcpConfid = 6;
    local.iBfcpUserid = 7;
    local.fBfcpIsServer = true;
    SDPHandler handler;
    handler.InitializeLocalSDP(local);
    EXPECT_EQ(handler.MyLocalSDP.iBfcpConfid, 0);
    EXPECT_EQ(handler.MyLocalSDP.iBfcpUserid, 0);
    EXPECT_FALSE(handler.MyLocalSDP.fBfcpIsServer);

    handler.MyLocalSDP.iBfcpConfid = 11;
    handler.MyLocalSDP.iBfcpUserid = 12;
    handler.MyLocalSDP.fBfcpIsServer = true;
    handler.InitializeLocalSDP(LocalSDP());
    EXPECT_EQ(handler.MyLocalSDP.iBfcpConfid, 11);
    EXPECT_EQ(handler.MyLocalSDP.iBfcpUserid, 12);
    EXPECT_TRUE(handler.MyLocalSDP.fBfcpIsServer);
}

TEST(SDPHandlerLife, InitializeTouchesNothingElse) {
    SDPHandler handler;
    RemoteSDP remote;
    handler.ParseTheSDP(kTwoSections, remote);
    handler.m_bSRTP = true;
    handler.SetBfcpSupport(true);
    handler.m_iSessionID = 77;
    handler.m_iSessionVersion = 9;
    handler.InitializeLocalSDP(LocalSDP());
    EXPECT_TRUE(handler.m_bSRTP);
    EXPECT_TRUE(handler.m_fBfcpSupported);
    EXPECT_EQ(handler.m_iSessionID, 77);
    EXPECT_EQ(handler.m_iSessionVersion, 9U);
    EXPECT_EQ(handler.m_iMaxSupportedSessions, 2U);
    EXPECT_EQ(handler.vecRemoteMediaSession.size(), 2U);
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
    EXPECT_EQ(handler.strMaxSessionBandwidth, "384");
}

TEST(SDPHandlerLife, DefaultAddressGoesIntoTheLocalDescription) {
    SDPHandler handler;
    handler.SetDefaultLocalIPAddr("192.0.2.1");
    EXPECT_EQ(handler.MyLocalSDP.strDefaultIPAddr, "192.0.2.1");
    EXPECT_EQ(handler.MyLocalSDP.strMyIPAddr, "");
    handler.SetDefaultLocalIPAddr("");
    EXPECT_EQ(handler.MyLocalSDP.strDefaultIPAddr, "");
}

TEST(SDPHandlerLife, BfcpSupportIsStoredAsGiven) {
    SDPHandler handler;
    handler.SetBfcpSupport(true);
    EXPECT_TRUE(handler.m_fBfcpSupported);
    handler.SetBfcpSupport(false);
    EXPECT_FALSE(handler.m_fBfcpSupported);
}

// A handler without media, and what it offers first.
struct Offering : SDPHandler {
    Offering() {
        InitializeLocalSDP(NoMedia());
        SetDefaultLocalIPAddr("192.0.2.1");
        m_iSessionID = 123456;
    }
    void ExpectFirstOffer() {
        EXPECT_TRUE(IsOffer());
        EXPECT_TEXT(GetLocalSDP(), "v=0\r\n"
                                   "o=Quillmarshorizon 123456 2 IN IP4 192.0.2.1\r\n"
                                   "s=-\r\n"
                                   "c=IN IP4 192.0.2.1\r\n"
                                   "t=0 0\r\n");
    }
};

TEST(SDPHandlerLife, NewHandlerOffers) {
    Offering().ExpectFirstOffer();
}

TEST(SDPHandlerLife, HeldSectionsMakeItAnswer) {
    SDPHandler handler;
    RemoteSDP remote;
    handler.ParseTheSDP(kTwoSections, remote);
    EXPECT_FALSE(handler.IsOffer());
    // Only an answer is written without a default address.
    handler.InitializeLocalSDP(NoMedia());
    handler.m_iSessionID = 1;
    EXPECT_TEXT(handler.GetLocalSDP(), "v=0\r\n"
                                       "o=Quillmarshorizon 1 2 IN IP4 \r\n"
                                       "s=-\r\n"
                                       "c=IN IP4 \r\n"
                                       "t=0 0\r\n");
}

TEST(SDPHandlerLife, ATextWithoutAnyAcceptedMediaLineLeavesItOffering) {
    SDPHandler handler;
    RemoteSDP remote;
    handler.ParseTheSDP(kTwoSections, remote);
    EXPECT_EQ(handler.ParseTheSDP("v=0\r\nm=audio 5000 RTP/AVP\r\n", remote), 0);
    EXPECT_TRUE(handler.IsOffer());
}

TEST(SDPHandlerLife, ClearingEmptiesSectionsAndBandwidthAndKeepsTheAddress) {
    SDPHandler handler;
    RemoteSDP remote;
    handler.ParseTheSDP(kTwoSections, remote);
    ASSERT_EQ(handler.vecRemoteMediaSession.size(), 2U);
    const std::size_t capacity = handler.vecRemoteMediaSession.capacity();
    handler.ClearRemoteMediaSession();
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
    EXPECT_EQ(handler.vecRemoteMediaSession.capacity(), capacity);
    EXPECT_EQ(handler.strMaxSessionBandwidth, "");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
    EXPECT_TRUE(handler.IsOffer());
}

TEST(SDPHandlerLife, ClearingTwiceIsClearingOnce) {
    SDPHandler handler;
    handler.ClearRemoteMediaSession();
    handler.ClearRemoteMediaSession();
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
}

TEST(SDPHandlerLife, ClearingPassesOverNullPayloadEntries) {
    SDPHandler handler;
    auto* const section = new MediaSession;
    section->vecRtpMap = {nullptr, new RtpMap, nullptr};
    handler.vecRemoteMediaSession.push_back(section);
    handler.ClearRemoteMediaSession();
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
}

// The C library's own count of bytes in use; a section that is not freed shows as megabytes after enough
// rounds, whatever small blocks the library keeps for itself. Built with the address sanitizer, which brings
// its own allocator, the leak shows in that sanitizer's report instead.
std::size_t BytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

constexpr int kRounds = 200;
constexpr std::size_t kLargestGrowth = std::size_t{1024} * 1024;

// Four hundred payload entries, each with texts too long to live inside the entry.
std::string ManyFormats() {
    std::string sdpText = "m=video 5002 RTP/AVP";
    for (int i = 0; i < 400; ++i) {
        sdpText += " payload-format-number-" + std::to_string(1000 + i);
    }
    return sdpText + "\r\n";
}

TEST(SDPHandlerLife, EachParseFreesTheSectionsBeforeIt) {
    const std::string sdpText = ManyFormats();
    SDPHandler handler;
    RemoteSDP remote;
    handler.ParseTheSDP(sdpText, remote);
    const std::size_t before = BytesInUse();
    for (int i = 0; i < kRounds; ++i) {
        handler.ParseTheSDP(sdpText, remote);
        ASSERT_EQ(handler.vecRemoteMediaSession.size(), 1U);
        ASSERT_EQ(handler.vecRemoteMediaSession[0]->vecRtpMap.size(), 400U);
    }
    EXPECT_LT(BytesInUse(), before + kLargestGrowth);
}

TEST(SDPHandlerLife, DestructionFreesEverySectionAndEveryPayloadEntry) {
    const std::string sdpText = ManyFormats();
    const std::size_t before = BytesInUse();
    for (int i = 0; i < kRounds; ++i) {
        SDPHandler handler;
        RemoteSDP remote;
        handler.ParseTheSDP(sdpText, remote);
    }
    EXPECT_LT(BytesInUse(), before + kLargestGrowth);
}

TEST(SDPHandlerLife, AnEmptyTextLeavesNoSectionAndNoBandwidth) {
    Offering handler;
    RemoteSDP remote;
    handler.ParseTheSDP(kTwoSections, remote);
    EXPECT_EQ(handler.ParseTheSDP("", remote), 1);
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
    EXPECT_EQ(handler.strMaxSessionBandwidth, "");
    handler.ExpectFirstOffer();
}

TEST(SDPHandlerLife, SessionAddressOutlivesTheNextDescriptionAndItsBandwidthDoesNot) {
    SDPHandler handler;
    RemoteSDP remote;
    handler.ParseTheSDP(kTwoSections, remote);
    handler.ParseTheSDP("v=0\r\nm=audio 5004 RTP/AVP 0\r\n", remote);
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
    EXPECT_EQ(handler.strMaxSessionBandwidth, "");
    EXPECT_EQ(remote.strAudioIPAddr, "192.0.2.10");
    EXPECT_EQ(remote.iMaxBandwidth, 0);
}

TEST(SDPHandlerLife, ResettingTheRemoteSideReturnsToOffering) {
    SDPHandler handler;
    handler.InitializeLocalSDP(NoMedia());
    RemoteSDP remote;
    handler.ParseTheSDP(kTwoSections, remote);
    handler.ResetRemoteSDP();
    EXPECT_TRUE(handler.IsOffer());
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
    EXPECT_EQ(handler.strMaxSessionBandwidth, "");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
    // An offer without a default address is none.
    EXPECT_TEXT(handler.GetLocalSDP(), "");
}

} // namespace
