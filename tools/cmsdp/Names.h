// What the records' numbers are called in JSON and in tables.
//
// Tests: tests/tool/NamesTest.cpp
#pragma once

#include "SDP.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// One value of an enumeration and its name.
struct NamedValue {
    const char* name;
    std::int32_t value;
};
using NameTable = std::vector<NamedValue>;

const NameTable& CodecNames(); ///< "G711U", "H264_MODE_1", ...; each value is one bit
const NameTable& SuiteNames(); ///< "none", "AES_CM_128_HMAC_SHA1_32", ...
const NameTable& RoleNames();  ///< "main", "presentation", "unknown"

/// The name of a value; the decimal number when it has none.
std::string NameOf(const NameTable& table, std::int32_t value);

/// Whether the word names an SRTP suite that is registered for descriptions, or that this side knows. Only
/// such a word of the far end is shown: any other one in its place may be key text that strayed.
bool IsSuiteName(std::string_view word);

/// A codec as people write it: "G.722", "G.711 mu-law".
std::string CodecInWords(PayloadType_t codec);

/// What this side does in a stream: "sends and receives", "sends only", "receives only", "on hold".
std::string DirectionInWords(bool send, bool recv);

} // namespace cmsdp
