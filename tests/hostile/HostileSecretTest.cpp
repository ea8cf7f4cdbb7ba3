// Keys that must not be shown in traces, in dumps of records or in the command's output.
#include "Hostile.h"

#include "TraceKeeper.h"

#ifdef CMSDP_PATH
#include "tool/RunTool.h"
#endif

namespace {

using namespace hostile;

/// The traces of the sections of a text.
std::string Traced(const std::string& text) {
    Endpoint near;
    std::string traced;
    {
        const support::TraceKeeper trace;
        near.handler.ParseTheSDP(text, near.remote);
        traced = trace.Text();
    }
    ExpectAsFresh(near.handler);
    return traced;
}

TEST(Hostile, C48_NoKeyInATrace) {
    const std::string trace = Traced(kConference);
    const auto dump = [](std::initializer_list<std::pair<std::string, std::string>> changes) {
        return "Dump Media Session: \n" + support::Replaced(support::kNewSectionDump, changes);
    };
    EXPECT_TEXT(trace, dump({{"iPort: 0", "iPort: 20384"},
                             {"strIPAddr: \n", "strIPAddr: \n"
                                               "\tRtpMap[0]: Payload-9 EncodingName-G722/8000\n"
                                               "\tRtpMap[1]: Payload-0 EncodingName-PCMU/8000\n"
                                               "\tRtpMap[2]: Payload-101 EncodingName-telephone-event/8000\n"
                                               "\t\tFmtp Parm-0-15\n"},
                             {"strMaxBandwidth: ", "strMaxBandwidth: 64000"}}) +
                           dump({{"eContent: 100", "eContent: 0"},
                                 {"iPort: 0", "iPort: 20386"},
                                 {"strIPAddr: \n", "strIPAddr: 192.0.2.3\n"
                                                   "\tRtpMap[0]: Payload-109 EncodingName-H264/90000\n"
                                                   "\t\tFmtp Parm-profile-level-id=42001F\n"
                                                   "\t\tFmtp Parm-max-mbps=108000\n"
                                                   "\t\tFmtp Parm-max-fs=3601\n"
                                                   "\t\tFmtp Parm-packetization-mode=1\n"
                                                   "\tRtpMap[1]: Payload-110 EncodingName-H264/90000\n"
                                                   "\t\tFmtp Parm-profile-level-id=420014\n"
                                                   "\t\tFmtp Parm-packetization-mode=0\n"},
                                 {"fSend: true", "fSend: false"},
                                 {"strMaxBandwidth: ", "strMaxBandwidth: 936000"}}) +
                           dump({{"eContent: 100", "eContent: 1"},
                                 {"iPort: 0", "iPort: 20388"},
                                 {"strIPAddr: \n", "strIPAddr: 192.0.2.4\n"
                                                   "\tRtpMap[0]: Payload-109 EncodingName-H264/90000\n"
                                                   "\t\tFmtp Parm-profile-level-id=420028\n"
                                                   "\t\tFmtp Parm-max-br=1500\n"
                                                   "\t\tFmtp Parm-packetization-mode=1\n"},
                                 {"fRecv: true", "fRecv: false"}}) +
                           dump({{"iPort: 0", "iPort: 20390"},
                                 {"strIPAddr: \n", "strIPAddr: \n\tRtpMap[0]: Payload-* EncodingName-\n"},
                                 {"iBfcpConfid: 0", "iBfcpConfid: 15"},
                                 {"iBfcpUserid: 0", "iBfcpUserid: 16"},
                                 {"strFloorctrl: ", "strFloorctrl: s-only"}}));
}

TEST(Hostile, C48_NoKeyInADumpOfAnyRecord) {
    Endpoint near;
    near.handler.ParseTheSDP(kConference, near.remote);
    EXPECT_EQ(KeyWindows(near.remote.ToDiag()), std::vector<std::string>());
    EXPECT_EQ(KeyWindows(near.remote.baseSDP::ToDiag()), std::vector<std::string>());
    EXPECT_EQ(KeyWindows(near.handler.MyLocalSDP.ToDiag()), std::vector<std::string>());
    EXPECT_EQ(KeyWindows(near.handler.MyLocalSDP.baseSDP::ToDiag()), std::vector<std::string>());
    // The records contain the keys that the dumps leave out.
    EXPECT_EQ(KeyWindows(support::Describe(near.remote)).size(), 39U);
    ExpectAsFresh(near.handler);
}

/// One audio section whose lines end in a bare line feed where `text` has one.
std::string TracedSection(const std::string& lines) {
    return Traced("v=0\r\nm=audio 5004 RTP/SAVP 0\r\n" + lines + "\r\n");
}

std::string Dump(const std::string& address, const std::string& formats) {
    return "Dump Media Session: \n" +
           support::Replaced(
               support::kNewSectionDump,
               {{"iPort: 0", "iPort: 5004"}, {"strIPAddr: \n", "strIPAddr: " + address + "\n" + formats}});
}

TEST(Hostile, C48_KeyThatAJoinedLineCarriesIntoADumpedField) {
    const std::string crypto =
        "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0";
    EXPECT_TEXT(TracedSection("a=fmtp:0 x\n" + crypto + "|2^31\ny"),
                Dump("", "\tRtpMap[0]: Payload-0 EncodingName-\n"
                         "\t\tFmtp Parm-x\na=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:***\ny\n"));
    EXPECT_TEXT(TracedSection("m=audio 5004 RTP/SAVP 0\n" + crypto),
                Dump("", "\tRtpMap[0]: Payload-0 EncodingName-\n") +
                    Dump("", "\tRtpMap[0]: Payload-0 EncodingName-\n"
                             "\tRtpMap[1]: Payload-a=crypto:1 EncodingName-\n"
                             "\tRtpMap[2]: Payload-AES_CM_128_HMAC_SHA1_32 EncodingName-\n"
                             "\tRtpMap[3]: Payload-inline:*** EncodingName-\n"));
    EXPECT_TEXT(TracedSection("a=rtpmap:0 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0"),
                Dump("", "\tRtpMap[0]: Payload-0 EncodingName-inline:***\n"));
    // A key text that ends in "c=" makes its line an address.
    EXPECT_TEXT(TracedSection(crypto + "c="), Dump("inline:***", "\tRtpMap[0]: Payload-0 EncodingName-\n"));
    EXPECT_TEXT(TracedSection("a=fmtp:0 INLINE:YXdheSBhdWRpbyBrZXkg;x=Inline:MWF3YXkgYXVkaW9zYWx0"),
                Dump("", "\tRtpMap[0]: Payload-0 EncodingName-\n"
                         "\t\tFmtp Parm-INLINE:***\n"
                         "\t\tFmtp Parm-x=Inline:***\n"));
}

TEST(Hostile, C48_KeyInEveryTextOfTheRecords) {
    const std::string key = "x inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 y";
    RemoteSDP remote;
    remote.strAudioIPAddr = key;
    remote.m_VideoMain.strVideoIPAddr = key;
    remote.m_VideoPreso.strVideoLevel = key;
    LocalSDP local;
    local.strMyIPAddr = key;
    local.strOExtension = key;
    local.strDefaultIPAddr = key;
    MediaSession section;
    section.strFloorctrl = key;
    section.strMaxBandwidth = key;
    section.strVideoLevel = key;
    section.strFullMLine = key;
    section.strBase64Key = key;
    section.striceufrag = key;
    section.stricepwd = key;
    section.vecCandidate = {key};
    // A section's dump shows its fields as they are; a trace of it does not.
    const support::TraceKeeper trace;
    CommonMediaTrace(__FILE__, "Test", __LINE__, "%s", section.ToDiag().c_str());
    for (const std::string& dump : {remote.ToDiag(), local.ToDiag(), trace.Text()}) {
        EXPECT_EQ(KeyWindows(dump), std::vector<std::string>());
        EXPECT_EQ(Count(dump, "x inline:*** y\n"), 3U);
    }
}

#ifdef CMSDP_PATH
/// The command, run in a directory of its own.
class Command : public tool::ToolTest {
public:
    Command() { SetUp(); }
    ~Command() override { TearDown(); }
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    using ToolTest::Cmsdp;
    using ToolTest::CmsdpReads;
    using ToolTest::Write;

private:
    void TestBody() override {}
};

const std::string kLocalKeys =
    R"({"schema": "cmsdp.capabilities/1", "default_address": "192.0.2.1", "srtp": true,
        "audio": {"key": "bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0"},
        "video": {"main": {"key": "bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0"},
                  "presentation": {"key": "bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0"}}})";
#endif

TEST(Hostile, C48_NoKeyInTheOutputOfTheCommand) {
#ifdef CMSDP_PATH
    Command command;
    command.Write("me.json", kLocalKeys);
    command.Write("broken.json", Replaced(kLocalKeys, "\"srtp\": true", "\"srtp\": maybe"));
    command.Write("wrong.json", Replaced(kLocalKeys, "bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0",
                                         "bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx"));
    std::string joined = kConference;
    for (std::size_t at = joined.find("\r\na="); at != std::string::npos; at = joined.find("\r\na=")) {
        joined.erase(at, 1);
    }
    const std::vector<std::vector<std::string>> runs = {
        {"offer", "--local", "me.json"},
        {"answer", "--local", "me.json"},
        {"answer", "--local", "me.json", "--exact"},
        {"inspect", "--local", "me.json"},
        {"inspect", "--local", "me.json", "--json"},
        {"inspect", "--local", "me.json", "--exact"},
        {"inspect", "--local", "me.json", "--exact", "--json"},
        {"call", "--offerer", "me.json", "--answerer", "me.json"},
        {"offer", "--local", "broken.json"},
        {"offer", "--local", "wrong.json"},
        {"answer", "--nonsense"},
    };
    for (const std::vector<std::string>& arguments : runs) {
        for (const std::string& text :
             {kConference, joined, With("SHA1_32 inline:YXdheSBhdWRpbyBr", "SHA1_32 INLINE:YXdheSBhdWRpbyBr"),
              With("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:", "a=x inline:")}) {
            const tool::Result result = command.CmsdpReads(text, arguments);
            EXPECT_LT(result.status, 1000) << arguments[0];
            EXPECT_EQ(KeyWindows(result.out), std::vector<std::string>()) << arguments[0];
            EXPECT_EQ(KeyWindows(result.err), std::vector<std::string>()) << arguments[0];
        }
    }
    // With --show-secrets the keys are shown.
    const tool::Result shown =
        command.CmsdpReads(kConference, {"answer", "--local", "me.json", "--show-secrets"});
    EXPECT_NE(shown.out.find("inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n"), std::string::npos);
#else
    GTEST_SKIP() << "the command is not built";
#endif
}

TEST(Hostile, C57_NothingThatATerminalObeysInTheOutputOfTheCommand) {
#ifdef CMSDP_PATH
    Command command;
    // An escape sequence, a right-to-left override, a bell, a backspace, half a character, format directives.
    const std::string ill = "%s%n\x1b[2J\x1b]0;x\x07\x08\xe2\x80\xae\xff\"'{}\\";
    std::string text;
    for (const std::string& line : Lines(kConference)) {
        text += line.substr(0, line.size() - 2) + ill + "\r\n";
        text += line;
    }
    text += "m=" + ill + " " + ill + " " + ill + " " + ill + "\r\na=rtpmap:" + ill + " " + ill + "\r\n";
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"inspect"}, {"inspect", "--json"}, {"inspect", "--exact"}, {"inspect", "--exact", "--json"}}) {
        const tool::Result result = command.CmsdpReads(text, arguments);
        EXPECT_LT(result.status, 3) << result.err;
        for (const std::string& shown : {result.out, result.err}) {
            for (const char c : shown) {
                const auto byte = static_cast<unsigned char>(c);
                ASSERT_TRUE(c == '\n' || (byte >= 0x20 && byte < 0x7f)) << support::MakeVisible(shown);
            }
        }
    }
    if (!tool::HasTerminals()) {
        GTEST_SKIP() << "the system gives no pseudo-terminal";
    }
    // On a terminal the answer is shown in the same way.
    tool::How how;
    how.input = text;
    how.out = tool::Out::kTerminal;
    const tool::Result result = command.Cmsdp({"answer"}, how);
    EXPECT_EQ(result.status, 0) << result.err;
    for (const char c : result.out + result.err) {
        const auto byte = static_cast<unsigned char>(c);
        ASSERT_TRUE(c == '\n' || c == '\r' || (byte >= 0x20 && byte < 0x7f))
            << support::MakeVisible(result.out);
    }
#else
    GTEST_SKIP() << "the command is not built";
#endif
}

} // namespace
