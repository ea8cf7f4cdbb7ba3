// Lines and rows: where a text is cut, which row each line belongs to, what an observer is told.
#include "SDPLines.h"

#include "SDPHandler.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

/// The lines of a text and, last, the text that is no line.
std::vector<std::string> Cut(std::string_view text) {
    std::vector<std::string> lines;
    const std::size_t rest = sdp::ForEachLine(text, [&](std::size_t offset, std::size_t length) {
        lines.emplace_back(text.substr(offset, length));
    });
    lines.emplace_back(text.substr(rest));
    return lines;
}

using Lines = std::vector<std::string>;

TEST(SDPLines, LineEndsBeforeItsCrLf) {
    EXPECT_EQ(Cut("v=0\r\nm=audio\r\n"), (Lines{"v=0", "m=audio", ""}));
    EXPECT_EQ(Cut("\r\n\r\n"), (Lines{"", "", ""}));
}

TEST(SDPLines, TextAfterTheLastCrLfIsNoLine) {
    EXPECT_EQ(Cut("v=0\r\na=send"), (Lines{"v=0", "a=send"}));
    EXPECT_EQ(Cut("v=0"), (Lines{"v=0"}));
    EXPECT_EQ(Cut(""), (Lines{""}));
    EXPECT_EQ(Cut("v=0\r"), (Lines{"v=0\r"}));
}

TEST(SDPLines, LoneCrOrLfEndsNoLine) {
    EXPECT_EQ(Cut("a\nb\r\nc\rd\r\n"), (Lines{"a\nb", "c\rd", ""}));
    EXPECT_EQ(Cut("a\r\r\nb\n\r\n"), (Lines{"a\r", "b\n", ""}));
}

TEST(SDPLines, EveryExampleBelongsToItsRow) {
    for (const sdp::LineRow& line : sdp::kLineRows) {
        EXPECT_EQ(sdp::RowOf(line.example), line.row) << line.example;
        EXPECT_EQ(line.example.substr(0, line.keyword.size()), line.keyword) << line.example;
    }
    EXPECT_EQ(sdp::RowOf("v=0"), SDPRow::None);
    EXPECT_EQ(sdp::RowOf(""), SDPRow::None);
}

TEST(SDPLines, EarlierRowWinsWhereverItsKeywordStands) {
    EXPECT_EQ(sdp::RowOf("a=fmtp:111 minptime=10; useinbandfec=1"), SDPRow::Connection);
    EXPECT_EQ(sdp::RowOf("a=ice-options:a=content:slides"), SDPRow::Ice);
    EXPECT_EQ(sdp::RowOf("realm=\"example\""), SDPRow::Media);
    EXPECT_EQ(sdp::RowOf("a=ice-lite"), SDPRow::Ice);
}

struct Seen {
    std::string text;
    std::vector<std::string> calls;
};

void Note(Seen& seen, const char* when, const SDPLine& line) {
    seen.calls.push_back(std::string(when) + " " + std::to_string(static_cast<int>(line.row)) + " " +
                         seen.text.substr(line.offset, line.length) + " " +
                         (line.section == nullptr ? "session" : line.section->strFullMLine));
}
void Before(void* seen, const SDPLine& line) {
    Note(*static_cast<Seen*>(seen), "before", line);
}
void After(void* seen, const SDPLine& line) {
    Note(*static_cast<Seen*>(seen), "after", line);
}

TEST(SDPLines, ObserverSeesEachLineBeforeAndAfterItsHandler) {
    Seen seen{"v=0\r\nm=audio 5004 RTP/AVP 0\r\na=sendonly\r\na=lost", {}};
    const SDPLineObserver observer = {Before, After, &seen};
    SDPHandler handler;
    RemoteSDP remote;
    handler.SetLineObserver(&observer);
    handler.ParseTheSDP(seen.text, remote);
    EXPECT_EQ(seen.calls, (Lines{
                              "before 13 v=0 session",
                              "after 13 v=0 session",
                              "before 1 m=audio 5004 RTP/AVP 0 session",
                              "after 1 m=audio 5004 RTP/AVP 0 m=audio 5004 RTP/AVP 0",
                              "before 12 a=sendonly m=audio 5004 RTP/AVP 0",
                              "after 12 a=sendonly m=audio 5004 RTP/AVP 0",
                          }));
}

TEST(SDPLines, ObserverMayHaveOneFunctionAndCanBeTakenAway) {
    Seen seen{"a=sendonly\r\n", {}};
    const SDPLineObserver before = {Before, nullptr, &seen};
    const SDPLineObserver after = {nullptr, After, &seen};
    SDPHandler handler;
    RemoteSDP remote;
    handler.SetLineObserver(&before);
    handler.ParseTheSDP(seen.text, remote);
    handler.SetLineObserver(&after);
    handler.ParseTheSDP(seen.text, remote);
    handler.SetLineObserver(nullptr);
    handler.ParseTheSDP(seen.text, remote);
    EXPECT_EQ(seen.calls, (Lines{"before 12 a=sendonly session", "after 12 a=sendonly session"}));
}

TEST(SDPLines, SectionsHeldCanBeLookedAt) {
    SDPHandler handler;
    RemoteSDP remote;
    EXPECT_TRUE(handler.GetRemoteSections().empty());
    handler.ParseTheSDP("m=audio 5004 RTP/AVP 0\r\na=ice-ufrag:F7gI\r\nm=video 5006 RTP/AVP 97\r\n", remote);
    const RemoteSections sections = handler.GetRemoteSections();
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0]->striceufrag, "a=ice-ufrag:F7gI");
    Lines media;
    for (const MediaSession* const section : sections) {
        media.push_back(section->strFullMLine);
    }
    EXPECT_EQ(media, (Lines{"m=audio 5004 RTP/AVP 0", "m=video 5006 RTP/AVP 97"}));
    handler.ResetRemoteSDP();
    EXPECT_TRUE(handler.GetRemoteSections().empty());
}

TEST(SDPLines, ServedSectionsDecideWhatTheAnswerRepeats) {
    SDPHandler handler;
    RemoteSDP remote;
    handler.MyLocalSDP.m_VideoMain.eVideoCodec = PayloadType_t(0);
    handler.ParseTheSDP("m=text 1 RTP/AVP 98\r\nm=text 2 RTP/AVP 98\r\nm=text 3 RTP/AVP 98\r\n", remote);
    const auto rejected = [&handler] {
        const std::string answer = handler.GetLocalSDP();
        return answer.substr(answer.find("t=0 0\r\n") + 7);
    };
    EXPECT_EQ(rejected(), "m=text 0 RTP/AVP 98\r\n");
    handler.SetMaxSupportedSessions(1);
    EXPECT_EQ(rejected(), "m=text 0 RTP/AVP 98\r\nm=text 0 RTP/AVP 98\r\n");
    handler.SetMaxSupportedSessions(4);
    EXPECT_EQ(rejected(), "");
}

} // namespace
