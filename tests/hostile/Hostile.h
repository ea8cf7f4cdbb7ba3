// The calls that every hostile text is tested with, and their result as one text that a test can state.
//
// Outcome(text) lets a handler of a conference endpoint read the text, extract it a second time, trace it and
// answer it. Then the handler must read and answer a good offer as a new handler does. Outcome returns the
// whole record, every section with all its fields and the whole answer.
//
// Changes(text) compares Outcome(text) with the outcome of kConference, which conference.cases states whole.
// It returns the lines that were removed ("-") and added ("+"); all other lines are the same.
#pragma once

#include "Capabilities.h"
#include "Describe.h"
#include "Documents.h"
#include "Expect.h"

#include <SDPHandler.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hostile {

/// What conference.cases states under a heading: "text conference", "outcome conference", "outcome nothing".
inline std::string Stated(const std::string& head) {
    static const std::string path = std::string(COMMONMEDIA_SOURCE_DIR) + "/tests/hostile/conference.cases";
    static const std::vector<documents::Step> stated = documents::ReadFile(path).shared;
    for (const documents::Step& step : stated) {
        if (step.head.text == head && documents::StartsWith(head, "text ")) {
            return documents::TextOf(step.block);
        }
        if (step.head.text == head) {
            std::string lines;
            for (const documents::Line& line : step.block) {
                lines += line.text + "\n";
            }
            return lines;
        }
    }
    throw documents::Malformed({path, 0, ""}, "nothing is called " + head);
}

/// A good offer of a conference: audio, camera, shared screen, keys, floor control.
inline const std::string kConference = Stated("text conference");
/// Outcome(kConference), and that of a text without a line: nothing was read, and an offer is written.
inline const std::string kConferenceOutcome = Stated("outcome conference");
inline const std::string kNothingOutcome = Stated("outcome nothing");

/// The lines before the first section of kConference.
inline const std::string kSessionBlock = kConference.substr(0, kConference.find("m=audio"));

/// The near endpoint: every codec, camera, shared screen, keys in all streams.
LocalSDP ConferenceLocal();

/// Gives a handler the near endpoint's capabilities, SRTP and floor control switched on.
void Begin(SDPHandler& handler);

/// A new handler for which Begin was called.
struct Endpoint {
    SDPHandler handler;
    RemoteSDP remote;
    Endpoint() { Begin(handler); }
};

/// The state of a handler's remote side: session values and every field of every section. Values longer than
/// `limit` bytes are cut and followed by their length.
std::string DescribeHeld(const SDPHandler& handler, std::size_t limit);

/// Lets the handler read the text and answer it: status, record, state and answer.
std::string Meet(SDPHandler& handler, const std::string& text, std::size_t limit = 200);

/// Fails the test unless the handler reads and answers good texts exactly as a new one does.
void ExpectAsFresh(SDPHandler& used);

/// The outcome that the head of this file describes.
std::string Outcome(const std::string& text);

/// The lines in which two texts differ: "-" for lines of the first only, "+" for lines of the second only.
std::string Difference(const std::string& before, const std::string& after);

/// The difference from the outcome of kConference.
std::string Changes(const std::string& text);

using support::Replaced;

/// kConference with its one occurrence of `what` replaced.
std::string With(const std::string& what, const std::string& with);

/// Returns `piece` repeated `count` times.
std::string Repeated(std::string_view piece, std::size_t count);

/// Returns how often `piece` occurs in `text`, without overlap.
std::size_t Count(std::string_view text, std::string_view piece);

/// Returns the one line of `text` that begins with `start`, without its line end, or a message if there is
/// none.
std::string LineOf(const std::string& text, const std::string& start);

/// The lines of `text` with their line ends.
std::vector<std::string> Lines(const std::string& text);

/// The windows of eight bytes of every key of both endpoints, as bytes and as base64, that occur in `text`.
std::vector<std::string> KeyWindows(const std::string& text);

} // namespace hostile
