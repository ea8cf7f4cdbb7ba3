// SRTP keys of this side: made when none is given, and as the inline text that descriptions carry.
//
// Tests: tests/tool/KeysTest.cpp
#pragma once

#include "Capabilities.h"

#include <string>

namespace cmsdp {

/// With SRTP on, gives every stream that has a suite and no key a key from libcrypto's random generator.
/// Throws ToolError(kFailed) when the generator has nothing to give.
void MakeMissingKeys(Capabilities& capabilities);

/// The 40 characters of a stream's key and salt (RFC 4568, 6.1).
std::string InlineKey(const baseSDP& record, baseSDP::SRTP_M_LINE stream);

/// The reverse. False when the text is not exactly 40 base64 characters; then nothing changes.
bool SetInlineKey(baseSDP& record, baseSDP::SRTP_M_LINE stream, const std::string& text);

/// True when key and salt of the stream are all zeros, which no generator gives.
bool KeyIsZero(const baseSDP& record, baseSDP::SRTP_M_LINE stream);

} // namespace cmsdp
