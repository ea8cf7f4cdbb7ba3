// cmsdp call: what do two of us negotiate?
//
// Tests: tests/tool/CallTest.cpp
#include "Platform.h"
#include "ReportJson.h"
#include "ReportTable.h"
#include "Verbs.h"
#include "Visible.h"

#include <algorithm>
#include <chrono>
#include <thread>

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

// A new handler takes its session id from the tick count; two ends of a call have two ids (RFC 4566, 5.2).
void WaitForNextTick() {
    const std::uint32_t now = GetTickCount();
    while (GetTickCount() == now) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

std::string AsText(const CallSide& offerer, const CallSide& answerer, Secrets& secrets,
                   const Screen& screen) {
    return "offer\n" + Indented(secrets.Hide(offerer.description)) + "\nanswer\n" +
           Indented(secrets.Hide(answerer.description)) + "\n" +
           RenderTable(
               {"offerer", "answerer"},
               SideBySide(ReportBlocks(offerer.report, secrets), ReportBlocks(answerer.report, secrets)),
               CellWidth(screen.width, 2), screen.colour);
}

// Without a section the answerer would write an offer of its own.
Outcome NothingToAnswer(const std::string& offer, const Report& atAnswerer, bool json, Secrets& secrets) {
    Outcome outcome;
    outcome.status = kNothingNegotiated;
    outcome.text = json ? CallJson({offer, Report()}, {"", atAnswerer}, secrets) : "";
    outcome.notes.emplace_back(offer.empty()
                                   ? "nothing was negotiated: default_address of the offerer is empty"
                                   : "nothing was negotiated: the offer has no media line");
    return outcome;
}

} // namespace

Outcome RunCall(const CommandLine& line, const Screen& screen) {
    const Capabilities offererSide = SideOf(line.offerer);
    const Capabilities answererSide = SideOf(line.answerer, BuiltInAnswerer());
    SDPHandler offerer;
    WaitForNextTick();
    SDPHandler answerer;
    Prepare(offerer, offererSide);
    Prepare(answerer, answererSide);

    Secrets secrets(line.showSecrets);
    const std::string offer = offerer.GetLocalSDP();
    const Report atAnswerer = ReadInto(answerer, answererSide, Draft::Of(offer));
    if (answerer.IsOffer()) {
        return NothingToAnswer(offer, atAnswerer, line.json, secrets);
    }
    const std::string& answer = atAnswerer.answer;
    const Report atOfferer = ReadInto(offerer, offererSide, Draft::Of(answer), true);

    Outcome outcome;
    const CallSide offering{offer, atOfferer};
    const CallSide answering{answer, atAnswerer};
    outcome.text =
        line.json ? CallJson(offering, answering, secrets) : AsText(offering, answering, secrets, screen);
    Judge(outcome, atAnswerer, line, secrets, "answerer: ");
    if (outcome.status == kDone) {
        Judge(outcome, atOfferer, line, secrets, "offerer: ");
    }
    if (secrets.hidden()) {
        outcome.notes.emplace_back(kHiddenNote);
    }
    return outcome;
}

} // namespace cmsdp
