// Notes on single lines: lines that are read as something else, joined lines, numbers out of range.
//
// Tests: tests/tool/notes.cases, NotesTest.cpp
#include "Notes.h"

#include "SDPLines.h"
#include "VideoUtils.h"
#include "Words.h"

namespace cmsdp {

namespace {

// How the line begins, for a message. Key text strays: the end of a crypto attribute that was wrapped can
// hold "c=" in the padding of its key, and a lost line end joins a crypto attribute to another line. So of a
// joined line the first part alone is shown, and nothing of a crypto attribute or of what begins like no line
// at all.
std::string Beginning(std::string_view line) {
    const std::string_view first = line.substr(0, line.find_first_of("\r\n"));
    if (!LooksLikeSdp(first) || first.find("a=crypto") != std::string_view::npos) {
        return "; it may hold key text, so it is not shown";
    }
    return ": " + Quoted(first.size() == line.size() ? std::string(first) : std::string(first) + "...");
}

std::string OwnerOf(const Reading& reading, const ReadLine& line) {
    return NameOf(line.section == 0 ? nullptr : reading.sections[line.section - 1].session);
}

// What a line does that was meant otherwise; empty when it does nothing.
std::string EffectOf(const Reading& reading, const ReadLine& line) {
    switch (line.row) {
    case SDPRow::Connection:
        return WordsOf(line.text).size() < 3
                   ? ""
                   : "its third word is now the address of " + OwnerOf(reading, line);
    case SDPRow::Media:
        return line.opens ? "it opens a section" : "";
    case SDPRow::Bandwidth:
        return line.text.find("AS:") == std::string_view::npos
                   ? ""
                   : "it sets the bandwidth of " + OwnerOf(reading, line);
    case SDPRow::Direction:
        return "";
    default:
        return "nothing else that it says is read";
    }
}

std::string Misread(const Reading& reading, const ReadLine& line) {
    const std::string keyword(sdp::kLineRows[static_cast<std::size_t>(line.row)].keyword);
    const std::string effect = IsMeant(line) ? "" : EffectOf(reading, line);
    return effect.empty() ? ""
                          : "read as a \"" + keyword + "\" line, because it holds \"" + keyword + "\"; " +
                                effect + Beginning(line.text);
}

std::string TooShort(const Reading& reading, const ReadLine& line) {
    const bool isShort = line.row == SDPRow::Media && !line.opens && IsMeant(line);
    return isShort ? "an m= line of fewer than four words opens no section; the lines after it change " +
                         OwnerOf(reading, line)
                   : "";
}

std::string Joined(const Reading& /*reading*/, const ReadLine& line) {
    const std::size_t feed = line.text.find('\n');
    return feed == std::string_view::npos
               ? ""
               : "joined to the line after it by a LF alone; both are read as one, and what the keyword in "
                 "front does not read is lost";
}

std::string OddPort(const Reading& reading, const ReadLine& line) {
    constexpr std::int32_t highest = 65535;
    if (!line.opens || !IsMeant(line)) {
        return "";
    }
    const std::int32_t port = reading.sections[line.section - 1].session->iPort;
    const std::string word(WordsOf(line.text)[1]);
    const bool changed = VideoUtils::IsNumber(word) && word.find_first_not_of('0') != std::string::npos &&
                         word.substr(word.find_first_not_of('0')) != std::to_string(port);
    if (changed) {
        return "port " + Short(word) + " is read as " + std::to_string(port) +
               (port == 0 ? ", and the section counts as declined"
                          : ", and media goes to a port that the far end does not open");
    }
    return port < 0 || port > highest
               ? "port " + std::to_string(port) + (port < 0 ? " is below 0" : " is beyond 65535") +
                     "; the media engine cannot open it"
               : "";
}

std::string PortWithoutDigits(const Reading& reading, const ReadLine& line) {
    if (!line.opens || !IsMeant(line) || reading.sections[line.section - 1].session->iPort != 0) {
        return "";
    }
    const std::string word(WordsOf(line.text)[1]);
    return word.find_first_of("0123456789") == std::string::npos
               ? "port " + Quoted(word) + " is no number and is read as 0, and the section counts as declined"
               : "";
}

std::string SessionTias(const Reading& /*reading*/, const ReadLine& line) {
    const bool tias = line.row == SDPRow::Bandwidth && line.section == 0 &&
                      line.text.find("TIAS:") != std::string_view::npos;
    return tias
               ? "b=TIAS in front of the first section is read as b=AS, so the bandwidth of the session is a "
                 "thousand times too large"
               : "";
}

struct Rule {
    const char* example;
    const char* id;
    std::string (*sentence)(const Reading&, const ReadLine&); // empty: the rule does not apply
};

constexpr Rule kLineRules[] = {
    {"a=tool:x c=IN IP4 192.0.2.1", "P01", Misread},       {"m=video 5006 RTP/AVP", "P05", TooShort},
    {"a=sendonly\na=rtpmap:97 H264/90000", "P03", Joined}, {"m=audio 4294972296 RTP/AVP 0", "G04", OddPort},
    {"m=audio abc RTP/AVP 0", "G18", PortWithoutDigits},   {"b=TIAS:64000", "P15", SessionTias},
};

} // namespace

std::string InWords(const Note& note) {
    return "line " + std::to_string(note.line) + (note.isOfAnswer ? " of our answer, " : ", ") + note.id +
           ": " + note.text;
}

std::vector<std::string> NotesOnLines(const Reading& reading) {
    constexpr std::size_t most = 8;
    std::vector<std::string> notes;
    std::size_t more = 0;
    for (const ReadLine& line : reading.lines) {
        for (const Rule& rule : kLineRules) {
            std::string sentence = rule.sentence(reading, line);
            if (sentence.empty()) {
                continue;
            }
            if (notes.size() < most) {
                notes.push_back(InWords({line.number, rule.id, std::move(sentence)}));
            } else {
                ++more;
            }
        }
    }
    if (more != 0) {
        notes.push_back("and " + std::to_string(more) + " more");
    }
    return notes;
}

} // namespace cmsdp
