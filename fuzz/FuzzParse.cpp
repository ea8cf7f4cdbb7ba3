// Any bytes as the far end's text, read by a handler with any capabilities.
//
// The first bytes choose the side and its switches; the rest is the text.
#include "Handling.h"
#include "Targets.h"

namespace {

void Run(fuzz::Input input, std::uint64_t secret) {
    const fuzz::Side side = fuzz::AnySide(input, secret);
    const fuzz::Key planted(secret ^ 0xfa4e0dU);
    const std::string text = input.Rest();
    fuzz::Watch watch;
    watch.Add(planted);
    fuzz::CheckHandling(side, side.plantsKeys ? fuzz::Plant(text, planted) : text, watch);
}

} // namespace

void FuzzParse(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, Run);
}
