// The judge's table of rules, and the list of violations that names them.
//
// A rule has one row here and an ID for good; the sources that look for it name it by the ID. J01 to J19
// are about one text, J20 to J49 about an answer and its offer, J50 and up about two texts of one side.
// Test: tests/judge/BrokenTest.cpp
#include "SDPJudgeText.h"

#include <algorithm>
#include <cstring>

const std::vector<JudgeRule>& JudgeRules() {
    static const std::vector<JudgeRule> rules = {
        {"J01", "RFC 4566, 5", "A line is a small letter, '=' and a value, and ends in CR LF."},
        {"J02", "RFC 4566, 5", "Lines are in their fixed order: v=0 first, o=, s= and t= once each."},
        {"J03", "RFC 4566, 5.2; RFC 3264, 5", "An o= line has six fields; id and version are numbers."},
        {"J04", "RFC 4566, 5.7", "A whole c= line is at session level or in each open section."},
        {"J05", "RFC 4566, 5.7", "An address after IP4 is one of IPv4, after IP6 one of IPv6."},
        {"J06", "RFC 4566, 5.14", "An m= line names medium, port, transport and at least one format."},
        {"J07", "RFC 3264, 5.1", "A payload type is a number up to 127 and is listed once in its m= line."},
        {"J08", "RFC 4566, 5.13", "An attribute has a name, and after a colon a value of its form."},
        {"J09", "RFC 4566, 5.8", "A b= line holds a type and a number without a sign."},
        {"J10", "RFC 3264, 5.1", "A budget of zero says that no media is sent; an open stream has more."},
        {"J11", "RFC 4566, 5.9", "A t= line holds two numbers."},
        {"J12", "RFC 4566, 6", "An rtpmap or fmtp line names a format and what belongs to it."},
        {"J13", "RFC 4568, 9.1", "A crypto line holds tag, suite and key between single blanks."},
        {"J14", "RFC 4568, 6.1", "A key decodes to the length of its suite and is not all zero."},
        {"J15", "RFC 4574, 4", "A label belongs to one section of a description."},
        {"J16", "RFC 8839, 5.4", "ICE credentials come as a pair."},
        {"J17", "RFC 4566, 6", "One level of a description has one direction at most."},
        {"J18", "RFC 4574, 4", "A section has one label at most."},
        {"J20", "RFC 3264, 6", "An answer has as many m= lines as its offer."},
        {"J21", "RFC 3264, 6", "The media of an answer are in the order of the offer."},
        {"J22", "RFC 3264, 6", "A section is answered with the transport it was offered with."},
        {"J23", "RFC 3264, 6", "A section offered at port 0 is answered at port 0."},
        {"J24", "RFC 3264, 6.1", "An accepted section lists formats that were offered in it."},
        {"J25", "RFC 3551, 6", "A payload type that is not static has an rtpmap line."},
        {"J26", "RFC 3264, 6.1", "A payload type means what it means in the offer."},
        {"J27", "RFC 3264, 6", "An accepted audio section has a codec beside tones and comfort noise."},
        {"J28", "RFC 6184, 8.2.2", "Profile and packetization mode of an H.264 format are those offered."},
        {"J29", "RFC 3264, 6.1", "The direction of an answer fits the one offered."},
        {"J30", "RFC 4568, 5.1.2", "A section accepted over SAVP has exactly one crypto line."},
        {"J31", "RFC 4568, 5.1.3", "The crypto line has a tag that was offered, and the suite of that tag."},
        {"J32", "RFC 4568, 6", "Crypto lines are in sections over SAVP or SAVPF only."},
        {"J33", "RFC 4568, 5.1.2", "The answerer makes a key of its own."},
        {"J34", "RFC 4583, 4", "The floor control role answers the one offered."},
        {"J35", "RFC 4583, 5", "A floor control server names conference and user; a client repeats them."},
        {"J36", "RFC 4796, 5", "A stream is answered by one of the same content."},
        {"J37", "RFC 5761, 5.1.1; RFC 5888, 9.1", "Multiplexing, ICE and ids are answered, not introduced."},
        {"J38", "RFC 5763, 5", "A section accepted over DTLS has a fingerprint and the other end's role."},
        {"J39", "RFC 3264, 6", "The t= line of an answer is that of the offer."},
        {"J40", "RFC 5577, 5", "A format of G.722.1 keeps the bit rate it was offered with."},
        {"J50", "RFC 3264, 8", "Between two descriptions o= changes in nothing but its version."},
        {"J51", "RFC 3264, 8", "The version grows by one when the text changes, and only then."},
        {"J52", "RFC 3264, 8", "A description has no fewer m= lines than the one before."},
        {"J53", "RFC 3264, 8.3.3", "A running stream changes its medium only to one that is registered."},
        {"J54", "RFC 3264, 8.3.2", "A payload type keeps its meaning for the whole session."},
    };
    return rules;
}

namespace judge {

void Verdict::Add(const char* id, std::size_t line, std::size_t otherLine, const Section& section,
                  std::string particulars) {
    const auto& rules = JudgeRules();
    const auto rule = std::find_if(rules.begin(), rules.end(),
                                   [id](const JudgeRule& row) { return std::strcmp(row.id, id) == 0; });
    m_found.push_back({&*rule, line, otherLine, section.index, std::move(particulars)});
}

std::vector<JudgeViolation> Verdict::Take() {
    std::stable_sort(m_found.begin(), m_found.end(),
                     [](const JudgeViolation& a, const JudgeViolation& b) { return a.line < b.line; });
    return std::move(m_found);
}

} // namespace judge
