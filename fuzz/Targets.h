// The fuzz targets. Each takes any bytes and returns if every law holds; a broken law prints both texts and
// aborts. libFuzzer calls one of them per process, tests/replay calls all of them with the kept inputs.
#pragma once

#include <cstddef>
#include <cstdint>

/// Any text, read with any capabilities; the first bytes choose the switches.
void FuzzParse(const std::uint8_t* data, std::size_t size);
/// Any text, read and answered without a law, as often as possible.
void FuzzVolume(const std::uint8_t* data, std::size_t size);
/// Parse, answer, offer, reset and setters of one handler in any order, against a simple model of its state.
void FuzzLife(const std::uint8_t* data, std::size_t size);
/// The key codec and the "a=crypto:" line, against an independent model.
void FuzzKey(const std::uint8_t* data, std::size_t size);
/// rtpmap and fmtp lines, H.264 levels and limits, against an independent model.
void FuzzFormat(const std::uint8_t* data, std::size_t size);
/// A valid description whose record is known, with one mutation.
void FuzzGrammar(const std::uint8_t* data, std::size_t size);
/// The command cmsdp: capabilities as JSON, a remote text, one verb.
void FuzzTool(const std::uint8_t* data, std::size_t size);
/// Any bytes as a text with SIP messages, shown by the command as a timeline.
void FuzzCalls(const std::uint8_t* data, std::size_t size);
/// Any bytes as an offer or an answer, given to a negotiator in any phase.
void FuzzNegotiation(const std::uint8_t* data, std::size_t size);
/// Any bytes as two descriptions, the second of which is judged.
void FuzzJudge(const std::uint8_t* data, std::size_t size);
/// Any bytes as the far end's text, explained for any side.
void FuzzExplain(const std::uint8_t* data, std::size_t size);
