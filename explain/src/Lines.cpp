// Stage: the verdict of each line.
// Input: the text, and what the component changes line by line. Output: ExplainedLine for each editor line.
// Touches nothing outside. What a line sets is seen by comparing the section before and after it; whether a
// line that changed nothing was understood is asked of a small handler that is given this line alone.
// Test: tests/explain/LawTest.cpp, tests/tool/explain_outputs.py
#include "Crypto.h"
#include "LineValues.h"
#include "SDPKeyword.h"
#include "State.h"
#include "Suspect.h"

#include <map>

namespace explain {

namespace {

constexpr std::string_view kClauses[] = {
    "RFC 4566, 5.7", "RFC 4566, 5.14", "RFC 4566, 6", "RFC 4566, 6",   "RFC 4568, 9.1",
    "RFC 8839, 5.4", "RFC 8839, 5.1",  "RFC 4796, 5", "RFC 4566, 5.8", "RFC 4583, 4",
    "RFC 4583, 5",   "RFC 4583, 5",    "RFC 4566, 6", "RFC 4566, 5",
};

/// Why a row could not use a line that it took.
struct Reason {
    const char* why;
    const char* ledger;
};
constexpr Reason kReasons[] = {
    {"it has fewer than three words", ""},
    {"it has fewer than four words", "P05"},
    {"it has no name, or no payload that the m= line lists", "G01"},
    {"it has no parameters, or no payload that the m= line lists", "P20"},
    {"its suite is skipped, or it has no tag or no key", "P10"},
    {"of ICE lines only user fragment and password are kept", "P04"},
    {"no section is open", ""},
    {"it is no content that is known, or the section is not video", ""},
    {"inside of a section only b=TIAS is read, before the first only b=AS", "P16"},
    {"no section is open", "P17"},
    {"its value is not a number", "G18"},
    {"its value is not a number", "G18"},
    {"nothing reads this attribute", ""},
    {"no row takes it", ""},
};

/// Follows one parse and gives each line of the component its verdict.
class Follower {
public:
    Follower(const ExplainInput& input, const Reading& reading) : m_input(input), m_reading(reading) {
        m_lines.resize(reading.hosts.size());
    }

    void Run();
    ExplainedLine& At(std::size_t host) { return m_lines[host]; }

private:
    void Before(const SDPLine& line);
    void After(const SDPLine& line);
    void TakeChange(const SDPLine& line, ExplainedLine& explained, const LineValue& value);
    void TakeNone(const SDPLine& line, ExplainedLine& explained);
    void TakeSession(const SDPLine& line, ExplainedLine& explained);
    void Settle(std::size_t host, const char* why);
    std::size_t TakeSuite(const SDPLine& line);
    void Override(std::size_t host);
    std::string KeyOf(const SDPLine& line) const;

    const ExplainInput& m_input;
    const Reading& m_reading;
    std::vector<ExplainedLine> m_lines;
    std::map<std::string, std::size_t> m_setters; ///< what was set last, by which line
    Formats m_formats;
    LineValue m_before;
    const MediaSession* m_section = nullptr;
    std::size_t m_host = 0;
};

void Follower::Run() {
    SDPHandler handler;
    PrepareHandler(handler, m_input);
    const SDPLineObserver observer = {
        [](void* self, const SDPLine& line) { static_cast<Follower*>(self)->Before(line); },
        [](void* self, const SDPLine& line) { static_cast<Follower*>(self)->After(line); },
        this,
    };
    handler.SetLineObserver(&observer);
    RemoteSDP record;
    handler.ParseTheSDP(m_input.remote, record);
    for (const char* const key : {"session address", "session bandwidth"}) {
        const auto last = m_setters.find(key);
        if (last != m_setters.end()) {
            Settle(last->second, key);
        }
    }
}

/// A session value that no section and no record needs is not used.
void Follower::Settle(std::size_t host, const char* why) {
    const Host& line = m_reading.hosts[host];
    ExplainInput without = m_input;
    const auto offset = static_cast<std::size_t>(line.text.data() - m_reading.text.data());
    without.remote.erase(offset, line.text.size() + 2);
    if (DigestOf(without) == DigestOf(m_input)) {
        m_lines[host].verdict = ExplainVerdict::Agrees;
        m_lines[host].why = std::string("the ") + why + " makes no difference to any stream";
    }
}

std::string Follower::KeyOf(const SDPLine& line) const {
    const std::string_view text = m_reading.hosts[m_host].text;
    std::string key =
        std::to_string(static_cast<int>(line.row)) + "/" +
        (line.row == SDPRow::Rtpmap || line.row == SDPRow::Fmtp ? std::string(PayloadTaken(line, text)) : "");
    return line.row == SDPRow::Ice ? key + std::string(m_before.field) : key;
}

void Follower::Before(const SDPLine& line) {
    m_section = line.section;
    m_before = ValueOfLine(line, m_reading.hosts[m_host].text, m_formats);
}

void Follower::After(const SDPLine& line) {
    ExplainedLine& explained = m_lines[m_host];
    explained.row = line.row;
    explained.clause = kClauses[static_cast<std::size_t>(line.row)];
    if (line.section != m_section) {
        explained.verdict = ExplainVerdict::Used;
        explained.field = "section";
        explained.after = Shown(line.section->strFullMLine);
        m_formats = {};
        m_setters.erase(m_setters.begin(), m_setters.lower_bound("session"));
    } else if (line.section == nullptr && (line.row == SDPRow::Connection || line.row == SDPRow::Bandwidth)) {
        TakeSession(line, explained);
    } else {
        const LineValue value = ValueOfLine(line, m_reading.hosts[m_host].text, m_formats);
        if (value.compared != m_before.compared) {
            TakeChange(line, explained, value);
        } else {
            TakeNone(line, explained);
        }
    }
    ++m_host;
}

void Follower::TakeChange(const SDPLine& line, ExplainedLine& explained, const LineValue& value) {
    explained.verdict = ExplainVerdict::Used;
    explained.field = value.field;
    explained.before = m_before.shown;
    explained.after = value.shown;
    if (line.row == SDPRow::Candidate) {
        return;
    }
    const std::size_t standing = line.row == SDPRow::Crypto ? TakeSuite(line) : kNowhere;
    const auto setter = m_setters.emplace(KeyOf(line), m_host);
    if (!setter.second && setter.first->second != standing) {
        Override(setter.first->second);
    }
    setter.first->second = m_host;
}

/// The line whose suite stands although this one, of an unknown suite, replaces its tag and key: the only
/// line of the section with a suite that is read (P11). kNowhere without such a line.
std::size_t Follower::TakeSuite(const SDPLine& line) {
    const std::string key = KeyOf(line) + "suite";
    const sdp::Suite* const suite = sdp::FindNamed<sdp::kSuites>(WordOf(m_reading.hosts[m_host].text, 1));
    const auto setter = m_setters.find(key);
    if (suite == nullptr || !suite->isRead) {
        return setter == m_setters.end() ? kNowhere : setter->second;
    }
    if (setter == m_setters.end()) {
        m_setters.emplace(key, m_host);
    } else {
        if (setter->second != kNowhere) {
            Override(setter->second);
        }
        setter->second = kNowhere; // Each of several is replaced by another one that says the same.
    }
    return kNowhere;
}

/// The line on hand replaces what an earlier one has set.
void Follower::Override(std::size_t host) {
    m_lines[host].verdict = ExplainVerdict::Overridden;
    m_lines[host].byLine = m_reading.lines[m_reading.hosts[m_host].first].number;
}

void Follower::TakeNone(const SDPLine& line, ExplainedLine& explained) {
    const Reason& reason = kReasons[static_cast<std::size_t>(line.row)];
    const std::string_view text = m_reading.hosts[m_host].text;
    if (line.section != nullptr && IsUnderstood(line, text, m_formats)) {
        explained.verdict = ExplainVerdict::Agrees;
        explained.field = m_before.field;
        explained.why = "its value already holds";
        const auto setter = m_setters.find(KeyOf(line));
        if (setter != m_setters.end() && SaysAlone(line, text, m_before)) {
            m_lines[setter->second].verdict = ExplainVerdict::Agrees;
            m_lines[setter->second].why = "a later line says the same";
        }
        return;
    }
    const bool isRead = line.row != SDPRow::None && line.row != SDPRow::Direction;
    explained.verdict = isRead ? ExplainVerdict::Dropped : ExplainVerdict::Ignored;
    explained.why = line.section == nullptr && line.row != SDPRow::None ? "no section is open" : reason.why;
    explained.ledger = reason.ledger;
}

void Follower::TakeSession(const SDPLine& line, ExplainedLine& explained) {
    const SessionValue value = SessionValueOf(line, m_reading.hosts[m_host].text);
    const bool isAddress = line.row == SDPRow::Connection;
    if (!value.isSet) {
        explained.verdict = ExplainVerdict::Dropped;
        explained.why = kReasons[static_cast<std::size_t>(line.row)].why;
        return;
    }
    explained.verdict = ExplainVerdict::Used;
    explained.field = isAddress ? "strSessionIPAddr" : "strMaxSessionBandwidth";
    explained.after = value.shown;
    const auto setter = m_setters.emplace(isAddress ? "session address" : "session bandwidth", m_host);
    if (!setter.second) {
        Override(setter.first->second);
        setter.first->second = m_host;
    }
}

void Finish(ExplainedLine& explained, const TextLine& line, const Host& host, const Reading& reading) {
    bool isHere = true; // and not in a line that is joined to this one
    if (host.row != SDPRow::None) {
        const std::size_t at = KeywordAt(host.text, host.row);
        explained.column = at + 1;
        isHere = at < line.text.size();
    }
    // A keyword that is misspelled leaves the row of all attributes, and the line is not another one by that.
    const bool isOther =
        host.row != line.meant && host.row != SDPRow::None &&
        (host.row != SDPRow::Direction || line.meant == SDPRow::None || !BeginsWith(host.text, "a"));
    if (host.count == 1 && isOther) {
        explained.verdict = ExplainVerdict::Misread;
        explained.ledger = "P01";
    } else if (host.count > 1 && (!isHere || explained.verdict == ExplainVerdict::Dropped ||
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
        const bool isHosted = line.host != kNowhere;
        if (isHosted && reading.hosts[line.host].first == i) {
            explained = follower.At(line.host);
            Finish(explained, line, reading.hosts[line.host], reading);
        } else if (isHosted) {
            explained.verdict = ExplainVerdict::Joined;
            explained.byLine = reading.lines[reading.hosts[line.host].first].number;
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
