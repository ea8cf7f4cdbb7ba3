// The engine starts what is wanted and leaves alone what did not change. A script stands in for ffmpeg: it
// writes its arguments and its input to the file that is its last argument, and runs until it is interrupted.
#include "MediaEngine.h"

#include "Expect.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace {

using namespace std::chrono_literals;

class CallMediaEngine : public ::testing::Test {
protected:
    void SetUp() override {
        m_folder = std::filesystem::path(::testing::TempDir()) /
                   ("engine-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
        std::ofstream(m_folder / "ffmpeg") << "#!/bin/bash\n"
                                              "[ \"$1\" = ends ] && exit\n"
                                              "trap 'exit 0' INT\n"
                                              "{ echo \"$@\"; cat; } >\"${@: -1}.part\"\n"
                                              "mv \"${@: -1}.part\" \"${@: -1}\"\n"
                                              "while :; do read -r -t 0.05 <> <(:); done\n";
        std::filesystem::permissions(m_folder / "ffmpeg", std::filesystem::perms::owner_all);
        m_path = std::getenv("PATH");
        setenv("PATH", (m_folder.string() + ":" + m_path).c_str(), 1);
    }
    void TearDown() override {
        setenv("PATH", m_path.c_str(), 1);
        std::filesystem::remove_all(m_folder);
    }

    /// Polls until the file is there, for ten seconds at most; its text, or what is missing.
    std::string Written(call::MediaEngine& engine, const std::string& name) {
        for (int n = 0; n < 1000 && !std::filesystem::exists(m_folder / name); ++n) {
            engine.Poll();
            std::this_thread::sleep_for(10ms);
        }
        std::ifstream file(m_folder / name);
        std::ostringstream text;
        text << (file ? "" : "no file " + name) << file.rdbuf();
        return text.str();
    }

    std::filesystem::path m_folder;
    std::string m_path;
};

call::Command Receiver(const std::string& port) {
    return {"audio-receive", {"-x", port}, "m=audio " + port + "\r\n", "wav"};
}

TEST_F(CallMediaEngine, AReceiverGetsItsDescriptionAndAFileOfItsOwn) {
    call::Journal journal(m_folder.string());
    call::MediaEngine engine(journal);
    engine.Run({Receiver("5000")});
    EXPECT_TEXT(Written(engine, "audio-receive-1.wav"),
                "-x 5000 " + m_folder.string() + "/audio-receive-1.wav\nm=audio 5000\r\n");
    EXPECT_TRUE(engine.IsRunning("audio-receive"));
}

TEST_F(CallMediaEngine, OnlyWhatChangedIsStartedAgain) {
    call::Journal journal(m_folder.string());
    call::MediaEngine engine(journal);
    const call::Command kept = {"main-receive", {"-x", "5002"}, "m=video\r\n", "frames"};
    engine.Run({Receiver("5000"), kept});
    Written(engine, "audio-receive-1.wav");
    Written(engine, "main-receive-2.frames");
    engine.Run({Receiver("5000"), kept});
    engine.Run({Receiver("5010"), kept});
    EXPECT_TEXT(Written(engine, "audio-receive-3.wav"),
                "-x 5010 " + m_folder.string() + "/audio-receive-3.wav\nm=audio 5010\r\n");
    EXPECT_FALSE(std::filesystem::exists(m_folder / "main-receive-4.frames"));
    EXPECT_TRUE(engine.IsRunning("main-receive"));
}

TEST_F(CallMediaEngine, WhatIsNotWantedStops) {
    call::Journal journal(m_folder.string());
    call::MediaEngine engine(journal);
    engine.Run({Receiver("5000")});
    Written(engine, "audio-receive-1.wav");
    engine.Run({});
    EXPECT_FALSE(engine.IsRunning("audio-receive"));
}

TEST_F(CallMediaEngine, AProcessThatEndsByItselfIsNotStartedAgain) {
    call::Journal journal(m_folder.string());
    call::MediaEngine engine(journal);
    engine.Run({{"audio-send", {"ends"}, "", ""}});
    for (int n = 0; n < 1000 && engine.IsRunning("audio-send"); ++n) {
        engine.Poll();
        std::this_thread::sleep_for(10ms);
    }
    EXPECT_FALSE(engine.IsRunning("audio-send"));
    EXPECT_FALSE(std::filesystem::exists(m_folder / "audio-send-2.log"));
}

} // namespace
