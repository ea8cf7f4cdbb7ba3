// The judge: an answer against its offer, and a description against the one before it.
//
// Input: two texts. Output: violations. This source holds what concerns whole texts (number of sections,
// times, keys, versions) and two texts of one side; a section that answers another is judged in
// SDPJudgeSection.cpp and SDPJudgeFormats.cpp.
// Test: tests/judge/SDPJudgeTest.cpp, tests/judge/broken
#include "SDPJudgeText.h"

#include <algorithm>

namespace judge {

namespace {

// The base64 texts of all keys, in any line.
std::set<std::string_view> KeysOf(const Text& text) {
    std::set<std::string_view> keys;
    for (const Section& section : text.sections) {
        const auto [first, last] = section.All("crypto");
        for (const Attribute* line = first; line != last; ++line) {
            const Crypto crypto = ReadCrypto(line->value);
            keys.insert(crypto.keys.begin(), crypto.keys.end());
        }
    }
    return keys;
}

void CheckOwnKeys(const Text& offer, const Text& answer, Verdict& verdict) {
    const std::set<std::string_view> theirs = KeysOf(offer);
    for (const Section& section : answer.sections) {
        const auto [first, last] = section.All("crypto");
        for (const Attribute* line = first; line != last; ++line) {
            for (const std::string_view key : ReadCrypto(line->value).keys) {
                if (theirs.count(key) != 0) {
                    verdict.Add("J33", line->line, 0, section, "The key is one of the offer's.");
                }
            }
        }
    }
}

const Line* LineOf(const Text& text, char type) {
    const auto& lines = text.session.lines;
    const auto line =
        std::find_if(lines.begin(), lines.end(), [type](const Line& each) { return each.type == type; });
    return line == lines.end() ? nullptr : &*line;
}

void CheckTimes(const Text& offer, const Text& answer, Verdict& verdict) {
    const Line* their = LineOf(offer, 't');
    const Line* our = LineOf(answer, 't');
    if (their == nullptr || our == nullptr) {
        return;
    }
    const auto offered = Words(their->value);
    const bool isWhole = offered.size() == 2 && IsDigits(offered[0]) && IsDigits(offered[1]);
    if (isWhole && offered != Words(our->value)) {
        verdict.Add("J39", our->number, their->number, answer.session,
                    "The times differ from those offered.");
    }
}

void CheckGroups(const Text& offer, const Text& answer, Verdict& verdict) {
    const Attribute* our = answer.session.First("group");
    if (our != nullptr && offer.session.First("group") == nullptr) {
        verdict.Add("J37", our->line, 0, answer.session, "Sections are grouped that were offered apart.");
    }
}

// A text without one of its lines.
std::pair<std::string_view, std::string_view> Without(const Line& line, std::string_view text) {
    const auto at = static_cast<std::size_t>(line.text.data() - text.data());
    return {text.substr(0, at), text.substr(at + line.text.size())};
}

void CheckOrigins(std::string_view previous, const Line* before, std::string_view next, const Line* now,
                  const Section& session, Verdict& verdict) {
    if (before == nullptr || now == nullptr) {
        return;
    }
    auto old = Words(before->value);
    auto fresh = Words(now->value);
    if (old.size() != 6 || fresh.size() != 6) {
        return;
    }
    const auto oldVersion = Number(old[2]);
    const auto version = Number(fresh[2]);
    old[2] = fresh[2] = {};
    if (old != fresh) {
        verdict.Add("J50", now->number, before->number, session, "Another field than the version changed.");
    }
    const bool changed = old != fresh || Without(*before, previous) != Without(*now, next);
    if (oldVersion && version && *version - *oldVersion != (changed ? 1U : 0U)) {
        verdict.Add("J51", now->number, before->number, session,
                    "The text " + std::string(changed ? "changed" : "is the same") +
                        ", the version went from " + std::to_string(*oldVersion) + " to " +
                        std::to_string(*version) + ".");
    }
}

/// The media of RFC 4566, 8.2.1, and "image" of RFC 6466.
bool IsRegistered(std::string_view media) {
    static constexpr std::string_view kMedia[] = {"audio",       "video",   "text",
                                                  "application", "message", "image"};
    return std::find(std::begin(kMedia), std::end(kMedia), media) != std::end(kMedia);
}

void CheckMeanings(const Section& before, const Section& now, Verdict& verdict) {
    const Encodings old = EncodingsOf(before);
    const Encodings fresh = EncodingsOf(now);
    const std::set<std::string_view> listed(before.formats.begin(), before.formats.end());
    for (const auto& [format, encodings] : fresh) {
        const auto known = old.find(format);
        if (known != old.end() && known->second != encodings && listed.count(format) != 0) {
            verdict.Add("J54", now.line, before.line, now,
                        "Format " + Quoted(format) + " was " + Quoted(*known->second.begin()) + " and is " +
                            Quoted(*encodings.begin()) + ".");
        }
    }
}

} // namespace

} // namespace judge

std::vector<JudgeViolation> CheckAnswer(std::string_view offer, std::string_view answer) {
    using namespace judge;
    const Text theirs = Read(offer);
    const Text ours = Read(answer);
    Verdict verdict;
    CheckGrammar(ours, verdict);
    if (theirs.sections.size() != ours.sections.size()) {
        verdict.Add("J20", 0, 0, ours.session,
                    "The answer has " + std::to_string(ours.sections.size()) + ", the offer " +
                        std::to_string(theirs.sections.size()) + ".");
    }
    CheckTimes(theirs, ours, verdict);
    CheckGroups(theirs, ours, verdict);
    for (std::size_t at = 0; at < std::min(theirs.sections.size(), ours.sections.size()); ++at) {
        CheckSection({theirs, ours, theirs.sections[at], ours.sections[at], verdict});
    }
    CheckOwnKeys(theirs, ours, verdict);
    return verdict.Take();
}

std::vector<JudgeViolation> CheckNext(std::string_view previous, std::string_view next) {
    using namespace judge;
    const Text before = Read(previous);
    const Text now = Read(next);
    Verdict verdict;
    CheckGrammar(now, verdict);
    CheckOrigins(previous, LineOf(before, 'o'), next, LineOf(now, 'o'), now.session, verdict);
    if (now.sections.size() < before.sections.size()) {
        verdict.Add("J52", 0, before.sections[now.sections.size()].line, now.session,
                    "There are " + std::to_string(now.sections.size()) + ", before there were " +
                        std::to_string(before.sections.size()) + ".");
    }
    for (std::size_t at = 0; at < std::min(before.sections.size(), now.sections.size()); ++at) {
        const Section& old = before.sections[at];
        const Section& fresh = now.sections[at];
        if (!old.IsOpen()) {
            continue;
        }
        if (old.media == fresh.media) {
            CheckMeanings(old, fresh, verdict);
        } else if (!IsRegistered(fresh.media)) {
            verdict.Add("J53", fresh.line, old.line, fresh,
                        "The medium was " + Quoted(old.media) + " and is " + Quoted(fresh.media) + ".");
        }
    }
    return verdict.Take();
}
