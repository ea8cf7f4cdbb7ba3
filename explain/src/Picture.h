// What the finders of suspects in H.264 formats share: the format of a section that is sent.
#pragma once

#include "FormatLines.h"

namespace explain {

/// The lines of the H.264 format that is sent, or of the last one listed.
struct Picture {
    const VideoParms& stream;
    ExplainTopic topic;
    std::string payload;
    const TextLine* fmtp; ///< null without one
    const TextLine& line; ///< its fmtp line, or its rtpmap line

    ExplainTextChange With(const std::string& parameter) const {
        return fmtp != nullptr ? ReplaceLine(*fmtp, std::string(Trimmed(fmtp->text)) + ";" + parameter)
                               : InsertAfter(line, "a=fmtp:" + payload + " " + parameter);
    }
};

/// Suspects in the profile-level-id of one format, and in the level of the format that is sent.
void FindLevel(Scene& scene, const TextLine& fmtp, ExplainTopic topic);
void FindMissingLevel(Scene& scene, const Picture& picture);

} // namespace explain
