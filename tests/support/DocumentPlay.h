// What plays the steps of a document: which step a line is, and where a difference is reported. A player
// derives from StepPlayer and lists its steps in Rows; DocumentRun.h has that of handlers. Tests:
// DocumentTest.cpp.
#pragma once

#include "Document.h"
#include "Expect.h"

#include <cstddef>
#include <functional>
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
        throw Malformed(step.head, "no such step");
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

/// Plays the shared steps and then those of the section. Without a comparison the section is malformed.
template <typename Player>
void Run(const std::vector<Step>& shared, const Section& section, const Report& report) {
    Player player(report);
    for (const std::vector<Step>* steps : {&shared, &section.steps}) {
        for (const Step& step : *steps) {
            player.Play(step);
        }
    }
    player.End();
    if (player.Compared() == 0) {
        throw Malformed(section.heading, "a section that compares nothing");
    }
}

} // namespace documents
