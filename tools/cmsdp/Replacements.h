// What `cmsdp redact` writes in place of an original: another text of the same kind.
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#pragma once

#include "Originals.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace cmsdp {

/// Gives equal originals equal replacements, and different ones different ones. No replacement is an original
/// of the same text. The order of the originals decides, so that equal texts have equal results.
///
/// A replacement leaves a line what it is for the component: every keyword inside an original
/// stays, and none is added (DELIBERATE.md, P01).
class Replacements {
public:
    explicit Replacements(const std::vector<Original>& originals);

    const std::string& Of(const Original& original);

private:
    std::string Next(const Original& original);

    std::unordered_set<std::string_view> m_originals;
    /// Numbered ones, then those that keep their length: a word may be the same text as a key.
    std::array<std::unordered_map<std::string_view, std::string>, 2> m_made;
    std::unordered_map<std::string, std::size_t> m_counts; ///< by the form of the replacement
};

/// The text with a replacement for each original; the originals are those of this text.
std::string Replaced(std::string_view text, const std::vector<Original>& originals,
                     Replacements& replacements);

} // namespace cmsdp
