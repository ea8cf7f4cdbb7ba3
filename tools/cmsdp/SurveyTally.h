// What a survey counts. Its size depends on how many kinds of things there are and not on how many
// descriptions.
//
// Tests: tests/tool/survey.cases
#pragma once

#include "SurveyOne.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace cmsdp {

class SurveyTally {
public:
    /// Adds a result. The first of a kind is its example.
    void Add(const SurveyResult& result);

    std::size_t read() const { return m_read; }
    std::size_t unread() const { return m_unread; }
    std::size_t agreed() const { return m_agreed; } ///< descriptions with a stream that came up

    /// The table, every byte printable.
    std::string Table() const;

private:
    struct Entry {
        std::size_t count = 0;
        std::string example;
    };
    using Kind = std::tuple<std::string_view, std::string_view, std::string_view>;
    /// A kind is looked up without a copy of its words.
    using Entries = std::map<std::tuple<std::string, std::string, std::string>, Entry, std::less<>>;

    static void Count(Entries& entries, const Kind& kind, const std::string& example);
    static void CountOnce(Entries& entries, std::vector<Kind>& kinds, const std::string& example);

    std::size_t m_read = 0;
    std::size_t m_unread = 0;
    std::size_t m_agreed = 0;
    Entries m_streams;  ///< stream, state
    Entries m_refused;  ///< reason
    Entries m_findings; ///< id, severity, topic
    Entries m_farEnds;  ///< how the far end calls itself
};

} // namespace cmsdp
