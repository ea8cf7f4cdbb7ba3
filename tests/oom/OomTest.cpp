// Two endpoints negotiate, and each allocation of the negotiation fails in turn.
#include "Exhaustion.h"

#include "Capabilities.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <ostream>

namespace oom {

/// Names the test after its work.
void PrintTo(const Work& work, std::ostream* out) {
    *out << work.name;
}

} // namespace oom

namespace {

using oom::Call;
using oom::Work;

enum Switches : unsigned { kPlain = 0, kSrtp = 1, kBfcp = 2 };

LocalSDP Keyed(LocalSDP local, const std::string& who) {
    support::GiveKeys(local, who, support::kSuite32);
    return local;
}

/// Two endpoints of the same kind, keys in every stream, switches as given.
std::function<void(Call&)> Pair(const LocalSDP& local, unsigned switches) {
    return [local, switches](Call& call) {
        call.near = std::make_unique<SDPHandler>();
        call.away = std::make_unique<SDPHandler>();
        support::Start(*call.near, Keyed(local, "near"), 1000);
        support::Start(*call.away, Keyed(support::Away(local), "away"), 2000);
        for (SDPHandler* const handler : {call.near.get(), call.away.get()}) {
            handler->m_bSRTP = (switches & kSrtp) != 0;
            handler->SetBfcpSupport((switches & kBfcp) != 0);
        }
    };
}

/// Near writes an offer, away answers, near reads the answer.
void Negotiate(Call& call) {
    call.written = call.near->GetLocalSDP();
    call.away->ParseTheSDP(call.written, call.atAway);
    call.written = call.away->GetLocalSDP();
    call.near->ParseTheSDP(call.written, call.atNear);
}

/// A far end's text, read and answered by near.
std::function<void(Call&)> Answered(const std::string& text) {
    return [text](Call& call) {
        call.near->ParseTheSDP(text, call.atNear);
        call.written = call.near->GetLocalSDP();
    };
}

void Hold(Call& call) {
    Negotiate(call);
    call.away->MyLocalSDP.iAudioRTPPort = 0;
    call.away->MyLocalSDP.m_VideoMain.iVideoRTPPort = 0;
    call.away->MyLocalSDP.fVideoTxMuted = true;
    call.away->ResetRemoteSDP();
    call.written = call.away->GetLocalSDP();
    call.near->ParseTheSDP(call.written, call.atNear);
    call.written = call.near->GetLocalSDP();
    call.away->ParseTheSDP(call.written, call.atAway);
}

void OfferAgain(Call& call) {
    Negotiate(call);
    call.near->ResetRemoteSDP();
    call.away->ResetRemoteSDP();
    call.near->SetBfcpSupport(false);
    Negotiate(call);
    call.near->GetRTPData(call.atNear);
    call.written = call.near->GetLocalSDP();
}

void SetUp(Call& call) {
    call.near = std::make_unique<SDPHandler>();
    const LocalSDP local = Keyed(support::PresentationLocal(), "near");
    call.near->InitializeLocalSDP(local);
    call.near->SetDefaultLocalIPAddr("2001:db8:85a3:8d3:1319:8a2e:370:7348");
    call.near->SetVideoICECandidate("candidate:1 1 UDP 2130706431 192.0.2.1 16386 typ host");
    call.near->SetAudioICECandidate("candidate:1 1 UDP 2130706431 192.0.2.1 16384 typ host");
    call.written = call.near->GetLocalSDP();
}

void CopyRecords(Call& call) {
    Negotiate(call);
    LocalSDP local = call.near->MyLocalSDP;
    local = call.away->MyLocalSDP;
    call.near->InitializeLocalSDP(call.near->MyLocalSDP);
    RemoteSDP remote = call.atNear;
    remote = call.atAway;
    const MediaSession section = *call.near->vecRemoteMediaSession.front();
    call.written = local.ToDiag() + remote.ToDiag() + section.ToDiag();
}

std::string SurplusText() {
    std::string text = "v=0\r\nc=IN IP4 192.0.2.2\r\nb=AS:512\r\nm=audio 5004 RTP/AVP 9 0 101\r\n"
                       "a=rtpmap:9 G722/8000\r\na=rtpmap:101 telephone-event/8000\r\na=fmtp:101 0-15\r\n"
                       "m=video 5006 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n"
                       "a=fmtp:97 profile-level-id=42e01f;packetization-mode=1\r\n";
    for (int n = 0; n < 60; ++n) {
        text += "m=video 7000 RTP/AVP 96 97 98 99 100 101 102\r\nc=IN IP6 2001:db8:85a3::8a2e:370:7334\r\n";
    }
    return text;
}

std::string ManyFormatsText() {
    std::string formats;
    std::string attributes;
    for (int n = 200; n < 300; ++n) {
        const std::string payload = std::to_string(n);
        formats += " " + payload;
        attributes += "a=rtpmap:" + payload + " H264/90000\r\na=fmtp:" + payload +
                      " profile-level-id=42e01f;max-mbps=108000\r\n";
    }
    return "v=0\r\nm=video 5004 RTP/AVP" + formats + "\r\n" + attributes;
}

std::string IceText() {
    std::string text = "v=0\r\nm=audio 5004 RTP/AVP 0\r\na=ice-ufrag:a-fragment-of-a-name\r\n"
                       "a=ice-pwd:x9cml/YzichV2+XlhiMu8g\r\n";
    for (int n = 0; n < 20; ++n) {
        text += "a=candidate:1 1 UDP 2130706431 192.0.2.2 5004 typ host\r\n";
    }
    return text;
}

std::vector<Work> Conversations() {
    const auto audio = Pair(support::AudioLocal(), kPlain);
    const auto whole = Pair(support::PresentationLocal(), kSrtp | kBfcp);
    return {
        {"SetUp", [](Call&) {}, SetUp},
        {"PlainAudio", audio, Negotiate},
        {"AudioAndVideo", Pair(support::VideoLocal(), kPlain), Negotiate},
        {"PresentationAndFloorControl", Pair(support::PresentationLocal(), kBfcp), Negotiate},
        {"SecureVideo", Pair(support::VideoLocal(), kSrtp), Negotiate},
        {"SecurePresentation", whole, Negotiate},
        {"Hold", whole, Hold},
        {"OfferAgain", whole, OfferAgain},
        {"SurplusSections", whole, Answered(SurplusText())},
        {"ManyFormats", whole, Answered(ManyFormatsText())},
        {"CandidatesAndCredentials", audio, Answered(IceText())},
        {"CopiesAndDumps", whole, CopyRecords},
    };
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Every captured description, answered by an endpoint with everything switched on.
std::vector<Work> Captures() {
    std::vector<Work> works;
    const auto whole = [](Call& call) {
        call.near = std::make_unique<SDPHandler>();
        support::Start(*call.near, Keyed(support::PresentationLocal(), "near"));
        call.near->m_bSRTP = true;
        call.near->SetBfcpSupport(true);
    };
    const std::filesystem::path captures = std::filesystem::path(COMMONMEDIA_CORPUS_DIR) / "captures";
    for (const auto& entry : std::filesystem::directory_iterator(captures)) {
        std::string name = entry.path().stem().string();
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
        works.push_back({name, whole, Answered(ReadFile(entry.path()))});
    }
    std::sort(works.begin(), works.end(), [](const Work& a, const Work& b) { return a.name < b.name; });
    return works;
}

class OomConversation : public ::testing::TestWithParam<Work> {};
class OomCapture : public ::testing::TestWithParam<Work> {};

void ExpectClean(const Work& work) {
    const oom::Report report = Exhausted(work);
    EXPECT_EQ(report.problems, "");
    EXPECT_EQ(report.sites, CountSites(work));
    EXPECT_GE(report.sites, 2U); // the text handed over and the answer
    std::cout << "allocations failed in turn: " << report.sites << "\n";
}

TEST_P(OomConversation, FailsCleanly) {
    ExpectClean(GetParam());
}

TEST_P(OomConversation, FailsCleanlyWhileItIsTraced) {
    const std::size_t before = oom::TraceReader::bytes();
    const oom::TraceReader reader;
    ExpectClean(GetParam());
    if (GetParam().name != "SetUp") {
        EXPECT_GT(oom::TraceReader::bytes(), before);
    }
}

TEST_P(OomCapture, FailsCleanly) {
    ExpectClean(GetParam());
}

std::string TestName(const ::testing::TestParamInfo<Work>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Calls, OomConversation, ::testing::ValuesIn(Conversations()), TestName);
INSTANTIATE_TEST_SUITE_P(Corpus, OomCapture, ::testing::ValuesIn(Captures()), TestName);

std::size_t CountAll(const std::vector<Work>& works) {
    std::size_t sites = 0;
    for (const Work& work : works) {
        sites += CountSites(work);
    }
    return sites;
}

// The lower limits are well below the real counts, and far above those of a test that fails nothing.
TEST(Oom, CoversManyAllocations) {
    const std::size_t conversations = CountAll(Conversations());
    const oom::TraceReader reader;
    const std::size_t traced = CountAll(Conversations());
    const std::vector<Work> captures = Captures();
    const std::size_t captured = CountAll(captures);
    std::cout << "allocations: " << conversations << " of the conversations, " << traced
              << " of the same while traced, " << captured << " of " << captures.size() << " captures\n";
    EXPECT_GE(conversations, 500U);
    EXPECT_GT(traced, conversations);
    EXPECT_GE(captures.size(), 40U);
    EXPECT_GE(captured, 2000U);
}

// A run that leaves a block allocated, or does not report a failed allocation, is detected.
TEST(Oom, SeesWhatIsWrong) {
    const auto nothing = [](Call&) {};
    std::vector<std::unique_ptr<int>> kept;
    kept.reserve(100);
    const oom::Report leak =
        oom::Exhausted({"Leak", nothing, [&kept](Call&) { kept.push_back(std::make_unique<int>(0)); }});
    EXPECT_NE(leak.problems.find("1 blocks are left"), std::string::npos) << leak.problems;
    const oom::Report swallowed = oom::Exhausted({"Swallow", nothing, [](Call& call) {
                                                      try {
                                                          call.written = std::string(100, 'x');
                                                      } catch (const std::bad_alloc&) {
                                                          call.written = "";
                                                      }
                                                  }});
    EXPECT_NE(swallowed.problems.find("the failed allocation was not reported"), std::string::npos)
        << swallowed.problems;
    EXPECT_EQ(swallowed.sites, 1U);
}

} // namespace
