// Records in buffers of the test, read after the records were destroyed, and the stack of a thread that used
// keys.
#include "Watching.h"

#include "Expect.h"
#include "hostile/Hostile.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <pthread.h>

namespace {

/// A record in a buffer that stays readable after the record was destroyed.
template <typename Record>
class Placed {
public:
    Placed() : m_buffer(sizeof(Record)), m_record(new (m_buffer.data()) Record()) {}
    Record* operator->() { return m_record; }
    Record& operator*() { return *m_record; }
    std::size_t CountWindows() const { return wipe::CountWindows(m_buffer.data(), m_buffer.size()); }
    std::size_t CountWindowsAfterItsEnd() {
        m_record->Record::~Record();
        return CountWindows();
    }

private:
    std::vector<unsigned char> m_buffer; ///< operator new aligns it for any record
    Record* m_record;
};

TEST(WipeMemory, LocalRecord) {
    Placed<LocalSDP> local;
    support::GiveKeys(*local, "near", support::kSuite32);
    EXPECT_GE(local.CountWindows(), 48U); // per stream 9 windows of the key and 7 of the salt
    EXPECT_EQ(local.CountWindowsAfterItsEnd(), 0U);
}

TEST(WipeMemory, RemoteRecord) {
    Placed<RemoteSDP> remote;
    SDPHandler handler;
    handler.ParseTheSDP(hostile::kConference, *remote);
    EXPECT_GE(remote.CountWindows(), 48U);
    EXPECT_EQ(remote.CountWindowsAfterItsEnd(), 0U);
}

TEST(WipeMemory, RemoteRecordThatIsReset) {
    Placed<RemoteSDP> remote;
    SDPHandler handler;
    handler.ParseTheSDP(hostile::kConference, *remote);
    handler.ParseTheSDP("v=0\r\n", *remote);
    EXPECT_EQ(remote.CountWindowsAfterItsEnd(), 0U);
}

TEST(WipeMemory, Section) {
    Placed<MediaSession> section;
    support::Secure(*section, "audio");
    EXPECT_GE(section.CountWindows(), 16U);
    EXPECT_EQ(section.CountWindowsAfterItsEnd(), 0U);
}

TEST(WipeMemory, Handler) {
    Placed<SDPHandler> handler;
    RemoteSDP remote;
    LocalSDP local = support::PresentationLocal();
    support::GiveKeys(local, "near", support::kSuite32);
    handler->InitializeLocalSDP(local);
    handler->ParseTheSDP(hostile::kConference, remote);
    EXPECT_GE(handler.CountWindows(), 48U);
    EXPECT_EQ(handler.CountWindowsAfterItsEnd(), 0U);
}

/// Runs the work so deep in the stack that the end of the thread overwrites nothing that it leaves there.
[[gnu::noinline]] void RunDeep(const std::function<void()>& work) {
    volatile unsigned char room[65536];
    room[0] = 0;
    work();
    static_cast<void>(room[0]);
}

/// Runs the work in a thread whose stack is a buffer of the test, and counts the secrets left on it.
std::size_t CountWindowsOnce(const std::function<void()>& work) {
    constexpr std::size_t size = std::size_t{1} << 20U;
    const std::unique_ptr<void, decltype(&std::free)> stack(std::aligned_alloc(4096, size), &std::free);
    std::memset(stack.get(), 0xa5, size);
    pthread_attr_t attributes;
    EXPECT_EQ(pthread_attr_init(&attributes), 0);
    EXPECT_EQ(pthread_attr_setstack(&attributes, stack.get(), size), 0);
    pthread_t thread{};
    const auto run = [](void* argument) -> void* {
        RunDeep(**static_cast<const std::function<void()>**>(argument));
        return nullptr;
    };
    const std::function<void()>* argument = &work;
    EXPECT_EQ(pthread_create(&thread, &attributes, run, &argument), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    EXPECT_EQ(pthread_attr_destroy(&attributes), 0);
    return wipe::CountWindows(static_cast<const unsigned char*>(stack.get()), size);
}

/// Only the third run counts: at the first call of a function the dynamic linker saves all registers on the
/// stack, and they may hold parts of a key.
std::size_t CountWindowsOnTheStackOf(const std::function<void()>& work) {
    CountWindowsOnce(work);
    CountWindowsOnce(work);
    return CountWindowsOnce(work);
}

TEST(WipeStack, SeesASecretThatIsLeftBehind) {
    const std::vector<std::string> secrets = wipe::Secrets();
    EXPECT_GT(CountWindowsOnTheStackOf([&secrets] {
                  volatile unsigned char left[16];
                  for (std::size_t n = 0; n < sizeof left; ++n) {
                      left[n] = static_cast<unsigned char>(secrets[0][n]);
                  }
                  static_cast<void>(left[0]);
              }),
              0U);
}

// A key text of forty characters is on the stack during reading and writing.
TEST(WipeStack, KeyTextInBothDirections) {
    unsigned char key[baseSDP::kKeyLength];
    unsigned char salt[baseSDP::kSaltLength];
    support::WriteKey(key, salt, "near", "audio");
    std::string text;
    EXPECT_EQ(CountWindowsOnTheStackOf([&] {
                  GetSRTPKey(text, key, salt);
                  ExtractSRTPKey(reinterpret_cast<const unsigned char*>(text.data()), key, salt);
              }),
              0U);
    EXPECT_EQ(text, "bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0");
}

// Up to nine tenths of a key are decoded before the character that is no base64.
TEST(WipeStack, KeyTextThatCannotBeDecoded) {
    unsigned char key[baseSDP::kKeyLength];
    unsigned char salt[baseSDP::kSaltLength];
    support::WriteKey(key, salt, "near", "audio");
    std::string text;
    GetSRTPKey(text, key, salt);
    unsigned char read[baseSDP::kKeyLength] = {};
    for (const std::size_t at : {16U, 24U, 36U, 39U}) {
        std::string broken = text;
        broken[at] = '!';
        bool isKey = true;
        const std::size_t found = CountWindowsOnTheStackOf([&] {
            isKey = ExtractSRTPKey(reinterpret_cast<const unsigned char*>(broken.data()), read, read);
        });
        EXPECT_FALSE(isKey) << at;
        EXPECT_EQ(found, 0U) << at;
    }
}

TEST(WipeStack, ParseAnswerAndOffer) {
    SDPHandler handler;
    RemoteSDP remote;
    LocalSDP local = support::PresentationLocal();
    support::GiveKeys(local, "near", support::kSuite32);
    handler.InitializeLocalSDP(local);
    handler.m_bSRTP = true;
    handler.SetBfcpSupport(true);
    std::string offer;
    std::string answer;
    EXPECT_EQ(CountWindowsOnTheStackOf([&] {
                  offer = handler.GetLocalSDP();
                  handler.ParseTheSDP(hostile::kConference, remote);
                  answer = handler.GetLocalSDP();
                  handler.ResetRemoteSDP();
              }),
              0U);
    EXPECT_GE(wipe::CountWindows(reinterpret_cast<const unsigned char*>(offer.data()), offer.size()), 90U);
    EXPECT_GE(wipe::CountWindows(reinterpret_cast<const unsigned char*>(answer.data()), answer.size()), 90U);
}

} // namespace
