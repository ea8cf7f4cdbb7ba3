// Documents: which steps there are, where a difference is reported, and what is said of a malformed document.
#include "DocumentRun.h"
#include "Expect.h"

#include <string>

namespace {

std::string ReportsOf(const std::string& text) {
    return documents::ReportsOf<documents::Player>(text);
}

const std::string kHeading = "=== Suite.Name\n"
                             "Why.\n";
const std::string kOffer = "near = audio\n"
                           "    listAudioCodecPriority =\n"
                           "near writes\n"
                           "    v=0\n"
                           "    o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\n"
                           "    s=-\n"
                           "    c=IN IP4 192.0.2.1\n"
                           "    t=0 0\n";
const std::string kReading = "near = audio\n"
                             "arrives\n"
                             "    m=audio 5000 RTP/AVP 0\n"
                             "near reads\n"
                             "    audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n";

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

TEST(Document, WhatIsAsTheDocumentSaysIsNotReported) {
    EXPECT_TEXT(
        ReportsOf("# For the reader.\n\n" + kHeading + kOffer + "\n=== Suite.Other\nWhy.\n" + kReading), "");
}

TEST(Document, ADifferenceIsReportedAtItsLine) {
    const std::string first = ": near writes: The texts differ first in line ";
    EXPECT_TEXT(ReportsOf(kHeading + Replaced(kOffer, "s=-", "s=x")), "a.cases:8" + first + "3.\n");
    EXPECT_TEXT(ReportsOf(kHeading + Replaced(kOffer, "s=-", "s=-\\n")), "a.cases:8" + first + "3.\n");
    EXPECT_TEXT(ReportsOf(kHeading + kOffer + "    a=more\n"), "a.cases:11" + first + "6.\n");
    // A text that goes on after the last line differs nowhere in the document but at the step.
    EXPECT_TEXT(ReportsOf(kHeading + Replaced(kOffer, "    t=0 0\n", "")), "a.cases:5" + first + "5.\n");
}

TEST(Document, ADifferentRecordIsReportedAtItsRowOrTheStep) {
    const std::string first = ": near reads: The texts differ first in line ";
    EXPECT_TEXT(ReportsOf(kHeading + Replaced(kReading, "port=5000", "port=5001")),
                "a.cases:7" + first + "1.\n");
    EXPECT_TEXT(ReportsOf(kHeading + kReading + "    bandwidth=1\n"), "a.cases:8" + first + "5.\n");
    // A row that is not given is that of a new record.
    const std::string::size_type row = kReading.find("    audio");
    EXPECT_TEXT(ReportsOf(kHeading + kReading.substr(0, row)), "a.cases:6" + first + "1.\n");
}

TEST(Document, ResultsAndRolesAreReportedAtTheStep) {
    EXPECT_TEXT(ReportsOf(kHeading + Replaced(kReading, "near reads", "near refuses")),
                "a.cases:6: ParseTheSDP returned 0\n");
    EXPECT_TEXT(ReportsOf(kHeading + kReading + "near would offer\n"), "a.cases:8: it would answer\n");
    EXPECT_TEXT(ReportsOf(kHeading + kReading + "near resets\nnear would answer\n"),
                "a.cases:9: it would offer\n");
}

TEST(Document, PartsAndSectionsAreReportedAtTheirLine) {
    const std::string sections = "near has section count 1\n"
                                 "near keeps section 0\n"
                                 "    eMedia = 2\n"
                                 "    iPort = 5000\n"
                                 "    format = 0\n"
                                 "    strFullMLine = m=audio 5000 RTP/AVP 0\n"
                                 "near writes part direction-audio\n"
                                 "    a=sendrecv\n"
                                 "near writes part direction-main\n"
                                 "    \\\n";
    EXPECT_TEXT(ReportsOf(kHeading + kReading + sections), "");
    EXPECT_TEXT(ReportsOf(kHeading + kReading + Replaced(sections, "count 1", "count 2")),
                "a.cases:8: it has 1\n");
    EXPECT_TEXT(ReportsOf(kHeading + kReading + Replaced(sections, "    iPort = 5000\n", "")),
                "a.cases:11: near keeps section 0: The texts differ first in line 2.\n");
    EXPECT_TEXT(ReportsOf(kHeading + kReading + Replaced(sections, "section 0", "section 1")),
                "a.cases:10: near keeps section 1: The texts differ first in line 1.\n");
    EXPECT_TEXT(ReportsOf(kHeading + kReading + Replaced(sections, "sendrecv", "sendonly")),
                "a.cases:15: near writes part direction-audio: The texts differ first in line 1.\n");
}

TEST(Document, TracesAndDumpsAreReportedAtTheirLine) {
    const std::string dump = "    iPort: 5000\n"
                             "    strIPAddr:\\x20\n"
                             "    \\tRtpMap[0]: Payload-0 EncodingName-\n"
                             "    fRecv: true\n"
                             "    fSend: true\n"
                             "    strVideoLevel:\\x20\n"
                             "    strMaxBandwidth:\\x20\n"
                             "    iBfcpConfid: 0\n"
                             "    iBfcpUserid: 0\n"
                             "    strFloorctrl:\\x20\n"
                             "    \\n\n"
                             "    \\n\n";
    const std::string traces = kReading.substr(0, kReading.find("near reads")) +
                               "near traces\n"
                               "    Dump Media Session:\\x20\n"
                               "    eContent: 100\n" +
                               dump + "near dumps section 0\n    eContent: 100\n" + dump;
    EXPECT_TEXT(ReportsOf(kHeading + traces), "");
    EXPECT_TEXT(ReportsOf(kHeading + Replaced(traces, "fSend: true", "fSend: false")),
                "a.cases:13: near traces: The texts differ first in line 7.\n");
    EXPECT_TEXT(
        ReportsOf(kHeading + Replaced(traces, "section 0\n    eContent: 100", "section 0\n    eContent: 0")),
        "a.cases:22: near dumps section 0: The texts differ first in line 1.\n");
    EXPECT_TEXT(ReportsOf(kHeading + Replaced(traces, "section 0", "section 1")),
                "a.cases:22: near dumps section 1: The texts differ first in line 1.\n");
}

TEST(Document, NamedTextsRecordsAndSetsStandBeforeTheFirstHeading) {
    EXPECT_TEXT(ReportsOf("local silent = audio\n"
                          "    listAudioCodecPriority =\n"
                          "text offer\n"
                          "    v=0\n"
                          "    o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\n"
                          "    s=-\n"
                          "    c=IN IP4 192.0.2.1\n"
                          "    t=0 0\n"
                          "record nothing\n" +
                          kHeading +
                          "near = silent\n"
                          "far = silent\n"
                          "near writes offer\n"
                          "far reads nothing\n"),
                "");
}

TEST(Document, StepsAfterEachArePlayedForEveryRow) {
    const std::string table = kHeading + "near = audio\n"
                                         "each\n"
                                         "    sendonly | send=0 recv=1\n"
                                         "    | send=1 recv=1\n"
                                         "    recvonly | send=1 recv=0\n"
                                         "arrives\n"
                                         "    m=audio 5000 RTP/AVP 0\n"
                                         "    a=$1\n"
                                         "near reads\n"
                                         "    audio codec=1 payload=0 dtmf=0 addr= port=5000 $2 valid=1\n";
    EXPECT_TEXT(ReportsOf(table), "");
    EXPECT_TEXT(ReportsOf(Replaced(table, "send=1 recv=0", "send=1 recv=1")),
                "a.cases:12: with recvonly | send=1 recv=1: near reads: The texts differ first in line 1.\n");
    EXPECT_TEXT(ReportsOf(Replaced(table, "recvonly |", "recvonly")),
                "a.cases:12: the row a.cases:7 has no value 2\n");
}

TEST(Document, ANamedTextIsEdited) {
    const std::string text =
        "text offer\n"
        "    m=audio 5000 RTP/AVP 0\n" +
        kHeading +
        "near = audio\n"
        "arrives offer with\n"
        "    every 0 => 1\n"
        "    m=audio => m=video\n"
        "     RTP => \\x20RTP\n"
        "near reads\n"
        "    main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5111 "
        "send=1 recv=1 valid=1\n";
    EXPECT_TEXT(ReportsOf(text), "");
    EXPECT_TEXT(
        ReportsOf(Replaced(text, "m=audio => ", "m=text => ")),
        "a.cases:8: no edit WHAT => WITH whose WHAT occurs just once; every WHAT => WITH replaces all\n");
    EXPECT_TEXT(
        ReportsOf(Replaced(text, "every 0", "0")),
        "a.cases:7: no edit WHAT => WITH whose WHAT occurs just once; every WHAT => WITH replaces all\n");
    EXPECT_TEXT(
        ReportsOf("text offer\n" + kOffer.substr(kOffer.find("    v=0")) + kHeading +
                  "near = audio\n    listAudioCodecPriority =\nnear writes offer with\n    s=- => s=x\n"),
        "a.cases:11: near writes offer with: The texts differ first in line 3.\n");
}

TEST(Document, LineEndsAndBytesAreVisible) {
    const auto bytes = [](const std::string& text) { return documents::Unescape({"a.cases", 1, text}); };
    EXPECT_TEXT(bytes("s=-"), "s=-\r\n");
    EXPECT_TEXT(bytes(""), "\r\n");
    EXPECT_TEXT(bytes("s=-\\n"), "s=-\n");
    EXPECT_TEXT(bytes("s=-\\r"), "s=-\r");
    EXPECT_TEXT(bytes("s=-\\r\\n"), "s=-\r\n");
    EXPECT_TEXT(bytes("s=-\\"), "s=-");
    EXPECT_TEXT(bytes("s=\\\\"), "s=\\\r\n");
    EXPECT_TEXT(bytes("\\"), "");
    EXPECT_TEXT(bytes("a\\tb\\nc\\x20\\xff"), "a\tb\nc \xff\r\n");
    EXPECT_THROW(bytes("\\q"), documents::Malformed);
    EXPECT_THROW(bytes("\\xF"), documents::Malformed);
}

// One at the end of a block is not.
TEST(Document, AnEmptyLineBetweenTheLinesOfABlockIsOneOfThem) {
    const documents::Document document = documents::ReadDocument(
        "a.cases", kHeading + "\ntext offer\n\n    v=0\n\n\n    s=-\n\nnear = audio\n");
    std::string lines;
    for (const documents::Line& line : document.sections[0].steps[0].block) {
        lines += line.Place() + ":" + line.text + "\n";
    }
    EXPECT_TEXT(lines, "a.cases:6:v=0\na.cases:7:\na.cases:8:\na.cases:9:s=-\n");
}

TEST(Document, AMalformedDocumentIsAnErrorAtItsLine) {
    const struct {
        std::string text;
        const char* report;
    } rows[] = {
        // The document as a whole.
        {"    v=0\n", "a.cases:1: an indented line without a step before it\n"},
        {"=== Suite\nWhy.\n", "a.cases:1: a heading is === Suite.Name\n"},
        {"=== Suite.Name\nnear = audio\n",
         "a.cases:2: the line after a heading is one sentence that says why\n"},
        {kHeading, "a.cases:1: a section without a step\n"},
        {kHeading + "near = audio\n", "a.cases:1: a section that compares nothing\n"},
        {kHeading + kOffer + kHeading, "a.cases:11: a second section Suite.Name\n"},
        {kHeading + "near = audio\n  iAudioRTPPort = 1\n",
         "a.cases:4: fields, texts and records are indented by four blanks\n"},
        {kHeading + "near = audio \n", "a.cases:3: a blank at the end cannot be seen; write \\x20\n"},
        {kHeading + "near = audio\r\n",
         "a.cases:3: a byte that is not printable ASCII; write \\r, \\n, \\t or \\xNN\n"},
        // Its steps.
        {kHeading + "near sings\n",
         "a.cases:3: no such step; the table of this player lists those that there are\n"},
        {kHeading + "near reads\n", "a.cases:3: nothing is called near\n"},
        {kHeading + "third = audio\n", "a.cases:3: a handler is called near or far\n"},
        {kHeading + "near = radio\n", "a.cases:3: nothing is called radio\n"},
        {kHeading + "near = audio\nnear resets\n    v=0\n", "a.cases:5: the step takes no lines\n"},
        {"text offer\n" + kHeading + "near = audio\nnear writes offer\n    v=0\n",
         "a.cases:5: a name, and lines as well\n"},
        {"text offer\ntext offer\n" + kHeading + kOffer, "a.cases:2: a second definition of offer\n"},
        {kHeading + "near = audio\nnear writes part song\n", "a.cases:4: no part is called song\n"},
        {kHeading + "each\n    1\n", "a.cases:3: rows, and steps for them\n"},
        {kHeading + "each\nnear = audio\n", "a.cases:3: rows, and steps for them\n"},
        {kHeading + "each\n    1\nnear = $2\n", "a.cases:5: the row a.cases:4 has no value 2\n"},
        {kHeading + "near = audio\nnear serves no sections\n", "a.cases:4: no number: no\n"},
        // Their lines.
        {kHeading + "near = audio\n    iAudioRtpPort = 1\n",
         "a.cases:4: no \"field = value\" with a field of a local set, called as in SDP.h\n"},
        {kHeading + "near = audio\n    iAudioRTPPort\n",
         "a.cases:4: no \"field = value\" with a field of a local set, called as in SDP.h\n"},
        {kHeading + "near = audio\n    iAudioRTPPort = 1x\n",
         "a.cases:4: neither a name nor a 32-bit number: 1x\n"},
        {kHeading + "near = audio\n    fVideoTxMuted = 1\n", "a.cases:4: neither true nor false: 1\n"},
        {kHeading + "near = audio\n    eAudioCodec = G722\n",
         "a.cases:4: neither a name nor a 32-bit number: G722\n"},
        {kHeading + "near = audio\n    keys = near\n",
         "a.cases:4: keys are near or away, and a suite: near\n"},
        {kHeading + "near = audio\n    keys = near AES\n",
         "a.cases:4: neither a name nor a 32-bit number: AES\n"},
        {kHeading + "arrives\n    a\\q\n", "a.cases:4: an escape is one of \\r \\n \\t \\\\ \\xNN\n"},
        {kHeading + kReading + "    bandwith=1\n", "a.cases:8: no row of a record, or a second one; rows "
                                                   "begin with audio, main, preso, bfcp, bandwidth, srtp\n"},
        {kHeading + kReading + "    bandwidth=0\n    bandwidth=0\n",
         "a.cases:9: no row of a record, or a second one; rows begin with audio, main, preso, bfcp, "
         "bandwidth, srtp\n"},
    };
    for (const auto& row : rows) {
        EXPECT_TEXT(ReportsOf(row.text), row.report);
    }
}

} // namespace
