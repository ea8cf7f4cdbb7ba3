// One text judged alone: a description of one audio section, and lines that are put into it. One section that
// answers another.
#pragma once

#include "Expect.h"
#include "Pairs.h"

#include <gtest/gtest.h>

#include <string>

namespace judged {

/// The faults of a text, whatever comes before or beside it.
inline std::string Faults(const std::string& text) {
    return Written(CheckNext("", text));
}

/// Lines 1 to 5, the session, before the lines of a section.
inline std::string SessionText(const std::string& section) {
    return "v=0\r\no=- 1 1 IN IP4 192.0.2.1\r\ns=-\r\nc=IN IP4 192.0.2.1\r\nt=0 0\r\n" + section;
}

/// The faults of a section as the answer to another one; the section is line 6 of either text.
inline std::string Answer(const std::string& offered, const std::string& answered) {
    return Written(CheckAnswer(SessionText(offered), SessionText(answered)));
}

/// Line 6 opens an audio section; `lines` are whole lines of it.
inline std::string AudioText(const std::string& lines) {
    return SessionText("m=audio 5004 RTP/AVP 0\r\n" + lines);
}

/// A line and what the judge says of it in line 7 of an audio text; nothing for a line that is correct.
struct JudgedLine {
    std::string line;
    std::string fault;
};

template <std::size_t N>
void ExpectFaults(const JudgedLine (&rows)[N]) {
    for (const JudgedLine& row : rows) {
        const std::string found = Faults(AudioText(row.line + "\r\n"));
        EXPECT_TEXT(found, row.fault.empty() ? "" : row.fault + "\n");
    }
}

} // namespace judged
