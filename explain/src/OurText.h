// Our own description as the far end gets it: its sections, and what a far end of our kind reads in it.
#pragma once

#include "SDP.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace explain {

/// A section of our own description, which is well formed by construction; views of OurText::text.
struct OurSection {
    std::string_view media; ///< "audio"
    std::string_view port;
    std::string_view transport;
    std::vector<std::string_view> formats;
    std::string_view tag;   ///< of its crypto line; empty without one
    std::string_view suite; ///< of its crypto line; may be empty with one
    bool hasKey = false;
    bool isSlides = false;
    bool hasPort = true; ///< false: an "m=" line without a port
};

/// Our answer, or our offer when the remote text answers it. It cannot be copied or moved,
/// because it has views of its own text.
struct OurText {
    explicit OurText(std::string written);
    OurText(const OurText&) = delete;
    OurText& operator=(const OurText&) = delete;

    std::string text;
    std::vector<OurSection> sections;
    RemoteSDP read; ///< what a far end with every codec reads in it
};

/// The text after the o= line, whose session id differs between runs.
std::string_view AfterOrigin(std::string_view text);

/// What was read of our texts lately. One local side writes few kinds of answers, however many descriptions
/// it answers, so each kind is read once.
class OurTexts {
public:
    /// The text, read. `origin` is what an o= line is written from beside its two numbers, which nothing
    /// reads: texts after o= lines of other words are not mixed.
    std::shared_ptr<const OurText> Read(std::string text, const std::string& origin);

private:
    std::string m_origin;
    std::unordered_map<std::string_view, std::shared_ptr<const OurText>> m_read; ///< by AfterOrigin
};

} // namespace explain
