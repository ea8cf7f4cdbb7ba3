// Documents: tests as text. ReadDocument(path, text) cuts a file NAME.cases into its sections and steps.
//
//     # A line that begins with "#" is for the reader.
//     === Suite.Name                  a test, called so by ctest
//     One line that says why.         directly after the heading
//     near = audio                    a step: support/DocumentRun.h lists them
//         iAudioRTPPort = 17000       indented by four blanks: the fields, the text or the record of the step
//
// An empty line between two indented lines is one of the text.
//
// Steps before the first heading are run at the start of every test of the file. Tests: DocumentTest.cpp.
#pragma once

#include <cstddef>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace documents {

/// A line of a document and where it is.
struct Line {
    std::string path;
    int number = 0;
    std::string text;

    std::string Place() const { return path + ":" + std::to_string(number); }
};

struct Step {
    Line head;
    std::vector<Line> block;
};

struct Section {
    Line heading; ///< its text is "Suite.Name"
    std::vector<Step> steps;
};

struct Document {
    std::vector<Step> shared;
    std::vector<Section> sections;
};

/// What is wrong with a document; begins with "file:line: ".
class Malformed : public std::runtime_error {
public:
    Malformed(const Line& line, const std::string& what)
        : std::runtime_error(line.Place() + ": " + what), m_line(line) {}
    const Line& Where() const { return m_line; }

private:
    Line m_line;
};

inline std::vector<std::string> WordsOf(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;) {
        words.push_back(word);
    }
    return words;
}

inline bool StartsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

class Reader {
public:
    Document Read(const std::string& path, const std::string& text) {
        std::istringstream in(text);
        m_line = {path, 0, ""};
        while (std::getline(in, m_line.text)) {
            ++m_line.number;
            Take();
        }
        EndSection();
        return m_document;
    }

private:
    void Take() {
        const std::string& text = m_line.text;
        for (const char c : text) {
            if (c < 0x20 || c > 0x7e) {
                throw Malformed(m_line, "a byte that is not printable ASCII; write \\r, \\n, \\t or \\xNN");
            }
        }
        if (!text.empty() && text.back() == ' ') {
            throw Malformed(m_line, "a blank at the end cannot be seen; write \\x20");
        }
        if (m_wantsReason) {
            if (text.empty() || text.back() != '.' || text[0] == ' ') {
                throw Malformed(m_line, "the line after a heading is one sentence that says why");
            }
            m_wantsReason = false;
        } else if (StartsWith(text, "=== ")) {
            Heading(text.substr(4));
        } else if (text.empty()) {
            ++m_emptyLines;
            return;
        } else if (StartsWith(text, "    ")) {
            TakeBlockLine();
        } else if (StartsWith(text, " ")) {
            throw Malformed(m_line, "fields, texts and records are indented by four blanks");
        } else if (text[0] != '#') {
            Steps().push_back({m_line, {}});
        }
        m_emptyLines = 0;
    }

    void Heading(const std::string& name) {
        EndSection();
        const std::size_t dot = name.find('.');
        if (dot == 0 || dot >= name.size() - 1 || name.find_first_of(". ", dot + 1) != std::string::npos) {
            throw Malformed(m_line, "a heading is === Suite.Name");
        }
        if (!m_names.insert(name).second) {
            throw Malformed(m_line, "a second section " + name);
        }
        m_document.sections.push_back({{m_line.path, m_line.number, name}, {}});
        m_wantsReason = true;
    }

    void TakeBlockLine() {
        if (Steps().empty()) {
            throw Malformed(m_line, "an indented line without a step before it");
        }
        std::vector<Line>& block = Steps().back().block;
        for (int above = block.empty() ? 0 : m_emptyLines; above > 0; --above) {
            block.push_back({m_line.path, m_line.number - above, ""});
        }
        block.push_back({m_line.path, m_line.number, m_line.text.substr(4)});
    }

    void EndSection() const {
        if (!m_document.sections.empty() && m_document.sections.back().steps.empty()) {
            throw Malformed(m_document.sections.back().heading, "a section without a step");
        }
    }

    std::vector<Step>& Steps() {
        return m_document.sections.empty() ? m_document.shared : m_document.sections.back().steps;
    }

    Document m_document;
    Line m_line;
    bool m_wantsReason = false;
    int m_emptyLines = 0; ///< directly above this line
    std::set<std::string> m_names;
};

inline Document ReadDocument(const std::string& path, const std::string& text) {
    return Reader().Read(path, text);
}

/// The bytes of a block's line. A line ends in CR LF, that of another kind of block in `end`; one that ends
/// in "\n" or "\r" has that end alone, and one that ends in a lone backslash has none: the next line goes on
/// where it stops.
inline std::string Unescape(const Line& line, std::string end = "\r\n") {
    static const std::string letters = "rnt\\";
    static const std::string bytes = "\r\n\t\\";
    std::string out;
    for (std::size_t at = 0; at < line.text.size(); ++at) {
        const bool isLast = at + 1 == line.text.size();
        if (line.text[at] != '\\') {
            out += line.text[at];
        } else if (isLast) {
            end.clear();
        } else if (const std::size_t letter = letters.find(line.text[++at]); letter != std::string::npos) {
            out += bytes[letter];
            if (at + 1 == line.text.size() && letter < 2) {
                end.clear();
            }
        } else {
            const std::string digits = line.text.substr(at + 1, 2);
            if (line.text[at] != 'x' || digits.size() != 2 ||
                digits.find_first_not_of("0123456789abcdef") != std::string::npos) {
                throw Malformed(line, "an escape is one of \\r \\n \\t \\\\ \\xNN");
            }
            out += static_cast<char>(std::stoi(digits, nullptr, 16));
            at += 2;
        }
    }
    return out + end;
}

/// A line as a document has it: a blank at its end is written \x20.
inline std::string EndVisible(std::string line) {
    if (!line.empty() && line.back() == ' ') {
        line.replace(line.size() - 1, 1, "\\x20");
    }
    return line;
}

/// The bytes of a block.
inline std::string TextOf(const std::vector<Line>& block) {
    std::string text;
    for (const Line& line : block) {
        text += Unescape(line);
    }
    return text;
}

/// The text with each line "WHAT => WITH" or "every WHAT => WITH" applied in turn. Without "every", WHAT
/// occurs just once.
inline std::string Edited(std::string text, const std::vector<Line>& edits) {
    for (const Line& edit : edits) {
        const std::size_t begin = StartsWith(edit.text, "every ") ? 6 : 0;
        const std::size_t arrow = edit.text.find(" =>", begin);
        const auto bytes = [&edit](std::size_t from, std::size_t length) {
            return from > edit.text.size()
                       ? std::string()
                       : Unescape({edit.path, edit.number, edit.text.substr(from, length) + "\\"});
        };
        const std::string what = bytes(begin, arrow - begin);
        const std::string with = arrow == std::string::npos ? "" : bytes(arrow + 4, std::string::npos);
        std::size_t count = 0;
        for (std::size_t at = text.find(what); at != std::string::npos && !what.empty();
             at = text.find(what, at + with.size())) {
            text.replace(at, what.size(), with);
            ++count;
        }
        if (arrow == std::string::npos || what.empty() || count == 0 || (begin == 0 && count > 1)) {
            throw Malformed(
                edit, "no edit WHAT => WITH whose WHAT occurs just once; every WHAT => WITH replaces all");
        }
    }
    return text;
}

} // namespace documents
