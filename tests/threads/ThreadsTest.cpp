// Handlers in different threads share only the trace sink: eight of them read and answer every captured
// description at the same time, while another thread installs and removes sinks. scripts/tsan runs this test
// under the thread sanitizer.
#include "Capabilities.h"
#include "CommonMediaTrace.h"
#include "Describe.h"

#include <SDPHandler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t kThreads = 8;
constexpr int kRounds = 3;

std::vector<std::string> Captures() {
    std::vector<std::filesystem::path> paths;
    const std::filesystem::path folder = std::filesystem::path(COMMONMEDIA_CORPUS_DIR) / "captures";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> texts;
    for (const std::filesystem::path& path : paths) {
        std::ifstream file(path, std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return texts;
}

/// The results of one handler that reads and answers every text in turn, with an offer after each.
std::vector<std::string> Results(const std::vector<std::string>& texts, std::size_t shift) {
    LocalSDP local = support::PresentationLocal();
    support::GiveKeys(local, "near", support::kSuite32);
    std::vector<std::string> results(texts.size());
    for (std::size_t n = 0; n < texts.size(); ++n) {
        // Each thread begins with another text, so that eight different texts are read at the same time.
        const std::size_t at = (n + shift) % texts.size();
        SDPHandler handler;
        support::Start(handler, local);
        handler.m_bSRTP = true;
        handler.SetBfcpSupport(true);
        RemoteSDP remote;
        results[at] = handler.GetLocalSDP();
        handler.ParseTheSDP(texts[at], remote);
        results[at] += support::Describe(remote) + remote.ToDiag() + handler.GetLocalSDP();
    }
    return results;
}

/// What one sink has received.
struct Received {
    std::atomic<std::size_t> traces{0};
    std::atomic<std::size_t> bad{0};       ///< another text than a section's dump
    std::atomic<std::size_t> strangers{0}; ///< with the context of another sink
};

/// Two sinks that are never destroyed, as an installed sink must not be. Each has a function of its own, so a
/// call with one sink's function and the other's context is seen.
Received g_received[2];

template <int Own>
void Receive(void* context, const char*, const char* function, int, const char* text) {
    const char* const start = "Dump Media Session: \neContent: ";
    Received& received = g_received[Own];
    ++received.traces;
    received.strangers += context != &received ? 1 : 0;
    received.bad +=
        std::strcmp(function, "GetRTPData") != 0 || std::strncmp(text, start, std::strlen(start)) != 0 ? 1
                                                                                                       : 0;
}

const CommonMediaTraceSink kSinks[] = {{Receive<0>, &g_received[0]}, {Receive<1>, &g_received[1]}};

/// Installs one sink, the other, and none in turn until it is told to stop.
void SwapSinks(const std::atomic<bool>& stop) {
    for (std::size_t n = 0; !stop; ++n) {
        SetCommonMediaTraceSink(n % 3 == 2 ? nullptr : &kSinks[n % 3]);
        std::this_thread::yield();
    }
    SetCommonMediaTraceSink(nullptr);
}

TEST(Threads, EightHandlersReadAndAnswerWhileSinksAreSwapped) {
    const std::vector<std::string> texts = Captures();
    ASSERT_GE(texts.size(), 40U);
    const std::vector<std::string> alone = Results(texts, 0);

    std::atomic<bool> stop{false};
    std::thread swapper(SwapSinks, std::cref(stop));
    std::vector<std::vector<std::string>> together(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (int round = 0; round < kRounds; ++round) {
                together[t] = Results(texts, t * texts.size() / kThreads);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    stop = true;
    swapper.join();

    for (const std::vector<std::string>& results : together) {
        for (std::size_t n = 0; n < texts.size(); ++n) {
            EXPECT_TEXT(results[n], alone[n]);
        }
    }
    for (const Received& received : g_received) {
        EXPECT_GT(received.traces.load(), 0U);
        EXPECT_EQ(received.bad.load(), 0U);
        EXPECT_EQ(received.strangers.load(), 0U);
    }
    EXPECT_FALSE(CommonMediaTraceEnabled());
}

TEST(Threads, HandlerMovesBetweenThreadsOneAfterTheOther) {
    const std::vector<std::string> texts = Captures();
    SDPHandler one;
    SDPHandler other;
    for (SDPHandler* const handler : {&one, &other}) {
        support::Start(*handler, support::PresentationLocal());
    }
    RemoteSDP remote;
    RemoteSDP expected;
    for (const std::string& text : texts) {
        // The join orders the threads; the handler needs no other synchronisation.
        std::thread([&] { one.ParseTheSDP(text, remote); }).join();
        std::string answer;
        std::thread([&] { answer = one.GetLocalSDP(); }).join();
        other.ParseTheSDP(text, expected);
        EXPECT_TEXT(support::Describe(remote), support::Describe(expected));
        EXPECT_TEXT(answer, other.GetLocalSDP());
    }
}

TEST(Threads, RecordsAreReadByManyAtOnce) {
    const std::vector<std::string> texts = Captures();
    SDPHandler handler;
    support::Start(handler, support::PresentationLocal());
    RemoteSDP remote;
    handler.ParseTheSDP(texts[0], remote);
    const std::string expected = remote.ToDiag() + handler.MyLocalSDP.ToDiag();
    std::vector<std::string> dumps(kThreads);
    std::vector<std::thread> threads;
    for (std::string& dump : dumps) {
        threads.emplace_back([&] {
            const LocalSDP local = handler.MyLocalSDP;
            const RemoteSDP copy = remote;
            dump = copy.ToDiag() + local.ToDiag();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const std::string& dump : dumps) {
        EXPECT_TEXT(dump, expected);
    }
}

} // namespace
