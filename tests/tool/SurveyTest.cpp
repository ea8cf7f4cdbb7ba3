// cmsdp survey of many descriptions. What it writes of a few: survey.cases.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

constexpr const char* kAudio = "v=0\r\n"
                               "o=alice1 1 1 IN IP4 198.51.100.7\r\n"
                               "s=Call 5\r\n"
                               "c=IN IP4 198.51.100.7\r\n"
                               "m=audio 5004 RTP/AVP 0\r\n";

std::string JsonLine(const std::string& sdp) {
    return nlohmann::json({{"sdp", sdp}}).dump() + "\n";
}

class SurveyOrder : public ToolTest {};

TEST_F(SurveyOrder, LinesOfJsonStandInTheOrderOfTheInput) {
    std::string input;
    for (int i = 0; i < 1000; ++i) {
        input += JsonLine(i % 7 == 0 ? Capture("chromium-av-default-offer.sdp") : kAudio);
    }
    const Result run = CmsdpReads(input, {"survey", "--json", "-"});
    EXPECT_EQ(run.status, 0);
    std::size_t number = 0;
    for (std::size_t at = 0; at < run.out.size(); at = run.out.find('\n', at) + 1) {
        const auto line = nlohmann::json::parse(run.out.substr(at, run.out.find('\n', at) - at));
        ASSERT_EQ(line["name"], "-:" + std::to_string(++number));
    }
    EXPECT_EQ(number, 1000U);
}

} // namespace

} // namespace tool
