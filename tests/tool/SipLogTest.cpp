// What a log makes of the lines of SIP messages, undone.
#include "Expect.h"
#include "SipText.h"

#include <gtest/gtest.h>

namespace cmsdp {

namespace {

const std::string kMessage = "INVITE sip:b@example.org SIP/2.0\n"
                             "Call-ID: 1@192.0.2.1\n"
                             "CSeq: 7 INVITE\n"
                             "Subject: one\n"
                             "  two\n"
                             "\n"
                             "v=0\n"
                             "m=audio 5004 RTP/AVP 0\n";

// Each line with what `begin` makes of its number in front of it, and `end` after it.
template <typename Begin>
std::string Wrapped(const std::string& text, Begin begin, const std::string& end = "") {
    std::string wrapped;
    int number = 1;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const std::size_t feed = text.find('\n', at);
        wrapped += begin(number) + text.substr(at, feed - at) + end + "\n";
        at = feed + 1;
    }
    return wrapped;
}

std::string Undone(const std::string& text, const std::string& note) {
    std::vector<std::string> notes;
    std::string undone = WithoutSipLog(text, true, notes);
    std::string written;
    for (const std::string& each : notes) {
        written += each + "\n";
    }
    EXPECT_EQ(written, note);
    return undone;
}

void ExpectSame(const std::string& text) {
    EXPECT_TEXT(Undone(text, ""), text);
}

} // namespace

TEST(SipLog, TimesLevelsAndThreadsDiffer) {
    const auto prefix = [](int number) {
        static const char* const begins[] = {"10:11:12.345 INFO  [7f] ", "10:11:12.7 WARN [ab] ",
                                             "9:59:59.000 debug [10] "};
        return std::string(begins[number % 3]);
    };
    EXPECT_TEXT(Undone(Wrapped(kMessage, prefix),
                       "8 lines of SIP messages lost the prefix of the log; --exact keeps it\n"),
                kMessage);
}

TEST(SipLog, OnlyTheFirstLineHasAPrefix) {
    EXPECT_TEXT(Undone("Nov 22 14:00:00 gw proxy[123]: " + kMessage,
                       "1 line of SIP messages lost the prefix of the log; --exact keeps it\n"),
                kMessage);
}

// The blanks at the end of a prefix are missing where an editor has trimmed an empty line.
TEST(SipLog, IndentationQuotingAndTrimmedEnds) {
    const std::string note = "8 lines of SIP messages lost the prefix of the log; --exact keeps it\n";
    EXPECT_TEXT(Undone(Wrapped(kMessage, [](int) { return "> "; }), note), kMessage);
    std::string indented = "Frame 1\n" + Wrapped(kMessage, [](int) { return "    "; });
    indented.erase(indented.find("    \n"), 4);
    EXPECT_TEXT(Undone(indented, "7 lines of SIP messages lost the prefix of the log; --exact keeps it\n"),
                "Frame 1\n" + kMessage);
}

TEST(SipLog, LineEndsThatAreWrittenOut) {
    const std::string head =
        R"(SIP/2.0 200 OK\r\nCall-ID: 1\r\nCSeq: 7 INVITE\r\nTo: \"Bob\" <sip:b@example.org>\r\n\r\nv=0\r\n)";
    EXPECT_TEXT(Undone("{\"at\": 1, \"text\": \"" + head + "\", \"to\": 2}\nend\n",
                       "1 SIP message with line ends written out as escapes was read with line ends; --exact "
                       "keeps it\n"),
                "{\"at\": 1, \"text\": \"\nSIP/2.0 200 OK\r\nCall-ID: 1\r\nCSeq: 7 INVITE\r\nTo: \"Bob\" "
                "<sip:b@example.org>\r\n\r\nv=0\r\n\", \"to\": 2}\nend\n");
}

TEST(SipLog, DotsForCr) {
    EXPECT_TEXT(
        Undone(
            "U 192.0.2.1:5060 -> 192.0.2.2:5060\n" + Wrapped(
                                                         kMessage, [](int) { return ""; }, "."),
            "8 lines of SIP messages lost a dot at their end, which was printed for CR; --exact keeps it\n"),
        "U 192.0.2.1:5060 -> 192.0.2.2:5060\n" + kMessage);
}

TEST(SipLog, ByteOrderMark) {
    EXPECT_TEXT(Undone("\xef\xbb\xbf" + kMessage,
                       "the text has a byte-order mark and was read as UTF-8; --exact keeps it\n"),
                kMessage);
}

TEST(SipLog, NothingElseChanges) {
    ExpectSame(kMessage);
    ExpectSame("2026-05-01 sent:\n" + kMessage + "2026-05-01 received:\n" + kMessage);
    ExpectSame("v=0\ns=to INVITE sip:b@example.org SIP/2.0\nm=audio 5004 RTP/AVP 0\n");
    ExpectSame("10:00 sending INVITE sip:b@example.org SIP/2.0\n10:00 v=0\n10:00 m=audio 5004 RTP/AVP 0\n");
    ExpectSame("10:00 SIP/2.0 200 OK\n10:00 Via: SIP/2.0/UDP 192.0.2.1\n10:00 v=0\n"); // no Call-ID
    ExpectSame("xSIP/2.0 200 OK\nCall-ID: 1\nCSeq: 7 INVITE\n");
    ExpectSame("");
}

TEST(SipLog, TheOnlyMessageOfAText) {
    const std::optional<SipMessage> message = OnlySipMessage("log\n" + kMessage + "log\n");
    ASSERT_TRUE(message);
    EXPECT_TEXT(message->description, "v=0\nm=audio 5004 RTP/AVP 0\n");
    EXPECT_FALSE(OnlySipMessage(kMessage + kMessage));
    EXPECT_FALSE(OnlySipMessage("v=0\n"));
    EXPECT_FALSE(OnlySipMessage("SIP/2.0 200 OK\nVia: SIP/2.0/UDP 192.0.2.1\n"));
}

} // namespace cmsdp
