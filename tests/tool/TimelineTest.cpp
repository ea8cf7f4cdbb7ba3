// Calls given as REMOTE: SIP messages in a text, a folder of descriptions. Captures: captures.py.
#include "Timeline.h"
#include "Expect.h"
#include "Outcome.h"
#include "RunTool.h"

#include <filesystem>

namespace tool {

namespace {

class Timeline : public ToolTest {
protected:
    void Folder(const std::vector<std::pair<std::string, std::string>>& files) const {
        std::filesystem::create_directory(m_directory + "/folder");
        for (const auto& [name, text] : files) {
            Write("folder/" + name, text);
        }
    }
    // The first line of each step.
    std::string Steps() const {
        const Result run = Cmsdp({"explain", "folder"});
        EXPECT_EQ(run.status, 0) << run.err;
        std::string steps;
        for (const std::string& line : support::CutLines(run.out)) {
            steps += line.compare(0, 5, "step ") == 0 || line.compare(0, 6, "  note") == 0 ? line : "";
        }
        return steps;
    }
    void ExpectError(const std::vector<std::string>& arguments, int status, const std::string& words) const {
        const Result run = Cmsdp(arguments);
        EXPECT_EQ(run.status, status);
        EXPECT_TEXT(run.out, "");
        EXPECT_TEXT(run.err, "cmsdp: " + words + "\n");
    }
};

std::string Audio(const std::string& who, const std::string& port) {
    return "v=0\r\no=" + who + " 1 1 IN IP4 192.0.2.7\r\ns=-\r\nc=IN IP4 192.0.2.7\r\nt=0 0\r\nm=audio " +
           port + " RTP/AVP 0 101\r\na=rtpmap:101 telephone-event/8000\r\n";
}

constexpr const char* kLog = "12:00:01 received from 192.0.2.1\n"
                             "INVITE sip:bob@example.org SIP/2.0\n"
                             "From: <sip:alice@example.org>;tag=a\n"
                             "To: <sip:bob@example.org>\n"
                             "Call-ID: 1@192.0.2.1\n"
                             "CSeq: 1 INVITE\n"
                             "Content-Type: application/sdp\n"
                             "Content-Length: 80\n"
                             "\n"
                             "v=0\n"
                             "c=IN IP4 192.0.2.1\n"
                             "m=audio 5004 RTP/AVP 0 101\n"
                             "a=rtpmap:101 telephone-event/8000\n"
                             "\n"
                             "12:00:02 sent to 192.0.2.1\n"
                             "SIP/2.0 488 Not Acceptable Here\n"
                             "From: <sip:alice@example.org>;tag=a\n"
                             "To: <sip:bob@example.org>;tag=b\n"
                             "Call-ID: 1@192.0.2.1\n"
                             "CSeq: 1 INVITE\n"
                             "\n"
                             "OPTIONS sip:bob@example.org SIP/2.0\n"
                             "From: <sip:alice@example.org>;tag=c\n"
                             "\n";

TEST_F(Timeline, OfATextWithSeveralMessages) {
    Write("log.txt", kLog);
    const Result run = Cmsdp({"explain", "--about", "audio.codec", "log.txt"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "call 1: caller sip:alice@example.org, callee sip:bob@example.org, 2 steps, Call-ID "
                         "1@192.0.2.1\n"
                         "\n"
                         "step 1: the caller offers, INVITE\n"
                         "  the engine starts with:\n"
                         "    audio.codec: audio has G.711 mu-law as payload 0\n"
                         "  read by the callee:\n"
                         "    nothing is found about audio.codec\n"
                         "\n"
                         "step 2: the callee refuses step 1, 488 Not Acceptable Here to INVITE\n");
    EXPECT_TEXT(run.err, "cmsdp: LF alone was read as CR LF at the end of 24 lines; --exact keeps it\n"
                         "cmsdp: 1 message without a Call-ID or CSeq header was left out\n");
    EXPECT_TEXT(CmsdpReads(kLog, {"explain", "--about", "audio.codec", "-"}).out, run.out);
}

TEST_F(Timeline, WithExactTheLineEndsOfATextAreThoseOfItsDescriptions) {
    Write("log.txt", kLog);
    const Result run = Cmsdp({"explain", "--exact", "--top", "log.txt"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out,
                "call 1: caller sip:alice@example.org, callee sip:bob@example.org, 2 steps, Call-ID "
                "1@192.0.2.1\n"
                "\n"
                "step 1: the caller offers, INVITE\n"
                "  the engine starts with:\n"
                "    audio.codec: there is no section for audio\n"
                "    main.picture: there is no section for main video\n"
                "    slides: there is no section for the slides stream\n"
                "    floor: there is no floor control section\n"
                "    dtmf: tones have no payload and are not sent\n"
                "  read by the callee:\n"
                "    E02 audio.codec error: Lines 1 to 4 do not end in CR LF but in LF or CR alone, "
                "up to the end of the text.\n"
                "    Text after the last CR LF is no line and is dropped (P02).\n"
                "    There is no section for audio, our answer has no section for audio. With the cure "
                "audio has G.711 mu-law as payload 0, our answer has G.711 mu-law as payload 0 for... "
                "Cure: end lines 1 to 4 with CR LF. The negotiation layer repairs it: R01.\n"
                "\n"
                "step 2: the callee refuses step 1, 488 Not Acceptable Here to INVITE\n");
    EXPECT_TEXT(run.err, "cmsdp: 1 message without a Call-ID or CSeq header was left out\n");
}

TEST_F(Timeline, OfAFolderWhoseNamesSayWhoSentWhat) {
    Folder({{"01-received-offer.sdp", Audio("a", "5004")},
            {"02-sent-answer.sdp", Audio("b", "6004")},
            {"03-sent-offer.sdp", Audio("b", "6006")},
            {"04-sent-offer.sdp", Audio("b", "6008")},
            {"05-received-answer.sdp", Audio("a", "5008")},
            {"notes.txt", "no description"}});
    EXPECT_TEXT(Steps(), "step 1: the caller offers, 01-received-offer.sdp\n"
                         "step 2: the callee answers step 1, 02-sent-answer.sdp\n"
                         "step 3: the callee offers again, 03-sent-offer.sdp\n"
                         "step 4: the callee offers again, 04-sent-offer.sdp\n"
                         "step 5: the caller answers step 4, 05-received-answer.sdp\n");
}

TEST_F(Timeline, OfAFolderWhoseNamesSayNothing) {
    Folder({{"1.sdp", Audio("a", "5004")},
            {"2.sdp", Audio("b", "6004")},
            {"3.sdp", Audio("b", "6006")},
            {"4.sdp", Audio("a", "5006")},
            {"5.sdp", Audio("c", "5008")}});
    EXPECT_TEXT(Steps(), "step 1: the caller offers, 1.sdp\n"
                         "step 2: the callee answers step 1, 2.sdp\n"
                         "step 3: the callee offers again, 3.sdp\n"
                         "step 4: the caller answers step 3, 4.sdp\n"
                         "step 5: the caller offers again, 5.sdp\n");
}

TEST_F(Timeline, OfAFolderThatBeginsWithAnAnswer) {
    Folder({{"1-callee-answer.sdp", Audio("b", "6004")}, {"2-caller-answer.sdp", Audio("a", "5004")}});
    EXPECT_TEXT(Steps(),
                "step 1: the callee answers, 1-callee-answer.sdp\n"
                "  note: the offer that this answers is not in the folder; the one that the local file "
                "makes is taken for it\n"
                "step 2: the caller answers, 2-caller-answer.sdp\n"
                "  note: the offer that this answers is not in the folder; the one that the local file "
                "makes is taken for it\n");
}

TEST_F(Timeline, WhatIsNoCall) {
    Folder({{"notes.txt", "no description"}});
    Write("one.sdp", Audio("a", "5004"));
    Write("options.txt", "OPTIONS sip:b@example.org SIP/2.0\r\ni: 1\r\nCSeq: 1 OPTIONS\r\n\r\n"
                         "SIP/2.0 200 OK\r\ni: 1\r\nCSeq: 1 OPTIONS\r\n\r\n");
    ExpectError({"explain", "folder"}, 3, "folder: holds no file *.sdp");
    Write("call.pcap", "\xd4\xc3\xb2\xa1 and so on");
    ExpectError({"explain", "call.pcap"}, 3, "call.pcap: is a packet capture; read it with --pcap");
    ExpectError({"explain", "options.txt"}, 3, "options.txt: holds no call");
    ExpectError(
        {"explain", "--we", "caller", "one.sdp"}, 2,
        "--call and --we need a call: --pcap FILE, a text with several SIP messages or a folder of .sdp "
        "files");
    Folder({{"1.sdp", Audio("a", "5004")}});
    ExpectError({"explain", "--call", "2", "folder"}, 3, "folder: holds 1 call, so --call cannot be 2");
    ExpectError({"explain", "--we", "alice", "folder"}, 2,
                "--we: \"alice\" is no side of the call; name caller or callee");
    ExpectError(
        {"explain", "--before", "one.sdp", "folder"}, 2,
        "--offered, --offer and --before are for one description; a call has its own offers and answers");
}

// The texts that stand beside the one that is read.
TEST(InputOfStep, HasTheOfferTheAnswerAndWhatStoodBefore) {
    cmsdp::Call call;
    call.steps.resize(4);
    for (std::size_t i = 0; i < 4; ++i) {
        call.steps[i].text = std::string(1, static_cast<char>('a' + i));
        call.steps[i].kind = i % 2 == 0 ? cmsdp::StepKind::Offer : cmsdp::StepKind::Answer;
        call.steps[i].partner = i ^ 1U;
        call.steps[i].previous = i < 2 ? std::optional<std::size_t>() : i - 2;
    }
    const cmsdp::Capabilities side = cmsdp::BuiltInCapabilities();
    const ExplainInput offer = cmsdp::InputOfStep(call, 2, side);
    EXPECT_FALSE(offer.remoteAnswers);
    EXPECT_EQ(offer.remote + "," + offer.before + "," + offer.ourOffer + "," + offer.ourAnswer, "c,a,,d");
    const ExplainInput answer = cmsdp::InputOfStep(call, 3, side);
    EXPECT_TRUE(answer.remoteAnswers);
    EXPECT_EQ(answer.remote + "," + answer.before + "," + answer.ourOffer + "," + answer.ourAnswer, "d,b,c,");
}

} // namespace

} // namespace tool
