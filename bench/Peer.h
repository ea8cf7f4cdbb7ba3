// A library that reads and writes descriptions, as the measuring programs drive it.
//
// Each peer has its own source, which is left out of the build where the library is not installed. The
// library is used as its documentation shows; where it offers several ways, the fastest is used.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// Counts what a client takes from a description, so that a reader that skips something is noticed.
struct Taken {
    std::size_t formats = 0;    ///< formats of the "m=" lines
    std::size_t names = 0;      ///< formats with their rtpmap
    std::size_t parameters = 0; ///< formats with their fmtp
    std::size_t keys = 0;       ///< "a=crypto:" lines of the sections
    std::size_t candidates = 0; ///< "a=candidate:" lines of the sections
    std::size_t bandwidths = 0; ///< "b=" lines of the sections
    std::size_t attributes = 0; ///< of kSingleAttributes, once per section, and one direction per section
    std::size_t looked = 0;     ///< sum of the first bytes of all values taken, so that each is really read

    void Look(const char* text) { looked += text == nullptr ? 0 : static_cast<unsigned char>(text[0]); }
};

/// The attributes that a client looks for by name in each section.
inline constexpr const char* kSingleAttributes[] = {"ptime",   "content",   "label",  "ice-ufrag",
                                                    "ice-pwd", "floorctrl", "confid", "userid"};

/// Takes an attribute of a section by its name; `listed` has the payload types of the "m=" line. False for
/// one of kSingleAttributes and for an unknown one. Libraries that know rtpmap and fmtp themselves need it
/// not.
inline bool TakeAttribute(const char* name, const char* value, const bool (&listed)[128], Taken& taken) {
    const auto attach = [&]() -> std::size_t {
        char* after = nullptr;
        const unsigned long payload = std::strtoul(value, &after, 10);
        taken.Look(after);
        return listed[payload % 128] ? 1 : 0;
    };
    if (std::strcmp(name, "rtpmap") == 0) {
        taken.names += attach();
    } else if (std::strcmp(name, "fmtp") == 0) {
        taken.parameters += attach();
    } else if (std::strcmp(name, "crypto") == 0) {
        taken.Look(value);
        ++taken.keys;
    } else if (std::strcmp(name, "candidate") == 0) {
        taken.Look(value);
        ++taken.candidates;
    } else if (std::strcmp(name, "sendrecv") == 0) {
        ++taken.attributes;
    } else {
        return false;
    }
    return true;
}

class Peer {
public:
    virtual ~Peer() = default;
    /// Parses the text, takes what a client needs, frees everything.
    virtual Taken Read(const std::string& text) = 0;
    /// Prepares for Write: a description like `text` is held in memory.
    virtual void Hold(const std::string& text) = 0;
    /// Writes the description held as text, and frees that text. Returns its length.
    virtual std::size_t Write() = 0;
    /// Whether the library negotiates: takes an offer and writes the answer to it.
    virtual bool CanNegotiate() const { return false; }
    /// Takes the offer into a session of its own and writes the answer, with the capabilities of Hold.
    /// Returns the answer's length.
    virtual std::size_t Negotiate(const std::string& /*offer*/) { return 0; }
};

struct PeerRow {
    const char* name;
    std::unique_ptr<Peer> (*make)();
};

// One function per source; CMake decides which of them are built.
std::unique_ptr<Peer> MakeGst();
std::unique_ptr<Peer> MakeSofia();
std::unique_ptr<Peer> MakeOsip();
std::unique_ptr<Peer> MakeRe();

/// The peers of this build.
const std::vector<PeerRow>& Peers();

/// Ends the program with a message: a peer failed at an operation that is measured.
[[noreturn]] void PeerFailed(const char* name, const char* what);

} // namespace bench
