// What one side can do: the application's LocalSDP, the handler's switches, and their JSON form.
//
// The JSON form has a member for every field. A member that is left out keeps its built-in value; a member
// that is not known, or has a value that its field cannot hold, is an error. Wherever a name stands for a
// number (codec, suite, role), the number itself may stand too, so that every record can be written down.
//
// Tests: tests/tool/CapabilitiesTest.cpp
#pragma once

#include "SDP.h"
#include "SDPHandler.h"

#include <cstdint>
#include <string>

namespace cmsdp {

/// Whether descriptions carry the presentation and its floor control channel.
enum class FloorControl {
    kOff,
    kOn,
    kAuto ///< in offers, and in answers to offers that have a floor control section
};

/// One side of a call before it begins.
struct Capabilities {
    LocalSDP local;
    bool srtp = false;                              ///< SDPHandler::m_bSRTP
    bool srtpRequired = false;                      ///< with `srtp`: no plain stream is taken (--fit)
    FloorControl floorControl = FloorControl::kOff; ///< SDPHandler::SetBfcpSupport
    std::uint32_t servedSections = 0;               ///< SDPHandler::SetMaxSupportedSessions
    bool keyGiven[baseSDP::SRTP_MAX] = {};          ///< the local file gives this stream's key
};

/// Four audio codecs, H.264 in both packetization modes, presentation with floor control, SRTP off.
Capabilities BuiltInCapabilities();

/// The same at another address and other ports: the answering side of `cmsdp call`.
Capabilities BuiltInAnswerer();

/// The set `base`, changed by the JSON text. `name` begins every message. Throws
/// ToolError(kLocalFile) with the JSON path, what was expected, what was found and how to mend it.
Capabilities ParseCapabilities(const std::string& json, const std::string& name,
                               const Capabilities& base = BuiltInCapabilities());

/// ParseCapabilities of a file; with SRTP on, each stream that has a suite and no key then gets a random key.
Capabilities ReadCapabilities(const std::string& file, const Capabilities& base = BuiltInCapabilities());

/// Every member that a local description is written from, in a fixed order; members that only a far end fills
/// in follow where they say something. Keys are never part of it.
std::string CapabilitiesJson(const Capabilities& capabilities);

/// Hands everything to a handler that has not been used yet.
void Prepare(SDPHandler& handler, const Capabilities& capabilities);

/// Decides about floor control once the handler holds the far end's sections. Returns whether the handler's
/// next description has it.
bool SettleFloorControl(SDPHandler& handler, const Capabilities& capabilities);

} // namespace cmsdp
