// A far end's section given to one part of the layer, without a call round it.
#pragma once

#include "Call.h"
#include "SDPFormats.h"

#include <string>
#include <string_view>

namespace call {

/// A description and the repairs that reading it asks for.
struct Given {
    explicit Given(std::string_view lines, bool isRepaired = true) : text(Far(lines)) {
        repairs.SetAll(isRepaired);
        description = negotiation::Cut(text, repairs);
    }
    // The description points into the text.
    Given(const Given&) = delete;
    Given& operator=(const Given&) = delete;

    const negotiation::Section& First() const { return description.sections.front(); }
    negotiation::Lines FirstLines() const { return description.Of(First()); }

    std::string text;
    negotiation::Repairs repairs;
    negotiation::Description description;
};

} // namespace call
