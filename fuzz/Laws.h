// What must hold whatever the input is. A broken law prints both sides, control bytes visible, and aborts, so
// that the fuzzer keeps the input and the replayed test fails.
#pragma once

#include "Side.h"

#include <SDPHandler.h>

#include <string>
#include <string_view>

namespace fuzz {

/// Every byte outside printable ASCII as an escape; each line of the text on a line of its own.
std::string Visible(std::string_view text);

/// Prints `law`, both texts and aborts. `left` and `right` say what each text is.
[[noreturn]] void Broken(const char* law, const char* left, std::string_view leftText, const char* right,
                         std::string_view rightText);

/// Two whole texts are the same.
void RequireSame(const char* law, const char* left, std::string_view leftText, const char* right,
                 std::string_view rightText);

/// A fact holds; `left` is printed as what was found, `right` as what it was found in.
void Require(bool fact, const char* law, std::string_view found, std::string_view where);

/// Every field of the record in declared order, texts with their length, key rows as hexadecimal digits with
/// the spare byte: two records are the same when their texts are.
std::string RecordText(const RemoteSDP& remote);
std::string RecordText(const LocalSDP& local);
/// Every field of every section held.
std::string SectionsText(const SDPHandler& handler);

/// What this side says in a description: every line ends in CR LF, none is empty, and the session block
/// stands first. The bare prefixes "a=label:" and "a=content:" of a stream without a role are the one
/// exception; "a=rtpmap:" never stands bare, because no section asks for the line of a codec that has none.
void CheckLines(const Side& side, const std::string& text);

/// A whole description, as the handler has just written it: CheckLines and CheckReadsBack of what this side
/// says, and behind that the surplus sections, which repeat words of the far end in whole lines.
void CheckDescription(const SDPHandler& handler, const Side& side, const std::string& text);

/// A second handler that speaks every codec reads our description and finds what this side has: ports,
/// addresses, payload numbers, levels and limits, and in an offer codecs, directions, keys and bandwidth.
void CheckReadsBack(const Side& side, const std::string& text, bool isOffer);

/// The handler reads and answers a good text as a fresh one does. Only the session address outlives a parse.
void CheckGoodTextAfterwards(SDPHandler& used, const Side& side);

} // namespace fuzz
