// A remote description as the component read it: the record, the sections, and each line with the row that
// took it. The component reports all of it; nothing here reads the text a second time.
//
// Tests: tests/tool/ReadingTest.cpp
#pragma once

#include "Draft.h"
#include "SDPHandler.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// A line that some row took. The text is a part of the draft that was read.
struct ReadLine {
    SDPRow row = SDPRow::None;
    std::string_view text;
    std::uint32_t number = 0; ///< of the line in the input
    std::size_t section = 0;  ///< how many sections were open after it; 0: it belongs to the session
    bool opens = false;       ///< it opened the section
};

/// An "m=" section and its lines.
struct Section {
    const MediaSession* session = nullptr; ///< owned by the handler; valid until it parses again
    std::uint32_t line = 0;                ///< number of its "m=" line in the input
    std::size_t index = 0;                 ///< among the sections of the component
    /// Among the "m=" lines of the text, by which the far end matches our answer (RFC 3264, 6). A short line
    /// counts although it opens no section (P05); a section that another line opened has no place (P01).
    std::optional<std::size_t> place;
    std::vector<ReadLine> lines; ///< without the "m=" line
};

struct Reading {
    RemoteSDP record;
    std::vector<ReadLine> lines; ///< in the order of the text
    std::vector<Section> sections;
};

/// Whether the line begins, after blanks, with the keyword of the row that took it, and so means what it is
/// read as.
bool IsMeant(const ReadLine& line);

/// The payload type that an "a=rtpmap:" or "a=fmtp:" line names, where the component looks for it (P20, P22);
/// empty for any other line.
std::string_view PayloadOf(const ReadLine& line);

/// The number of the section's last line of a row that names the payload type; that of its "m=" line when
/// there is none.
std::uint32_t LineOf(const Section& section, SDPRow row, std::string_view payload);

/// Parses the text of the draft with the handler. The draft has to outlive the reading.
Reading ReadWith(SDPHandler& handler, const Draft& draft);

/// The section a stream is taken from: the first of its kind. Null when there is none.
const Section* FindAudio(const Reading& reading);
const Section* FindVideo(const Reading& reading, VideoType_t role);
const Section* FindFloorControl(const Reading& reading);
/// The last floor control section, which fills the record (X11).
const Section* FindLastFloorControl(const Reading& reading);

/// "the audio section", "the presentation section", "the session" for null.
std::string NameOf(const MediaSession* session);

/// The transport of a section: "RTP/SAVP".
std::string TransportOf(const Section& section);

/// The codec that a payload number means without an rtpmap attribute (RFC 3551, 6): "PCMA" for "8". Null for
/// others.
const char* StaticName(const std::string& payload);

/// "opus/48000/2 (111), PCMA (8)": the codecs a section lists, telephone events left out.
std::string CodecsInWords(const Section& section);

/// "AES_CM_128_HMAC_SHA1_80, an unknown suite": the suites that a section's crypto lines name, those that the
/// component skips included; empty when no crypto line has three words.
std::string SuitesInWords(const Section& section);

/// The second word of a crypto line that names a suite, a tag and a key; empty for any other line (G02).
std::string_view SuiteOf(const ReadLine& line);

} // namespace cmsdp
