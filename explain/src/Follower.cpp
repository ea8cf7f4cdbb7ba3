// Stage: the verdict of each line of the component.
// Input: the text, and what the component changes line by line. Output: ExplainedLine for each of its lines.
// Touches nothing outside. What a line sets is seen by comparing the section before and after it; whether a
// line that changed nothing was understood is asked of a small handler that is given this line alone.
// Test: tests/explain/LawTest.cpp, tests/tool/explain_outputs.py
#include "Follower.h"

#include "SDPKeyword.h"
#include "SDPTables.h"
#include "State.h"

#include <iterator>

namespace explain {

namespace {

/// What is said of the lines of a row.
struct VerdictRow {
    std::string_view example;
    std::string_view clause; ///< that defines the line
    const char* why;         ///< why the row could not use a line that it took
    const char* ledger;
};
/// In the order of SDPRow.
constexpr VerdictRow kVerdictRows[] = {
    {"c=IN IP4 192.0.2.1", "RFC 4566, 5.7", "it has fewer than three words", ""},
    {"m=audio 5004 RTP/AVP 0", "RFC 4566, 5.14", "it has fewer than four words", "P05"},
    {"a=rtpmap:97 H264/90000", "RFC 4566, 6", "it has no name, or no payload that the m= line lists", "G01"},
    {"a=fmtp:97 max-fs=3600", "RFC 4566, 6", "it has no parameters, or no payload that the m= line lists",
     "P20"},
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:", "RFC 4568, 9.1",
     "its suite is skipped, or it has no tag or no key", "P10"},
    {"a=ice-ufrag:F7gI", "RFC 8839, 5.4", "of ICE lines only user fragment and password are kept", "P04"},
    {"a=candidate:1 1 UDP 1 192.0.2.1 5004 typ host", "RFC 8839, 5.1", "no section is open", ""},
    {"a=content:slides", "RFC 4796, 5", "it is no content that is known, or the section is not video", ""},
    {"b=TIAS:64000", "RFC 4566, 5.8", "inside of a section only b=TIAS is read, before the first only b=AS",
     "P16"},
    {"a=floorctrl:s-only", "RFC 4583, 4", "no section is open", "P17"},
    {"a=confid:15", "RFC 4583, 5", "its value is not a number", "G18"},
    {"a=userid:15", "RFC 4583, 5", "its value is not a number", "G18"},
    {"a=sendrecv", "RFC 4566, 6", "nothing reads this attribute", ""},
    {"v=0", "RFC 4566, 5", "no row takes it", ""},
};
static_assert(std::size(kVerdictRows) == static_cast<std::size_t>(SDPRow::None) + 1);

const VerdictRow& VerdictRowOf(SDPRow row) {
    return kVerdictRows[static_cast<std::size_t>(row)];
}

} // namespace

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
void Follower::Settle(std::size_t index, const char* why) {
    const ParsedLine& line = m_reading.parsedLines[index];
    ExplainInput without = m_input;
    const auto offset = static_cast<std::size_t>(line.text.data() - m_reading.text.data());
    without.remote.erase(offset, line.text.size() + 2);
    if (DigestOf(without) == DigestOf(m_input)) {
        m_lines[index].verdict = ExplainVerdict::Agrees;
        m_lines[index].why = std::string("the ") + why + " makes no difference to any stream";
    }
}

std::string Follower::KeyOf(const SDPLine& line) const {
    const std::string_view text = m_reading.parsedLines[m_parsed].text;
    std::string key =
        std::to_string(static_cast<int>(line.row)) + "/" +
        (line.row == SDPRow::Rtpmap || line.row == SDPRow::Fmtp ? std::string(PayloadTaken(line, text)) : "");
    return line.row == SDPRow::Ice ? key + std::string(m_before.field) : key;
}

void Follower::Before(const SDPLine& line) {
    m_section = line.section;
    m_before = ValueOfLine(line, m_reading.parsedLines[m_parsed].text, m_formats);
}

void Follower::After(const SDPLine& line) {
    ExplainedLine& explained = m_lines[m_parsed];
    explained.row = line.row;
    explained.clause = VerdictRowOf(line.row).clause;
    if (line.section != m_section) {
        explained.verdict = ExplainVerdict::Used;
        explained.field = "section";
        explained.after = Shown(line.section->strFullMLine);
        m_formats = {};
        m_setters.erase(m_setters.begin(), m_setters.lower_bound("session"));
    } else if (line.section == nullptr && (line.row == SDPRow::Connection || line.row == SDPRow::Bandwidth)) {
        TakeSession(line, explained);
    } else {
        const LineValue value = ValueOfLine(line, m_reading.parsedLines[m_parsed].text, m_formats);
        if (value.compared != m_before.compared) {
            TakeChange(line, explained, value);
        } else {
            TakeNone(line, explained);
        }
    }
    ++m_parsed;
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
    const auto setter = m_setters.emplace(KeyOf(line), m_parsed);
    if (!setter.second && setter.first->second != standing) {
        Override(setter.first->second);
    }
    setter.first->second = m_parsed;
}

/// The line whose suite is kept although this one, of an unknown suite, replaces its tag and key: the only
/// line of the section with a suite that is read (P11). kNowhere without such a line.
std::size_t Follower::TakeSuite(const SDPLine& line) {
    const std::string key = KeyOf(line) + "suite";
    const sdp::Suite* const suite =
        sdp::FindNamed<sdp::kSuites>(WordOf(m_reading.parsedLines[m_parsed].text, 1));
    const auto setter = m_setters.find(key);
    if (suite == nullptr || !suite->isRead) {
        return setter == m_setters.end() ? kNowhere : setter->second;
    }
    if (setter == m_setters.end()) {
        m_setters.emplace(key, m_parsed);
    } else {
        if (setter->second != kNowhere) {
            Override(setter->second);
        }
        setter->second = kNowhere; // Each of several is replaced by another one that says the same.
    }
    return kNowhere;
}

/// The line on hand replaces what an earlier one has set.
void Follower::Override(std::size_t index) {
    m_lines[index].verdict = ExplainVerdict::Overridden;
    m_lines[index].byLine = m_reading.lines[m_reading.parsedLines[m_parsed].first].number;
}

void Follower::TakeNone(const SDPLine& line, ExplainedLine& explained) {
    const std::string_view text = m_reading.parsedLines[m_parsed].text;
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
    explained.why = line.section == nullptr && line.row != SDPRow::None ? "no section is open"
                                                                        : VerdictRowOf(line.row).why;
    explained.ledger = VerdictRowOf(line.row).ledger;
}

void Follower::TakeSession(const SDPLine& line, ExplainedLine& explained) {
    const SessionValue value = SessionValueOf(line, m_reading.parsedLines[m_parsed].text);
    const bool isAddress = line.row == SDPRow::Connection;
    if (!value.isSet) {
        explained.verdict = ExplainVerdict::Dropped;
        explained.why = VerdictRowOf(line.row).why;
        return;
    }
    explained.verdict = ExplainVerdict::Used;
    explained.field = isAddress ? "strSessionIPAddr" : "strMaxSessionBandwidth";
    explained.after = value.shown;
    const auto setter = m_setters.emplace(isAddress ? "session address" : "session bandwidth", m_parsed);
    if (!setter.second) {
        Override(setter.first->second);
        setter.first->second = m_parsed;
    }
}

} // namespace explain
