// Stage: the verdict of each line of the text, as an editor counts lines.
// Input: the text, and the verdicts of the component's lines. Output: ExplainedLine for each editor line.
// Touches nothing outside.
// Test: tests/explain/LawTest.cpp, tests/tool/explain_outputs.py
#include "Follower.h"
#include "Suspect.h"

namespace explain {

namespace {

void Finish(ExplainedLine& explained, const TextLine& line, const ParsedLine& parsed,
            const Reading& reading) {
    bool isHere = true; // and not in a line that is joined to this one
    if (parsed.row != SDPRow::None) {
        const std::size_t at = KeywordAt(parsed.text, parsed.row);
        explained.column = at + 1;
        isHere = at < line.text.size();
    }
    // A keyword that is misspelled leaves the row of all attributes, and the line is not another one by that.
    const bool isOther =
        parsed.row != line.meant && parsed.row != SDPRow::None &&
        (parsed.row != SDPRow::Direction || line.meant == SDPRow::None || !BeginsWith(parsed.text, "a"));
    if (parsed.count == 1 && isOther) {
        explained.verdict = ExplainVerdict::Misread;
        explained.ledger = "P01";
    } else if (parsed.count > 1 && (!isHere || explained.verdict == ExplainVerdict::Dropped ||
                                    explained.verdict == ExplainVerdict::Ignored)) {
        explained.verdict = ExplainVerdict::Joined;
        explained.byLine = line.number + 1;
        explained.ledger = "P03";
    } else if (explained.verdict == ExplainVerdict::Used && Canonical(line, reading) != line.text) {
        explained.verdict = ExplainVerdict::Tolerated;
    }
}

} // namespace

} // namespace explain

std::vector<ExplainedLine> ExplainLines(const ExplainInput& input) {
    using namespace explain;
    const Reading reading = Read(input.remote);
    Follower follower(input, reading);
    follower.Run();
    std::vector<ExplainedLine> lines;
    for (std::size_t i = 0; i < reading.lines.size(); ++i) {
        const TextLine& line = reading.lines[i];
        ExplainedLine explained;
        const bool isParsed = line.parsedLine != kNowhere;
        if (isParsed && reading.parsedLines[line.parsedLine].first == i) {
            explained = follower.At(line.parsedLine);
            Finish(explained, line, reading.parsedLines[line.parsedLine], reading);
        } else if (isParsed) {
            explained.verdict = ExplainVerdict::Joined;
            explained.byLine = reading.lines[reading.parsedLines[line.parsedLine].first].number;
            explained.why = "the line before it does not end in CR LF";
            explained.ledger = "P03";
        } else {
            explained.verdict = ExplainVerdict::Dropped;
            explained.why = "no CR LF ends it";
            explained.ledger = "P02";
        }
        explained.number = line.number;
        explained.offset = line.offset;
        explained.length = line.text.size();
        lines.push_back(std::move(explained));
    }
    return lines;
}
