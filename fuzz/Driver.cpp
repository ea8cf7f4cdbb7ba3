// The function that libFuzzer calls. FUZZ_TARGET is the target of this executable.
#include "Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FUZZ_TARGET(data, size);
    return 0;
}
