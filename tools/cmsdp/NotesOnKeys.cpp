// Notes on SRTP. A disagreement about keys is a call that comes up and stays silent or noisy, so each has a
// sentence of its own. No key, no tag and no word that may be one is repeated.
//
// Tests: tests/tool/notes.cases, NotesTest.cpp
#include "Notes.h"

#include "Keys.h"
#include "Names.h"
#include "SDPTables.h"
#include "SDPTransport.h"
#include "VideoUtils.h"
#include "Words.h"

#include <algorithm>
#include <iterator>

namespace cmsdp {

namespace {

using Quor::media::rtp::CryptoParams;

// What comes of a stream that one side wants encrypted and the other does not encrypt.
const char* PlainHere(const StreamView& view) {
    return view.answers
               ? "; our answer says RTP/AVP, which a far end that insists on it refuses"
               : "; the far end encrypts and this side does not, so the stream stays silent or noisy";
}

const sdp::Suite* FindSuite(std::string_view name) {
    const auto* const row = std::find_if(std::begin(sdp::kSuites), std::end(sdp::kSuites),
                                         [name](const sdp::Suite& suite) { return suite.name == name; });
    return name.empty() || row == std::end(sdp::kSuites) ? nullptr : row;
}

std::string ReadSuite() {
    const auto* const row = std::find_if(std::begin(sdp::kSuites), std::end(sdp::kSuites),
                                         [](const sdp::Suite& suite) { return suite.isRead; });
    return std::string(row->name);
}

// The crypto lines of the section that the component stores something from, in order (P10, P11).
std::vector<ReadLine> StoredLines(const Section& section) {
    std::vector<ReadLine> stored;
    std::copy_if(section.lines.begin(), section.lines.end(), std::back_inserter(stored),
                 [](const ReadLine& line) {
                     const std::string_view name = SuiteOf(line);
                     const sdp::Suite* const suite = FindSuite(name);
                     return !name.empty() && (suite == nullptr || suite->isRead);
                 });
    return stored;
}

bool HasSuite(const StreamView& view) {
    return view.reading.record.cryptoAlgo[view.stream] != CryptoParams::CRYPTO_NONE;
}

bool TagIsNumber(const ReadLine& line) {
    const std::string_view first = WordsOf(line.text)[0];
    const std::string_view tag = first.substr(first.find(':') + 1);
    return VideoUtils::IsNumber(tag.substr(0, tag.find(':')));
}

Note ReplacedKey(const StreamView& view) {
    const std::vector<ReadLine> lines = StoredLines(view.section);
    if (!HasSuite(view) || lines.empty() || FindSuite(SuiteOf(lines.back())) != nullptr) {
        return {};
    }
    std::uint32_t known = 0;
    for (const ReadLine& line : lines) {
        known = FindSuite(SuiteOf(line)) != nullptr ? line.number : known;
    }
    return {lines.back().number, "P11",
            "the key and the tag of this line replaced those of line " + std::to_string(known) +
                ", although its suite is unknown here; the two ends use different keys, and the stream stays "
                "silent or noisy"};
}

Note UnreadableKey(const StreamView& view) {
    const std::vector<ReadLine> lines = StoredLines(view.section);
    return HasSuite(view) && KeyIsZero(view.reading.record, view.stream)
               ? Note{lines.empty() ? view.section.line : lines.back().number, "P12",
                      "the key is missing, unreadable or zero, and the record holds a key of zeros; the far "
                      "end's media cannot be decrypted"}
               : Note{};
}

// Whether our answer has a crypto line for the stream (B22).
bool AnswersWithKey(const StreamView& view) {
    return view.answers && HasSuite(view) && view.side.srtp &&
           view.side.local.cryptoAlgo[view.stream] != CryptoParams::CRYPTO_NONE;
}

Note TagOfLetters(const StreamView& view) {
    const std::vector<ReadLine> lines = StoredLines(view.section);
    return AnswersWithKey(view) && !lines.empty() && !TagIsNumber(lines.back())
               ? Note{lines.back().number, "P19",
                      "the tag of this crypto line is no number and is read as 1; our answer names tag 1, "
                      "which the far end did not write"}
               : Note{};
}

Note SwitchedOff(const StreamView& view) {
    return HasSuite(view) && !view.side.srtp
               ? Note{view.section.line, "srtp",
                      std::string("the far end gives a key, but SRTP is off on this side") + PlainHere(view)}
               : Note{};
}

Note OtherSuite(const StreamView& view) {
    const auto ours = view.side.local.cryptoAlgo[view.stream];
    if (!HasSuite(view) || !view.side.srtp || ours == view.reading.record.cryptoAlgo[view.stream]) {
        return {};
    }
    if (ours == CryptoParams::CRYPTO_NONE) {
        return {view.section.line, "B22",
                std::string("this side has no suite, so our ") + (view.answers ? "answer has" : "offer had") +
                    " a secure profile without a key; the far end cannot decrypt what we send"};
    }
    const std::string suite = "the suite of this side is " + NameOf(SuiteNames(), ours);
    return view.answers ? Note{view.section.line, "B21",
                               suite + "; our answer writes it under the far end's tag, and both ends set up "
                                       "different ciphers"}
                        : Note{view.section.line, "suite",
                               suite + ", and the far end answers with another; both ends set up different "
                                       "ciphers"};
}

Note OnlyUnreadSuites(const StreamView& view) {
    const std::string offered = SuitesInWords(view.section);
    if (HasSuite(view) || offered.empty()) {
        return {};
    }
    const auto line = std::find_if(view.section.lines.begin(), view.section.lines.end(),
                                   [](const ReadLine& read) { return !SuiteOf(read).empty(); });
    return {line->number, "P10",
            "not encrypted: the far end names " + offered + "; only " + ReadSuite() + " is read" +
                PlainHere(view)};
}

Note SecureWithoutKey(const StreamView& view) {
    if (HasSuite(view) || !SuitesInWords(view.section).empty()) {
        return {};
    }
    const std::string transport = TransportOf(view.section);
    if (negotiation::IsDtls(transport)) {
        return {view.section.line, "P10",
                "not encrypted: the far end wants DTLS (" + transport + "), which is not understood" +
                    PlainHere(view)};
    }
    if (negotiation::IsSavp(transport)) {
        return {view.section.line, "P10",
                "not encrypted: the far end wants " + transport + " and gives no key" + PlainHere(view)};
    }
    return view.side.srtp
               ? Note{view.section.line, "P10",
                      std::string("not encrypted: SRTP is switched on here, but the far end gives "
                                  "no key; ") +
                          (view.answers ? "our answer says RTP/AVP" : "media is sent in the clear")}
               : Note{};
}

constexpr NoteRule kKeyRules[] = {
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_32 ...\na=crypto:2 AES_256_CM_HMAC_SHA1_80 ...", ReplacedKey},
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:short", UnreadableKey},
    {"a=crypto:x AES_CM_128_HMAC_SHA1_32 ...", TagOfLetters},
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_32 ...", SwitchedOff},
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_32 ...", OtherSuite},
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_80 ...", OnlyUnreadSuites},
    {"m=audio 5004 UDP/TLS/RTP/SAVPF 0", SecureWithoutKey},
};

} // namespace

std::vector<std::string> NotesOnKeys(const StreamView& view) {
    return NotesBy(kKeyRules, view);
}

} // namespace cmsdp
