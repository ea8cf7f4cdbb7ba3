// The fuzz targets. Each takes any bytes and returns when every law held; a broken law prints both sides and
// aborts. libFuzzer calls one of them per process, tests/replay calls all of them on the kept inputs.
#pragma once

#include <cstddef>
#include <cstdint>

/// Any text, read with any capabilities; the first bytes choose the switches.
void FuzzParse(const std::uint8_t* data, std::size_t size);
/// A handler's life: parse, answer, offer, reset and setters in any order, against a plain model of its
/// state.
void FuzzLife(const std::uint8_t* data, std::size_t size);
/// The key codec and the "a=crypto:" line, against a second reading of their rules.
void FuzzKey(const std::uint8_t* data, std::size_t size);
/// rtpmap and fmtp lines, H.264 levels and limits, against a second reading of their rules.
void FuzzFormat(const std::uint8_t* data, std::size_t size);
/// A grammatical description whose meaning is known, with one illness.
void FuzzGrammar(const std::uint8_t* data, std::size_t size);
/// The readers of the command cmsdp: capabilities as JSON and remote text.
void FuzzTool(const std::uint8_t* data, std::size_t size);
