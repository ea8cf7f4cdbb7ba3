// What plays the steps of a document: which step a line is, and where a difference is reported. A player
// derives from StepPlayer and lists its steps in Rows; DocumentRun.h has that of handlers. "each" is a step
// of every player: its lines are rows of values, and the steps after it, up to the next "each", are played
// once for each row with $1, $2, ... replaced by the values. Tests: DocumentTest.cpp.
//
//     each
//         sendonly | recvonly
//         recvonly | sendonly
//     arrives audio with
//         a=sendrecv => a=$1
#pragma once

#include "Document.h"
#include "Expect.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace documents {

/// Gets the line of a difference and what it is.
using Report = std::function<void(const Line&, const std::string&)>;

template <typename Player>
class StepPlayer {
public:
    explicit StepPlayer(Report report) : m_report(std::move(report)) {}

    void Play(const Step& step) {
        m_step = step;
        m_words = WordsOf(step.head.text);
        for (const Row& row : Player::Rows()) {
            if (Matches(row.pattern)) {
                if (!row.takesLines && !step.block.empty()) {
                    throw Malformed(step.block[0], "the step takes no lines");
                }
                (static_cast<Player*>(this)->*row.play)();
                return;
            }
        }
        throw Malformed(step.head, "no such step; the table of this player lists those that there are");
    }

    /// Called after the last step.
    void End() {}

    /// How many texts and records were compared.
    int Compared() const { return m_compared; }

protected:
    using Lines = std::vector<Line>;
    struct Row {
        const char*
            pattern; // a word in capitals is any word, "..." any words; one in brackets may be missing
        bool takesLines;
        void (Player::*play)();
    };

    template <typename Meaning>
    void Define(std::map<std::string, Meaning>& meanings, Meaning meaning) {
        if (!meanings.emplace(m_words[1], std::move(meaning)).second) {
            throw Malformed(m_step.head, "a second definition of " + m_words[1]);
        }
    }

    // What a word of the step stands for.
    template <typename Meaning>
    const Meaning& Meant(const std::map<std::string, Meaning>& meanings, std::size_t word) const {
        const auto found = meanings.find(m_words[word]);
        if (found == meanings.end()) {
            throw Malformed(m_step.head, "nothing is called " + m_words[word]);
        }
        return found->second;
    }

    // Expected lines carry their ends. A difference is reported at the first line that differs, or at the
    // step when no line of the document does.
    void Compare(const std::string& actual, const Lines& expected, const char* name = "this program") {
        ++m_compared;
        const Line* different = &m_step.head;
        std::string text;
        for (const Line& line : expected) {
            if (different == &m_step.head && actual.compare(text.size(), line.text.size(), line.text) != 0) {
                different = &line;
            }
            text += line.text;
        }
        if (const auto same = support::SameText(name, "this document", actual, text); !same) {
            m_report(*different, m_step.head.text + ": " + same.message());
        }
    }

    Report m_report;
    Step m_step;
    std::vector<std::string> m_words;
    int m_compared = 0;

private:
    bool Matches(const char* pattern) const {
        std::size_t at = 0;
        for (const std::string& want : WordsOf(pattern)) {
            if (want == "..." || at == m_words.size()) {
                return want == "..." || want[0] == '[';
            }
            const std::string& word = m_words[at++];
            if (word != want && want[0] != '[' && (want[0] < 'A' || want[0] > 'Z')) {
                return false;
            }
        }
        return at == m_words.size();
    }
};

/// A line with $1, $2, ... replaced by the values of a row: words or empty pieces between " | ".
inline Line Filled(Line line, const Line& row) {
    std::vector<std::string> values = {""};
    for (const std::string& word : WordsOf(row.text)) {
        if (word == "|") {
            values.emplace_back();
        } else {
            values.back() += (values.back().empty() ? "" : " ") + word;
        }
    }
    for (std::size_t at = line.text.find('$'); at != std::string::npos; at = line.text.find('$', at)) {
        const std::size_t number =
            at + 1 < line.text.size() ? static_cast<std::size_t>(line.text[at + 1] - '0') : 0;
        if (number == 0 || number > 9) {
            ++at;
        } else if (number > values.size()) {
            throw Malformed(line, "the row " + row.Place() + " has no value " + std::to_string(number));
        } else {
            line.text.replace(at, 2, values[number - 1]);
            at += values[number - 1].size();
        }
    }
    return line;
}

inline Step Filled(Step step, const Line& row) {
    step.head = Filled(step.head, row);
    for (Line& line : step.block) {
        line = Filled(line, row);
    }
    return step;
}

/// Plays the shared steps and then those of the section. Without a comparison the section is malformed.
template <typename Player>
void Run(const std::vector<Step>& shared, const Section& section, const Report& report) {
    std::string row;
    Player player([&](const Line& line, const std::string& what) { report(line, row + what); });
    for (const Step& step : shared) {
        player.Play(step);
    }
    const auto isEach = [](const Step& step) { return step.head.text == "each"; };
    const auto end = section.steps.end();
    auto step = section.steps.begin();
    for (; step != end && !isEach(*step); ++step) {
        player.Play(*step);
    }
    while (step != end) {
        const auto next = std::find_if(step + 1, end, isEach);
        if (step->block.empty() || step + 1 == next) {
            throw Malformed(step->head, "rows, and steps for them");
        }
        for (const Line& values : step->block) {
            row = "with " + values.text + ": ";
            std::for_each(step + 1, next, [&](const Step& each) { player.Play(Filled(each, values)); });
        }
        row.clear();
        step = next;
    }
    player.End();
    if (player.Compared() == 0) {
        throw Malformed(section.heading, "a section that compares nothing");
    }
}

/// The first line of each report of a document's sections, and what is malformed: for the tests of a player.
template <typename Player>
std::string ReportsOf(const std::string& text) {
    std::string reports;
    const Report report = [&](const Line& line, const std::string& what) {
        reports += line.Place() + ": " + what.substr(0, what.find('\n')) + "\n";
    };
    try {
        const Document document = ReadDocument("a.cases", text);
        for (const Section& section : document.sections) {
            Run<Player>(document.shared, section, report);
        }
    } catch (const Malformed& problem) {
        reports += std::string(problem.what()) + "\n";
    }
    return reports;
}

} // namespace documents
