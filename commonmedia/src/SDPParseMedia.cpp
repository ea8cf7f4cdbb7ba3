// Stage: parse, "m=" and "c=" lines to sections and addresses (RFC 4566, 5.14 and 5.7).
// Input: one line without its CR LF. Output: a new section with its formats, or an address.
// Touches the list of sections, the last section's address, the session address.
// White space separates words; the syntax is not checked further.
// Test: tests/unit/SDPParseMediaTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
#include "SDPText.h"

#include <algorithm>
#include <memory>

namespace {

struct Media {
    std::string_view name;
    MediaType_t eMedia;
    VideoType_t eContent;
};

// A video section is main video until a content attribute says otherwise (RFC 4796, 5).
constexpr Media kMedia[] = {
    {"m=audio", MEDIA_AUDIO, VIDEOTYPE_UNKNOWN},
    {"m=video", MEDIA_VIDEO, VIDEOTYPE_MAIN},
    {"m=application", MEDIA_APPLICATION, VIDEOTYPE_UNKNOWN},
};

constexpr std::size_t kUsualFormats = 8;

} // namespace

void SDPHandler::ProcessMedia(std::string_view SDPLine) {
    sdp::Words words(SDPLine);
    const std::string_view media = words.Next();
    const std::string_view port = words.Next();
    words.Next(); // The transport is not examined; strFullMLine contains it.
    std::string_view format = words.Next();
    // [P05] Without a format the line opens no section, and the following lines belong to the previous one.
    if (format.empty()) {
        return;
    }
    // The handler owns the section before it is filled, so that nothing leaks when an allocation fails.
    auto section = std::make_unique<MediaSession>();
    vecRemoteMediaSession.push_back(section.get());
    MediaSession* const ms = section.release();

    ms->strFullMLine = std::string(SDPLine);
    // [P06] A medium that is none of the three gets a section too: its position decides what the answer
    // rejects.
    if (const Media* const row = sdp::FindNamed<kMedia>(media)) {
        ms->eMedia = row->eMedia;
        ms->eContent = row->eContent;
    }
    ms->iPort = sdp::Number(port);
    // A format and its blank are at least two characters, so no push_back below allocates, and no format
    // leaks between new and push_back.
    ms->vecRtpMap.reserve(std::max(kUsualFormats, 1 + words.Left() / 2));
    for (; !format.empty(); format = words.Next()) {
        ms->vecRtpMap.push_back(new RtpMap{std::string(format), {}, {}});
    }
}

void SDPHandler::ProcessConnect(std::string_view SDPLine) {
    sdp::Words words(SDPLine);
    words.Next();
    words.Next();
    const std::string_view address = words.Next();
    if (address.empty()) {
        return;
    }
    // A multicast suffix such as "/127/3" stays part of the text: expanding it would let thirty bytes request
    // any number of addresses.
    (vecRemoteMediaSession.empty() ? strSessionIPAddr : vecRemoteMediaSession.back()->strIPAddr) = address;
}
