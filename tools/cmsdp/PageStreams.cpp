// Stage: none; the streams of a description as cards.
// Input: a report. Output: verdict, arrows, values and links to the findings of each stream.
// Touches nothing.
// Rows and words are those of `cmsdp inspect`; a topic of explain belongs to one card.
// Test: tests/tool/PageTest.cpp
#include "Page.h"

#include "Redact.h"

#include "ReportTable.h"
#include <algorithm>

namespace cmsdp {

namespace {

struct Directions {
    bool send = false;
    bool receive = false;
};

// A card: the title of its block in the report, what it says of the stream, and the topics of its findings.
struct StreamRow {
    const char* block;
    const char* title;
    const Finding Report::*finding;
    Directions (*directions)(const RemoteSDP&);
    bool (*isAbout)(ExplainTopic);
};

Directions OfAudio(const RemoteSDP& record) {
    return {record.fAudioSend, record.fAudioRecv};
}
Directions OfMain(const RemoteSDP& record) {
    return {record.m_VideoMain.fVideoSend, record.m_VideoMain.fVideoRecv};
}
Directions OfSlides(const RemoteSDP& record) {
    return {record.m_VideoPreso.fVideoSend, record.m_VideoPreso.fVideoRecv};
}
// A floor control channel carries messages both ways (RFC 4582, 4).
Directions OfFloor(const RemoteSDP& /*record*/) {
    return {true, true};
}

bool IsAudio(ExplainTopic topic) {
    return topic == ExplainTopic::AudioCodec || topic == ExplainTopic::AudioSend ||
           topic == ExplainTopic::AudioReceive || topic == ExplainTopic::Dtmf ||
           topic == ExplainTopic::EncryptionAudio;
}
bool IsMain(ExplainTopic topic) {
    return topic == ExplainTopic::MainPicture || topic == ExplainTopic::MainSend ||
           topic == ExplainTopic::MainReceive || topic == ExplainTopic::EncryptionMain;
}
bool IsSlides(ExplainTopic topic) {
    return topic == ExplainTopic::Slides || topic == ExplainTopic::EncryptionSlides;
}
bool IsFloor(ExplainTopic topic) {
    return topic == ExplainTopic::Floor;
}
bool IsWhole(ExplainTopic topic) {
    return !IsAudio(topic) && !IsMain(topic) && !IsSlides(topic) && !IsFloor(topic);
}

constexpr StreamRow kStreamRows[] = {
    {"audio", "Audio", &Report::audio, OfAudio, IsAudio},
    {"main video", "Main video", &Report::mainVideo, OfMain, IsMain},
    {"presentation", "Presentation", &Report::presentation, OfSlides, IsSlides},
    {"floor control", "Floor control", &Report::floorControl, OfFloor, IsFloor},
};

// An arrow to the right at `y`, or the same to the left; a dashed line where nothing flows.
void WriteArrow(Markup& out, bool toRight, bool flows, const char* y, const char* head) {
    out.Void("line",
             {{"class", flows ? "flow" : "still"}, {"x1", "20"}, {"x2", "220"}, {"y1", y}, {"y2", y}});
    if (flows) {
        out.Void("path",
                 {{"class", "head"}, {"d", head}, {"transform", toRight ? "" : "rotate(180 120 30)"}});
    }
}

void WriteArrows(Markup& out, const PageText& text, Directions flow) {
    const bool toRight = text.readerIsLeft ? flow.send : flow.receive;
    const bool toLeft = text.readerIsLeft ? flow.receive : flow.send;
    const std::string& left = text.readerIsLeft ? text.reader : text.writer;
    const std::string& right = text.readerIsLeft ? text.writer : text.reader;
    const std::string words = left + (toRight ? " sends to " : " sends nothing to ") + right + "; " + right +
                              (toLeft ? " sends to " : " sends nothing to ") + left;
    out.Open("svg", {{"class", "arrows"}, {"viewBox", "0 0 240 48"}, {"role", "img"}, {"aria-label", words}});
    out.Element("text", {{"x", "0"}, {"y", "10"}}, left);
    out.Element("text", {{"x", "240"}, {"y", "10"}, {"text-anchor", "end"}}, right);
    WriteArrow(out, true, toRight, "22", "M 222 22 l -9 -5 v 10 z");
    // Turned by half round (120, 30), y 38 is where the left arrow's line is drawn.
    WriteArrow(out, false, toLeft, "38", "M 222 22 l -9 -5 v 10 z");
    out.Close();
}

// The rows of a block as terms and values, with a label in place of their own. Moods are for terminals.
void WriteRows(Markup& out, const Block& block, const std::string& label = "") {
    out.Open("dl");
    for (const Row& row : block.rows) {
        if (row.label == "state" || row.cells.empty() || row.cells[0].text.empty()) {
            continue;
        }
        out.Open("div").Element("dt", label.empty() ? row.label : label).Open("dd");
        const std::string& cell = row.cells[0].text;
        for (std::size_t at = 0; at <= cell.size();) {
            const std::size_t end = std::min(cell.find('\n', at), cell.size());
            out.Element("p", std::string_view(cell).substr(at, end - at));
            at = end + 1;
        }
        out.Close().Close();
    }
    out.Close();
}

void WriteLinks(Markup& out, const PageText& text, bool (*isAbout)(ExplainTopic)) {
    bool isOpen = false;
    for (std::size_t i = 0; i < text.findings.size(); ++i) {
        const ExplainFinding& finding = text.findings[i];
        if (!isAbout(finding.topic)) {
            continue;
        }
        if (!isOpen) {
            out.Open("p", {{"class", "links"}}).Text("Findings:");
            isOpen = true;
        }
        const std::string anchor = FindingAnchor(text, i);
        out.Text(" ").Element(
            "a",
            {{"class", std::string(ExplainSeverityName(finding.severity)) + " " + anchor}, {"href", anchor}},
            std::string(finding.id) + " " + ExplainTopicName(finding.topic) + " " +
                ExplainSeverityName(finding.severity));
    }
    if (isOpen) {
        out.Close();
    }
}

const StreamRow* RowOf(const Block& block) {
    for (const StreamRow& row : kStreamRows) {
        if (block.title == row.block) {
            return &row;
        }
    }
    return nullptr;
}

// "card up", "card down", or "card off" for a stream that nobody misses: no finding about it is worse than a
// note.
const char* StateOf(const PageText& text, const StreamRow& row, bool isUp) {
    const bool isMissed =
        std::any_of(text.findings.begin(), text.findings.end(), [&row](const ExplainFinding& finding) {
            return row.isAbout(finding.topic) && finding.severity != ExplainSeverity::Note;
        });
    return isUp ? "card up" : isMissed ? "card down" : "card off";
}

void WriteStream(Markup& out, const PageText& text, const Block& block, const StreamRow& row) {
    const bool isUp = ((*text.report).*row.finding).negotiated;
    out.Open("article", {{"class", StateOf(text, row, isUp)}});
    out.Open("h3").Text(row.title).Text(" ").Element("span", {{"class", "state"}},
                                                     isUp ? "negotiated" : "not negotiated");
    out.Close();
    WriteArrows(out, text, isUp ? row.directions(text.report->record) : Directions{});
    WriteRows(out, block);
    WriteLinks(out, text, row.isAbout);
    out.Close();
}

} // namespace

void WriteStreams(Markup& out, const PageText& text) {
    Secrets secrets(false);
    const std::vector<Block> blocks = ReportBlocks(*text.report, secrets);
    out.Open("div", {{"class", "cards"}});
    for (const Block& block : blocks) {
        if (const StreamRow* const row = RowOf(block)) {
            WriteStream(out, text, block, *row);
        }
    }
    out.Open("article", {{"class", "card whole"}}).Element("h3", "Call");
    for (const Block& block : blocks) {
        if (RowOf(block) == nullptr) {
            WriteRows(out, block, block.title == "session" ? "" : block.title);
        }
    }
    WriteLinks(out, text, IsWhole);
    out.Close().Close();
}

} // namespace cmsdp
