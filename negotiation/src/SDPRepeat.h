// Words of the far end that our texts repeat: only what every strict reader takes.
//
// Test: tests/negotiation/SDPRepeatTest.cpp
#pragma once

#include "SDPSession.h"

namespace negotiation {

/// Whether an answer can name the medium of a section (RFC 4566, 9), which it has to (RFC 3264, 6).
bool CanBeRepeated(const Section& section);

/// The transport of a section, words between "/" (RFC 4566, 9); "RTP/AVP", which changes nothing at port 0,
/// where the far end wrote none or another form.
std::string_view RepeatedTransport(const Section& section);

/// The formats of a section, each once; empty when it has none that can be written.
std::string RepeatedFormats(const Section& section);

/// The "t=" lines of a session, whole lines; those that are not two numbers are left out, and "t=0 0" is
/// for none.
std::string RepeatedTimes(Lines session);

/// The value of a line as we may write it; empty when it has not the form of its kind: a label is a word, the
/// ids of floor control are numbers, a floor may name its streams.
std::string_view RepeatedValue(Lines lines, LineKind kind);

/// What the far end calls a stream that it does not call main; empty otherwise.
std::string_view RepeatedContent(Lines lines);

/// Whether a list of contents holds a word, "slides" in "speaker,slides" (RFC 4796, 4).
bool HasContent(std::string_view list, std::string_view word, Repairs& repairs);

/// Lets no two sections that are open have one label (RFC 4574, 4).
void KeepLabelsApart(Session& session);

} // namespace negotiation
