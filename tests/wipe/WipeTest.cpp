// Key material is wiped before its memory is freed: no block that is freed while a call is set up, answered,
// changed and ended contains eight consecutive bytes of a key, salt or key text.
#include "Watching.h"

#include "CommonMediaTrace.h"
#include "Expect.h"
#include "hostile/Hostile.h"
#include "oom/Allocations.h"

#include <memory>
#include <new>

namespace {

using hostile::kConference;
using wipe::Watch;

const std::string kAudioKey = "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0";
const std::string kVideoKey = "YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0";
const std::string kSuiteName = "AES_CM_128_HMAC_SHA1_32";

LocalSDP NearLocal(const std::string& address = "192.0.2.1") {
    LocalSDP local = support::PresentationLocal();
    local.strDefaultIPAddr = address;
    support::GiveKeys(local, "near", support::kSuite32);
    return local;
}

void Begin(SDPHandler& handler, const std::string& address = "192.0.2.1") {
    support::Start(handler, NearLocal(address));
    handler.m_bSRTP = true;
    handler.SetBfcpSupport(true);
}

/// Fails the test if the watch found a secret, or if no block was freed.
void ExpectClean(const Watch& watch) {
    EXPECT_GT(watch.blocks(), 0U);
    EXPECT_EQ(watch.dirty(), 0U) << "first: " << support::MakeVisible(watch.first());
}

std::string Section(const std::string& cryptoLines) {
    return "v=0\r\nm=audio 5004 RTP/SAVP 0\r\n" + cryptoLines + "a=sendrecv\r\n";
}

std::string CryptoLine(const std::string& key) {
    return "a=crypto:1 " + kSuiteName + " inline:" + key + "\r\n";
}

TEST(Watch, SeesASecretThatIsLeftBehind) {
    auto secret = std::make_unique<std::string>("in front " + kAudioKey);
    auto harmless = std::make_unique<std::string>("in front of nothing that anyone must not know");
    const Watch watch;
    harmless.reset();
    EXPECT_EQ(watch.dirty(), 0U);
    secret.reset();
    EXPECT_EQ(watch.dirty(), 1U);
    EXPECT_EQ(watch.first().substr(0, 49), "in front " + kAudioKey);
    EXPECT_GE(watch.blocks(), 3U);
}

TEST(Watch, SeesTheUnusedTailOfABlock) {
    auto secret = std::make_unique<std::string>("longer than its successor " + kAudioKey);
    const Watch watch;
    *secret = "short";
    secret.reset();
    EXPECT_EQ(watch.dirty(), 1U);
}

TEST(Wipe, ParseThenEndOfTheHandler) {
    auto handler = std::make_unique<SDPHandler>();
    Begin(*handler);
    auto remote = std::make_unique<RemoteSDP>();
    const Watch watch;
    handler->ParseTheSDP(kConference, *remote);
    EXPECT_EQ(handler->vecRemoteMediaSession[0]->strBase64Key, kAudioKey);
    EXPECT_GE(wipe::CountWindows(remote->bufSRTPKey[0], sizeof remote->bufSRTPKey), 27U);
    handler.reset();
    remote.reset();
    ExpectClean(watch);
}

TEST(Wipe, ParseAgainAndAgain) {
    SDPHandler handler;
    Begin(handler);
    RemoteSDP remote;
    const std::string other = Section(CryptoLine(kVideoKey));
    const Watch watch;
    for (int round = 0; round < 3; ++round) {
        handler.ParseTheSDP(kConference, remote);
        handler.ParseTheSDP(other, remote);
    }
    handler.ParseTheSDP("", remote);
    ExpectClean(watch);
}

TEST(Wipe, TextThatTheApplicationHandsOver) {
    SDPHandler handler;
    RemoteSDP remote;
    std::string text = kConference;
    const Watch watch;
    handler.ParseTheSDP(std::move(text), remote);
    ExpectClean(watch);
}

TEST(Wipe, ResetOfTheRemoteSide) {
    SDPHandler handler;
    Begin(handler);
    RemoteSDP remote;
    handler.ParseTheSDP(kConference, remote);
    const Watch watch;
    handler.ResetRemoteSDP();
    ExpectClean(watch);
    remote.Reset();
    EXPECT_EQ(wipe::CountWindows(reinterpret_cast<unsigned char*>(&remote), sizeof remote), 0U);
}

// The long address makes both texts longer than 64 KiB: a wipe of a length in sixteen bits leaves their end.
TEST(Wipe, OfferAndAnswer) {
    for (const std::string& address : {std::string("192.0.2.1"), std::string(70000, '1')}) {
        SDPHandler handler;
        Begin(handler, address);
        RemoteSDP remote;
        std::string texts[2];
        const Watch watch;
        texts[0] = handler.GetLocalSDP();
        handler.ParseTheSDP(kConference, remote);
        texts[1] = handler.GetLocalSDP();
        ExpectClean(watch);
        for (const std::string& text : texts) {
            EXPECT_NE(text.find("bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0"), std::string::npos);
            EXPECT_GT(text.size(), 4 * address.size());
        }
    }
}

TEST(Wipe, AnswerThatGrows) {
    SDPHandler handler;
    Begin(handler);
    RemoteSDP remote;
    std::string text = kConference;
    for (int n = 0; n < 1000; ++n) {
        text += "m=video 7000 RTP/SAVP 97 98 99\r\nc=IN IP4 192.0.2.7\r\n";
    }
    std::string answer;
    const Watch watch;
    handler.ParseTheSDP(text, remote);
    answer = handler.GetLocalSDP();
    ExpectClean(watch);
    EXPECT_GT(answer.size(), 40000U);
}

TEST(Wipe, OfferWithTextsThatGrowBetweenTheKeys) {
    const LocalSDP local = NearLocal(std::string(3000, '1'));
    SDPHandler handler;
    Begin(handler);
    std::string offer;
    const Watch watch;
    handler.InitializeLocalSDP(local);
    offer = handler.GetLocalSDP();
    ExpectClean(watch);
    EXPECT_GT(offer.size(), 15000U);
}

TEST(Wipe, PiecesThatHoldAKey) {
    SDPHandler handler;
    Begin(handler, std::string(1000, '1'));
    std::string pieces[3];
    const Watch watch;
    pieces[0] = handler.AddCrypto(baseSDP::SRTP_AUDIO);
    pieces[1] = handler.AddAudio();
    pieces[2] = handler.AddVideo(handler.MyLocalSDP.m_VideoMain);
    ExpectClean(watch);
    EXPECT_TEXT(pieces[0],
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
}

TEST(Wipe, KeyTextThatReplacesAnother) {
    unsigned char key[baseSDP::kKeyLength];
    unsigned char salt[baseSDP::kSaltLength];
    support::WriteKey(key, salt, "near", "audio");
    std::string text = kAudioKey;
    std::string longer = kVideoKey + kVideoKey;
    const Watch watch;
    GetSRTPKey(text, key, salt);
    GetSRTPKey(longer, key, salt);
    EXPECT_EQ(longer, "bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0");
    EXPECT_EQ(wipe::CountWindows(reinterpret_cast<unsigned char*>(&longer[0]) + 41, 39), 0U);
    EXPECT_EQ(watch.dirty(), 0U);
}

TEST(Wipe, CryptoLinesOfOneSection) {
    const std::string lifetime = "|2^31|1:4";
    const std::string longer = kVideoKey + "|" + kVideoKey + "|" + kVideoKey + "|" + kVideoKey;
    std::string bad = kVideoKey;
    bad[20] = '!';
    std::string cut = kVideoKey + kVideoKey;
    cut[30] = '\0';
    const struct {
        const char* why;
        std::string lines;
        std::string kept;
    } rows[] = {
        {"short after long, long after short",
         CryptoLine(kAudioKey + lifetime) + CryptoLine(longer) + CryptoLine(kAudioKey) + CryptoLine(longer) +
             CryptoLine(longer + longer) + CryptoLine(kAudioKey),
         kAudioKey},
        {"an undecodable key after a good one", CryptoLine(kAudioKey) + CryptoLine(bad), bad},
        {"a text that has a NUL", CryptoLine(kAudioKey) + CryptoLine(cut), kVideoKey.substr(0, 30)},
        {"suites that are skipped",
         "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:" + kAudioKey + "\r\n" +
             "a=crypto:2 F8_128_HMAC_SHA1_80 inline:" + kVideoKey + "\r\n",
         kVideoKey},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        SDPHandler handler;
        RemoteSDP remote;
        const std::string text = Section(row.lines);
        const Watch watch;
        handler.ParseTheSDP(text, remote);
        EXPECT_EQ(handler.vecRemoteMediaSession[0]->strBase64Key, row.kept);
        handler.ResetRemoteSDP();
        ExpectClean(watch);
    }
}

// A wipe whose length is cut to sixteen bits leaves the end of these texts.
TEST(Wipe, SecretsBeyondSixtyFourKibibytes) {
    const std::string filler(70000, 'x');
    const std::string longKey = kAudioKey + "|" + filler + kVideoKey;
    const std::string text =
        Section("a=x:" + filler + "\r\n" + CryptoLine(longKey) + CryptoLine(kAudioKey) + CryptoLine(longKey));
    auto handler = std::make_unique<SDPHandler>();
    Begin(*handler);
    RemoteSDP remote;
    const Watch watch;
    handler->ParseTheSDP(text, remote);
    EXPECT_EQ(handler->vecRemoteMediaSession[0]->strBase64Key, longKey);
    MediaSession copy = *handler->vecRemoteMediaSession[0];
    copy = MediaSession();
    handler->ParseTheSDP(text, remote);
    handler->ResetRemoteSDP();
    handler.reset();
    ExpectClean(watch);
}

TEST(Wipe, CopiesOfLocalAndRemoteRecords) {
    auto local = std::make_unique<LocalSDP>(NearLocal());
    auto remote = std::make_unique<RemoteSDP>();
    SDPHandler handler;
    handler.ParseTheSDP(kConference, *remote);
    const Watch watch;
    auto copyOfLocal = std::make_unique<LocalSDP>(*local);
    auto copyOfRemote = std::make_unique<RemoteSDP>(*remote);
    *copyOfLocal = LocalSDP();
    EXPECT_EQ(wipe::CountWindows(reinterpret_cast<unsigned char*>(copyOfLocal.get()), sizeof(LocalSDP)), 0U);
    *copyOfLocal = *local;
    *copyOfRemote = *remote;
    copyOfLocal.reset();
    copyOfRemote.reset();
    local.reset();
    remote.reset();
    ExpectClean(watch);
}

TEST(Wipe, RecordsInAVectorThatGrows) {
    const LocalSDP local = NearLocal();
    RemoteSDP remote;
    SDPHandler handler;
    handler.ParseTheSDP(kConference, remote);
    const Watch watch;
    {
        std::vector<LocalSDP> locals;
        std::vector<RemoteSDP> remotes;
        std::vector<MediaSession> sections;
        for (int n = 0; n < 5; ++n) {
            locals.push_back(local);
            remotes.push_back(remote);
            sections.push_back(*handler.vecRemoteMediaSession[0]);
        }
        EXPECT_EQ(sections[4].strBase64Key, kAudioKey);
    }
    ExpectClean(watch);
}

TEST(Wipe, AssignmentOfASectionOverAnother) {
    MediaSession holder;
    MediaSession longer;
    support::Secure(holder, "audio");
    holder.strBase64Key = kAudioKey;
    longer.strBase64Key = kVideoKey + "|2^31|1:4|" + kVideoKey;
    const Watch watch;
    holder = longer;         // the text is replaced by a longer one
    longer = MediaSession(); // and by none
    EXPECT_EQ(wipe::CountWindows(reinterpret_cast<unsigned char*>(&longer), sizeof longer), 0U);
    {
        const MediaSession ended = holder;
        MediaSession moved = std::move(holder);
        holder = std::move(moved);
    }
    holder = MediaSession();
    longer = MediaSession();
    ExpectClean(watch);
}

TEST(Wipe, TraceAndDumpsOfADescriptionWithKeys) {
    SDPHandler handler;
    Begin(handler);
    RemoteSDP remote;
    std::size_t traced = 0;
    const CommonMediaTraceSink sink = {[](void* context, const char*, const char*, int, const char*) {
                                           ++*static_cast<std::size_t*>(context);
                                       },
                                       &traced};
    SetCommonMediaTraceSink(&sink);
    const Watch watch;
    handler.ParseTheSDP(kConference, remote);
    remote.ToDiag();
    handler.MyLocalSDP.ToDiag();
    handler.vecRemoteMediaSession[0]->ToDiag();
    ExpectClean(watch);
    SetCommonMediaTraceSink(nullptr);
    EXPECT_EQ(traced, 4U);
}

TEST(Wipe, EveryCallThatRunsOutOfMemory) {
    const std::string twoKeys = Section(CryptoLine(kVideoKey) + CryptoLine(kAudioKey + "|2^31"));
    std::size_t failures = 0;
    for (std::size_t n = 1;; ++n) {
        std::string answer;
        auto handler = std::make_unique<SDPHandler>();
        auto remote = std::make_unique<RemoteSDP>();
        Begin(*handler);
        Watch watch;
        bool hasFailed = false;
        {
            const allocations::Scope scope;
            allocations::FailOnce(n);
            try {
                handler->ParseTheSDP(kConference, *remote);
                answer = handler->GetLocalSDP();
                handler->ParseTheSDP(twoKeys, *remote);
            } catch (const std::bad_alloc&) {
                hasFailed = true;
            }
            allocations::StopFailing();
        }
        handler.reset();
        remote.reset();
        EXPECT_EQ(watch.dirty(), 0U) << "allocation " << n << ": " << support::MakeVisible(watch.first());
        if (!hasFailed) {
            break;
        }
        ++failures;
    }
    EXPECT_GE(failures, 30U);
}

} // namespace
