// The names of --require are those of the JSON report.
//
// Tests: tests/tool/require.cases
#include "Require.h"

#include "Outcome.h"
#include "VideoUtils.h"
#include "Words.h"

#include <algorithm>
#include <iterator>

namespace cmsdp {

namespace {

struct Stream {
    const char* name;
    const Finding Report::*finding;
};

constexpr Stream kStreams[] = {
    {"audio", &Report::audio},
    {"main_video", &Report::mainVideo},
    {"presentation", &Report::presentation},
    {"floor_control", &Report::floorControl},
};

const Stream* FindStream(const std::string& name) {
    const auto* const found = std::find_if(std::begin(kStreams), std::end(kStreams),
                                           [&name](const Stream& stream) { return stream.name == name; });
    return found == std::end(kStreams) ? nullptr : found;
}

} // namespace

std::vector<std::string> ParseRequired(const std::string& list) {
    std::vector<std::string> names;
    VideoUtils::split(names, list, ",");
    if (names.empty()) {
        names.emplace_back(); // an empty list, which is no stream either
    }
    for (const std::string& name : names) {
        if (FindStream(name) == nullptr) {
            throw ToolError(kUsage, "--require: " + Quoted(name) +
                                        " is no stream; name audio, main_video, presentation or "
                                        "floor_control, with a comma between");
        }
    }
    return names;
}

std::string MissingOf(const Report& report, const std::vector<std::string>& required) {
    std::vector<std::string> missing;
    std::copy_if(required.begin(), required.end(), std::back_inserter(missing),
                 [&report](const auto& name) { return !(report.*FindStream(name)->finding).negotiated; });
    return Listed(missing, missing.size());
}

} // namespace cmsdp
