// A strict reader of descriptions: what of an answer, or of the next description of one side, another
// program may refuse. It shares no code with the component or with the negotiation layer, so that neither
// can hide a mistake of its own.
//
//     for (const JudgeViolation& violation : CheckAnswer(offer, answer)) {
//         std::cout << violation.rule->id << " line " << violation.line << ": " << violation.particulars;
//     }
//     CheckAnswer("", "");   // J02: a text without a line has no v= line
//
// Any bytes are taken. Time and memory grow with the length of both texts, times its logarithm at most.
// Nothing but std::bad_alloc is thrown. No sentence holds key text.
#pragma once

#include "CommonMediaExport.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What one rule says. The table holds every rule once; its entries live as long as the program.
struct JudgeRule {
    const char* id;       ///< "J01": never given to another rule
    const char* clause;   ///< where the rule comes from, such as "RFC 3264, 6"
    const char* sentence; ///< the rule as one sentence
};

/// One place of a text that breaks a rule.
struct JudgeViolation {
    static constexpr int kSession = -1; ///< a `section` that means the session

    const JudgeRule* rule = nullptr; ///< never null in a result
    std::size_t line = 0;            ///< line of the judged text, counted from 1; 0: a line that is missing
    std::size_t otherLine = 0;       ///< line of the offer or of the previous text; 0: none is meant
    int section = kSession;          ///< section of the judged text, counted from 0
    std::string particulars;         ///< one sentence about this place; texts are quoted up to 24 bytes each
};

/// Every rule, in the order of the IDs.
COMMONMEDIA_EXPORT const std::vector<JudgeRule>& JudgeRules();

/// Judges an answer as text and against its offer (RFC 3264, 6). The offer itself is not judged: it is read
/// with patience (any line end, any number of blanks), and a rule that needs a line it lacks is passed over.
/// @return the violations in the order of their lines; empty when the answer is correct
COMMONMEDIA_EXPORT std::vector<JudgeViolation> CheckAnswer(std::string_view offer, std::string_view answer);

/// Judges the next description of a side as text and against the one it sent before in the same session
/// (RFC 3264, 8), offers and answers alike.
/// @return the violations in the order of their lines; empty when the description is correct
COMMONMEDIA_EXPORT std::vector<JudgeViolation> CheckNext(std::string_view previous, std::string_view next);
