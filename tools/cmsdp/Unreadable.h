// Inputs that hold a description and are no text. They are named, with the command that makes a text of them.
//
// Tests: tests/tool/other-files.cases
#pragma once

#include <string>
#include <string_view>

namespace cmsdp {

/// What the input is and which command turns it into text, as a clause for a message; empty for any other
/// input. `name` is the file, or "-" for standard input; `verb` the verb that is to read the text.
std::string WhyUnreadable(std::string_view input, const std::string& name, const std::string& verb);

/// Whether a file that begins like this is a packet capture that tshark reads: pcap or pcapng, or compressed
/// with gzip or zstd and of a name such as "call.pcap.gz".
bool IsCapture(std::string_view begin, const std::string& name);

} // namespace cmsdp
