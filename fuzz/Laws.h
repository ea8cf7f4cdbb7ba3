// Laws that hold for every input. A broken law prints both texts with control bytes visible and aborts, so
// the fuzzer keeps the input and the replay test fails.
#pragma once

#include "Reading.h"
#include "Side.h"

#include <SDPHandler.h>

#include <string>
#include <string_view>

namespace fuzz {

/// Returns the text with every byte outside printable ASCII escaped, one line of the text per line.
std::string Visible(std::string_view text);

/// Prints `law` and both texts and aborts. `left` and `right` name the texts.
[[noreturn]] void Broken(const char* law, const char* left, std::string_view leftText, const char* right,
                         std::string_view rightText);

/// Requires that the two texts are equal. A law is the same wherever it has the same name.
void RequireSame(const char* law, const char* left, std::string_view leftText, const char* right,
                 std::string_view rightText);

/// Requires that `fact` is true; otherwise prints what was `found` and `where`.
void Require(bool fact, const char* law, std::string_view found, std::string_view where);

/// Every field of the record in declared order, texts with their length, key rows as hexadecimal digits with
/// the spare byte. Two records are equal if their texts are.
std::string RecordText(const RemoteSDP& remote);
std::string RecordText(const LocalSDP& local);
/// Every field of every section held.
std::string SectionsText(const SDPHandler& handler);
/// What the application has set: the switches and the capabilities.
std::string SettingsText(const SDPHandler& handler);

/// Checks this side's own lines: each ends in CR LF, none is empty, and the session lines come first. The one
/// exception are the bare prefixes "a=label:" and "a=content:" of a stream without a role. A bare "a=rtpmap:"
/// never occurs, because no section asks for a codec without a table row.
void CheckLines(const Side& side, const std::string& text);

/// Checks a description that was written after a text with this reading: CheckLines and CheckReadsBack for
/// this side's lines, and the declined sections after them.
void CheckDescription(const Side& side, const Reading& remote, const std::string& text);

/// Requires that a second handler with every codec reads this side's values from the description: sections,
/// ports, addresses, payload numbers, levels and limits, and in an offer codecs, directions, keys and
/// bandwidth.
void CheckReadsBack(const Side& side, const std::string& text, bool isOffer);

/// Requires that the handler has the settings of its side, and reads and answers a good text as a new one
/// does. Only the session address is kept from an earlier parse.
void CheckGoodTextAfterwards(SDPHandler& used, const Side& side);

} // namespace fuzz
