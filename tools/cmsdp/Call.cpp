// cmsdp call: what do two of us negotiate?
//
// Tests: tests/tool/CallTest.cpp
#include "ReportTable.h"
#include "Verbs.h"
#include "Visible.h"

#include <algorithm>

namespace cmsdp {

namespace {

// A description inside other text: indented, in this system's line ends.
std::string Indented(const std::string& description) {
    std::string out;
    std::size_t begin = 0;
    while (begin < description.size()) {
        const std::size_t end = std::min(description.find("\r\n", begin), description.size());
        out += "  " + Visible(description.substr(begin, end - begin)) + "\n";
        begin = end + 2;
    }
    return out;
}

} // namespace

Outcome RunCall(const CommandLine& line, const Screen& screen) {
    constexpr std::size_t width = 30;
    const Capabilities offererSide = SideOf(line.offerer);
    const Capabilities answererSide = SideOf(line.answerer);
    SDPHandler offerer;
    SDPHandler answerer;
    Prepare(offerer, offererSide);
    Prepare(answerer, answererSide);

    Outcome outcome;
    const std::string offer = offerer.GetLocalSDP();
    const Report atAnswerer = ReadInto(answerer, answererSide, offer);
    if (answerer.IsOffer()) {
        outcome.status = kNothingNegotiated;
        outcome.notes.emplace_back(offer.empty()
                                       ? "nothing was negotiated: default_address of the offerer is empty"
                                       : "nothing was negotiated: the offer has no media line");
        return outcome;
    }
    const std::string answer = answerer.GetLocalSDP();
    const Report atOfferer = ReadInto(offerer, offererSide, answer);

    Secrets secrets(line.showSecrets);
    outcome.text =
        "offer\n" + Indented(secrets.Hide(offer)) + "\nanswer\n" + Indented(secrets.Hide(answer)) + "\n" +
        RenderTable({"offerer", "answerer"},
                    SideBySide(ReportBlocks(atOfferer, secrets), ReportBlocks(atAnswerer, secrets)), width,
                    screen.colour);
    if (!AnythingNegotiated(atOfferer) || !AnythingNegotiated(atAnswerer)) {
        const bool here = !AnythingNegotiated(atAnswerer);
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back((here ? "answerer: " : "offerer: ") +
                                secrets.Hide(WhyNothing(here ? atAnswerer : atOfferer)));
    }
    if (secrets.hidden()) {
        outcome.notes.emplace_back(kHiddenNote);
    }
    return outcome;
}

} // namespace cmsdp
