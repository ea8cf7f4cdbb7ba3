// What the negotiation layer decided, as JSON objects. Members and their order are fixed for a `schema`.
//
// Tests: tests/tool/fit.cases
#pragma once

#include "Redact.h"
#include "SDPNegotiator.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace cmsdp {

/// One object per section, in "m=" line order.
nlohmann::ordered_json StreamsJson(const std::vector<SDPNegotiator::Stream>& streams, Secrets& secrets);

/// One object per repair: id, ledger rows, sentence.
nlohmann::ordered_json RepairsJson(const std::vector<SDPNegotiator::Repair>& repairs);

/// The text with its keys hidden, or null for an empty one.
nlohmann::ordered_json TextJson(const std::string& text, Secrets& secrets);

/// The document as ASCII; bytes that are no UTF-8 become U+FFFD.
std::string Written(const nlohmann::ordered_json& root);

} // namespace cmsdp
