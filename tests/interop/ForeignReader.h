// What readers of other projects make of a description: whether they take it, and which sections they see.
//
// Each reader has a source of its own, because their headers declare the same names. tshark reads all
// texts in one run, since starting it takes as long as reading a thousand texts.
#pragma once

#include <string>
#include <vector>

namespace interop {

/// What one reader made of one text.
struct Reading {
    bool isTaken = false;
    std::vector<std::string> sections; ///< as "audio 16384 RTP/AVP 0 101", in order
    std::string complaint;             ///< the reader's own words, when it gave any
};

/// Sofia-SIP, which accepts only conforming texts when it is strict.
Reading ReadWithSofia(const std::string& text);
Reading ReadWithOsip(const std::string& text);
/// libre, given the text as an offer.
Reading ReadWithRe(const std::string& text);
/// tshark; one reading per text. Empty when tshark could not be run.
std::vector<Reading> ReadWithTshark(const std::vector<std::string>& texts);

} // namespace interop
