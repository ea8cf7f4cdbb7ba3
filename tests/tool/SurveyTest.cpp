// cmsdp survey: the table and the JSON lines of a few descriptions, what cannot be read, an interrupt.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

#include <filesystem>

namespace tool {

namespace {

constexpr const char* kAudio = "v=0\r\n"
                               "o=alice1 1 1 IN IP4 198.51.100.7\r\n"
                               "s=Call 5\r\n"
                               "c=IN IP4 198.51.100.7\r\n"
                               "m=audio 5004 RTP/AVP 0\r\n";
constexpr const char* kNoCodec = "v=0\r\n"
                                 "o=alice22 1 1 IN IP4 198.51.100.8\r\n"
                                 "s=Call 77\r\n"
                                 "c=IN IP4 198.51.100.8\r\n"
                                 "m=audio 5004 RTP/AVP 8\r\n";

std::string JsonLine(const std::string& sdp) {
    return nlohmann::json({{"sdp", sdp}}).dump() + "\n";
}

class Survey : public ToolTest {
protected:
    // The part of a table under a title.
    static std::string Part(const std::string& table, const std::string& title) {
        const std::size_t begin = table.find("\n" + title + "\n");
        return begin == std::string::npos ? "" : table.substr(begin + 1, table.find("\n\n", begin) - begin);
    }
};

TEST_F(Survey, CountsStreamsAndFarEnds) {
    std::filesystem::create_directories(m_directory + "/night/late");
    Write("night/a.sdp", kAudio);
    Write("night/late/b.sdp", kAudio);
    Write("night/late/c.sdp", kNoCodec);
    Write("night/late/d.txt", "nothing here\n");
    const Result run = Cmsdp({"survey", "night", "missing"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out.substr(0, run.out.find('\n') + 1), "descriptions 3, not read 2\n");
    EXPECT_TEXT(Part(run.out, "streams"), "streams\n"
                                          "  audio          start       2  66.7 %  night/a.sdp\n");
    EXPECT_TEXT(Part(run.out, "refused"),
                "refused\n"
                "  no format of the section is spoken here       1  33.3 %  night/late/c.sdp\n");
    EXPECT_TEXT(Part(run.out, "far ends"), "far ends\n"
                                           "  o=alice# s=Call #       3 100.0 %  night/a.sdp\n");
    EXPECT_TEXT(run.err,
                "cmsdp: night/late/d.txt: holds no SDP line such as \"v=0\" or \"m=audio 5004 RTP/AVP 0\"\n"
                "cmsdp: missing: No such file or directory\n");
}

TEST_F(Survey, WritesALineOfJsonForEach) {
    const Result run = CmsdpReads(JsonLine(kAudio) + "\n{\n[1]\n", {"survey", "--json", "-"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(
        run.out,
        "{\"schema\":\"cmsdp.survey/1\",\"name\":\"-:1\",\"unread\":null,\"refused\":null,"
        "\"findings\":["
        "{\"id\":\"E133\",\"topic\":\"call\",\"severity\":\"error\",\"lines\":[]},"
        "{\"id\":\"E47\",\"topic\":\"dtmf\",\"severity\":\"note\",\"lines\":[5]},"
        "{\"id\":\"E72\",\"topic\":\"main.picture\",\"severity\":\"note\",\"lines\":[5]},"
        "{\"id\":\"E72\",\"topic\":\"main.send\",\"severity\":\"note\",\"lines\":[5]},"
        "{\"id\":\"E72\",\"topic\":\"main.receive\",\"severity\":\"note\",\"lines\":[5]},"
        "{\"id\":\"E72\",\"topic\":\"encryption.main\",\"severity\":\"note\",\"lines\":[5]},"
        "{\"id\":\"E72\",\"topic\":\"slides\",\"severity\":\"note\",\"lines\":[5]},"
        "{\"id\":\"E72\",\"topic\":\"encryption.slides\",\"severity\":\"note\",\"lines\":[5]}],"
        "\"streams\":[{\"stream\":\"audio\",\"state\":\"start\",\"agreed\":true}],"
        "\"far_end\":{\"origin\":\"alice1\",\"session\":\"Call 5\",\"tool\":null}}\n"
        "{\"schema\":\"cmsdp.survey/1\",\"name\":\"-:3\",\"unread\":\"it is no JSON\",\"refused\":null,"
        "\"findings\":[],\"streams\":[],\"far_end\":{\"origin\":null,\"session\":null,\"tool\":null}}\n"
        "{\"schema\":\"cmsdp.survey/1\",\"name\":\"-:4\",\"unread\":\"it has no member \\\"sdp\\\" that is a "
        "text\",\"refused\":null,\"findings\":[],\"streams\":[],\"far_end\":{\"origin\":null,\"session\":"
        "null,"
        "\"tool\":null}}\n");
    EXPECT_TEXT(run.err, "cmsdp: -:3: it is no JSON\n"
                         "cmsdp: -:4: it has no member \"sdp\" that is a text\n");
}

TEST_F(Survey, LinesOfJsonStandInTheOrderOfTheInput) {
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

TEST_F(Survey, NothingReadIsStatusThree) {
    Write("empty.sdp", "");
    const Result run = Cmsdp({"survey", "empty.sdp"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "descriptions 0, not read 1\n");
}

TEST_F(Survey, KeysAreHidden) {
    const std::string key = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";
    const Result run = CmsdpReads(
        JsonLine("v=0\r\no=" + key + " 1 1 IN IP4 192.0.2.1\r\ns=inline:" + key +
                 "\r\nm=audio 5 RTP/SAVP 0\r\na=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + key + "\r\n"),
        {"survey", "-"});
    EXPECT_EQ(run.out.find(key), std::string::npos);
    EXPECT_TEXT(Part(run.out, "far ends"), "far ends\n"
                                           "  o=*** s=inline:***       1 100.0 %  -:1\n");
}

} // namespace

} // namespace tool
