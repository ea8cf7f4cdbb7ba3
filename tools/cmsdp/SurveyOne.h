// One description of a survey: its findings, and the streams of the fitted answer.
//
// Tests: tests/tool/survey.cases
#pragma once

#include "Capabilities.h"
#include "SDPExplain.h"
#include "SDPNegotiator.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// A description that waits for its turn.
struct Surveyed {
    std::string name;           ///< file, or place in it: "night.jsonl:12"
    std::string text;           ///< byte for byte
    bool remoteAnswers = false; ///< it answers our offer
    std::string unread;         ///< why there is no description; empty when there is one
    std::string ourOffer;       ///< the offer that the text answers; empty: the one of the local file
};

struct SurveyFinding {
    std::string_view id;
    ExplainTopic topic = ExplainTopic::Call;
    ExplainSeverity severity = ExplainSeverity::Note;
    std::vector<std::size_t> lines;
};

struct SurveyStream {
    std::string stream;     ///< a name of --require; empty for a section that serves none
    const char* state = ""; ///< StateInWords
    bool isAgreed = false;
};

struct SurveyResult {
    std::string name;
    std::string unread;  ///< why there was no description
    std::string refused; ///< why the fitted answer refuses the text; empty when it does not
    std::vector<SurveyFinding> findings;
    std::vector<SurveyStream> streams; ///< none for an answer to an offer that is not of the local file
    std::string origin;                ///< user name of the "o=" line
    std::string session;               ///< "s=" line
    std::string tool;                  ///< "a=tool:" line
};

/// Examines descriptions of far ends; one for each thread.
class Surveyor {
public:
    /// Throws ToolError(kLocalFile) for a side that no strict reader takes.
    explicit Surveyor(const Capabilities& side);

    SurveyResult Examine(const Surveyed& item);

private:
    void TakeStreams(SurveyResult& result, const Surveyed& item) const;

    ExplainInput m_input;
    ExplainCounter m_counter;
    SDPNegotiator m_answerer; ///< as it is before each offer
    SDPNegotiator m_offerer;  ///< our offer is pending
};

/// One line of JSON, keys hidden.
std::string SurveyJson(const SurveyResult& result);

} // namespace cmsdp
