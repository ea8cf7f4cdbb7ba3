// What --help and --version say. Each text begins with an example and is at most 80 columns wide.
//
// Tests: tests/tool/HelpTest.cpp
#pragma once

namespace cmsdp {

extern const char* const kVersion;
extern const char* const kHelp;
extern const char* const kOfferHelp;
extern const char* const kAnswerHelp;
extern const char* const kInspectHelp;
extern const char* const kCallHelp;
extern const char* const kCheckHelp;
extern const char* const kExplainHelp;
extern const char* const kWhyNotHelp;
extern const char* const kDiffHelp;
extern const char* const kSurveyHelp;
extern const char* const kRedactHelp;
extern const char* const kCapabilitiesHelp;
extern const char* const kVersionHelp;

} // namespace cmsdp
