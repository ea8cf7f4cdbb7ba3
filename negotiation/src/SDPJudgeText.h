// A description cut into lines, sections and words, for the judge alone. All views point into the text.
// Test: tests/judge/BrokenTest.cpp
#pragma once

#include "SDPJudge.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace judge {

/// A line without its end.
struct Line {
    std::size_t number = 0; ///< counted from 1
    std::string_view text;  ///< as written
    std::string_view value; ///< after the "=", without blanks at its ends
    char type = 0;          ///< 0 when the second byte is not "="
    bool ended = false;     ///< by CR LF
};

struct Attribute {
    std::string_view name;
    std::string_view value; ///< without blanks at its ends
    std::size_t line = 0;
    bool hasValue = false; ///< a colon follows the name
};

/// The session level, or one m= line with everything up to the next.
struct Section {
    int index = JudgeViolation::kSession;
    std::size_t line = 0; ///< of the m= line
    std::string_view media;
    std::string_view transport;
    std::optional<unsigned> port; ///< nothing when the m= line is not whole
    std::vector<std::string_view> formats;
    std::vector<Line> lines;           ///< all of them, the m= line first
    std::vector<Attribute> attributes; ///< sorted by name, of one name in the order of the text

    bool IsOpen() const { return port.value_or(0) != 0; }
    bool IsRtp() const { return transport.find("RTP/") != std::string_view::npos; }
    /// The attributes of one name, as a pair of iterators.
    std::pair<const Attribute*, const Attribute*> All(std::string_view name) const;
    /// The first one, or null.
    const Attribute* First(std::string_view name) const;
};

struct Text {
    Section session;
    std::vector<Section> sections;
    /// The section's attribute, else that of the session, else null.
    const Attribute* Of(const Section& section, std::string_view name) const;
    /// sendrecv, sendonly, recvonly or inactive, and the line that says so (0: none does).
    std::pair<std::string_view, std::size_t> Direction(const Section& section) const;
};

Text Read(std::string_view text);

/// Words of a text, cut at runs of blanks.
std::vector<std::string_view> Words(std::string_view text);
/// Pieces between single separators, empty ones included.
std::vector<std::string_view> Split(std::string_view text, char separator);
std::string_view Trimmed(std::string_view text);
std::optional<std::uint64_t> Number(std::string_view digits);
bool IsToken(std::string_view text);
/// Words between "/", as "RTP/AVP" (RFC 4566, 9).
bool IsTransport(std::string_view text);
/// Digits and nothing else, as many as there are.
bool IsDigits(std::string_view text);
/// A number that the ids of floor control can be: 32 bits, ten digits (RFC 4582, 5.1).
bool IsId(std::string_view text);
std::string Lower(std::string_view text);
/// The word in quotes when it is printable and has at most 24 bytes, otherwise "a word of N bytes", so that
/// no message contains a key of 40 characters.
std::string Quoted(std::string_view word);

/// Format number -> encodings such as "h264/90000". A listed static number without an rtpmap line has the
/// encoding of RFC 3551, 6. Only an incorrect text has two for one number.
using Encodings = std::map<std::string_view, std::set<std::string>>;
Encodings EncodingsOf(const Section& section);
/// Format number -> parameter -> value, both in small letters.
using Parameters = std::map<std::string_view, std::map<std::string, std::string>>;
Parameters ParametersOf(const Section& section);

/// The fields of a crypto line that the rules need (RFC 4568, 9.1).
struct Crypto {
    std::string_view tag;
    std::string_view suite;
    std::vector<std::string_view> keys; ///< base64 text after each "inline:", without lifetime and MKI
};
Crypto ReadCrypto(std::string_view value);

/// Collects violations.
class Verdict {
public:
    void Add(const char* id, std::size_t line, std::size_t otherLine, const Section& section,
             std::string particulars);
    std::vector<JudgeViolation> Take();

private:
    std::vector<JudgeViolation> m_found;
};

/// A section of an answer and the section of the offer in the same place.
struct Pair {
    const Text& offer;
    const Text& answer;
    const Section& theirs;
    const Section& ours;
    Verdict& verdict;

    /// A line of 0 means the m= line.
    void Add(const char* id, std::size_t line, std::size_t otherLine, std::string particulars) const {
        verdict.Add(id, line != 0 ? line : ours.line, otherLine != 0 ? otherLine : theirs.line, ours,
                    std::move(particulars));
    }
};
void CheckSection(const Pair& pair);
/// The formats of an open section.
void CheckFormats(const Pair& pair);

/// An a= line of any name; the line is at least three bytes long.
void CheckAttribute(const Line& line, const Section& level, Verdict& verdict);
/// "IN", "IP4" and an address; formRule is the rule that a wrong form breaks.
void CheckAddress(const std::vector<std::string_view>& words, const char* formRule, std::size_t line,
                  const Section& level, Verdict& verdict);
/// Judges the text for itself, whatever it answers.
void CheckGrammar(const Text& text, Verdict& verdict);

} // namespace judge
