#include "Judged.h"

#include <utility>

namespace fuzz {

namespace {

Mistake g_mistake;
std::string g_only;

void Count(Tally& tally, const char* name) {
    const auto found = tally.find(std::string_view(name));
    ++(found == tally.end() ? tally[name] : found->second);
}

} // namespace

void SetMistake(Mistake mistake) {
    g_mistake = std::move(mistake);
}

void Pass(std::string_view what, const std::type_info& type, void* result) {
    if (g_mistake) {
        g_mistake(what, type, result);
    }
}

void EnforceOnly(std::string law) {
    g_only = std::move(law);
}

bool IsInForce(const char* law) {
    Count(Laws(), law);
    return g_only.empty() || g_only == law;
}

void Reached(const char* state) {
    Count(States(), state);
}

Tally& Laws() {
    static Tally laws;
    return laws;
}

Tally& States() {
    static Tally states;
    return states;
}

} // namespace fuzz
