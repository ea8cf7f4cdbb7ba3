// The start of a line as its writer meant it: quoted, numbered, without its type, with blanks that do not
// belong.
#pragma once

#include <string>
#include <string_view>

namespace explain {

/// Whether the line is "x=" and a value, or "a=" and a name in small letters, with ":" and a value after it
/// or not, without a blank at its ends or beside the ":". StartSpelled leaves such a line as it is.
bool IsPlain(std::string_view line);
/// "m=audio" of "> m=audio" and of "7: m=audio": signs and numbers before the first letter are of a mail, a
/// list or an editor.
std::string_view Unquoted(std::string_view line);
/// "a=candidate:" of "candidate:", and "m=audio 5004" of "m:audio 5004"; empty where no type is missing.
std::string WithType(std::string_view text);
/// A trimmed line without signs before its first letter, such as those of quoted mail ("> m=audio"), with the
/// type that it lacks ("rtpmap:0 PCMU/8000") or another sign than "=" after it ("m:audio"), and without
/// blanks round its first "=" and before its first ":"; where a keyword that takes a value has a blank or
/// another sign in place of its colon ("content=slides") or none ("fmtp97"), the colon is written. Signs that
/// only look like ASCII are the characters that they look like.
std::string StartSpelled(std::string_view line);

} // namespace explain
