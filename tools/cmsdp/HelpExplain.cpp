// The help of the verbs that explain.
//
// Tests: tests/tool/HelpTest.cpp
#include "Help.h"

namespace cmsdp {

const char* const kExplainHelp = R"(Example:
  cmsdp explain --about main.picture --top offer.sdp
  cmsdp explain --offered --offer ours.sdp answer.sdp
  cmsdp explain --lines offer.sdp
  cmsdp explain --pcap call.pcap --we caller
  cmsdp explain --html report.html --pcap call.pcap

Usage: cmsdp explain [--local FILE] [--offered] [--before FILE] [--offer FILE]
                     [--about TOPIC] [--top] [--lines] [--exact]
                     [--json | --html FILE] [REMOTE]
       cmsdp explain [--local FILE] [--call N] [--we SIDE] [--about TOPIC]
                     [--top] [--lines] [--exact] [--json | --html FILE]
                     --pcap FILE | REMOTE

Says why a call came up as it did: which line of the far end, or which local
field, did what, and which edit mends it. A finding is three lines: what stands
there, the rule that acted, what comes of it for the call. The most harmful
finding comes first.

Of a whole call it shows each step: when it came, who offered, what changed for
the engine, the findings. Each side's text is read as the other side's remote.

  REMOTE           file with the far end's description; - or nothing for
                   standard input; at most 16 MiB. A text with several SIP
                   messages is a call, and so is a folder: its files *.sdp in
                   order of name

Options:
  --local FILE     what this side can do, as JSON; see cmsdp capabilities
  --offered        REMOTE answers our offer
  --offer FILE     the offer that REMOTE answers; without it the one that the
                   local file makes
  --before FILE    the far end's description that was read before
  --pcap FILE      a packet capture with SIP over UDP or TCP; tshark reads it
  --call N         the Nth call of the capture or text; without it all calls
                   are listed and the first is shown
  --we SIDE        the side that is ours: caller, callee or an address. The
                   texts that this side receives are explained, no others
  --about TOPIC    the findings of one topic: audio.codec audio.send
                   audio.receive main.picture main.send main.receive slides
                   floor dtmf bandwidth encryption.audio encryption.main
                   encryption.slides ice call
  --top            the first finding alone
  --lines          the text with what became of each line
  --exact          take REMOTE byte for byte. Without it a text that has no
                   CR LF at all is cleaned, with a note on standard error
  --json           JSON in place of the text
  --html FILE      a page for a browser, written to FILE, in place of the text;
                   - for standard output
  -h, --help       this text

SRTP keys are never shown.
)";

const char* const kWhyNotHelp = R"(Example:
  cmsdp whynot G7221 offer.sdp

Usage: cmsdp whynot [--local FILE] [--exact] CODEC [REMOTE]

Says for each format of the far end why it is not the codec: the first test
that failed.

  CODEC            a name of cmsdp capabilities, such as G722 or H264_MODE_1
  REMOTE           file with the description; - or nothing for standard input

Options:
  --local FILE     what this side can do, as JSON; see cmsdp capabilities
  --exact          take REMOTE byte for byte
  -h, --help       this text
)";

const char* const kDiffHelp = R"(Example:
  cmsdp diff offer.sdp reoffer.sdp

Usage: cmsdp diff [--local FILE] [--exact] OLD NEW

Says what changes for the media engine between two descriptions of one far
end: codec, direction, address, key, limits. Lines that differ without an
effect are not listed.

Options:
  --local FILE     what this side can do, as JSON; see cmsdp capabilities
  --exact          take the files byte for byte
  -h, --help       this text
)";

} // namespace cmsdp
