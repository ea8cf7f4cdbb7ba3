// The help of the verbs for tickets and for many descriptions.
//
// Tests: tests/tool/HelpTest.cpp
#include "Help.h"

namespace cmsdp {

const char* const kSurveyHelp = R"(Example:
  cmsdp survey /var/log/calls
  zcat night.jsonl.gz | cmsdp survey --json - > night.result

Usage: cmsdp survey [--local FILE] [--offered] [--json] PATH...

Examines descriptions by the thousand, on all cores: which findings of cmsdp
explain they have, without cures, and which streams of cmsdp answer --fit come
up. Counts and shares are those of descriptions; the file beside a row is the
first that is counted in it. Far ends are named by the user name of their o=
line, their s= line and a=tool:, with # for the digits in them.

  PATH             a file with a description, with SIP messages or with a
                   capture; a folder with all below it; - for JSON values on
                   standard input, one in a line, each with a member "sdp".
                   Its member "type" may be "answer"

Options:
  --local FILE     what this side can do, as JSON; see cmsdp capabilities
  --offered        the descriptions answer our offer. In SIP messages and
                   captures this is known
  --json           a line of JSON for each description, as soon as it is
                   examined, in place of the table
  -h, --help       this text

A file that cannot be read is counted and named, and the survey goes on. Ctrl-C
ends it: it shows what it has, with status 130. Status 3: no description was
read. SRTP keys are never shown.
)";

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
