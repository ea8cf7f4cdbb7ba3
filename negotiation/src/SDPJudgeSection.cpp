// The judge's rules for one section of an answer and the section of the offer that it answers.
//
// Input: both sections, read. Output: violations of the rules J21 to J38; those of the formats are in
// SDPJudgeFormats.cpp. An offered section whose m= line is not whole is compared by nothing but its medium.
// Keys and attributes are found through sorted containers that belong to one section.
// Test: tests/judge/SDPJudgeSectionTest.cpp, tests/judge/broken
#include "SDPJudgeText.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace judge {

namespace {

// What may answer what: directions (RFC 3264, 6.1), floor control roles (RFC 4583, 4), DTLS and TCP roles
// (RFC 4145, 4.1). Rows of no offered value are not judged.
constexpr struct {
    std::string_view offered;
    std::string_view answers;
} kAnswers[] = {
    {"sendonly", "recvonly inactive"},
    {"recvonly", "sendonly inactive"},
    {"inactive", "inactive"},
    {"c-only", "s-only"},
    {"s-only", "c-only"},
    {"c-s", "c-only s-only c-s"},
    {"actpass", "active passive holdconn"},
    {"active", "passive holdconn"},
    {"passive", "active holdconn"},
    {"holdconn", "holdconn"},
};

bool MayAnswer(std::string_view offered, std::string_view answered) {
    const auto row = std::find_if(std::begin(kAnswers), std::end(kAnswers),
                                  [offered](const auto& each) { return each.offered == offered; });
    if (row == std::end(kAnswers)) {
        return true;
    }
    const auto words = Words(row->answers);
    return std::find(words.begin(), words.end(), answered) != words.end();
}

void CheckDirection(const Pair& pair) {
    if (!pair.ours.IsRtp()) {
        return;
    }
    const auto [offered, theirLine] = pair.offer.Direction(pair.theirs);
    const auto [answered, ourLine] = pair.answer.Direction(pair.ours);
    if (!MayAnswer(offered, answered)) {
        pair.Add("J29", ourLine, theirLine,
                 "Offered is " + std::string(offered) + ", answered " + std::string(answered) + ".");
    }
}

void CheckCryptoLine(const Pair& pair, const Attribute& line) {
    const Crypto crypto = ReadCrypto(line.value);
    if (crypto.tag.empty()) {
        return;
    }
    const auto tag = Number(crypto.tag);
    bool tagged = false;
    const auto [first, last] = pair.theirs.All("crypto");
    for (const Attribute* offered = first; offered != last; ++offered) {
        const Crypto their = ReadCrypto(offered->value);
        const bool same = tag && Number(their.tag) == tag;
        if (same && their.suite == crypto.suite) {
            return;
        }
        tagged = tagged || same;
    }
    pair.Add("J31", line.line, 0,
             tagged ? "The tag was offered with another suite." : "The tag was not offered in this section.");
}

void CheckSecurity(const Pair& pair) {
    const auto [first, last] = pair.ours.All("crypto");
    const std::string transport = Lower(pair.ours.transport);
    const bool secure = transport == "rtp/savp" || transport == "rtp/savpf";
    if (!secure) {
        if (first != last) {
            pair.Add("J32", first->line, 0, "The transport is " + Quoted(pair.ours.transport) + ".");
        }
    } else if (first == last) {
        if (pair.answer.Of(pair.ours, "key-mgmt") == nullptr) {
            pair.Add("J30", 0, 0, "The section has no crypto line.");
        }
    } else if (last - first > 1) {
        pair.Add("J30", first[1].line, 0,
                 "The section has " + std::to_string(last - first) + " crypto lines.");
    } else {
        CheckCryptoLine(pair, *first);
    }
}

std::string_view FirstWord(std::string_view value) {
    return value.substr(0, value.find(' '));
}

void CheckFloorControl(const Pair& pair) {
    if (pair.ours.transport.find("BFCP") == std::string_view::npos) {
        return;
    }
    const Attribute* their = pair.theirs.First("floorctrl");
    const Attribute* our = pair.ours.First("floorctrl");
    const std::string_view answered = our == nullptr ? "s-only" : our->value;
    const bool stated = their != nullptr && !their->value.empty();
    const auto offered = Words(stated ? their->value : "c-only");
    if (std::none_of(offered.begin(), offered.end(), [&](auto role) { return MayAnswer(role, answered); })) {
        pair.Add("J34", our == nullptr ? 0 : our->line, their == nullptr ? 0 : their->line,
                 "The role " + Quoted(answered) + " answers none of those offered.");
    }
    for (const char* name : {"confid", "userid", "floorid"}) {
        const Attribute* theirId = pair.theirs.First(name);
        const Attribute* ourId = pair.ours.First(name);
        if (answered == "s-only" && ourId == nullptr) {
            pair.Add("J35", 0, 0, std::string("This server gives no a=") + name + ".");
        } else if (answered == "c-only" && theirId != nullptr && ourId != nullptr &&
                   IsId(FirstWord(theirId->value)) && FirstWord(theirId->value) != FirstWord(ourId->value)) {
            pair.Add("J35", ourId->line, theirId->line, std::string("This client changes a=") + name + ".");
        }
    }
}

// The values are literals of an ABNF grammar, which have no letter case (RFC 4796, 5; RFC 4234, 2.3).
void CheckContent(const Pair& pair) {
    const Attribute* our = pair.ours.First("content");
    const auto [first, last] = pair.theirs.All("content");
    std::set<std::string> offered;
    for (const Attribute* line = first; line != last; ++line) {
        for (const std::string_view piece : Split(line->value, ',')) {
            if (IsToken(piece)) {
                offered.insert(Lower(piece));
            }
        }
    }
    if (our == nullptr || offered.empty()) {
        return;
    }
    const auto answered = Split(our->value, ',');
    if (std::none_of(answered.begin(), answered.end(),
                     [&](auto each) { return offered.count(Lower(each)) != 0; })) {
        pair.Add("J36", our->line, first->line,
                 "The content is " + Quoted(our->value) + ", offered is " + Quoted(first->value) + ".");
    }
}

void CheckIntroduced(const Pair& pair) {
    for (const std::string_view name : {"rtcp-mux", "ice-ufrag", "candidate", "mid"}) {
        const Attribute* our = pair.answer.Of(pair.ours, name);
        if (our != nullptr && pair.offer.Of(pair.theirs, name) == nullptr) {
            pair.Add("J37", our->line, 0, "Attribute " + Quoted(name) + " was not offered.");
        }
    }
    const Attribute* our = pair.ours.First("mid");
    const Attribute* their = pair.theirs.First("mid");
    if (our != nullptr && their != nullptr && our->value != their->value) {
        pair.Add("J37", our->line, their->line, "The section answers with another mid.");
    }
}

void CheckDtls(const Pair& pair) {
    const bool dtls = pair.ours.transport.find("TLS/") != std::string_view::npos;
    if (dtls && pair.answer.Of(pair.ours, "fingerprint") == nullptr) {
        pair.Add("J38", 0, 0, "Neither the section nor the session has a fingerprint.");
    }
    const Attribute* their = pair.offer.Of(pair.theirs, "setup");
    const Attribute* our = pair.answer.Of(pair.ours, "setup");
    if (their != nullptr && our != nullptr && !MayAnswer(their->value, our->value)) {
        pair.Add("J38", our->line, their->line,
                 "The role is " + Quoted(our->value) + ", offered is " + Quoted(their->value) + ".");
    }
}

} // namespace

void CheckSection(const Pair& pair) {
    if (pair.theirs.media != pair.ours.media) {
        pair.Add("J21", 0, 0,
                 "The medium is " + Quoted(pair.ours.media) + ", offered is " + Quoted(pair.theirs.media) +
                     ".");
        return;
    }
    if (!pair.theirs.port || !pair.ours.port) {
        return;
    }
    // A transport that is no word can be rejected and not repeated.
    const bool isAnswered = pair.ours.IsOpen() || IsTransport(pair.theirs.transport);
    if (isAnswered && pair.theirs.transport != pair.ours.transport) {
        pair.Add("J22", 0, 0,
                 "The transport is " + Quoted(pair.ours.transport) + ", offered is " +
                     Quoted(pair.theirs.transport) + ".");
        return;
    }
    if (!pair.ours.IsOpen()) {
        return;
    }
    if (!pair.theirs.IsOpen()) {
        pair.Add("J23", 0, 0, "The section was offered at port 0.");
        return;
    }
    for (const auto check : {CheckFormats, CheckDirection, CheckSecurity, CheckFloorControl, CheckContent,
                             CheckIntroduced, CheckDtls}) {
        check(pair);
    }
}

} // namespace judge
