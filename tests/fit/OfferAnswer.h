// The offer/answer engine of libre: it makes an offer like a given one, and takes an answer to it.
#pragma once

#include <string>

namespace fit {

struct Exchange {
    bool isOffered = false; ///< the engine can make such an offer
    std::string complaint;  ///< why it does not take the answer; empty when it does
};

/// Makes an offer with the sections and formats of `offer`, and gives the engine `answer`.
Exchange Exchanged(const std::string& offer, const std::string& answer);

} // namespace fit
