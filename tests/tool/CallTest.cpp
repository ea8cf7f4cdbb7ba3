// Calls of the command whose steps are compared with each other. Whole calls: call.cases.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

class CallSteps : public ToolTest {};

// Each side has its own address, ports and session id.
TEST_F(CallSteps, BuiltInSidesNegotiateEverything) {
    const Result run = Cmsdp({"call", "--json", "--require", "audio,main_video,presentation,floor_control"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err, "");
    const auto call = nlohmann::json::parse(run.out);
    EXPECT_EQ(call["schema"], "cmsdp.call/2");
    EXPECT_EQ(call["negotiated"], true);
    ASSERT_EQ(call["steps"].size(), 1U);
    const auto& step = call["steps"][0];
    EXPECT_EQ(step["then"], nullptr);
    ASSERT_EQ(step["exchanges"].size(), 1U);
    EXPECT_EQ(step["offerer"][0]["address"], "192.0.2.2");
    EXPECT_EQ(step["answerer"][0]["address"], "192.0.2.1");
    EXPECT_EQ(step["offerer"][3]["port"], 17390);
    EXPECT_EQ(step["answerer"][3]["port"], 16390);
    const auto origin = [&step](const char* description) {
        const std::string text = step["exchanges"][0][description];
        const std::size_t begin = text.find("o=");
        return text.substr(begin, text.find(" IN", begin) - begin);
    };
    EXPECT_NE(origin("offer"), origin("answer"));
}

// The last word of each step: what the offerer does with main video and with its slides.
TEST_F(CallSteps, EveryWishIsToldToTheFarEnd) {
    const Result run =
        Cmsdp({"call", "--json", "--then", "mute", "--then", "unmute", "--then", "stop-presenting", "--then",
               "answerer:present", "--then", "hold", "--then", "resume"});
    EXPECT_EQ(run.status, 0);
    const auto call = nlohmann::json::parse(run.out);
    std::string told;
    for (const auto& step : call["steps"]) {
        const auto way = [&step](std::size_t section) {
            const auto& stream = step["offerer"][section];
            return std::string(stream["sends"].get<bool>() ? "S" : "-") +
                   (stream["receives"].get<bool>() ? "R" : "-");
        };
        told += std::string(step["then"].is_null() ? "comes up" : step["then"]) + ": " + way(0) + " " +
                way(1) + " " + way(2) + "\n";
    }
    EXPECT_TEXT(told, "comes up: SR SR S-\n"
                      "mute: SR -R S-\n"
                      "unmute: SR SR S-\n"
                      "stop-presenting: SR SR --\n"
                      "present: SR SR -R\n"
                      "hold: S- S- --\n"
                      "resume: SR SR -R\n");
}

TEST_F(CallSteps, NewKeysAreCrossedOver) {
    Write("secure.json", R"({"srtp": "required"})");
    const Result run = Cmsdp({"call", "--json", "--show-secrets", "--offerer", "secure.json", "--answerer",
                              "secure.json", "--then", "rekey"});
    EXPECT_EQ(run.status, 0);
    const auto call = nlohmann::json::parse(run.out);
    ASSERT_EQ(call["steps"].size(), 2U);
    const auto& before = call["steps"][0];
    const auto& after = call["steps"][1];
    for (const std::size_t section : {0U, 1U, 2U}) {
        EXPECT_EQ(after["offerer"][section]["our_key"], after["answerer"][section]["their_key"]);
        EXPECT_EQ(after["offerer"][section]["their_key"], after["answerer"][section]["our_key"]);
        EXPECT_NE(after["offerer"][section]["our_key"], before["offerer"][section]["our_key"]);
    }
}

} // namespace

} // namespace tool
