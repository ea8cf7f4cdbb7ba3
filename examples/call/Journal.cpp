// Writes the events and the descriptions of a call. Test: the calls of tests/realcall read both.
#include "Journal.h"

#include <chrono>
#include <cstdio>
#include <fstream>

namespace call {

void Journal::Note(const std::string& event) const {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
    std::printf("%lld.%03d %s\n", static_cast<long long>(now / 1000), static_cast<int>(now % 1000),
                event.c_str());
    std::fflush(stdout);
}

void Journal::Keep(const char* kind, std::string_view description) {
    char number[16];
    std::snprintf(number, sizeof number, "%02d-", ++m_kept);
    const std::string name = std::string(number) + kind + ".sdp";
    std::ofstream(m_directory + "/" + name, std::ios::binary) << description;
    Note("kept " + name);
}

} // namespace call
