// No rule of its own: findings come from explain, streams from the negotiation layer.
//
// Tests: tests/tool/survey.cases
#include "SurveyOne.h"

#include "Fit.h"
#include "Redact.h"
#include "Timeline.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace cmsdp {

namespace {

constexpr std::size_t kMostOfALine = 120;

// The rest of the first line that begins like this.
std::string FirstLine(std::string_view text, std::string_view start) {
    std::size_t at = text.find(start);
    while (at != std::string_view::npos && at != 0 && text[at - 1] != '\n' && text[at - 1] != '\r') {
        at = text.find(start, at + 1);
    }
    if (at == std::string_view::npos) {
        return "";
    }
    const std::string_view line = text.substr(at + start.size(), kMostOfALine);
    return Secrets(false).Hide(line.substr(0, line.find_first_of("\r\n")));
}

} // namespace

Surveyor::Surveyor(const Capabilities& side)
    : m_input(InputOf(side)), m_answerer(NegotiatorOf(side, "the local file")),
      m_offerer(NegotiatorOf(side, "the local file")) {
    PresentIfAble(m_offerer, side);
    m_offerer.Offer();
}

void Surveyor::TakeStreams(SurveyResult& result, const Surveyed& item) const {
    SDPNegotiator call(item.remoteAnswers ? m_offerer : m_answerer);
    const SDPNegotiator::Outcome outcome =
        item.remoteAnswers ? call.Accept(item.text) : call.Answer(item.text);
    if (!outcome.isTaken) {
        result.refused = outcome.reason;
        return;
    }
    for (const SDPNegotiator::Stream& stream : call.Streams()) {
        result.streams.push_back({NameOf(stream), StateInWords(stream.state), IsAgreed(stream)});
    }
}

SurveyResult Surveyor::Examine(const Surveyed& item) {
    SurveyResult result;
    result.name = item.name;
    result.unread = item.unread;
    if (!item.unread.empty()) {
        return result;
    }
    m_input.remote = item.text;
    m_input.remoteAnswers = item.remoteAnswers;
    m_input.ourOffer = item.ourOffer;
    std::vector<ExplainFinding> findings = m_counter.Findings(m_input);
    result.findings.reserve(findings.size());
    for (ExplainFinding& finding : findings) {
        result.findings.push_back({finding.id, finding.topic, finding.severity, std::move(finding.lines)});
    }
    if (item.ourOffer.empty()) {
        TakeStreams(result, item);
    }
    const std::string origin = FirstLine(item.text, "o=");
    result.origin = origin.substr(0, origin.find(' '));
    result.session = FirstLine(item.text, "s=");
    result.tool = FirstLine(item.text, "a=tool:");
    return result;
}

std::string SurveyJson(const SurveyResult& result) {
    using Json = nlohmann::ordered_json;
    const auto orNull = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
    Json root;
    root["schema"] = "cmsdp.survey/1";
    root["name"] = result.name;
    root["unread"] = orNull(result.unread);
    root["refused"] = orNull(result.refused);
    root["findings"] = Json::array();
    for (const SurveyFinding& finding : result.findings) {
        root["findings"].push_back({{"id", finding.id},
                                    {"topic", ExplainTopicName(finding.topic)},
                                    {"severity", ExplainSeverityName(finding.severity)},
                                    {"lines", finding.lines}});
    }
    root["streams"] = Json::array();
    for (const SurveyStream& stream : result.streams) {
        root["streams"].push_back(
            {{"stream", orNull(stream.stream)}, {"state", stream.state}, {"agreed", stream.isAgreed}});
    }
    root["far_end"] = {{"origin", orNull(result.origin)},
                       {"session", orNull(result.session)},
                       {"tool", orNull(result.tool)}};
    return root.dump(-1, ' ', true, Json::error_handler_t::replace) + "\n";
}

} // namespace cmsdp
