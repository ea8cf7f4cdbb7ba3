// What logs, mails and browsers make of a description: the command reads what was pasted, says what it did,
// and its report equals that of the text as it was. Inputs that are no text are named.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using nlohmann::json;

constexpr const char* kOffer = "v=0\r\n"
                               "c=IN IP4 198.51.100.7\r\n"
                               "m=audio 5004 RTP/AVP 104\r\n"
                               "a=rtpmap:104 G7221/16000\r\n"
                               "a=fmtp:104 bitrate=32000\r\n"
                               "b=TIAS:64000\r\n";

struct Damage {
    const char* name;
    std::string input;
    const char* note; ///< without "; --exact keeps it", which ends it where that reads the input
};

std::ostream& operator<<(std::ostream& out, const Damage& damage) {
    return out << damage.name;
}

std::string Utf16(const std::string& text, bool big) {
    std::string out = big ? "\xfe\xff" : "\xff\xfe";
    for (const char c : text) {
        out += big ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return out;
}

const std::vector<Damage>& Damages() {
    static const std::vector<Damage> damages = {
        {"indented",
         "    v=0\r\n    c=IN IP4 198.51.100.7\r\n    m=audio 5004 RTP/AVP 104\r\n"
         "    a=rtpmap:104 G7221/16000\r\n    a=fmtp:104 bitrate=32000\r\n    b=TIAS:64000\r\n",
         "indentation was dropped from 6 lines; a far end that sends this loses its format parameters (G03, "
         "P20)"},
        {"tabs, not in front of the first line",
         "v=0\r\n\tc=IN IP4 198.51.100.7\r\n\tm=audio 5004 RTP/AVP 104\r\n"
         "\ta=rtpmap:104 G7221/16000\r\n\ta=fmtp:104 bitrate=32000\r\n\tb=TIAS:64000\r\n",
         "indentation was dropped from 5 lines; a far end that sends this loses its format parameters (G03, "
         "P20)"},
        {"quoted",
         "> v=0\r\n> c=IN IP4 198.51.100.7\r\n> m=audio 5004 RTP/AVP 104\r\n"
         "> a=rtpmap:104 G7221/16000\r\n> a=fmtp:104 bitrate=32000\r\n> b=TIAS:64000\r\n",
         "quoting was dropped from 6 lines; a far end that sends this has sections of unknown kind only "
         "(P06)"},
        {"quoted twice",
         ">> v=0\r\n>> c=IN IP4 198.51.100.7\r\n>>\r\n> > m=audio 5004 RTP/AVP 104\r\n"
         "> >a=rtpmap:104 G7221/16000\r\n>> a=fmtp:104 bitrate=32000\r\n>> b=TIAS:64000\r\n",
         "quoting was dropped from 7 lines; a far end that sends this has sections of unknown kind only "
         "(P06)"},
        {"a log prefix",
         "2026-05-01 12:00:00.123 [DEBUG] sip 9: v=0\r\n"
         "2026-05-01 12:00:00.123 [DEBUG] sip 9: c=IN IP4 198.51.100.7\r\n"
         "2026-05-01 12:00:00.123 [DEBUG] sip 9: m=audio 5004 RTP/AVP 104\r\n"
         "2026-05-01 12:00:00.124 [DEBUG] sip 10: a=rtpmap:104 G7221/16000\r\n"
         "2026-05-01 12:00:00.124 [DEBUG] sip 10: a=fmtp:104 bitrate=32000\r\n"
         "2026-05-01 12:00:00.124 [DEBUG] sip 10: b=TIAS:64000\r\n",
         "the log prefix was dropped from 6 lines; a far end that sends this has sections of unknown kind "
         "only (P06), and a keyword in the prefix decides what each line is taken for (P01)"},
        {"trailing blanks",
         "v=0  \r\nc=IN IP4 198.51.100.7  \r\nm=audio 5004 RTP/AVP 104  \r\n"
         "a=rtpmap:104 G7221/16000  \r\na=fmtp:104 bitrate=32000  \r\nb=TIAS:64000  \r\n",
         "trailing blanks were dropped from 1 line; a far end that sends them loses the number or the name "
         "in front of them (G18)"},
        {"CR twice",
         "v=0\r\r\nc=IN IP4 198.51.100.7\r\r\nm=audio 5004 RTP/AVP 104\r\r\n"
         "a=rtpmap:104 G7221/16000\r\r\na=fmtp:104 bitrate=32000\r\r\nb=TIAS:64000\r\r\n",
         "trailing blanks were dropped from 1 line; a far end that sends them loses the number or the name "
         "in front of them (G18)"},
        {"HTML line breaks",
         "v=0<br>\r\nc=IN IP4 198.51.100.7<br>\r\nm=audio 5004 RTP/AVP 104<BR/>\r\n"
         "a=rtpmap:104 G7221/16000<br />\r\na=fmtp:104 bitrate=32000<br> \r\nb=TIAS:64000<br>\r\n",
         "the mark <br> was dropped from 6 lines; a far end that sends it has it read as part of each "
         "value, addresses included"},
        {"HTML line breaks only",
         "v=0<br>c=IN IP4 198.51.100.7<br>m=audio 5004 RTP/AVP 104<br>"
         "a=rtpmap:104 G7221/16000<br>a=fmtp:104 bitrate=32000<br>b=TIAS:64000<br>\r\n",
         "the mark <br> was read as a line end after 6 lines; a far end that sends this has these lines "
         "joined to one (P03)"},
        {"quoted-printable",
         "v=3D0\r\nc=3DIN IP4 198.51.100.7\r\nm=3Daudio 5004 =\r\nRTP/AVP 104\r\n"
         "a=3Drtpmap:104 G7221/16000\r\na=3Dfmtp:104 bitrate=3D32000\r\nb=3DTIAS:64000\r\n",
         "quoted-printable was decoded in 7 lines from \"v=3D0\" on; a far end that sends this has sections "
         "of unknown kind only (P06)"},
        {"a JSON object",
         "{\"type\": \"offer\",\n \"sdp\": \"v=0\\r\\nc=IN IP4 198.51.100.7\\r\\nm=audio 5004 RTP\\/AVP 104"
         "\\r\\na=rtpmap:104 G7221/16000\\r\\na=fmtp:104 bitrate=32000\\r\\nb=TIAS:64000\\r\\n\"}\n",
         "the text was taken out of a JSON value, and lines are counted in it; a far end that sends this is "
         "not understood: its line ends are escapes (P03)"},
        {"a JSON string",
         "\"v=0\\r\\nc=IN IP4 198.51.100.7\\r\\nm=audio 5004 RTP/AVP 104"
         "\\r\\na=rtpmap:104 G7221/16000\\r\\na=fmtp:104 bitrate=32000\\r\\nb=TIAS:64000\\r\\n\"",
         "the text was taken out of a JSON value, and lines are counted in it; a far end that sends this is "
         "not understood: its line ends are escapes (P03)"},
        {"escapes",
         "v=0\\r\\nc=IN IP4 198.51.100.7\\r\\nm=audio 5004 RTP/AVP 104\\r\\n"
         "a=rtpmap:104 G7221/16000\\r\\na=fmtp:104 bitrate=32000\\r\\nb=TIAS:64000\\r\\n",
         "line ends that were written out as escapes were read as line ends, and lines are counted by them; "
         "a far end that sends this is not understood: its line ends are escapes (P03)"},
        {"escapes and line ends",
         "v=0\\r\\n\nc=IN IP4 198.51.100.7\\r\\n\nm=audio 5004 RTP/AVP 104\\r\\n\n"
         "a=rtpmap:104 G7221/16000\\r\\n\na=fmtp:104 bitrate=32000\\r\\n\nb=TIAS:64000\\r\\n\n",
         "line ends that were written out as escapes were read as line ends, and lines are counted by them; "
         "a far end that sends this is not understood: its line ends are escapes (P03)"},
        {"texts of a program",
         "  \"v=0\\r\\n\"\n  \"c=IN IP4 198.51.100.7\\r\\n\"\n  \"m=audio 5004 RTP/AVP 104\\r\\n\"\n"
         "  \"a=rtpmap:104 G7221/16000\\r\\n\"\n  \"a=fmtp:104 bitrate=32000\\r\\n\"\n"
         "  \"b=TIAS:64000\\r\\n\";\n",
         "line ends that were written out as escapes were read as line ends, and lines are counted by them; "
         "a far end that sends this is not understood: its line ends are escapes (P03)"},
        {"CR alone",
         "v=0\rc=IN IP4 198.51.100.7\rm=audio 5004 RTP/AVP 104\ra=rtpmap:104 G7221/16000\r"
         "a=fmtp:104 bitrate=32000\rb=TIAS:64000\r\n",
         "CR alone was read as a line end after 5 lines; a far end that sends this is not understood: only "
         "CR LF ends a line (P03)"},
        {"UTF-16", Utf16(kOffer, false),
         "the text was UTF-16 and was read as UTF-8; a far end that sends this is not understood: no line of "
         "it ends in the bytes CR LF (P03)"},
        {"UTF-16, big end first", Utf16(kOffer, true),
         "the text was UTF-16 and was read as UTF-8; a far end that sends this is not understood: no line of "
         "it ends in the bytes CR LF (P03)"},
        {"a byte-order mark", std::string("\xef\xbb\xbf") + kOffer,
         "the byte-order mark in front was dropped; a far end that sends it loses its first line and nothing "
         "else"},
        {"SIP headers",
         std::string("INVITE sip:b@example.com SIP/2.0\r\n"
                     "Proxy-Authorization: Digest realm=\"r\", nc=00000001, cnonce=\"c\"\r\n\r\n") +
             kOffer + "\r\n--boundary m=x 1 2 3--\r\n",
         "3 lines in front of \"v=0\" and 2 lines after the description were cut; a far end that sends this "
         "has keywords in it read, too (P01)"},
        {"another message after the description",
         std::string(kOffer) + "\r\nSIP/2.0 401 Unauthorized\r\n"
                               "WWW-Authenticate: Digest realm=\"a b c d\", nonce=\"c=abc\"\r\n\r\n",
         "4 lines after the description were cut; a far end that sends this has keywords in it read, too "
         "(P01)"},
        {"another part of a body",
         std::string("Content-Type: multipart/mixed;boundary=b\r\n\r\n--b\r\n"
                     "Content-Type: application/sdp\r\n\r\n") +
             kOffer + "--b\r\nContent-Type: text/plain\r\n\r\nm=hello 1 2 3\r\n--b--\r\n",
         "5 lines in front of \"v=0\" and 5 lines after the description were cut; a far end that sends this "
         "has keywords in it read, too (P01)"},
        {"a log prefix of several levels",
         "DEBUG v=0\r\nDEBUG c=IN IP4 198.51.100.7\r\nINFO  m=audio 5004 RTP/AVP 104\r\n"
         "INFO  a=rtpmap:104 G7221/16000\r\nWARN  a=fmtp:104 bitrate=32000\r\nTRACE b=TIAS:64000\r\n",
         "the log prefix was dropped from 6 lines; a far end that sends this has sections of unknown kind "
         "only (P06), and a keyword in the prefix decides what each line is taken for (P01)"},
        {"LF alone",
         "v=0\nc=IN IP4 198.51.100.7\nm=audio 5004 RTP/AVP 104\n"
         "a=rtpmap:104 G7221/16000\na=fmtp:104 bitrate=32000\nb=TIAS:64000\n",
         "LF alone was read as CR LF at the end of 6 lines; a far end that sends LF alone has each such line "
         "joined to the next one, and without any CR LF it is not understood (P03)"},
        {"no last line end",
         "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 104\r\n"
         "a=rtpmap:104 G7221/16000\r\na=fmtp:104 bitrate=32000\r\nb=TIAS:64000",
         "the last line had no line end and was read as if it had one; a far end that sends this loses that "
         "line (P02)"},
        {"half of the last line end",
         "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 104\r\n"
         "a=rtpmap:104 G7221/16000\r\na=fmtp:104 bitrate=32000\r\nb=TIAS:64000\r",
         "the last line had no line end and was read as if it had one; a far end that sends this loses that "
         "line (P02)"},
    };
    return damages;
}

class Clean : public ToolTest {
protected:
    // The JSON report of an input without its notes, and the notes.
    json Report(const std::string& input, std::vector<std::string>& notes, std::string& err,
                const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"inspect", "--json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Result run = CmsdpReads(input, arguments);
        EXPECT_LE(run.status, 1) << run.err;
        json report = json::parse(run.out, nullptr, false);
        notes = report["notes"].get<std::vector<std::string>>();
        report.erase("notes");
        report.erase("fit"); // repairs of what is still in a cleaned text
        err = run.err;
        return report;
    }
};

class Damaged : public Clean, public ::testing::WithParamInterface<Damage> {};

TEST_P(Damaged, IsReadAsItWasAndSaysSo) {
    std::vector<std::string> notes;
    std::string err;
    const json clean = Report(kOffer, notes, err);
    EXPECT_EQ(notes, std::vector<std::string>{});
    EXPECT_TEXT(err, "");
    EXPECT_EQ(clean["audio"]["codec"], "G7221");

    // A note points to --exact only where that reads the text.
    const bool exactReads = CmsdpReads(GetParam().input, {"inspect", "--exact"}).status != 3;
    const std::string note = GetParam().note + std::string(exactReads ? "; --exact keeps it" : "");
    EXPECT_TEXT(Report(GetParam().input, notes, err).dump(2), clean.dump(2));
    EXPECT_EQ(notes, std::vector<std::string>{note});
    EXPECT_TEXT(err, "cmsdp: " + note + "\n");
}

INSTANTIATE_TEST_SUITE_P(Clean, Damaged, ::testing::ValuesIn(Damages()));

TEST_F(Clean, SeveralDamagesAreSaidInTheOrderInWhichTheyWereMended) {
    const Result run = CmsdpReads("On Monday you wrote:\n"
                                  "> \tv=0\n"
                                  "> \tm=audio 5004 RTP/AVP 0\n"
                                  "> \tb=TIAS:64000 \n"
                                  "> \ta=sendonly",
                                  {"inspect"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err,
                "cmsdp: quoting was dropped from 4 lines; a far end that sends this has sections of unknown "
                "kind only (P06)\n"
                "cmsdp: trailing blanks were dropped from 1 line; a far end that sends them loses the number "
                "or the name in front of them (G18)\n"
                "cmsdp: 1 line in front of \"v=0\" was cut; a far end that sends this has keywords in it "
                "read, too (P01)\n"
                "cmsdp: LF alone was read as CR LF at the end of 3 lines; a far end that sends LF alone has "
                "each such line joined to the next one, and without any CR LF it is not understood (P03)\n"
                "cmsdp: the last line had no line end and was read as if it had one; a far end that sends "
                "this loses that line (P02)\n");
}

// An input of several damages: its report is that of the offer, and standard error has these lines.
TEST_F(Clean, WhatStandsAroundEscapesInALogIsCutWithANote) {
    std::vector<std::string> notes;
    std::string err;
    const json clean = Report(kOffer, notes, err);
    const json read =
        Report("12:00:00 got {\"sdp\":\"v=0\\nc=IN IP4 198.51.100.7\\nm=audio 5004 RTP/AVP 104\\n"
               "a=rtpmap:104 G7221/16000\\na=fmtp:104 bitrate=32000\\nb=TIAS:64000\"}\r\n"
               "12:00:01 m=x\r\n",
               notes, err);
    EXPECT_TEXT(read.dump(2), clean.dump(2));
    EXPECT_TEXT(err,
                "cmsdp: line ends that were written out as escapes were read as line ends, and lines are "
                "counted by them; a far end that sends this is not understood: its line ends are escapes "
                "(P03)\n"
                "cmsdp: 1 line in front of \"v=0\" and 2 lines after the description were cut; a far end "
                "that sends this has keywords in it read, too (P01)\n");
}

TEST_F(Clean, QuotedPrintableInsideQuoting) {
    std::vector<std::string> notes;
    std::string err;
    const json clean = Report(kOffer, notes, err);
    const json read = Report("> v=3D0\r\n> c=3DIN IP4 198.51.100.7\r\n> m=3Daudio 5004 =\r\n> RTP/AVP 104\r\n"
                             "> a=3Drtpmap:104 G7221/16000\r\n> a=3Dfmtp:104 bitrate=3D32000\r\n"
                             "> b=3DTIAS:64000\r\n",
                             notes, err);
    EXPECT_TEXT(read.dump(2), clean.dump(2));
    EXPECT_TEXT(err, "cmsdp: quoting was dropped from 7 lines; a far end that sends this has sections of "
                     "unknown kind only (P06)\n"
                     "cmsdp: quoted-printable was decoded in 7 lines from \"v=3D0\" on; a far end that sends "
                     "this has sections of unknown kind only (P06)\n");
}

// One encoded line can hold several lines, and none of them is lost.
TEST_F(Clean, QuotedPrintableLineEnds) {
    std::vector<std::string> notes;
    std::string err;
    const json clean = Report(kOffer, notes, err);
    const json read = Report("v=3D0=0D=0Ac=3DIN IP4 198.51.100.7=0D=0Am=3Daudio 5004 RTP/AVP 104=0D=0A=\r\n"
                             "a=3Drtpmap:104 G7221/16000=0D\na=3Dfmtp:104 bitrate=3D32000\r\n"
                             "b=3DTIAS:64000\r\n",
                             notes, err);
    EXPECT_TEXT(read.dump(2), clean.dump(2));
}

TEST_F(Clean, LinesWithoutTheLogPrefixAreCounted) {
    const Result run = CmsdpReads("[1] v=0\r\n[2] m=audio 5004 RTP/AVP 0\r\nsip: a=sendonly\r\n"
                                  "[3] a=sendrecv\r\n",
                                  {"answer"});
    EXPECT_TEXT(
        run.err.substr(0, run.err.find('\n') + 1),
        "cmsdp: the log prefix was dropped from 3 lines, and 1 line without it, which holds a keyword, "
        "is left as it is; a far end that sends this has sections of unknown kind only (P06), and a "
        "keyword in the prefix decides what each line is taken for (P01)\n");
}

// "s=- " ends in a blank in many good texts, and words are not compared by their blanks.
TEST_F(Clean, BlanksThatMeanNothingAreNoDamage) {
    const Result run = CmsdpReads("\r\nv=0\r\ns= \r\nm=audio 5004 RTP/AVP 0 \r\n\r\n", {"inspect"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err, "");
}

// One far end ends a number in a blank, and one capture was cut.
TEST_F(Clean, HardlyAnyCaptureIsChanged) {
    std::vector<std::string> changed;
    for (const std::string& name : Captures()) {
        if (CmsdpReads(Capture(name), {"inspect"}).err.find("--exact keeps it") != std::string::npos) {
            changed.push_back(name);
        }
    }
    EXPECT_EQ(changed, (std::vector<std::string>{"conf-bandwidth-unreadable-session-offer.sdp",
                                                 "conf-last-line-unended-offer.sdp"}));
}

// --- several descriptions
// -----------------------------------------------------------------------------------

const char* const kTwo = "INVITE sip:b@example.com SIP/2.0\r\n\r\n"
                         "v=0\r\nm=audio 5004 RTP/AVP 0\r\n"
                         "\r\nSIP/2.0 200 OK\r\nWWW-Authenticate: Digest realm=\"r\"\r\n\r\n"
                         "v=0\r\nm=audio 6004 RTP/AVP 18\r\n";

TEST_F(Clean, TheFirstOfTwoDescriptionsIsRead) {
    std::vector<std::string> notes;
    std::string err;
    const json report = Report(kTwo, notes, err);
    EXPECT_EQ(report["audio"]["port"], 5004);
    EXPECT_TEXT(err, "cmsdp: the input holds 2 descriptions, in lines 3 to 4, 9 to 10; number 1 is read, "
                     "--nth picks another; a far end that sends them as one text has their sections taken "
                     "together\n");
}

TEST_F(Clean, NthPicksAnother) {
    std::vector<std::string> notes;
    std::string err;
    const json report = Report(kTwo, notes, err, {"--nth", "2"});
    EXPECT_EQ(report["audio"]["port"], 6004);
    EXPECT_EQ(report["audio"]["codec"], "G729");
    EXPECT_TEXT(err, "cmsdp: the input holds 2 descriptions, in lines 3 to 4, 9 to 10; number 2 is read, "
                     "--nth picks another; a far end that sends them as one text has their sections taken "
                     "together\n");
}

TEST_F(Clean, TwoDescriptionsInJson) {
    std::vector<std::string> notes;
    std::string err;
    const json report = Report(R"([{"sdp": "v=0\r\nm=audio 5004 RTP/AVP 0\r\n"},)"
                               R"( {"sdp": "v=0\r\nm=audio 6004 RTP/AVP 18"}])",
                               notes, err, {"--nth", "2"});
    EXPECT_EQ(report["audio"]["port"], 6004);
}

TEST_F(Clean, ExactReadsThemAsOneAndSaysSo) {
    std::vector<std::string> notes;
    std::string err;
    const json report = Report("v=0\r\nm=audio 5004 RTP/AVP 0\r\nv=0\r\nm=video 6004 RTP/AVP 97\r\n", notes,
                               err, {"--exact"});
    EXPECT_EQ(report["audio"]["port"], 5004);
    EXPECT_EQ(report["main_video"]["port"], 6004);
    EXPECT_TEXT(err, "cmsdp: the input holds 2 descriptions, in lines 1 to 2, 3 to 4; --exact reads them as "
                     "one text\n");
}

TEST_F(Clean, NthBeyondTheLastIsStatusThree) {
    for (const char* const input : {"v=0\r\nm=audio 5004 RTP/AVP 0\r\n", "m=audio 5004 RTP/AVP 0\r\n"}) {
        const Result run = CmsdpReads(input, {"inspect", "--nth", "2"});
        EXPECT_EQ(run.status, 3);
        EXPECT_TEXT(run.out, "");
    }
    EXPECT_TEXT(CmsdpReads(kTwo, {"inspect", "--nth", "3"}).err,
                "cmsdp: standard input: holds 2 descriptions, so --nth cannot be 3\n");
}

TEST_F(Clean, NthWithExactIsNoCommand) {
    EXPECT_TEXT(CmsdpReads(kTwo, {"inspect", "--nth", "2", "--exact"}).err,
                "cmsdp: --exact excludes --nth; see cmsdp inspect --help\n");
    EXPECT_EQ(CmsdpReads(kTwo, {"inspect", "--nth", "0"}).status, 2);
}

TEST_F(Clean, ExactCutsNothing) {
    std::vector<std::string> notes;
    std::string err;
    const json report = Report("realm= 1 2 3\r\nv=0\r\nm=audio 5004 RTP/AVP 0\r\n", notes, err, {"--exact"});
    EXPECT_EQ(notes,
              std::vector<std::string>{"line 1, P01: read as a \"m=\" line, because it holds \"m=\"; it "
                                       "opens a section; it may hold key text, so it is not shown"});
}

// --- inputs that are no text
// --------------------------------------------------------------------------------

struct Refusal {
    const char* name;
    std::string input;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal) {
    return out << refusal.name;
}

using namespace std::string_literals;

class Refused : public ToolTest, public ::testing::WithParamInterface<Refusal> {};

TEST_P(Refused, IsNamedWithTheCommandThatMakesTextOfIt) {
    Write("input", GetParam().input);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"inspect", "input"}, {"inspect", "--exact", "input"}}) {
        const Result run = Cmsdp(arguments);
        EXPECT_EQ(run.status, 3);
        EXPECT_TEXT(run.out, "");
        EXPECT_TEXT(run.err, "cmsdp: input: " + std::string(GetParam().message) + "\n");
    }
}

constexpr const char* kCaptureMessage =
    "is a packet capture; read it with: tshark -r input -Y sdp -T fields -e udp.payload -e tcp.payload | "
    "xxd -r -p | cmsdp inspect";

INSTANTIATE_TEST_SUITE_P(
    Clean, Refused,
    ::testing::Values(
        Refusal{"pcapng", "\x0a\x0d\x0d\x0a\x1c\0\0\0\r\nm=audio 5004 RTP/AVP 0\r\n"s, kCaptureMessage},
        Refusal{"pcap", "\xd4\xc3\xb2\xa1\2\0\4\0\r\nm=audio 5004 RTP/AVP 0\r\n"s, kCaptureMessage},
        Refusal{"pcap of a big-endian machine", "\xa1\xb2\xc3\xd4\0\2\0\4"s, kCaptureMessage},
        Refusal{"pcap in nanoseconds", "\x4d\x3c\xb2\xa1\2\0\4\0"s, kCaptureMessage},
        Refusal{"gzip", "\x1f\x8b\x08\0"s,
                "is compressed with gzip; read it with: zcat input | cmsdp inspect"},
        Refusal{"xz", "\xfd\x37zXZ\0"s, "is compressed with xz; read it with: xzcat input | cmsdp inspect"},
        Refusal{"zstd", "\x28\xb5\x2f\xfd\0"s,
                "is compressed with zstd; read it with: zstdcat input | cmsdp inspect"},
        Refusal{"bzip2", "BZh91AY&SY", "is compressed with bzip2; read it with: bzcat input | cmsdp inspect"},
        Refusal{"base64", "dj0wDQptPWF1ZGlvIDUwMDQgUlRQL0FWUCAw\r\nDQo=\r\n",
                "is base64; read it with: base64 -d input | cmsdp inspect"},
        Refusal{
            "a dissection",
            "    Session Description Protocol\n        Session Description Protocol Version (v): 0\n",
            "is a dissection of packets and not their text, which the capture has; read it with: tshark -r "
            "FILE -Y sdp -T fields -e udp.payload -e tcp.payload | xxd -r -p | cmsdp inspect"},
        Refusal{"base64 of a whole message",
                "SU5WSVRFIHNpcDpiIFNJUC8yLjANCg0Kdj0wDQptPWF1ZGlvIDUwMDQgUlRQL0FWUCAwDQo=\n",
                "is base64; read it with: base64 -d input | cmsdp inspect"},
        Refusal{"zip", "PK\3\4\x14\0"s, "is a zip archive; read it with: unzip -p input | cmsdp inspect"},
        Refusal{"UTF-16 without a mark", Utf16(kOffer, false).substr(2),
                "is UTF-16 without a byte-order mark; read it with: iconv -f UTF-16LE -t UTF-8 input | cmsdp "
                "inspect"},
        Refusal{"UTF-16 without a mark, big end first", Utf16(kOffer, true).substr(2),
                "is UTF-16 without a byte-order mark; read it with: iconv -f UTF-16BE -t UTF-8 input | cmsdp "
                "inspect"}));

class RefusedName : public ToolTest {};

TEST_F(RefusedName, IsQuotedWhereItHasBlanks) {
    Write("my file.gz", "\x1f\x8b\x08\0"s);
    EXPECT_TEXT(
        Cmsdp({"inspect", "my file.gz"}).err,
        "cmsdp: my file.gz: is compressed with gzip; read it with: zcat 'my file.gz' | cmsdp inspect\n");
}

TEST_F(RefusedName, IsAWordOfAShellInTheCommandWhichEndsInTheVerbInUse) {
    Write("my bob's.gz", "\x1f\x8b\x08\0"s);
    EXPECT_TEXT(Cmsdp({"answer", "my bob's.gz"}).err,
                "cmsdp: my bob's.gz: is compressed with gzip; read it with: zcat \"my bob's.gz\" | cmsdp "
                "answer\n");
}

} // namespace

} // namespace tool
