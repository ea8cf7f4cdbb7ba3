// What the finders of suspects in crypto lines share.
//
// Key text stays in the edits, which replace it by a sample where they must write one.
#pragma once

#include "SDPTables.h"
#include "Suspect.h"

namespace explain {

/// Written where a key is needed; it is never shown and no key of anybody.
inline constexpr const char* kSampleKey = "MDEyMzQ1Njc4OWFiY2RlZjAxMjM0NTY3ODlhYmNk";
inline constexpr const char* kReadSuite = "AES_CM_128_HMAC_SHA1_32";

/// The suite of a crypto line as meant; null for one that is not known.
const sdp::Suite* SuiteOf(const TextLine& line);

} // namespace explain
