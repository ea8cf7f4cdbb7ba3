// The help of the verbs for tickets and for many descriptions.
//
// Tests: tests/tool/HelpTest.cpp
#include "Help.h"

namespace cmsdp {

const char* const kRedactHelp = R"(Example:
  cmsdp redact --addresses offer.sdp > ticket.sdp

Usage: cmsdp redact [--addresses] [REMOTE]

Writes the description with other SRTP keys, so that others may read it. It
still means the same: what cmsdp explain, inspect and answer say of it is the
same but for the replaced words. Equal texts are replaced by equal ones, a key
that does not decode by one that does not, and a key of zeros stays.

  REMOTE           file with the description; - or nothing for standard input;
                   at most 16 MiB, byte for byte

Options:
  --addresses      replace addresses, host names, user names, session names,
                   contacts, and user fragments, passwords and foundations of
                   ICE as well. Addresses come from the ranges for
                   documentation, names are user1, word1 or host1.example.
                   0.0.0.0, :: and ::1 stay, and an address that is private,
                   link-local, loopback or multicast becomes another one that
                   is. The name of the program (a=tool) stays
  -h, --help       this text
)";

} // namespace cmsdp
