// What a text opens and names, by a reader that shares no code with the component: its sections with their
// words and addresses, the session address, and the sections that an answer declines.
#pragma once

#include <SDPHandler.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

struct Reading {
    struct Section {
        std::vector<std::string> words; ///< of the "m=" line
        std::string address;            ///< of its last "c=" line; empty without one
    };
    std::vector<Section> sections;
    std::string address; ///< of the session
};

/// @param address  the session address of the text before
Reading Read(std::string_view text, const std::string& address = {});

/// The lines that decline each section from number `served` on.
std::string Declined(const Reading& reading, std::size_t served);

/// The reading as one text, and the same from what a handler holds.
std::string HeldText(const Reading& reading);
std::string HeldText(const SDPHandler& handler);

} // namespace fuzz
