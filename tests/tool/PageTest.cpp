// explain --html: one whole page, what the pages of other inputs hold, and where a page is written.
#include "Page.h"
#include "Expect.h"
#include "RunTool.h"

#include <cstddef>
#include <fstream>
#include <iterator>

namespace tool {

namespace {

const char* const kOurs = "v=0\r\n"
                          "c=IN IP4 192.0.2.1\r\n"
                          "m=audio 16384 RTP/AVP 9 101\r\n"
                          "a=rtpmap:101 telephone-event/8000\r\n";
const char* const kAnswer = "v=0\r\n"
                            "s=Board <room>\r\n"
                            "c=IN IP4 198.51.100.7\r\n"
                            "m=audio 5004 RTP/AVP 9 101\r\n"
                            "a=rtpmap:101 telephone-event/8000\r\n"
                            "a=recvonly\r\n";
const char* const kKey = "WnQ5b3JkZXJvZnRoZWtleWlzdGhlcmlnaHRvbmU5";

class Page : public ToolTest {
protected:
    /// The page of REMOTE, written to page.html.
    std::string PageFor(const std::string& remote, std::vector<std::string> words = {}) const {
        Write("remote.sdp", remote);
        words.insert(words.begin(), {"explain", "--html", "page.html"});
        words.emplace_back("remote.sdp");
        const Result run = Cmsdp(words);
        EXPECT_EQ(run.status, 0);
        EXPECT_TEXT(run.out + run.err, "");
        return Read("page.html");
    }
};

std::size_t Count(const std::string& text, const std::string& piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
        ++count;
    }
    return count;
}

/// A whole page; the style, which is the same in all, is named in it and not written out.
std::string Expected(const std::string& name) {
    std::ifstream file(COMMONMEDIA_SOURCE_DIR "/tests/tool/page/" + name, std::ios::binary);
    std::string page{std::istreambuf_iterator<char>(file), {}};
    const std::string style = "(the style of every page)";
    return page.replace(page.find(style), style.size(), cmsdp::kPageStyle);
}

TEST_F(Page, OfAnOfferAndItsAnswer) {
    Write("ours.sdp", kOurs);
    EXPECT_TEXT(PageFor(kAnswer, {"--offered", "--offer", "ours.sdp"}), Expected("pair.html"));
}

TEST_F(Page, GoesToStandardOutput) {
    Write("ours.sdp", kOurs);
    Write("remote.sdp", kAnswer);
    const Result run = Cmsdp({"explain", "--html", "-", "--offered", "--offer", "ours.sdp", "remote.sdp"});
    EXPECT_TEXT(run.out, Expected("pair.html"));
}

TEST_F(Page, ReplacesAFile) {
    Write("page.html", std::string(1000000, 'x'));
    const std::string page = PageFor(kAnswer, {"--offered"});
    EXPECT_TEXT(page.substr(0, 15), "<!DOCTYPE html>");
    EXPECT_TEXT(page.substr(page.size() - 8), "</html>\n");
}

TEST_F(Page, BeginsWithTheStreams) {
    const std::string page = PageFor(kOurs);
    const std::size_t streams = page.find("<h2>Streams</h2>");
    ASSERT_NE(streams, std::string::npos);
    EXPECT_LT(streams, page.find("<h2>Offer and answer</h2>"));
    EXPECT_EQ(
        Count(page, "<article class=\"card up\"><h3>Audio <span class=\"state\">negotiated</span></h3>"), 1U);
    EXPECT_EQ(Count(page, "aria-label=\"this side sends to far end; far end sends to this side\""), 1U);
    EXPECT_EQ(Count(page, "<h3>Our answer</h3>"), 1U);
}

TEST_F(Page, HasOneTopicWhenAsked) {
    EXPECT_EQ(Count(PageFor(kAnswer, {"--offered", "--about", "audio.receive"}), "class=\"finding "), 1U);
    EXPECT_EQ(Count(PageFor(kAnswer, {"--about", "ice"}), "<p>Nothing is found.</p>"), 1U);
}

// Neither the far end's key nor one that this side makes for its answer.
TEST_F(Page, HoldsNoKey) {
    Write("me.json", R"({"srtp": true, "audio": {"suite": "AES_CM_128_HMAC_SHA1_32"}})");
    const std::string page =
        PageFor(std::string("v=0\r\nc=IN IP4 198.51.100.7\r\ns=") + kKey + "\r\nm=audio 5004 RTP/SAVP 9\r\n" +
                    "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kKey + "\r\n",
                {"--local", "me.json"});
    EXPECT_EQ(Count(page, kKey), 0U);
    EXPECT_EQ(Count(page, "<code>a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:***</code>"), 2U);
}

TEST_F(Page, OfACall) {
    Write("call/1.sdp", kOurs);
    Write("call/2.sdp", kAnswer);
    Write("call/3.sdp", kOurs);
    const Result run = Cmsdp({"explain", "--html", "-", "call"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(Count(run.out, "<title>call, call 1 of 1 explained</title>"), 1U);
    EXPECT_EQ(Count(run.out, "<h2>Streams after steps 1 and 2</h2>"), 1U);
    EXPECT_EQ(Count(run.out, "<svg class=\"timeline\" viewBox=\"0 0 360 166\" role=\"group\""), 1U);
    EXPECT_EQ(Count(run.out, "<a href=\"#s1\" "), 1U);
    EXPECT_EQ(Count(run.out, "<li id=\"s3\" "), 1U);
    EXPECT_EQ(Count(run.out, "<h3 class=\"reading\">The callee&#39;s answer, read by the caller</h3>"), 1U);
    EXPECT_EQ(Count(run.out, "<a href=\"#t3\">text and findings</a>"), 1U);
}

// What the call's own answer declines does not come up, although this side would take it.
TEST_F(Page, OfACallShowsWhatTheAnswerDeclined) {
    Write("call/1-offer.sdp", std::string(kOurs) + "m=video 16386 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n");
    Write("call/2-answer.sdp", std::string(kAnswer) + "m=video 0 RTP/AVP 97\r\n");
    const Result run = Cmsdp({"explain", "--html", "-", "call"});
    EXPECT_EQ(Count(run.out, "<article class=\"card up\"><h3>Audio "), 2U);
    EXPECT_EQ(Count(run.out, "<article class=\"card up\"><h3>Main video "), 0U);
    EXPECT_EQ(Count(run.out, "<h3>Main video <span class=\"state\">not negotiated</span>"), 2U);
}

// An offer that was answered early and then refused leaves nothing agreed.
TEST_F(Page, OfARefusedCallHasNoStreams) {
    const std::string head =
        "\r\nFrom: <sip:a@example.org>;tag=a\r\nTo: <sip:b@example.org>;tag=b\r\nCall-ID: 1\r\n"
        "CSeq: 1 INVITE\r\n";
    const auto with = [&](const std::string& start, const std::string& body) {
        return start + head +
               "Content-Type: application/sdp\r\nContent-Length: " + std::to_string(body.size()) +
               "\r\n\r\n" + body;
    };
    Write("log.txt", with("INVITE sip:b@example.org SIP/2.0", kOurs) +
                         with("SIP/2.0 183 Session Progress", kAnswer) + "SIP/2.0 486 Busy Here" + head +
                         "\r\n");
    const Result run = Cmsdp({"explain", "--html", "-", "log.txt"});
    EXPECT_EQ(Count(run.out, "<section id=\"verdict\"><h2>Streams</h2>\n<p>No offer and answer are agreed at "
                             "the end of this call, so no stream runs.</p>\n</section>"),
              1U);
}

// --top leaves one finding of each description, in the picture as well.
TEST_F(Page, OfACallHasTheFindingsThatWereAsked) {
    Write("call/1.sdp", kOurs);
    Write("call/2.sdp", kAnswer);
    const Result run = Cmsdp({"explain", "--html", "-", "--top", "call"});
    EXPECT_EQ(Count(run.out, "class=\"finding "), 2U);
    EXPECT_EQ(Count(run.out, ">1 finding</text>"), 2U);
}

TEST_F(Page, OfOneSideReadsWhatThatSideReceives) {
    Write("call/1.sdp", kOurs);
    Write("call/2.sdp", kAnswer);
    const Result run = Cmsdp({"explain", "--html", "-", "--we", "callee", "call"});
    EXPECT_EQ(Count(run.out, "<h3 class=\"reading\">"), 1U);
    EXPECT_EQ(Count(run.out, "<h3 class=\"reading\">The caller&#39;s offer, read by the callee</h3>"), 1U);
    EXPECT_EQ(Count(run.out, "<ol class=\"sdp\">"), 2U);
}

TEST_F(Page, OfManyFormatsSaysHowManyMore) {
    std::string text = kAnswer;
    text.insert(text.find("m=audio 5004 RTP/AVP 9") + 22, [] {
        std::string formats;
        for (int i = 0; i < 120; ++i) {
            formats += " " + std::to_string(200 + i);
        }
        return formats;
    }());
    const std::string page = PageFor(text, {"--offered", "--top"});
    EXPECT_EQ(Count(page, "<td><a href=\"#t2-4\">4</a></td>"), 400U);
    EXPECT_EQ(Count(page, "<p>88 more rows are not shown.</p>"), 1U);
}

TEST_F(Page, OfManyLinesSaysHowManyMore) {
    std::string text = kAnswer;
    for (int i = 0; i < 2001; ++i) {
        text += "a=x\r\n";
    }
    const std::string page = PageFor(text, {"--offered", "--top"});
    EXPECT_EQ(Count(page, "<li>7 more lines are not shown</li>"), 1U);
    EXPECT_EQ(Count(page, "<li id=\"t2-2000\" "), 1U);
    EXPECT_EQ(Count(page, "<li id=\"t2-2001\" "), 0U);
}

} // namespace

} // namespace tool
