// Where the descriptions of a survey come from: files, folders, captures, JSON lines.
//
// Tests: tests/tool/survey.cases
#pragma once

#include "SurveyOne.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace cmsdp {

/// Takes a file to be read later; `text` is the name for standard input "-". False: no more are wanted.
using TakeName = std::function<bool(const std::string& name)>;
/// Takes a description, or a place that has none. False: no more are wanted.
using TakeItem = std::function<bool(Surveyed item)>;

/// Names the files of the paths, those of folders in order of name; a path that does not exist is named too.
/// Symbolic links to folders are not followed.
void NameFiles(const std::vector<std::string>& paths, const TakeName& take);

/// Reads a file: one description, each offer and answer of a text with SIP messages or of a capture, or the
/// reason why there is none. Nothing is thrown for what a file contains.
void ReadItems(const std::string& file, bool remoteAnswers, const TakeItem& take);

/// Whether a file holds JSON values, one in a line: one with the name *.jsonl or *.ndjson, or *.json of which
/// the first line is a whole value with a member "sdp".
bool HoldsJsonLines(const std::string& file);

/// Reads JSON values from a file, or from standard input for "-", one in a line, each with a member "sdp".
/// Returns when the input ends, or when a signal interrupts it.
void ReadJsonLines(const std::string& file, bool remoteAnswers, const TakeItem& take);

} // namespace cmsdp
