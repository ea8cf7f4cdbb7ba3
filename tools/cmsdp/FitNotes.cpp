// Rules of the judge with the behaviour of the component that breaks them, one row each.
//
// Tests: tests/tool/FitNotesTest.cpp
#include "FitNotes.h"

#include "Fit.h"
#include "Outcome.h"
#include "SDPJudge.h"

#include <algorithm>
#include <string_view>

namespace cmsdp {

namespace {

constexpr const char* kWholeAnswer = "strict far ends refuse the whole answer";
constexpr const char* kSection = "strict far ends do not start the stream";

struct RuleRow {
    std::string_view rule;
    const char* ledger; // behaviours that break it; empty: none is known to
    const char* consequence;
};

constexpr RuleRow kRules[] = {
    {"J01", "B09", kWholeAnswer},
    {"J02", "", kWholeAnswer},
    {"J03", "B02", kWholeAnswer},
    {"J05", "B25", "strict far ends have no address to send to"},
    {"J06", "B10, B15, B23", kWholeAnswer},
    {"J07", "B07", kSection},
    {"J08", "B09", kWholeAnswer},
    {"J09", "B04", kWholeAnswer},
    {"J10", "B04", "far ends that keep to it send nothing"},
    {"J12", "B08", kSection},
    {"J13", "B14", "strict far ends have no key for the stream"},
    {"J14", "B14", "everybody can decrypt the stream, or nobody"},
    {"J20", "B03, B15, B18", kWholeAnswer},
    {"J21", "B03, B18", "the far end starts the wrong medium, or refuses the whole answer"},
    {"J22", "B13", "strict far ends refuse the whole answer; a secure stream would be sent in the clear"},
    {"J23", "B03", kWholeAnswer},
    {"J24", "B03, B07, B24", kSection},
    {"J27", "B07", kSection},
    {"J29", "B20", "both sides send, or neither does"},
    {"J30", "B11, B13, B22", "strict far ends have no key for the stream"},
    {"J31", "B21", "strict far ends have no key for the stream"},
    {"J32", "B13, B21", kSection},
    {"J34", "B16", "both ends wait for each other, and nobody gets the floor"},
    {"J35", "B17", "the floor control server does not know this side"},
    {"J36", "B03", "main video and slides are exchanged"},
    {"J39", "", kWholeAnswer},
};

constexpr RuleRow kAnyRule = {"", "", kSection};

const RuleRow& RowOf(std::string_view rule) {
    const auto* const found = std::find_if(std::begin(kRules), std::end(kRules),
                                           [rule](const RuleRow& row) { return row.rule == rule; });
    return found == std::end(kRules) ? kAnyRule : *found;
}

// "J24, B03, B24, line 14 of our answer: An accepted section ... Format '126' was not offered ...; ..."
std::string InWords(const JudgeViolation& violation) {
    const RuleRow& row = RowOf(violation.rule->id);
    std::string text = violation.rule->id;
    text += *row.ledger == '\0' ? "" : std::string(", ") + row.ledger;
    text += violation.line == 0 ? ", our answer: "
                                : ", line " + std::to_string(violation.line) + " of our answer: ";
    std::string particulars = violation.particulars;
    if (!particulars.empty() && particulars.back() == '.') {
        particulars.pop_back();
    }
    return text + violation.rule->sentence + " " + particulars + "; " + row.consequence;
}

std::string SectionInWords(const SDPNegotiator::Stream& stream) {
    const std::string section = "section " + std::to_string(stream.section + 1);
    return IsAgreed(stream) ? section + " is answered in its place"
                            : section + " is rejected in its place: " + std::string(stream.reason);
}

} // namespace

std::vector<std::string> NotesOfJudge(const std::string& offer, const std::string& answer) {
    std::vector<std::string> notes;
    std::vector<std::pair<const JudgeRule*, int>> said;
    for (const JudgeViolation& violation : CheckAnswer(offer, answer)) {
        const std::pair<const JudgeRule*, int> place(violation.rule, violation.section);
        if (std::find(said.begin(), said.end(), place) == said.end()) {
            said.push_back(place);
            notes.push_back(InWords(violation));
        }
    }
    return notes;
}

FitView FitOf(const Capabilities& side, const std::string& text, bool isAnswer) {
    FitView view;
    std::optional<SDPNegotiator> call;
    try {
        call = NegotiatorOf(side, "this side");
    } catch (const ToolError& error) {
        view.why = error.what();
        return view;
    }
    SDPNegotiator::Outcome outcome;
    if (isAnswer) {
        PresentIfAble(*call, side);
        outcome = call->Offer();
        outcome = outcome.isTaken ? call->Accept(text) : outcome;
    } else {
        outcome = call->Answer(text);
    }
    view.why = outcome.reason;
    view.repairs = call->Repairs();
    view.streams = call->Streams();
    return view;
}

std::vector<std::string> InWords(const FitView& view) {
    std::vector<std::string> words;
    for (const SDPNegotiator::Repair& repair : view.repairs) {
        words.push_back(std::string(repair.id) + " (" + std::string(repair.ledger) +
                        "): " + std::string(repair.sentence));
    }
    if (!view.why.empty()) {
        words.push_back("the text is refused: " + view.why);
    }
    for (const SDPNegotiator::Stream& stream : view.streams) {
        words.push_back(SectionInWords(stream));
    }
    return words;
}

} // namespace cmsdp
