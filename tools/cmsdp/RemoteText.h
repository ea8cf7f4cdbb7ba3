// The far end's description as bytes, from a file or a pipe, cleaned of what the way here did to it.
//
// Tests: tests/tool/remote-text.cases
#pragma once

#include "Draft.h"
#include "Words.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace cmsdp {

/// Which text to read, and how.
struct RemoteSource {
    std::string name = "-";          ///< a file, or "-" for standard input
    bool exact = false;              ///< byte for byte, nothing cleaned and nothing cut
    std::optional<std::size_t> nth;  ///< which of several descriptions, counted from 1; none: the first
    bool hasNth = false;             ///< the verb has --nth for this text, and notes point to it
    std::string verb = "inspect";    ///< for a message that says how the verb in use reads the input
    LineEnd lineEnd = LineEnd::CrLf; ///< of the part that reads the text
};

/// Reads a remote description. Unless `exact`, the steps of Clean.h run, each that changes something with a
/// note. Throws ToolError(kRemoteText) when the input cannot be read, is no text (the message names the
/// command that makes one of it), holds fewer than `nth` descriptions, or has no line that begins, after
/// blanks, with a small letter and "=".
Draft ReadRemoteText(const RemoteSource& source, std::vector<std::string>& notes);

/// The same for bytes that were read already.
Draft ReadRemoteText(const RemoteSource& source, std::string text, std::vector<std::string>& notes);

/// The text as it is, because its bytes are what the engine got. Unless `exact`, of one SIP message whose
/// lines end in CR LF the body is taken, and a text that can be no far end's is cleaned as by ReadRemoteText:
/// one with several SIP messages, or without a line of a description that ends in CR LF; so is one of which
/// `nth` is wanted. Throws ToolError(kRemoteText) when the input is no text or holds no such line.
std::string CleanedPaste(const RemoteSource& source, std::string text, std::vector<std::string>& notes);

/// The bytes of a description, from a file or, for "-", standard input. Throws ToolError(kRemoteText) when
/// they cannot be read.
std::string ReadDescription(const std::string& name);

/// What is wrong with an input without any line of a description, after its name.
extern const char* const kNoSdpLine;

/// The name of an input as messages show it.
std::string NameOfInput(const std::string& name);

} // namespace cmsdp
