// Results of the code under test on their way to the laws.
//
// Each passes through Judged, which changes nothing while fuzzing. A test puts a mistake there and lets one
// law alone be in force: a law that cannot report any mistake is none. Laws and states are counted by name,
// so a test can require that the kept inputs reach them.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace fuzz {

/// Changes a result. `what` names it; `type` is its type.
using Mistake = std::function<void(std::string_view what, const std::type_info& type, void* result)>;

/// Puts a mistake in the place of none, until another one replaces it.
void SetMistake(Mistake mistake);

void Pass(std::string_view what, const std::type_info& type, void* result);

/// Returns the result after the mistake, if there is one, has changed it.
template <typename T>
T& Judged(std::string_view what, T& result) {
    Pass(what, typeid(T), &result);
    return result;
}
template <typename T, typename = std::enable_if_t<!std::is_reference_v<T>>>
T Judged(std::string_view what, T&& result) {
    Pass(what, typeid(T), &result);
    return std::move(result);
}

/// Lets one law alone be in force; an empty name, all of them.
void EnforceOnly(std::string law);

/// Counts one use of a law. Returns whether it is in force.
bool IsInForce(const char* law);

/// Counts that a run reached a state, such as an answer with audio.
void Reached(const char* state);

/// How often each law was used, and each state reached, by name.
using Tally = std::map<std::string, std::size_t, std::less<>>;
Tally& Laws();
Tally& States();

} // namespace fuzz
