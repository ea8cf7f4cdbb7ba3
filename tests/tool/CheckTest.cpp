// cmsdp check: the judge's violations as lines and as JSON, and the statuses.
#include "Expect.h"
#include "RunTool.h"

namespace tool {

namespace {

const char* const kOffer = "v=0\r\n"
                           "o=- 1 1 IN IP4 198.51.100.7\r\n"
                           "s=-\r\n"
                           "c=IN IP4 198.51.100.7\r\n"
                           "t=0 0\r\n"
                           "m=audio 5004 RTP/AVP 0 101\r\n"
                           "a=rtpmap:101 telephone-event/8000\r\n";

const char* const kCorrect = "v=0\r\n"
                             "o=- 2 1 IN IP4 192.0.2.1\r\n"
                             "s=-\r\n"
                             "c=IN IP4 192.0.2.1\r\n"
                             "t=0 0\r\n"
                             "m=audio 16384 RTP/AVP 0\r\n";

const char* const kBroken = "v=0\r\n"
                            "o=- 2 1 IN IP4 192.0.2.1\r\n"
                            "s=-\r\n"
                            "c=IN IP4 192.0.2.1\r\n"
                            "t=0 0\r\n"
                            "m=audio 16384 RTP/AVP 0 8\r\n"
                            "a=label:\r\n"
                            "m=video 0 RTP/AVP 96\r\n";

class Check : public ToolTest {
protected:
    void SetUp() override {
        ToolTest::SetUp();
        Write("offer.sdp", kOffer);
        Write("correct.sdp", kCorrect);
        Write("broken.sdp", kBroken);
    }
};

TEST_F(Check, ACorrectAnswerWritesNothing) {
    const Result run = Cmsdp({"check", "offer.sdp", "correct.sdp"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "");
}

TEST_F(Check, OneLinePerViolation) {
    const Result run = Cmsdp({"check", "offer.sdp", "broken.sdp"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out,
                "J20, whole text, RFC 3264, 6: An answer has as many m= lines as its offer. "
                "The answer has 2, the offer 1.\n"
                "J24, line 6 (offer line 6), RFC 3264, 6.1: An accepted section lists formats that were "
                "offered in it. Format '8' was not offered in this section.\n"
                "J08, line 7, RFC 4566, 5.13: An attribute has a name, and behind a colon a value of its "
                "form. Attribute 'label' ends behind its colon.\n");
    EXPECT_TEXT(run.err, "");
}

TEST_F(Check, Json) {
    EXPECT_TEXT(Cmsdp({"check", "--json", "offer.sdp", "correct.sdp"}).out,
                "{\n"
                "  \"schema\": \"cmsdp.check/1\",\n"
                "  \"violations\": []\n"
                "}\n");
    const Result run =
        CmsdpReads(std::string(kCorrect) + "a=label:\r\n", {"check", "--json", "offer.sdp", "-"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "{\n"
                         "  \"schema\": \"cmsdp.check/1\",\n"
                         "  \"violations\": [\n"
                         "    {\n"
                         "      \"rule\": \"J08\",\n"
                         "      \"clause\": \"RFC 4566, 5.13\",\n"
                         "      \"sentence\": \"An attribute has a name, and behind a colon a value of its "
                         "form.\",\n"
                         "      \"particulars\": \"Attribute 'label' ends behind its colon.\",\n"
                         "      \"line\": 7,\n"
                         "      \"offer_line\": null,\n"
                         "      \"section\": 0\n"
                         "    }\n"
                         "  ]\n"
                         "}\n");
    EXPECT_TEXT(run.err, "");
}

TEST_F(Check, TheSessionHasNoSectionNumber) {
    const std::string json = Cmsdp({"check", "--json", "offer.sdp", "broken.sdp"}).out;
    EXPECT_NE(json.find("\"line\": null,\n      \"offer_line\": null,\n      \"section\": null\n"),
              std::string::npos);
}

// Neither a text of another kind nor bytes of any value end in anything but violations, and all are
// printable.
TEST_F(Check, AnyBytesGiveLinesThatPrint) {
    std::string bytes = kCorrect;
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

TEST_F(Check, WhatCannotBeChecked) {
    const Result missing = Cmsdp({"check", "offer.sdp"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_TEXT(missing.err, "cmsdp: ANSWER is required; see cmsdp check --help\n");
    const Result twice = Cmsdp({"check", "-", "-"});
    EXPECT_EQ(twice.status, 2);
    EXPECT_TEXT(twice.err, "cmsdp: OFFER and ANSWER cannot both be standard input; see cmsdp check --help\n");
    const Result nowhere = Cmsdp({"check", "offer.sdp", "nowhere.sdp"});
    EXPECT_EQ(nowhere.status, 3);
    EXPECT_TEXT(nowhere.out, "");
    EXPECT_TEXT(nowhere.err,
                "cmsdp: nowhere.sdp: cannot be read: No such file or directory; name a file that "
                "holds a session description, or - for standard input\n");
    const Result unnamed = CmsdpReads("", {"check", "", "offer.sdp"});
    EXPECT_EQ(unnamed.status, 3);
    EXPECT_TEXT(unnamed.err,
                "cmsdp: \"\": cannot be read: No such file or directory; name a file that holds a "
                "session description, or - for standard input\n");
}

} // namespace

} // namespace tool
