// Written by hand: generated texts list options first, and nobody learns a command from its options.
//
// Tests: tests/tool/HelpTest.cpp
#include "Help.h"

namespace cmsdp {

const char* const kVersion = "cmsdp " COMMONMEDIA_VERSION;

const char* const kHelp = R"(Example:
  cmsdp inspect offer.sdp          what did they offer, and what comes of it?
  cmsdp answer offer.sdp           what do we answer?

Usage: cmsdp VERB [OPTIONS]

Session descriptions of a video-calling client (RFC 4566, RFC 3264).

Verbs; cmsdp VERB --help tells more:
  offer            write the local offer
  answer           read a remote offer, write the answer
  inspect          read a remote description, show what the media engine
                   would start with and why it would start without the rest
  call             let two sides negotiate with each other
  check            judge an answer against its offer as strict readers do
  explain          say why a call came up as it did: which line or local
                   field did what, and which edit mends it
  whynot           say why a codec was not chosen
  diff             say what a new description changes for the media engine
  survey           count the findings and the streams of many descriptions
  redact           write a description for others: other keys, and other
                   addresses and names, with the same meaning
  capabilities     write what this side can do as JSON, to be edited and
                   given back with --local
  help [VERB]      this text, or that of a verb
  version          the version

Options:
  -h, --help       this text
  --version        the version

Exit status:
  0  done
  1  done, and nothing was negotiated, or not what --require names
  2  the command line is wrong
  3  the remote text cannot be read or holds no SDP line
  4  the local file is wrong
  5  the machine failed: output, memory or random numbers, or tshark is missing
)";

const char* const kOfferHelp = R"(Example:
  cmsdp offer > offer.sdp
  cmsdp capabilities > me.json     edit me.json, then:
  cmsdp offer --local me.json

Usage: cmsdp offer [--local FILE] [--fit [--json]] [--show-secrets]

Writes the local offer to standard output; lines end in CR LF.

Options:
  --local FILE     what this side can do, as JSON; see cmsdp capabilities.
                   Without it: all audio codecs, H.264, presentation, no SRTP
  --fit            write the offer of the negotiation layer, which strict far
                   ends take
  --json           with --fit: JSON that holds the offer
  --show-secrets   write SRTP keys; without it they stand as inline:***
  -h, --help       this text

Exit status 1: no stream is offered, or there is no address to offer.
)";

const char* const kAnswerHelp = R"(Example:
  cmsdp answer --fit offer.sdp > answer.sdp
  xclip -o | cmsdp answer --local me.json

Usage: cmsdp answer [--fit] [--local FILE] [--json] [--require LIST]
                    [--exact | --nth N] [--show-secrets] [REMOTE]

Reads a remote offer and writes the answer to standard output; lines end in
CR LF.

  REMOTE           file with the offer; - or nothing for standard input; at
                   most 16 MiB

Options:
  --fit            write the answer of the negotiation layer: each section in
                   its place, rejected or taken as strict far ends want it
  --local FILE     what this side can do, as JSON; see cmsdp capabilities
  --json           JSON that holds the answer, in place of the answer
  --require LIST   exit status 1 when one of these is not negotiated, with a
                   comma between: audio, main_video, presentation,
                   floor_control
  --exact          take REMOTE byte for byte. Without it what logs, mails and
                   browsers do to a text is undone, each step with a note on
                   standard error
  --nth N          of several descriptions in REMOTE read the Nth, not the first
  --show-secrets   write SRTP keys; without it they stand as inline:***
  -h, --help       this text

Exit status 1: an answer was written where one is due, and no stream came up
in it: one that the answer declines or moves is not negotiated. With --fit:
the offer is refused, and nothing is written but the reason.
)";

const char* const kInspectHelp = R"(Example:
  cmsdp inspect offer.sdp
  cmsdp inspect --json offer.sdp | jq .main_video.why

Usage: cmsdp inspect [--offered] [--local FILE] [--json] [--require LIST]
                     [--exact | --nth N] [--show-secrets] [REMOTE]

Reads a remote offer or answer and shows what the media engine would start
with: each stream with codec, address and direction as seen from this side,
and for a stream that did not come up the reason why. Our own answer is judged
as strict far ends do, and what answer --fit does differently is listed.

  REMOTE           file with the description; - or nothing for standard
                   input; at most 16 MiB

Options:
  --offered        the text answers our offer; no answer of ours is judged
  --local FILE     what this side can do, as JSON; see cmsdp capabilities
  --json           JSON in place of the table
  --require LIST   exit status 1 when one of these is not negotiated, with a
                   comma between: audio, main_video, presentation,
                   floor_control
  --exact          take REMOTE byte for byte. Without it what logs, mails and
                   browsers do to a text is undone, each step with a note on
                   standard error
  --nth N          of several descriptions in REMOTE read the Nth, not the first
  --show-secrets   show SRTP keys; without it they stand as ***
  -h, --help       this text

Exit status 1: no stream came up: one that our own answer declines or moves is
not negotiated. Colour needs a terminal; NO_COLOR=1 turns it off.
)";

const char* const kCallHelp = R"(Example:
  cmsdp call
  cmsdp call --offerer alice.json --then hold --then resume
  cmsdp call --answerer bob.json --then answerer:mute

Usage: cmsdp call [--offerer FILE] [--answerer FILE] [--then WISH]...
                  [--json] [--require LIST] [--show-secrets]

Lets two sides negotiate over the negotiation layer: writes the offer, the
answer, and what each media engine starts with, side by side; then the same
for each wish.

Options:
  --offerer FILE   what the offering side can do, as JSON; see
                   cmsdp capabilities
  --answerer FILE  what the answering side can do
  --then WISH      what the offerer wishes next: hold, resume, mute, unmute,
                   present, stop-presenting, rekey; answerer:hold and so on
                   for the answerer. May be given several times
  --json           JSON in place of the texts and the tables
  --require LIST   exit status 1 when one of these is not negotiated on both
                   sides after the last step, with a comma between: audio,
                   main_video, presentation, floor_control
  --show-secrets   show SRTP keys; without it they stand as ***
  -h, --help       this text

Exit status 1: after the last step no stream is up on one of the sides.
)";

const char* const kCheckHelp = R"(Example:
  cmsdp check offer.sdp answer.sdp
  cmsdp answer --show-secrets offer.sdp | cmsdp check offer.sdp -

Usage: cmsdp check [--json] OFFER ANSWER

Judges an answer against its offer: each line of the output is one violation,
with the ID of the rule, the line of the answer, the clause it comes from, and
what is wrong. Nothing is written when a strict reader takes the answer.

  OFFER, ANSWER    files with a description each, or - for standard input;
                   at most 16 MiB. The answer is judged byte for byte, line
                   ends and keys included; the offer is not judged

Options:
  --json           JSON in place of the lines
  -h, --help       this text

Exit status 1: there are violations.
)";

const char* const kCapabilitiesHelp = R"(Example:
  cmsdp capabilities > me.json     edit me.json, then:
  cmsdp offer --local me.json

Usage: cmsdp capabilities

Writes what this side can do as JSON, every member that a description is
written from. The file goes back in with --local, --offerer and --answerer; a
member that is left out keeps the value shown here, at the answerer the
answerer's own. SRTP keys are null: a key is made where SRTP needs one.

Options:
  -h, --help       this text
)";

const char* const kVersionHelp = R"(Example:
  cmsdp version

Usage: cmsdp version

Writes the version.

Options:
  -h, --help       this text
)";

} // namespace cmsdp
