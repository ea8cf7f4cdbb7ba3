// A parse that follows its own place in the document, so that a repeated member can be named by its path.
//
// Tests: tests/tool/CapabilitiesTest.cpp
#include "StrictJson.h"

#include "Outcome.h"
#include "Words.h"

#include <algorithm>
#include <set>
#include <vector>

namespace cmsdp {

namespace {

using nlohmann::json;

constexpr int kDeepest = 32;

// Where the parser is, told by its events.
class Place {
public:
    // Returns the path of a member that occurs for the second time, otherwise "".
    std::string Follow(json::parse_event_t event, const json& parsed) {
        switch (event) {
        case json::parse_event_t::key:
            return Member(parsed.get_ref<const std::string&>());
        case json::parse_event_t::object_start:
        case json::parse_event_t::array_start:
            m_levels.emplace_back();
            break;
        case json::parse_event_t::object_end:
        case json::parse_event_t::array_end:
            m_levels.pop_back();
            Next();
            break;
        case json::parse_event_t::value:
            Next();
            break;
        }
        return {};
    }

private:
    struct Level {
        std::set<std::string> members; // empty in an array
        std::string member;
        std::size_t index = 0;
    };

    void Next() {
        if (!m_levels.empty()) {
            ++m_levels.back().index;
        }
    }

    std::string Member(const std::string& name) {
        Level& level = m_levels.back();
        level.member = name;
        return level.members.insert(name).second ? std::string() : Path();
    }

    std::string Path() const {
        std::string path = "$";
        for (const Level& level : m_levels) {
            path = level.members.empty() ? ElementPath(path, level.index) : MemberPath(path, level.member);
        }
        return path;
    }

    std::vector<Level> m_levels;
};

// "line 3, column 7" of a byte counted from 1.
std::string LineAndColumn(const std::string& text, std::size_t byte) {
    const std::size_t end = std::min(byte == 0 ? 0 : byte - 1, text.size());
    const auto stop = text.begin() + static_cast<std::ptrdiff_t>(end);
    const auto lines = std::count(text.begin(), stop, '\n');
    const std::size_t feed = end == 0 ? std::string::npos : text.rfind('\n', end - 1);
    const std::size_t column = feed == std::string::npos ? end + 1 : end - feed;
    return "line " + std::to_string(lines + 1) + ", column " + std::to_string(column);
}

} // namespace

std::string MemberPath(const std::string& object, const std::string& member) {
    const bool plain = !member.empty() && std::all_of(member.begin(), member.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
    // No member has a name so long, but a key in its place is longer.
    constexpr std::size_t most = 30;
    if (member.size() > most) {
        return object + "[a name of " + std::to_string(member.size()) + " bytes]";
    }
    return plain ? object + '.' + member : object + '[' + Quoted(member) + ']';
}

std::string ElementPath(const std::string& array, std::size_t index) {
    return array + '[' + std::to_string(index) + ']';
}

json ParseStrictJson(const std::string& text, const std::string& name) {
    Place place;
    try {
        return json::parse(text, [&](int depth, json::parse_event_t event, json& parsed) {
            if (depth > kDeepest) {
                throw ToolError(kLocalFile, name + ": $: expected at most " + std::to_string(kDeepest) +
                                                " brackets inside each other, found more; see cmsdp "
                                                "capabilities for the form");
            }
            const std::string twice = place.Follow(event, parsed);
            if (!twice.empty()) {
                throw ToolError(kLocalFile,
                                name + ": " + twice +
                                    ": expected each member once, found it twice; keep one of the "
                                    "two");
            }
            return true;
        });
    } catch (const json::out_of_range&) {
        throw ToolError(kLocalFile, name + ": $: expected numbers of 32 bits, found one that no number type "
                                           "holds; look for a very long number or exponent");
    } catch (const json::parse_error& error) {
        throw ToolError(kLocalFile, name + ": $: expected JSON, found something else at " +
                                        LineAndColumn(text, error.byte) +
                                        "; look there and just before it for a missing comma, quote or "
                                        "bracket");
    }
}

} // namespace cmsdp
