// What holds for many inputs: every capture, any bytes, the greatest size, every help text.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace tool {

namespace {

class ToolLaw : public ToolTest {};

// Every captured description of a real far end: JSON that parses, ASCII, and an exit status that agrees.
TEST_F(ToolLaw, EveryCaptureIsReadableAsJson) {
    const std::vector<std::string> names = Captures();
    ASSERT_GE(names.size(), 30U);
    for (const std::string& name : names) {
        const Result run = CmsdpReads(Capture(name), {"inspect", "--json", "--exact"});
        const nlohmann::json root = nlohmann::json::parse(run.out, nullptr, false);
        ASSERT_TRUE(root.is_object()) << name;
        EXPECT_EQ(run.status, root["negotiated"] == true ? 0 : 1) << name;
        for (const char* stream : {"audio", "main_video", "presentation", "floor_control"}) {
            EXPECT_EQ(root[stream]["why"].is_null(), root[stream]["negotiated"] == true)
                << name << ' ' << stream;
        }
        for (const char c : run.out) {
            ASSERT_TRUE(c == '\n' || (c >= ' ' && c < '\x7f')) << name;
        }
    }
}

// Every key that a captured far end sent, looked for in everything that is shown without --show-secrets.
TEST_F(ToolLaw, NoKeyOfAnyCaptureIsEverShown) {
    Write("srtp.json", R"({"srtp": true})");
    std::size_t keys = 0;
    for (const std::string& name : Captures()) {
        const std::string text = Capture(name);
        if (text.find("inline:") == std::string::npos) {
            continue;
        }
        std::string joined = text;
        joined.erase(std::remove(joined.begin(), joined.end(), '\r'), joined.end());
        std::string shown;
        for (const std::string& input : {text, joined + "\r\n"}) {
            for (const std::vector<std::string>& arguments :
                 {std::vector<std::string>{"answer", "--exact", "--local", "srtp.json"},
                  {"inspect", "--exact", "--local", "srtp.json"},
                  {"inspect", "--exact", "--json", "--local", "srtp.json"}}) {
                const Result run = CmsdpReads(input, arguments);
                shown += run.out + run.err;
            }
        }
        for (std::size_t at = text.find("inline:"); at != std::string::npos;
             at = text.find("inline:", at + 1)) {
            const std::string key = text.substr(at + 7, 30);
            EXPECT_EQ(shown.find(key), std::string::npos) << name;
            ++keys;
        }
    }
    EXPECT_GE(keys, 10U);
}

// One far end ends a number in a blank, and one capture was cut.
TEST_F(ToolLaw, HardlyAnyCaptureIsCleaned) {
    std::vector<std::string> changed;
    for (const std::string& name : Captures()) {
        if (CmsdpReads(Capture(name), {"inspect"}).err.find("--exact keeps it") != std::string::npos) {
            changed.push_back(name);
        }
    }
    EXPECT_EQ(changed, (std::vector<std::string>{"conf-bandwidth-unreadable-session-offer.sdp",
                                                 "conf-last-line-unended-offer.sdp"}));
}

TEST_F(ToolLaw, CapabilitiesGivenBackChangeNothing) {
    Write("me.json", Cmsdp({"capabilities"}).out);
    Write("offer.sdp", Capture("rtpengine-conf-savp-32-offer.sdp"));
    EXPECT_TEXT(MaskId(Cmsdp({"offer", "--local", "me.json"}).out), MaskId(Cmsdp({"offer"}).out));
    EXPECT_TEXT(MaskId(Cmsdp({"answer", "--local", "me.json", "offer.sdp"}).out),
                MaskId(Cmsdp({"answer", "offer.sdp"}).out));
    EXPECT_TEXT(Cmsdp({"inspect", "--local", "me.json", "offer.sdp"}).out,
                Cmsdp({"inspect", "offer.sdp"}).out);
    EXPECT_TEXT(MaskId(Cmsdp({"call", "--offerer", "me.json"}).out), MaskId(Cmsdp({"call"}).out));
}

// Neither a text of another kind nor bytes of any value end in anything but violations, and all are
// printable.
TEST_F(ToolLaw, ViolationsOfAnyBytesPrint) {
    std::string bytes = "v=0\r\no=- 2 1 IN IP4 192.0.2.1\r\ns=-\r\nc=IN IP4 192.0.2.1\r\nt=0 0\r\n"
                        "m=audio 16384 RTP/AVP 0\r\n";
    Write("offer.sdp", bytes);
    for (int byte = 0; byte < 256; ++byte) {
        bytes += "a=rtpmap:" + std::string(1, static_cast<char>(byte)) + " \x1b[2J/8000\r\n";
    }
    Write("bytes.sdp", bytes);
    const Result run = Cmsdp({"check", "offer.sdp", "bytes.sdp"});
    EXPECT_EQ(run.status, 1);
    for (const char c : run.out) {
        EXPECT_TRUE(c == '\n' || (c >= ' ' && c < 0x7F));
    }
}

TEST_F(ToolLaw, ARemoteTextOfSixteenMiBIsRead) {
    std::string text = "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\na=";
    text.append(std::size_t{16} * 1024 * 1024 - text.size() - 2, 'x');
    text += "\r\n";
    Write("big.sdp", text);
    const Result run = Cmsdp({"inspect", "big.sdp"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err, "");
}

TEST_F(ToolLaw, ARemoteTextBeyondSixteenMiBIsRefused) {
    Write("big.sdp", "v=0\r\n" + std::string(std::size_t{16} * 1024 * 1024 - 4, 'x'));
    const Result run = Cmsdp({"inspect", "big.sdp"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: big.sdp: cannot be read: it is longer than 16 MiB (16777216 bytes); name a file "
                "that holds a session description, or - for standard input\n");
}

TEST_F(ToolLaw, EveryHelpFitsEightyColumns) {
    for (const char* const verb : {"offer", "answer", "inspect", "call", "check", "explain", "whynot", "diff",
                                   "survey", "redact", "capabilities", "help", "version"}) {
        for (const std::string& line : support::CutLines(Cmsdp({verb, "--help"}).out)) {
            EXPECT_LE(line.size(), 81U) << line;
        }
    }
}

} // namespace

} // namespace tool
