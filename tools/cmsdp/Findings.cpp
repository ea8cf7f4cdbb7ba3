// Stage: none; the options of explain that choose among findings.
// Input: the command line and findings. Output: those that were asked for.
// Touches nothing.
// The names of topics are the library's.
// Test: tests/tool/calls.cases
#include "Findings.h"

#include "Outcome.h"
#include "Words.h"

#include <algorithm>
#include <iterator>

namespace cmsdp {

void CheckTopic(const CommandLine& line) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < kExplainTopics; ++i) {
        names.emplace_back(ExplainTopicName(static_cast<ExplainTopic>(i)));
    }
    if (line.about && std::find(names.begin(), names.end(), *line.about) == names.end()) {
        throw ToolError(kUsage,
                        Quoted(*line.about) + " is no topic; the topics are " + Listed(names, names.size()));
    }
}

std::vector<ExplainFinding> Asked(const CommandLine& line, const std::vector<ExplainFinding>& findings) {
    std::vector<ExplainFinding> asked;
    for (const ExplainFinding& finding : findings) {
        if (!line.about || *line.about == ExplainTopicName(finding.topic)) {
            asked.push_back(finding);
        }
    }
    if (line.top && asked.size() > 1) {
        asked.resize(1);
    }
    return asked;
}

std::vector<std::string> AskedPhrases(const CommandLine& line, const std::vector<std::string>& phrases) {
    std::vector<std::string> asked;
    std::copy_if(phrases.begin(), phrases.end(), std::back_inserter(asked),
                 [&line](const std::string& phrase) {
                     return !line.about || phrase.compare(0, line.about->size() + 2, *line.about + ": ") == 0;
                 });
    return asked;
}

} // namespace cmsdp
