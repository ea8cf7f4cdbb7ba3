// What the component makes of each of its lines, seen by following one parse.
#pragma once

#include "LineValues.h"
#include "Reading.h"
#include "SDPExplain.h"

#include <map>
#include <string>
#include <vector>

namespace explain {

/// Follows one parse and gives each line of the component its verdict.
class Follower {
public:
    Follower(const ExplainInput& input, const Reading& reading) : m_input(input), m_reading(reading) {
        m_lines.resize(reading.parsedLines.size());
    }

    void Run();
    /// The line as the component has read it, by its index in Reading::parsedLines.
    const ExplainedLine& At(std::size_t index) const { return m_lines[index]; }

private:
    void Before(const SDPLine& line);
    void After(const SDPLine& line);
    void TakeChange(const SDPLine& line, ExplainedLine& explained, const LineValue& value);
    void TakeNone(const SDPLine& line, ExplainedLine& explained);
    void TakeSession(const SDPLine& line, ExplainedLine& explained);
    void Settle(std::size_t index, const char* why);
    std::size_t TakeSuite(const SDPLine& line);
    void Override(std::size_t index);
    std::string KeyOf(const SDPLine& line) const;

    const ExplainInput& m_input;
    const Reading& m_reading;
    std::vector<ExplainedLine> m_lines;
    std::map<std::string, std::size_t> m_setters; ///< what was set last, by which line
    Formats m_formats;
    LineValue m_before;
    const MediaSession* m_section = nullptr;
    std::size_t m_parsed = 0;
};

} // namespace explain
