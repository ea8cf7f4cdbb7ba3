// Runs a section of a document of the command: files are written, commands run in their directory, and
// standard output, standard error and exit status are compared as a whole. Player::Rows lists the steps. What
// a section does not say of a command is that it writes nothing and ends with status 0. Tests:
// DocumentsTest.cpp.
#pragma once

#include "DocumentPlay.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tool {

/// Plays the steps of one test, in a directory of its own.
class Player : public documents::StepPlayer<Player> {
public:
    using StepPlayer::StepPlayer;

    void End() {
        if (!m_command.head.text.empty()) {
            m_step = m_command;
            Unsaid();
        }
    }

private:
    friend StepPlayer;
    static const std::vector<Row>& Rows() {
        static const std::vector<Row> rows = {
            // Lines that have a name: those of a file, of an input or of an output.
            {"text NAME", true, &Player::DefineText},
            // A file, a captured description as a file, and standard input of the commands that follow. The
            // lines end in CR LF.
            {"file NAME [TEXT]", true, &Player::File},
            {"capture NAME", false, &Player::Captured},
            {"input [TEXT]", true, &Player::Input},
            {"environment NAME VALUE", false, &Player::Environment},
            // A command as a shell takes it: blanks part words, except between two apostrophes. A name and a
            // word may have the escapes of a text.
            {"$ cmsdp ...", false, &Player::Runs},
            // Its whole standard output, in which "ID" is the session id: a description, whose lines end in
            // CR LF; lines in it; a member of its JSON by its pointer; what nobody looks at; any other text.
            {"output sdp [TEXT]", true, &Player::OutputSdp},
            {"output has", true, &Player::OutputHas},
            {"output at POINTER", true, &Player::OutputAt},
            {"output any", false, &Player::OutputAny},
            {"output [TEXT]", true, &Player::Output},
            // Its whole standard error, and its exit status.
            {"error", true, &Player::Error},
            {"status NUMBER", false, &Player::Status},
        };
        return rows;
    }

    // The lines of the step, or of the text that its word names, with their ends, `end` where they show none.
    Lines Ended(const std::string& end, std::size_t name) const {
        Lines lines = m_step.block;
        if (name < m_words.size()) {
            if (!lines.empty()) {
                throw documents::Malformed(m_step.head, "a name, and lines as well");
            }
            lines = Meant(m_texts, name);
        }
        for (documents::Line& line : lines) {
            line.text = documents::Unescape(line, end);
        }
        return lines;
    }

    std::string Text(const std::string& end, std::size_t name) const {
        std::string text;
        for (const documents::Line& line : Ended(end, name)) {
            text += line.text;
        }
        return text;
    }

    std::string Unescaped(const std::string& word) const {
        return documents::Unescape({m_step.head.path, m_step.head.number, word}, "");
    }

    // The words after "$ cmsdp".
    std::vector<std::string> Arguments() const {
        std::vector<std::string> words;
        std::string word;
        std::size_t quotes = 0;
        for (const char c : m_step.head.text.substr(7) + " ") {
            if (c == '\'') {
                ++quotes;
            } else if (c != ' ' || quotes == 1) {
                word += c;
            } else if (!word.empty() || quotes == 2) {
                words.push_back(Unescaped(word));
                word.clear();
                quotes = 0;
            }
        }
        return words;
    }

    // What no step said of the last command, whose step is at hand.
    void Unsaid() {
        if (m_said.count("output") == 0) {
            Compare(m_result.out, {}, "standard output");
        }
        if (m_said.count("error") == 0) {
            Compare(m_result.err, {}, "standard error");
        }
        if (m_said.count("status") == 0) {
            CompareStatus("status 0");
        }
    }

    void CompareStatus(const std::string& expected) {
        Compare("status " + std::to_string(m_result.status),
                {{m_step.head.path, m_step.head.number, expected}}, "the command");
    }

    void DefineText() { Define(m_texts, m_step.block); }
    void File() { m_folder.Write(Unescaped(m_words[1]), Text("\r\n", 2)); }
    void Captured() { m_folder.Write(m_words[1], Capture(m_words[1])); }
    void Input() { m_how.input = Text("\r\n", 1); }
    void Environment() { m_how.environment.emplace_back(m_words[1], m_words[2]); }

    void Runs() {
        const documents::Step command = m_step;
        End();
        m_command = m_step = command;
        m_result = m_folder.Cmsdp(Arguments(), m_how);
        m_result.out = MaskId(m_result.out);
        m_said.clear();
    }

    void Says(const std::string& actual, const std::string& end, std::size_t name) {
        m_said.insert(m_words[0]);
        Compare(actual, Ended(end, name));
    }
    void Output() { Says(m_result.out, "\n", 1); }
    void OutputSdp() { Says(m_result.out, "\r\n", 2); }
    void OutputAny() { m_said.insert("output"); }
    void Error() { Says(m_result.err, "\n", 1); }

    void OutputHas() {
        m_said.insert("output");
        const std::string text = Text("\n", 2);
        if (text.empty()) {
            throw documents::Malformed(m_step.head, "no lines, so every output would match");
        }
        const bool isThere = m_result.out.find(text) != std::string::npos;
        Compare(isThere ? text : m_result.out, Ended("\n", 2));
    }

    void OutputAt() {
        const auto root = nlohmann::ordered_json::parse(m_result.out, nullptr, false);
        const nlohmann::ordered_json::json_pointer at(m_words[2]);
        Says(root.contains(at) ? root[at].dump(2) + "\n" : "", "\n", 3);
    }

    void Status() {
        m_said.insert("status");
        CompareStatus(m_step.head.text);
    }

    std::map<std::string, Lines> m_texts;
    Folder m_folder;
    How m_how;
    documents::Step m_command;
    Result m_result;
    std::set<std::string> m_said; // of output, error and status of the last command
};

} // namespace tool
