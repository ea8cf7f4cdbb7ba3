// Stage: suspects in the local limits of a picture: max-mbps, max-fs and max-br (RFC 6184, 8.1).
// Input: the local record. Output: suspects that blame a field.
// Touches the list of suspects. Table A-1 of H.264 is in the negotiation layer and is asked there.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPH264Limits.h"

namespace explain {

namespace {

constexpr Rule kLimit = {"E113", "", ExplainSeverity::Warning, 49,
                         "A limit is written as it is; max-mbps, max-fs and max-br raise the limits of the "
                         "level and never lower them (RFC 6184, 8.1)."};
constexpr Rule kHighLimit = {
    "E172", "", ExplainSeverity::Warning, 48,
    "A limit is written as it is; max-br counts 1000 bit/s, max-mbps and max-fs count "
    "macroblocks of 16 x 16 pixels (RFC 6184, 8.1)."};
constexpr Rule kOdd = {"E114", "B12", ExplainSeverity::Note, 51,
                       "An even frame size is written one higher in max-fs (B12)."};

struct LimitField {
    const char* file;
    const char* record;
    const char* parameter;
    std::int32_t negotiation::H264Limits::*ofLevel;
    std::int32_t VideoParms::*own;
};
constexpr LimitField kVideoLimits[] = {
    {".max_macroblocks_per_s", ".iFmtpMaxMbps", "max-mbps", &negotiation::H264Limits::maxMbps,
     &VideoParms::iFmtpMaxMbps},
    {".max_frame_macroblocks", ".iFmtpMaxFrameSize", "max-fs", &negotiation::H264Limits::maxFs,
     &VideoParms::iFmtpMaxFrameSize},
    {".max_bit_rate_x1000_bit_per_s", ".iFmtpMaxBitRate", "max-br", &negotiation::H264Limits::maxBr,
     &VideoParms::iFmtpMaxBitRate},
};

} // namespace

void FindLocalLimits(Scene& scene, std::string_view file, std::string_view record, const VideoParms& video,
                     ExplainTopic receives) {
    const negotiation::H264Limits limits = negotiation::LimitsOfLevel(video.strVideoLevel);
    for (const LimitField& limit : kVideoLimits) {
        const std::int32_t own = video.*limit.own;
        const std::string name = std::string(file) + limit.file;
        constexpr negotiation::H264Limits most = negotiation::LimitsOfLevel("5.1");
        const std::int32_t highest = most.*limit.ofLevel;
        if (own > highest) {
            BlameField(scene, kHighLimit, name,
                       {record, limit.record, " (", name, ") is ", own, ", more than the ", highest,
                        " of level 5.1, the highest one."},
                       {"set ", name, " to 0, so that the level counts"}, 0)
                .Know(receives, {"Our text says ", limit.parameter, "=", own,
                                 ", so the far end may send far more than this side can take."});
        } else if (own != 0 && own < limits.*limit.ofLevel) {
            BlameField(scene, kLimit, name,
                       {record, limit.record, " (", name, ") is ", own, ", less than the ",
                        limits.*limit.ofLevel, " of level ", AsShown(video.strVideoLevel), "."},
                       {"set ", name, " to 0, so that the level counts"}, 0)
                .Know(receives, {"Our text says ", limit.parameter, "=", own,
                                 ", so the far end may send a smaller, slower or coarser picture."});
        } else if (own != 0 && own % 2 == 0 && limit.own == &VideoParms::iFmtpMaxFrameSize) {
            BlameField(scene, kOdd, name,
                       {record, limit.record, " (", name, ") is ", own, ", an even number."},
                       {"set ", name, " to an odd number"}, own - 1)
                .Know(receives, {"Our text says max-fs=", own + 1, ", one macroblock more than was set."});
        }
    }
}

} // namespace explain
