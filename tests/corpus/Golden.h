// GoldenText(record, answer): the component's results in the form of a golden file.
//
// The head of model.py describes the form. The fields are in declared order, those of the base first.
#pragma once

#include "Fields.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace golden {

/// Every CR LF as \r\n and a new line; text without CR LF continues on the same line.
inline std::string AnswerBlock(std::string_view answer) {
    std::string shown;
    for (std::size_t end = answer.find("\r\n"); end != std::string_view::npos; end = answer.find("\r\n")) {
        shown += support::Escaped(answer.substr(0, end), false) + "\\r\\n\n";
        answer.remove_prefix(end + 2);
    }
    if (!answer.empty()) {
        shown += support::Escaped(answer, false) + "\n";
    }
    return shown;
}

inline std::string GoldenText(const RemoteSDP& remote, std::string_view answer) {
    return "[remote]\n" + support::FieldsText(remote) + "[answer]\n" + AnswerBlock(answer);
}

} // namespace golden
