// Offers and answers of the negotiator whose input and outcome are texts: each document NAME.cases of this
// directory is a file of them. What needs code is in the files beside it. Then what is said of a step with
// a wrong word.
#include "Call.h"
#include "Documents.h"

#include <map>
#include <optional>
#include <string>

namespace {

using namespace call;

/// Streams in one line each: the line of Call.h, and what it does not show of the fields that are set.
std::string Shown(const SDPNegotiator& side) {
    static const char* const roles[] = {"", " floor=client", " floor=server"};
    std::string lines;
    for (const Stream& stream : side.Streams()) {
        lines += Line(stream);
        lines += stream.profile.empty() ? "" : " profile=" + std::string(stream.profile);
        lines += stream.packetizationMode == 0 ? "" : " mode=" + std::to_string(stream.packetizationMode);
        lines += roles[static_cast<int>(stream.floorRole)];
        if (stream.conferenceId != 0 || stream.userId != 0) {
            lines += " conference=" + std::to_string(stream.conferenceId) +
                     " user=" + std::to_string(stream.userId);
        }
        lines += stream.floor.empty() ? "" : " id=" + std::string(stream.floor);
        if (stream.suite != 0) {
            const auto bytes = [](const auto& row) {
                return support::MakeVisible(std::string(row.begin(), row.end()));
            };
            lines += " key=" + bytes(stream.theirKey.key) + " salt=" + bytes(stream.theirKey.salt);
        }
        lines += " changes=" + std::to_string(stream.changes) + "\n";
    }
    return lines;
}

class NegotiationPlayer : public documents::StepPlayer<NegotiationPlayer> {
public:
    using StepPlayer::StepPlayer;

private:
    friend StepPlayer;

    static const std::vector<Row>& Rows() {
        using Player = NegotiationPlayer;
        static const std::vector<Row> rows = {
            {"text NAME", true, &Player::DefineText},
            // A negotiator with capabilities and known keys: everything, or PCMU alone. The lines are fields.
            {"side = LOCAL", true, &Player::Start},
            {"side wants srtp POLICY", false, &Player::WantsSrtp},
            {"side has repair ID SWITCH", false, &Player::HasRepair},
            // What the far end sends: the lines, after a head that they all have. Lines before the first m=
            // belong to the session.
            {"far offers", true, &Player::FarSends},
            {"far answers", true, &Player::FarSends},
            // The whole text of an outcome, or the edits WHAT => WITH of a named one.
            {"side offers TEXT with", true, &Player::OffersWith},
            {"side offers [TEXT]", true, &Player::Offers},
            {"side answers TEXT with", true, &Player::AnswersWith},
            {"side answers [TEXT]", true, &Player::Answers},
            // Whatever the answer is: its streams in one line each, or why there is none.
            {"side takes", true, &Player::Takes},
            {"side accepts", false, &Player::Accepts},
            // Status and reason; nothing of the negotiator changes.
            {"side refuses STATUS ...", false, &Player::Refuses},
            {"side has streams", true, &Player::HasStreams},
            {"side has repaired ...", false, &Player::HasRepaired},
        };
        return rows;
    }

    SDPNegotiator& Side() {
        if (!m_side) {
            throw documents::Malformed(m_step.head, "no side yet");
        }
        return *m_side;
    }

    std::string Named() const { return Meant(m_texts, 2); }

    /// The words of the step from this one on.
    std::string Words(std::size_t first) const {
        std::string words;
        for (std::size_t at = first; at < m_words.size(); ++at) {
            words += (words.empty() ? "" : " ") + m_words[at];
        }
        return words;
    }

    void DefineText() { Define(m_texts, documents::TextOf(m_step.block)); }

    void Start() {
        if (m_words[2] != "audio" && m_words[2] != "everything") {
            throw documents::Malformed(m_step.head, "local sets are audio and everything");
        }
        LocalSDP local = m_words[2] == "audio" ? AudioOnly() : Local();
        documents::ApplyFields(local, m_step.block);
        m_side = call::Side(local);
    }

    void WantsSrtp() {
        static const std::map<std::string, Srtp> policies = {
            {"off", Srtp::Off}, {"wanted", Srtp::Wanted}, {"required", Srtp::Required}};
        Side().SetSrtp(Meant(policies, 3));
    }

    void HasRepair() {
        static const std::map<std::string, bool> switches = {{"off", false}, {"on", true}};
        const bool isOn = Meant(switches, 4);
        if (m_words[3] == "all") {
            Side().SetRepairs(isOn);
        } else if (!Side().SetRepair(m_words[3], isOn)) {
            throw documents::Malformed(m_step.head, "no repair is called " + m_words[3]);
        }
    }

    void FarSends() {
        const std::string lines = documents::TextOf(m_step.block);
        const std::size_t sections = lines.find("m=");
        m_sent = Far("", "");
        m_sent.insert(m_sent.find("t=0 0"), lines.substr(0, sections));
        m_sent += sections == std::string::npos ? "" : lines.substr(sections);
    }

    void CompareText(const SDPNegotiator::Outcome& outcome, const Lines& expected) {
        Compare(outcome.isTaken ? outcome.text : "refused: " + std::string(outcome.reason) + "\r\n",
                expected);
    }

    Lines Expected() const {
        Lines lines = m_step.block;
        for (documents::Line& line : lines) {
            line.text = documents::Unescape(line);
        }
        return m_words.size() < 3 ? lines : AtStep(Named());
    }

    Lines AtStep(const std::string& text) const { return {{m_step.head.path, m_step.head.number, text}}; }

    void Offers() { CompareText(Side().Offer(), Expected()); }
    void OffersWith() { CompareText(Side().Offer(), AtStep(documents::Edited(Named(), m_step.block))); }
    void Answers() { CompareText(Side().Answer(m_sent), Expected()); }
    void AnswersWith() {
        CompareText(Side().Answer(m_sent), AtStep(documents::Edited(Named(), m_step.block)));
    }
    void Accepts() { CompareText(Side().Accept(m_sent), {}); }

    void Refuses() {
        const SDPNegotiator before = Side();
        const SDPNegotiator::Outcome outcome = Side().Answer(m_sent);
        Compare(std::to_string(outcome.status) + " " + std::string(outcome.reason) + outcome.text,
                AtStep(Words(2)));
        if (!(Side() == before)) {
            m_report(m_step.head, "the refusal changed the negotiator");
        }
    }

    Lines RawLines() const {
        Lines lines = m_step.block;
        for (documents::Line& line : lines) {
            line.text += "\n";
        }
        return lines;
    }

    void Takes() {
        const SDPNegotiator::Outcome outcome = Side().Answer(m_sent);
        Compare(outcome.isTaken ? call::Lines(Side()) : "refused: " + std::string(outcome.reason) + "\n",
                RawLines());
    }
    void HasStreams() { Compare(Shown(Side()), RawLines()); }

    void HasRepaired() { Compare(Repaired(Side()), AtStep(Words(3))); }

    std::map<std::string, std::string> m_texts;
    std::optional<SDPNegotiator> m_side;
    std::string m_sent;
};

[[maybe_unused]] const int kDocuments = documents::RegisterDocumentsOf<NegotiationPlayer>("negotiation", "");

TEST(NegotiationDocuments, AWordThatStandsForNothingIsMalformed) {
    const auto reports = [](const std::string& step) {
        return documents::ReportsOf<NegotiationPlayer>("=== Suite.Name\nWhy.\nside = audio\n" + step + "\n");
    };
    EXPECT_TEXT(reports("side wants srtp require"), "a.cases:4: nothing is called require\n");
    EXPECT_TEXT(reports("side has repair all of"), "a.cases:4: nothing is called of\n");
    EXPECT_TEXT(reports("side has repair R99 on"), "a.cases:4: no repair is called R99\n");
    EXPECT_TEXT(reports("side = video"), "a.cases:4: local sets are audio and everything\n");
    EXPECT_TEXT(reports("side offers plain"), "a.cases:4: nothing is called plain\n");
    EXPECT_TEXT(reports("text plain\ntext plain"), "a.cases:5: a second definition of plain\n");
}

} // namespace
