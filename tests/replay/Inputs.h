// The kept inputs of the fuzz targets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace replay {

using Target = void (*)(const std::uint8_t*, std::size_t);

/// The files of a target, sorted by name. `kind` is "seeds" or "regressions".
std::vector<std::filesystem::path> InputsOf(const std::string& kind, const std::string& target);

/// Calls the target with the bytes of each input, in a block of exactly their length.
void Replay(const std::vector<std::filesystem::path>& paths, Target target);

/// Calls the target with these bytes, in a block of exactly their length.
void Call(Target target, const std::string& bytes);

} // namespace replay
