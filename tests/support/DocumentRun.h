// Runs a section of a document: one or two handlers do what its steps say, and every text and record is
// compared as a whole. Player::Rows lists the steps. Tests: DocumentTest.cpp.
#pragma once

#include "Describe.h"
#include "DocumentLocal.h"
#include "DocumentParts.h"
#include "DocumentPlay.h"
#include "Expect.h"
#include "TraceKeeper.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace documents {

/// Plays the steps of one test. `near` is at 192.0.2.1 with session id 1000; `far` has what its set says, at
/// 192.0.2.2, 4000 ports higher, with session id 2000.
class Player : public StepPlayer<Player> {
public:
    using StepPlayer::StepPlayer;

private:
    friend StepPlayer;
    struct Side {
        SDPHandler handler;
        RemoteSDP remote;
    };
    static const std::vector<Row>& Rows();

    // The lines of the step, or those that its last word names.
    Lines LinesOf(const std::map<std::string, Lines>& named, std::size_t word) const {
        if (word >= m_words.size()) {
            return m_step.block;
        }
        if (!m_step.block.empty()) {
            throw Malformed(m_step.head, "a name, and lines as well");
        }
        return Meant(named, word);
    }

    Lines TextOf(std::size_t word) const {
        Lines lines = LinesOf(m_texts, word);
        for (Line& line : lines) {
            line.text = Unescape(line);
        }
        return lines;
    }

    LocalSDP LocalOf(std::size_t word) const {
        LocalSDP local = Meant(m_locals, word);
        ApplyFields(local, m_step.block);
        return local;
    }

    // The named text with the edits of the step; a difference from it is reported at the step.
    Lines EditedText(std::size_t word) const {
        Lines lines;
        const std::string text = Edited(documents::TextOf(Meant(m_texts, word)), m_step.block);
        for (const std::string& line : support::CutLines(text)) {
            lines.push_back({m_step.head.path, m_step.head.number, line});
        }
        return lines;
    }

    std::uint32_t Unsigned(std::size_t word) const {
        std::uint32_t number = 0;
        const char* const end = m_words[word].data() + m_words[word].size();
        if (const auto read = std::from_chars(m_words[word].data(), end, number); read.ptr != end) {
            throw Malformed(m_step.head, "no number: " + m_words[word]);
        }
        return number;
    }

    Side& TheSide() const { return *Meant(m_sides, 0); }

    void CompareRecord(const RemoteSDP& remote, const Lines& rows) {
        Lines expected;
        for (const std::string& row : support::CutLines(support::kFreshRemote)) {
            expected.push_back({m_step.head.path, m_step.head.number, row});
        }
        std::set<std::string> given;
        for (const Line& row : rows) {
            const std::string key = row.text.substr(0, row.text.find('=')) + "=";
            const auto found = std::find_if(expected.begin(), expected.end(),
                                            [&](const Line& line) { return StartsWith(line.text, key); });
            if (found == expected.end() || !given.insert(key).second) {
                throw Malformed(row, "no row of a record, or a second one; rows begin with audio, main, "
                                     "preso, bfcp, bandwidth, srtp");
            }
            *found = {row.path, row.number, row.text + "\n"};
        }
        Compare(support::Describe(remote), expected);
    }

    void ExpectOffer(bool offers) {
        ++m_compared;
        if (TheSide().handler.IsOffer() != offers) {
            m_report(m_step.head, offers ? "it would answer" : "it would offer");
        }
    }

    void Parse(int result) {
        Side& side = TheSide();
        const int parsed = side.handler.ParseTheSDP(m_arriving, side.remote);
        if (parsed != result) {
            m_report(m_step.head, "ParseTheSDP returned " + std::to_string(parsed));
        }
        CompareRecord(side.remote, LinesOf(m_records, 2));
    }

    void DefineText() { Define(m_texts, m_step.block); }
    void DefineRecord() { Define(m_records, m_step.block); }
    void DefineLocal() { Define(m_locals, LocalOf(3)); }

    void Start() {
        const bool isFar = m_words[0] == "far";
        if (!isFar && m_words[0] != "near") {
            throw Malformed(m_step.head, "a handler is called near or far");
        }
        const LocalSDP local = LocalOf(2);
        const auto side = std::make_shared<Side>();
        support::Start(side->handler, isFar ? support::Away(local) : local, isFar ? 2000 : 1000);
        m_sides[m_words[0]] = side;
    }

    void Sets() { ApplyFields(TheSide().handler.MyLocalSDP, m_step.block); }
    void WantsSrtp() { TheSide().handler.m_bSRTP = true; }
    void WantsFloorControl() { TheSide().handler.SetBfcpSupport(true); }
    void Serves() { TheSide().handler.SetMaxSupportedSessions(Unsigned(2)); }
    void HasSession() {
        TheSide().handler.m_iSessionID = static_cast<std::int32_t>(Unsigned(3));
        TheSide().handler.m_iSessionVersion = Unsigned(4);
    }
    void HasCandidates() {
        for (const Line& line : m_step.block) {
            TheSide().handler.SetAudioICECandidate(line.text);
            TheSide().handler.SetVideoICECandidate(line.text);
        }
    }
    void Resets() { TheSide().handler.ResetRemoteSDP(); }
    void WouldOffer() { ExpectOffer(true); }
    void WouldAnswer() { ExpectOffer(false); }

    void Write(const Lines& expected) {
        m_arriving = TheSide().handler.GetLocalSDP();
        Compare(m_arriving, expected);
    }
    void Arrive(const Lines& lines) {
        m_arriving.clear();
        for (const Line& line : lines) {
            m_arriving += line.text;
        }
    }
    void Writes() { Write(TextOf(2)); }
    void WritesWith() { Write(EditedText(2)); }
    void Arrives() { Arrive(TextOf(1)); }
    void ArrivesWith() { Arrive(EditedText(1)); }
    void Reads() { Parse(0); }
    void Refuses() { Parse(1); }

    void WritesPart() {
        const PartRow* const part = FindPart(m_words[3]);
        if (part == nullptr) {
            throw Malformed(m_step.head, "no part is called " + m_words[3]);
        }
        Compare(part->write(TheSide().handler), TextOf(4));
    }

    // The step's lines, which end in LF and nothing else unless they show another end.
    Lines Ended() const {
        Lines lines = m_step.block;
        for (Line& line : lines) {
            line.text = Unescape(line, "\n");
        }
        return lines;
    }

    template <typename Show>
    std::string OfSection(const Show& show) {
        const RemoteSections sections = TheSide().handler.GetRemoteSections();
        const std::uint32_t number = Unsigned(3);
        return number < sections.size() ? show(*sections[number]) : "no such section\n";
    }

    void KeepsSection() {
        const std::string actual = OfSection([](const MediaSession& section) {
            std::string lines;
            for (const std::string& line : SectionLines(section)) {
                lines += line + "\n";
            }
            return lines;
        });
        Lines expected = m_step.block;
        for (Line& line : expected) {
            line.text += "\n";
        }
        Compare(actual, expected);
    }

    void DumpsSection() {
        Compare(OfSection([](const MediaSession& section) { return section.ToDiag(); }), Ended());
    }

    void Traces() {
        const support::TraceKeeper trace;
        TheSide().handler.ParseTheSDP(m_arriving, TheSide().remote);
        Compare(trace.Text(), Ended());
    }

    void HasSections() {
        ++m_compared;
        const std::string count = std::to_string(TheSide().handler.GetRemoteSections().size());
        if (count != m_words[4]) {
            m_report(m_step.head, "it has " + count);
        }
    }

    std::map<std::string, Lines> m_texts;
    std::map<std::string, Lines> m_records;
    std::map<std::string, LocalSDP> m_locals = {{"audio", support::AudioLocal()},
                                                {"video", support::VideoLocal()},
                                                {"presentation", support::PresentationLocal()},
                                                {"new", LocalSDP()}};
    std::map<std::string, std::shared_ptr<Side>> m_sides;
    std::string m_arriving;
};

inline const std::vector<Player::Row>& Player::Rows() {
    static const std::vector<Row> rows = {
        // Definitions: the lines are the text, the record, or the fields that differ from another set.
        {"text NAME", true, &Player::DefineText},
        {"record NAME", true, &Player::DefineRecord},
        {"local NAME = LOCAL", true, &Player::DefineLocal},
        // A handler, and what its application does. The lines are fields of the local set.
        {"SIDE = LOCAL", true, &Player::Start},
        {"SIDE sets", true, &Player::Sets},
        {"SIDE wants srtp", false, &Player::WantsSrtp},
        {"SIDE wants floor control", false, &Player::WantsFloorControl},
        {"SIDE serves COUNT sections", false, &Player::Serves},
        {"SIDE has session ID VERSION", false, &Player::HasSession},
        {"SIDE has candidates", true, &Player::HasCandidates},
        {"SIDE resets", false, &Player::Resets},
        {"SIDE would offer", false, &Player::WouldOffer},
        {"SIDE would answer", false, &Player::WouldAnswer},
        // The description that the handler writes. The next reader gets it, unless another text arrives. The
        // lines are the text, or edits WHAT => WITH of a named one.
        {"SIDE writes TEXT with", true, &Player::WritesWith},
        {"arrives TEXT with", true, &Player::ArrivesWith},
        {"SIDE writes [TEXT]", true, &Player::Writes},
        {"arrives [TEXT]", true, &Player::Arrives},
        // The record after reading; a row that is not given is that of a new record.
        {"SIDE reads [RECORD]", true, &Player::Reads},
        {"SIDE refuses [RECORD]", true, &Player::Refuses},
        // A part of a description, and the sections of the far end: the fields that a new section does not
        // have.
        {"SIDE writes part PART", true, &Player::WritesPart},
        {"SIDE keeps section NUMBER", true, &Player::KeepsSection},
        {"SIDE has section count COUNT", false, &Player::HasSections},
        // What reading traces, and what the dump of a section is.
        {"SIDE traces", true, &Player::Traces},
        {"SIDE dumps section NUMBER", true, &Player::DumpsSection},
    };
    return rows;
}

} // namespace documents
