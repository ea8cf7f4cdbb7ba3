// Rules of the judge with the behaviour of the component that breaks them, one row each.
//
// Tests: tests/tool/fit.cases
#include "FitNotes.h"

#include "Fit.h"
#include "Outcome.h"
#include "SDPJudge.h"
#include "SDPTables.h"
#include "SDPTransport.h"
#include "Words.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cmsdp {

namespace {

constexpr const char* kWholeAnswer = "strict far ends refuse the whole answer";
constexpr const char* kSection = "strict far ends do not start the stream";

using MediaLines = std::vector<std::string_view>;

// A violation and the "m=" lines around it.
struct Place {
    const JudgeViolation& violation;
    const MediaLines& offered;
    const MediaLines& answered;
    std::string_view answer; // the whole text

    // The "m=" lines of the violation's section; empty for none.
    std::string_view Theirs() const { return At(offered); }
    std::string_view Ours() const { return At(answered); }

private:
    std::string_view At(const MediaLines& lines) const {
        const auto section = static_cast<std::size_t>(violation.section);
        return violation.section >= 0 && section < lines.size() ? lines[section] : "";
    }
};

bool HasPort(std::string_view line, std::string_view port) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    const std::string_view rest = line.substr(std::min(blank + 1, line.size()));
    return rest.substr(0, rest.find(' ')) == port;
}

// The "m=" lines of our answer that the offer has no line for.
template <typename Test>
bool AnySurplus(const Place& place, Test test) {
    const std::size_t common = std::min(place.offered.size(), place.answered.size());
    return std::any_of(place.answered.begin() + static_cast<std::ptrdiff_t>(common), place.answered.end(),
                       test);
}

bool Always(const Place& /*place*/) {
    return true;
}
bool OwnSurplus(const Place& place) { // m=video 16386 RTP/AVP 97 126
    return AnySurplus(place, [](std::string_view line) { return !HasPort(line, "0") && !HasPort(line, ""); });
}
bool CopySurplus(const Place& place) { // m=video 0 RTP/AVP 97 98
    return AnySurplus(place, [](std::string_view line) { return HasPort(line, "0"); });
}
bool NoPort(const Place& place) { // m=application  UDP/BFCP *
    const MediaLines& lines = place.answered;
    return std::any_of(lines.begin(), lines.end(), [](std::string_view line) { return HasPort(line, ""); });
}
bool TwoBlanks(const Place& place) { // m=video 0 RTP/AVP  126
    return !HasPort(place.Ours(), "") && place.Ours().find("  ") != std::string_view::npos;
}
bool NoFormat(const Place& place) { // m=video 16386 RTP/AVP<blank>
    return !place.Ours().empty() && place.Ours().back() == ' ';
}
bool IsCopy(const Place& place) {
    return HasPort(place.Ours(), "0");
}
bool OwnMedium(const Place& place) {
    return !IsCopy(place);
}
bool Tones(const Place& place) { // format 101
    return sdp::StartsWith(place.Ours(), "m=audio") &&
           place.violation.particulars.find("'" + std::string(sdp::kTelephoneEvent.payload) + "'") !=
               std::string::npos;
}
bool OtherMode(const Place& place) { // format 126 beside one that was offered
    const std::vector<std::string_view> theirs = WordsOf(place.Theirs());
    const std::vector<std::string_view> ours = WordsOf(place.Ours());
    constexpr std::size_t formats = 3;
    return sdp::StartsWith(place.Ours(), "m=video") && ours.size() > formats &&
           std::find(theirs.begin(), theirs.end(), ours[formats]) != theirs.end();
}
bool SecureHere(const Place& place) { // m=video 16386 RTP/SAVP 97 126
    return negotiation::IsSavp(place.Ours()) && !negotiation::IsSavp(place.Theirs());
}
bool NoKeyAnywhere(const Place& place) {
    return !TwoBlanks(place) && place.answer.find("a=crypto:") == std::string_view::npos;
}
bool NoKeyHere(const Place& place) {
    return !TwoBlanks(place) && !NoKeyAnywhere(place) && sdp::StartsWith(place.Ours(), "m=video");
}

// A behaviour of the ledger, and whether it is what breaks the rule in this place.
struct Cause {
    const char* id;
    bool (*applies)(const Place&);
};

struct RuleRow {
    std::string_view rule;
    std::array<Cause, 3> causes; // empty: no behaviour is known to break it
    const char* consequence;
};

constexpr RuleRow kRules[] = {
    {"J01", {{{"B09", Always}}}, kWholeAnswer},
    {"J02", {}, kWholeAnswer},
    {"J03", {{{"B02", Always}}}, kWholeAnswer},
    {"J05", {{{"B25", Always}}}, "strict far ends have no address to send to"},
    {"J06", {{{"B10", TwoBlanks}, {"B15", NoPort}, {"B23", NoFormat}}}, kWholeAnswer},
    {"J07", {{{"B07", Tones}}}, kSection},
    {"J08", {{{"B09", Always}}}, kWholeAnswer},
    {"J09", {{{"B04", Always}}}, kWholeAnswer},
    {"J10", {{{"B04", Always}}}, "far ends that keep to it send nothing"},
    {"J12", {{{"B08", Always}}}, kSection},
    {"J13", {{{"B14", Always}}}, "strict far ends have no key for the stream"},
    {"J14", {{{"B14", Always}}}, "everybody can decrypt the stream, or nobody"},
    {"J20", {{{"B03", OwnSurplus}, {"B15", NoPort}, {"B18", CopySurplus}}}, kWholeAnswer},
    {"J21",
     {{{"B03", OwnMedium}, {"B18", IsCopy}}},
     "the far end starts the wrong medium, or refuses the whole answer"},
    {"J22",
     {{{"B13", SecureHere}}},
     "strict far ends refuse the whole answer; a secure stream would be sent in the clear"},
    {"J23", {{{"B03", Always}}}, kWholeAnswer},
    {"J24", {{{"B07", Tones}, {"B24", OtherMode}}}, kSection},
    {"J27", {{{"B07", Always}}}, kSection},
    {"J29", {{{"B20", Always}}}, "both sides send, or neither does"},
    {"J30",
     {{{"B11", TwoBlanks}, {"B13", NoKeyHere}, {"B22", NoKeyAnywhere}}},
     "strict far ends have no key for the stream"},
    {"J31", {{{"B21", Always}}}, "strict far ends have no key for the stream"},
    {"J32", {{{"B13", Always}}}, kSection},
    {"J34", {{{"B16", Always}}}, "both ends wait for each other, and nobody gets the floor"},
    {"J35", {{{"B17", Always}}}, "the floor control server does not know this side"},
    {"J36", {{{"B03", Always}}}, "main video and slides are exchanged"},
    {"J39", {}, kWholeAnswer},
};

constexpr RuleRow kAnyRule = {"", {}, kSection};

const RuleRow& RowOf(std::string_view rule) {
    const auto* const found = std::find_if(std::begin(kRules), std::end(kRules),
                                           [rule](const RuleRow& row) { return row.rule == rule; });
    return found == std::end(kRules) ? kAnyRule : *found;
}

// The "m=" lines of a text, any line end.
MediaLines MediaLinesOf(std::string_view text) {
    MediaLines lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string_view line = text.substr(begin, end - begin);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (sdp::StartsWith(line, "m=")) {
            lines.push_back(line);
        }
        begin = end + 1;
    }
    return lines;
}

// "J24, B07, line 14 of our answer: An accepted section ... Format '126' was not offered ...; ..."
std::string InWords(const Place& place) {
    const JudgeViolation& violation = place.violation;
    const RuleRow& row = RowOf(violation.rule->id);
    std::string text = violation.rule->id;
    for (const Cause& cause : row.causes) {
        text += cause.id != nullptr && cause.applies(place) ? std::string(", ") + cause.id : "";
    }
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
    if (stream.state == SDPNegotiator::State::NoAddress) {
        return section + " is answered in its place and not started: " + std::string(stream.reason);
    }
    return IsAgreed(stream) ? section + " is answered in its place"
                            : section + " is rejected in its place: " + std::string(stream.reason);
}

} // namespace

std::vector<std::string> NotesOfJudge(const std::string& offer, const std::string& answer) {
    std::vector<std::string> notes;
    const MediaLines offered = MediaLinesOf(offer);
    const MediaLines answered = MediaLinesOf(answer);
    std::vector<std::pair<const JudgeRule*, int>> said;
    for (const JudgeViolation& violation : CheckAnswer(offer, answer)) {
        const std::pair<const JudgeRule*, int> place(violation.rule, violation.section);
        if (std::find(said.begin(), said.end(), place) == said.end()) {
            said.push_back(place);
            notes.push_back(InWords(Place{violation, offered, answered, answer}));
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
