// Single SIP messages: start lines, headers, bodies.
#include "SipMessage.h"
#include "Expect.h"
#include "SipHeaders.h"

#include <gtest/gtest.h>

namespace cmsdp {

namespace {

constexpr const char* kHead = "INVITE sip:bob@example.org SIP/2.0\r\n"
                              "i: 1@192.0.2.1\r\n"
                              "CSeq: 7 INVITE\r\n";
constexpr const char* kSdp = "Content-Type: application/sdp\r\n";

SipMessage Read(const std::string& text, BodyEnd end = BodyEnd::Datagram) {
    const std::optional<SipMessage> message = ParseSipMessage(text, end);
    EXPECT_TRUE(message) << text;
    return message.value_or(SipMessage());
}

std::string NotesOf(const SipMessage& message) {
    std::string notes;
    for (const std::string& note : message.notes) {
        notes += note + "\n";
    }
    return notes;
}

// What the headers say, a line each; what stands only in a request or a response is left out of the other.
std::string HeadersOf(const SipMessage& message) {
    const std::string status = std::to_string(message.status);
    return (message.method.empty() ? "" : "method " + message.method + "\n") +
           (message.status == 0 ? "" : "status " + status + " " + message.reason + "\n") +
           (message.warning.empty() ? "" : "warning " + message.warning + "\n") + "call " + message.callId +
           "\nnumber " + std::to_string(message.cseq) + " " + message.cseqMethod + "\nfrom " +
           message.fromUri + " tag " + message.fromTag + "\nto " + message.toUri + " tag " + message.toTag +
           "\n";
}

TEST(SipMessage, ARequestWithCompactAndFoldedHeaders) {
    const SipMessage message = Read("INVITE sip:bob@example.org SIP/2.0\r\n"
                                    "v: SIP/2.0/UDP 192.0.2.1;branch=z9hG4bK1\r\n"
                                    "f : \"Alice; tag=no\" <sip:alice@example.org;x=1>\r\n"
                                    "\t;TAG=a1\r\n"
                                    "t: sip:bob@example.org;tag=\"b 1\"\r\n"
                                    "I:\r\n"
                                    " 1@192.0.2.1\r\n"
                                    "no header\r\n"
                                    "cseq:\t7\r\n"
                                    "  INVITE\r\n"
                                    "C: Application/SDP;charset=utf-8\r\n"
                                    "L: 5\r\n"
                                    "\r\n"
                                    "v=0\r\n");
    EXPECT_TEXT(HeadersOf(message), "method INVITE\n"
                                    "call 1@192.0.2.1\n"
                                    "number 7 INVITE\n"
                                    "from sip:alice@example.org;x=1 tag a1\n"
                                    "to sip:bob@example.org tag b 1\n");
    EXPECT_TEXT(message.description, "v=0\r\n");
    EXPECT_TEXT(NotesOf(message), "");
}

TEST(SipMessage, AResponse) {
    const SipMessage message = Read("SIP/2.0 488 Not  Acceptable Here\n"
                                    "Call-ID: 1@192.0.2.1\n"
                                    "CSeq: 7 UPDATE\n"
                                    "Warning: 304 192.0.2.1 \"no video\"\n"
                                    "\n");
    EXPECT_TEXT(HeadersOf(message), "status 488 Not  Acceptable Here\n"
                                    "warning 304 192.0.2.1 \"no video\"\n"
                                    "call 1@192.0.2.1\n"
                                    "number 7 UPDATE\n"
                                    "from  tag \n"
                                    "to  tag \n");
    EXPECT_FALSE(message.hasDescription);
    EXPECT_EQ(Read("SIP/2.0 200\r\ni: 1\r\nCSeq: 7 BYE\r\n\r\n").reason, "");
    EXPECT_EQ(Read(std::string(kHead) + "Replaces: 2@b ;to-tag=1\r\n\r\n").replaces, "2@b");
}

TEST(SipMessage, WhatIsNoMessage) {
    const char* const texts[] = {
        "",
        "v=0\r\n",
        "\r\n\r\n",
        "INVITE sip:bob@example.org\r\ni: 1\r\nCSeq: 7 INVITE\r\n\r\n",
        "invite sip:bob@example.org SIP/2.0\r\ni: 1\r\nCSeq: 7 INVITE\r\n\r\n",
        "INVITE sip:bob@example.org SIP/3.0\r\ni: 1\r\nCSeq: 7 INVITE\r\n\r\n",
        "INVITE sip:bob@example.org SIP/2.0\r\ni: 1\r\n\r\n",
        "INVITE sip:bob@example.org SIP/2.0\r\nCSeq: 7 INVITE\r\n\r\n",
        "INVITE sip:bob@example.org SIP/2.0\r\ni: 1\r\nCSeq: 7\r\n\r\n",
        "INVITE sip:bob@example.org SIP/2.0\r\ni: 1\r\nCSeq: x INVITE\r\n\r\n",
        "INVITE sip:bob@example.org SIP/2.0\r\ni: 1\r\nCSeq: 99999999999 INVITE\r\n\r\n",
        "SIP/2.0 20 OK\r\ni: 1\r\nCSeq: 7 INVITE\r\n\r\n",
        "SIP/2.0 099 OK\r\ni: 1\r\nCSeq: 7 INVITE\r\n\r\n",
        "SIP/2.0 2x0 OK\r\ni: 1\r\nCSeq: 7 INVITE\r\n\r\n",
    };
    for (const char* const text : texts) {
        EXPECT_FALSE(ParseSipMessage(text, BodyEnd::Datagram)) << text;
        EXPECT_FALSE(ParseSipMessage(text, BodyEnd::Paste)) << text;
    }
}

struct BodyCase {
    const char* headers;
    const char* body;
    const char* description;
    const char* notes;
};

const BodyCase kDatagrams[] = {
    {"c: application/sdp\r\n", "v=0\r\ns=-\r\n", "v=0\r\ns=-\r\n", ""},
    {"c: application/sdp\r\nl: 5\r\n", "v=0\r\ns=-\r\n", "v=0\r\n",
     "Content-Length is 5 bytes and 10 bytes follow the headers; the rest is discarded (RFC 3261, 18.3)\n"},
    {"c: application/sdp\r\nl: 1\r\n", "v=0\r\n", "v",
     "Content-Length is 1 byte and 5 bytes follow the headers; the rest is discarded (RFC 3261, 18.3)\n"},
    {"c: application/sdp\r\nl: 50\r\n", "v=0\r\n", "v=0\r\n",
     "Content-Length is 50 bytes and 5 bytes follow the headers; a request of this kind is refused with 400, "
     "a response discarded (RFC 3261, 18.3)\n"},
    {"c: application/sdp\r\nl: -1\r\n", "v=0\r\n", "v=0\r\n",
     "Content-Length is no number; all that follows the headers is read\n"},
    {"c: application/sdp\r\nl: 0\r\n", "", "", ""},
    {"", "v=0\r\n", "v=0\r\n",
     "the body has no Content-Type (RFC 3261, 20.15); it is read as a description\n"},
    {"", "x=0\r\n", "", ""},
    {"c: application/media_control+xml\r\n", "v=0\r\n", "", ""},
    {"c: application/sdp\r\nContent-Disposition: early-session\r\n", "v=0\r\n", "", ""},
    {"c: application/sdp\r\ne: gzip\r\n", "v=0\r\n", "", "the body is encoded as \"gzip\" and is not read\n"},
};

template <std::size_t Count>
void ExpectBodies(const BodyCase (&rows)[Count], const std::string& head, BodyEnd end) {
    for (const BodyCase& row : rows) {
        const SipMessage message = Read(head + row.headers + "\r\n" + row.body, end);
        EXPECT_TEXT(message.description, row.description) << row.headers << row.body;
        EXPECT_EQ(message.hasDescription, *row.description != '\0') << row.headers << row.body;
        EXPECT_TEXT(NotesOf(message), row.notes) << row.headers << row.body;
    }
}

TEST(SipMessage, BodiesOfDatagrams) {
    ExpectBodies(kDatagrams, kHead, BodyEnd::Datagram);
}

TEST(SipMessage, ThePartOfAMultipartBodyThatIsADescription) {
    const std::string head = std::string(kHead) + "c: multipart/mixed;boundary=\"b=1\"\r\n\r\n";
    EXPECT_TEXT(Read(head + "preamble\r\n--b=1\r\nContent-Type: text/plain\r\n\r\nv=1\r\n--b=1\r\n"
                            "c: application/sdp\r\n\r\nv=0\r\n\r\n--b=1--\r\nepilogue")
                    .description,
                "v=0\r\n");
    // The line end in front of the boundary is not the description's.
    EXPECT_TEXT(Read(head + "--b=1\r\nc: application/sdp\r\n\r\nv=0\r\n--b=1--\r\n").description, "v=0");
    EXPECT_TEXT(Read(head + "--b=1\nc: application/sdp\n\nv=0\n\n--b=1--").description, "v=0\n");
    EXPECT_FALSE(Read(head + "--b=1\r\n--b=1\r\n--b=1--\r\n").hasDescription);
    EXPECT_FALSE(Read(head + "--b=1\r\nc: application/sdp\r\n\r\nv=0\r\n").hasDescription);
    EXPECT_FALSE(Read(head).hasDescription);
}

const BodyCase kCut[] = {
    {"c: application/sdp\r\nl: 50\r\n", "v=0\r\n", "v=0\r\n",
     "the capture holds 5 of 50 bytes of the body; what the rest says is not known\n"},
    {"c: application/sdp\r\n", "v=0\r\n", "v=0\r\n",
     "the capture holds 5 bytes of the body; what the rest says is not known\n"},
    {"c: application/sdp\r\nl: 5\r\n", "v=0\r\n", "v=0\r\n", ""},
    {"c: application/sdp\r\nl: 50\r\n", "", "",
     "the capture holds 0 of 50 bytes of the body; what the rest says is not known\n"},
    {"", "", "", "the capture ends within the headers of this message\n"},
};

TEST(SipMessage, BodiesOfMessagesThatTheCaptureHoldsInPart) {
    ExpectBodies(kCut, kHead, BodyEnd::Cut);
    EXPECT_TEXT(Read(kHead, BodyEnd::Cut).unread, "the capture ends within the headers of this message");
}

const BodyCase kEncoded[] = {
    // A description in a part of a part (RFC 5621, 3.1).
    {"c: multipart/mixed;boundary=o\r\n",
     "--o\r\nc: multipart/alternative;boundary=i\r\n\r\n--i\r\nc: text/plain\r\n\r\nhello\r\n--i\r\n"
     "c: application/sdp\r\n\r\nv=0\r\n\r\n--i--\r\n--o--\r\n",
     "v=0\r\n", ""},
    {"c: multipart/mixed;boundary=b\r\n",
     "--b\r\nc: application/sdp\r\nContent-Transfer-Encoding: BASE64\r\n\r\n"
     "dj0wDQpz\r\nPS0NCg==\r\n--b--\r\n",
     "v=0\r\ns=-\r\n", ""},
    {"c: multipart/mixed;boundary=b\r\n",
     "--b\r\nc: application/sdp\r\nContent-Transfer-Encoding: quoted-printable\r\n\r\n"
     "v=3D0 \r\ns=\r\n=3D-\r\n\r\n--b--",
     "v=0\r\ns=-\r\n", ""},
    // A part that is not read does not hide the next one.
    {"c: multipart/mixed;boundary=b\r\n",
     "--b\r\nc: application/sdp\r\ne: gzip\r\n\r\nzip\r\n--b\r\n"
     "c: application/sdp\r\n\r\nv=0\r\n\r\n--b--\r\n",
     "v=0\r\n", ""},
    {"c: multipart/mixed;boundary=b\r\n", "--b\r\nc: application/sdp\r\ne: gzip\r\n\r\nzip\r\n--b--\r\n", "",
     "the body is encoded as \"gzip\" and is not read\n"},
    {"c: application/sdp\r\nContent-Transfer-Encoding: x-own\r\n", "v=0\r\n", "",
     "the body is encoded as \"x-own\" and is not read\n"},
    {"c: application/sdp\r\nContent-Transfer-Encoding: base64\r\n", "dj0", "v=", ""},
    {"c: application/sdp\r\nContent-Transfer-Encoding: base64\r\n", "d===", "", ""},
    {"c: application/sdp\r\ne: identity\r\nContent-Transfer-Encoding: binary\r\n", "v=0\r\n", "v=0\r\n", ""},
    {"c: text/plain\r\ne: gzip\r\n", "v=0\r\n", "", ""},
};

TEST(SipMessage, BodiesInsideOfBodiesAndEncodedOnes) {
    ExpectBodies(kEncoded, kHead, BodyEnd::Datagram);
}

TEST(SipMessage, BodiesAreReadToABoundedDepth) {
    const std::string type = "c: multipart/mixed;boundary=b";
    std::string part = "c: application/sdp\r\n\r\nv=0\r\n";
    std::string body;
    for (const char boundary : {'1', '2', '3', '4', '5'}) {
        body = std::string("--b") + boundary + "\r\n" + part + "\r\n--b" + boundary + "--\r\n";
        part = type + boundary + "\r\n\r\n" + body;
        const SipMessage message = Read(kHead + part);
        EXPECT_TEXT(message.description, boundary == '5' ? "" : "v=0\r\n") << boundary;
        EXPECT_TEXT(message.unread, boundary == '5'
                                        ? "the body has multipart bodies in multipart bodies and is not read"
                                        : "")
            << boundary;
    }
}

const BodyCase kPastes[] = {
    {"l: 5\r\n", "v=0\r\n\r\n \r\n", "v=0\r\n", ""},
    {"l: 12\r\n", "v=0\r\ns=-\r\n\r\n", "v=0\r\ns=-\r\n", ""},
    {"l: 0\r\n", "\r\n12:00 the next line of the log\r\n", "", ""},
    {"l: 900\r\n", "v=0\r\ns=-\r\n\r\n12:00 the next line of the log\r\n", "v=0\r\ns=-\r\n", ""},
    {"", "v=0\r\ns=-\r\n12:00 the next line of the log\r\n", "v=0\r\ns=-\r\n", ""},
};

TEST(SipMessage, BodiesOfPastedTexts) {
    ExpectBodies(kPastes, std::string(kHead) + kSdp, BodyEnd::Paste);
}

TEST(SipHeaders, ParametersStandOutsideOfQuotesAndBrackets) {
    EXPECT_EQ(HeaderParameter("<sip:a@b;tag=1>;x;tag = 2", "tag"), "2");
    EXPECT_EQ(HeaderParameter("\"a\\\";tag=1\" <sip:a@b>", "tag"), "");
    EXPECT_EQ(HeaderParameter("\"open;tag=1", "tag"), "");
    EXPECT_EQ(HeaderParameter("sip:a@b;tag=", "tag"), "");
    EXPECT_EQ(HeaderUri("<sip:a@b"), "<sip:a@b");
    EXPECT_EQ(HeaderUri("\"<x>\" <sip:a@b>"), "sip:a@b");
}

} // namespace

} // namespace cmsdp
