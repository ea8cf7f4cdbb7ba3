// The judge's grammar: what a strict reader refuses in a description, whatever it answers.
//
// Input: the judged text, read. Output: violations of the rules J01 to J19. Lines are looked at as they were
// written, because the reader forgives blanks and line ends.
// Test: tests/judge/SDPJudgeGrammarTest.cpp, tests/judge/broken
#include "SDPJudgeText.h"

#include <algorithm>
#include <set>

namespace judge {

namespace {

// The value after "x=" as written.
std::string_view Raw(const Line& line) {
    return line.text.substr(2);
}

void CheckLines(const Section& level, Verdict& verdict) {
    for (const Line& line : level.lines) {
        if (!line.ended || line.text.find('\0') != std::string_view::npos) {
            verdict.Add("J01", line.number, 0, level, "This line does not end in CR LF alone.");
        } else if (line.type < 'a' || line.type > 'z' || line.text.size() < 3) {
            verdict.Add("J01", line.number, 0, level, "This line is not a small letter, '=' and a value.");
        }
    }
}

// Lines of one level in the order of their types; e= and p= may each repeat, r= belongs to its t=.
void CheckOrder(const Section& level, std::string_view order, Verdict& verdict) {
    std::size_t reached = 0;
    for (const Line& line : level.lines) {
        const auto rank = order.find(line.type == 'r' ? 't' : line.type);
        if (line.type == 0 || line.type < 'a' || line.type > 'z') {
            continue;
        }
        if (rank == std::string_view::npos || rank < reached) {
            verdict.Add("J02", line.number, 0, level,
                        "A line " + std::string(1, line.type) + "= has no place here.");
        } else {
            reached = rank;
        }
    }
}

void CheckRequired(const Section& session, Verdict& verdict) {
    if (session.lines.empty() || session.lines.front().text != "v=0") {
        verdict.Add("J02", session.lines.empty() ? 0 : 1, 0, session, "The first line is not v=0.");
    }
    constexpr std::string_view needed = "vost";
    for (const char type : std::string_view("vostiuczk")) {
        const auto count = std::count_if(session.lines.begin(), session.lines.end(),
                                         [type](const Line& line) { return line.type == type; });
        const bool missing = count == 0 && needed.find(type) != std::string_view::npos;
        if (missing || (count > 1 && type != 't')) {
            verdict.Add("J02", 0, 0, session,
                        "There are " + std::to_string(count) + " lines " + type + "= at session level.");
        }
    }
}

void CheckOrigin(const Line& line, const Section& session, Verdict& verdict) {
    auto words = Split(Raw(line), ' ');
    if (words.size() != 6 || words[0].empty()) {
        verdict.Add("J03", line.number, 0, session, "The line has not six fields between single blanks.");
        return;
    }
    if (!Number(words[1]) || Number(words[2]).value_or(UINT64_MAX) > INT64_MAX) {
        verdict.Add("J03", line.number, 0, session, "The id or the version is no number of 63 bits.");
    }
    words.erase(words.begin(), words.begin() + 3);
    CheckAddress(words, "J03", line.number, session, verdict);
}

void CheckBandwidth(const Line& line, const Section& level, bool flows, Verdict& verdict) {
    const auto pieces = Split(Raw(line), ':');
    if (pieces.size() != 2 || !IsToken(pieces[0]) || !Number(pieces[1])) {
        verdict.Add("J09", line.number, 0, level, "The line is not a type, ':' and a plain number.");
    } else if (flows && Number(pieces[1]) == 0 && (pieces[0] == "AS" || pieces[0] == "TIAS")) {
        verdict.Add("J10", line.number, 0, level,
                    "The budget is zero, and the media is neither declined nor inactive.");
    }
}

void CheckTime(const Line& line, const Section& session, Verdict& verdict) {
    const auto words = Split(Raw(line), ' ');
    if (words.size() != 2 || !IsDigits(words[0]) || !IsDigits(words[1])) {
        verdict.Add("J11", line.number, 0, session, "The line is not two numbers.");
    }
}

void CheckMedia(const Section& section, Verdict& verdict) {
    const auto words = Split(Raw(section.lines.front()), ' ');
    const bool blank = std::any_of(words.begin(), words.end(), [](auto word) { return word.empty(); });
    const auto port = Split(words.size() < 4 ? std::string_view{} : words[1], '/');
    if (blank || !section.port || port.size() > 2 || !Number(port.back()) || !IsToken(words[0]) ||
        !IsTransport(words[2])) {
        verdict.Add("J06", section.line, 0, section,
                    "The line is not medium, port, transport and formats between single blanks.");
        return;
    }
    auto formats = section.formats;
    std::sort(formats.begin(), formats.end());
    for (std::size_t at = 0; at < formats.size(); ++at) {
        if (section.IsRtp() && Number(formats[at]).value_or(128) > 127) {
            verdict.Add("J07", section.line, 0, section,
                        "Format " + Quoted(formats[at]) + " is no payload type.");
        }
        if (at > 0 && formats[at] == formats[at - 1]) {
            verdict.Add("J07", section.line, 0, section,
                        "Format " + Quoted(formats[at]) + " is listed twice.");
        }
    }
}

// @param flows  the section, or any section of the session, is open and not inactive
void CheckValues(const Section& level, bool flows, Verdict& verdict) {
    for (const Line& line : level.lines) {
        switch (line.text.size() < 3 ? 0 : line.type) {
        case 'o':
            CheckOrigin(line, level, verdict);
            break;
        case 'c':
            CheckAddress(Split(Raw(line), ' '), "J04", line.number, level, verdict);
            break;
        case 'b':
            CheckBandwidth(line, level, flows, verdict);
            break;
        case 't':
            CheckTime(line, level, verdict);
            break;
        case 'a':
            CheckAttribute(line, level, verdict);
            break;
        default:
            break;
        }
    }
}

bool HasAddress(const Section& level) {
    return std::any_of(level.lines.begin(), level.lines.end(),
                       [](const Line& line) { return line.type == 'c'; });
}

void CheckIce(const Text& text, const Section& section, Verdict& verdict) {
    const bool named = text.Of(section, "ice-ufrag") != nullptr;
    if (named != (text.Of(section, "ice-pwd") != nullptr)) {
        verdict.Add("J16", section.line, 0, section,
                    std::string("There is a=ice-") + (named ? "ufrag" : "pwd") + " without the other one.");
    }
}

void CheckFormatLines(const Section& section, Verdict& verdict) {
    const std::set<std::string_view> listed(section.formats.begin(), section.formats.end());
    for (const std::string_view name : {"rtpmap", "fmtp"}) {
        const auto [first, last] = section.All(name);
        for (const Attribute* line = first; line != last; ++line) {
            const std::string_view format = line->value.substr(0, line->value.find(' '));
            if (section.port && listed.count(format) == 0) {
                verdict.Add("J12", line->line, 0, section,
                            "The m= line does not list " + Quoted(format) + ".");
            }
        }
    }
}

void CheckOneDirection(const Section& level, Verdict& verdict) {
    std::set<std::size_t> lines;
    for (const std::string_view name : {"sendrecv", "sendonly", "recvonly", "inactive"}) {
        const auto [first, last] = level.All(name);
        for (const Attribute* line = first; line != last; ++line) {
            lines.insert(line->line);
        }
    }
    if (lines.size() > 1) {
        verdict.Add("J17", *lines.rbegin(), 0, level,
                    "Line " + std::to_string(*lines.begin()) + " has one too.");
    }
}

void CheckLabels(const Text& text, Verdict& verdict) {
    std::map<std::string_view, std::size_t> labels;
    for (const Section& section : text.sections) {
        const auto [first, last] = section.All("label");
        if (last - first > 1) {
            verdict.Add("J18", first[1].line, 0, section,
                        "Line " + std::to_string(first->line) + " has one too.");
        }
        if (const Attribute* label = section.First("label"); label != nullptr && !label->value.empty()) {
            if (const auto [at, fresh] = labels.emplace(label->value, label->line); !fresh) {
                verdict.Add("J15", label->line, 0, section,
                            "Line " + std::to_string(at->second) + " has the same label.");
            }
        }
    }
}

} // namespace

void CheckGrammar(const Text& text, Verdict& verdict) {
    CheckRequired(text.session, verdict);
    CheckOrder(text.session, "vosiuepcbtzka", verdict);
    CheckLines(text.session, verdict);
    CheckOneDirection(text.session, verdict);
    const auto flows = [&text](const Section& section) {
        return section.IsOpen() && text.Direction(section).first != "inactive";
    };
    CheckValues(text.session, std::any_of(text.sections.begin(), text.sections.end(), flows), verdict);
    const bool addressed = HasAddress(text.session);
    for (const Section& section : text.sections) {
        CheckOrder(section, "micbka", verdict);
        CheckLines(section, verdict);
        CheckValues(section, flows(section), verdict);
        CheckMedia(section, verdict);
        CheckFormatLines(section, verdict);
        CheckOneDirection(section, verdict);
        CheckIce(text, section, verdict);
        if (section.IsOpen() && !addressed && !HasAddress(section)) {
            verdict.Add("J04", section.line, 0, section,
                        "Neither the section nor the session has a c= line.");
        }
    }
    CheckLabels(text, verdict);
}

} // namespace judge
