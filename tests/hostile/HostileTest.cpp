// The classes of hostile input whose input and outcome are texts: each document NAME.cases of this directory
// holds those of a topic. A text is mostly "conference" with edits, and its outcome is stated as the lines
// that differ from the outcome of "conference" or of "nothing", a text without a line; conference.cases
// states these two whole. Classes that need code are in the files beside it.
#include "Hostile.h"
#include "Documents.h"

#include <map>

namespace {

class HostilePlayer : public documents::StepPlayer<HostilePlayer> {
public:
    using StepPlayer::StepPlayer;

private:
    friend StepPlayer;

    static const std::vector<Row>& Rows() {
        static const std::vector<Row> rows = {
            // The next text: the lines, or the edits WHAT => WITH of a named text.
            {"arrives", true, &HostilePlayer::Arrives},
            {"arrives TEXT", false, &HostilePlayer::ArrivesWith},
            {"arrives TEXT with", true, &HostilePlayer::ArrivesWith},
            // What Outcome returns for it: that of the named text, or the lines that differ from it.
            {"outcome is TEXT", false, &HostilePlayer::Outcome},
            {"outcome differs from TEXT", true, &HostilePlayer::Outcome},
        };
        return rows;
    }

    void Arrives() { m_text = documents::TextOf(m_step.block); }

    void ArrivesWith() { m_text = documents::Edited(hostile::Stated("text " + m_words[1]), m_step.block); }

    void Outcome() {
        Lines expected = m_step.block;
        for (documents::Line& line : expected) {
            line.text += "\n";
        }
        Compare(hostile::Difference(hostile::Stated("outcome " + m_words.back()), hostile::Outcome(m_text)),
                expected);
    }

    std::string m_text;
};

[[maybe_unused]] const int kDocuments = documents::RegisterDocumentsOf<HostilePlayer>("hostile", "");

} // namespace
