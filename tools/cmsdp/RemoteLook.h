// A second, light look at the remote text. The component's record says what came up; this says what else the
// far end wrote, so that a report can name the reason why a stream did not.
//
// Tests: tests/tool/RemoteLookTest.cpp
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// One payload format of a section. Words of the far end are cut here when they are very long.
struct SeenFormat {
    std::string payload;  ///< as it stands on the "m=" line
    std::string encoding; ///< "opus/48000/2"; empty without an rtpmap attribute
};

/// One "m=" section that the component opens.
struct SeenSection {
    std::string media;     ///< "audio", "video", "application" or what else the line says
    std::string transport; ///< "RTP/SAVP"
    bool declined = false; ///< its port is 0
    bool slides = false;   ///< a video section marked as presentation
    bool floorControl = false;
    std::vector<SeenFormat> formats;
    std::vector<std::string> suites; ///< registered names in its crypto attributes, in order
    std::size_t unknownSuites = 0;   ///< crypto attributes with any other word in that place
};

struct RemoteLook {
    std::vector<SeenSection> sections;
    std::vector<std::string> notes; ///< lines that are taken for something else than they begin with
};

RemoteLook LookAt(std::string_view text);

/// The section a stream is taken from: the first of its kind. Null when there is none.
const SeenSection* FindAudio(const RemoteLook& look);
const SeenSection* FindVideo(const RemoteLook& look, bool slides);
const SeenSection* FindFloorControl(const RemoteLook& look);

/// "opus/48000/2 (111), PCMA (8)": the codecs a section lists, telephone events left out.
std::string CodecsInWords(const SeenSection& section);

/// "AES_CM_128_HMAC_SHA1_80, an unknown suite": the suites a section offers; empty without a crypto
/// attribute.
std::string SuitesInWords(const SeenSection& section);

} // namespace cmsdp
