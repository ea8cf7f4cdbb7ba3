// The documents NAME.cases of this directory: files, command lines, and all that the command writes. Then
// where their runner reports a difference; what documents have in common: support/DocumentTest.cpp.
#include "Documents.h"
#include "ToolPlayer.h"

namespace tool {

namespace {

[[maybe_unused]] const int kDocuments = documents::RegisterDocumentsOf<Player>("tool", "");

// The reports of a section with these steps.
std::string ReportsOf(const std::string& steps) {
    return documents::ReportsOf<Player>("=== Suite.Name\nWhy.\n" + steps);
}

const std::string kCommand = "$ cmsdp capabilities none\n";
const std::string kError = "error\n"
                           "    cmsdp: The following argument was not expected: none; see cmsdp capabilities "
                           "--help\n";

TEST(ToolDocuments, WhatIsAsTheDocumentSaysIsNotReported) {
    EXPECT_TEXT(ReportsOf(kCommand + kError + "status 2\n"), "");
    EXPECT_TEXT(ReportsOf("file me.json\n"
                          "    {\"default_address\": \"\"}\n"
                          "$ cmsdp offer --fit --json '--local' me.json\n"
                          "output at /why\n"
                          "    \"no local address is set\"\n"
                          "output has\n"
                          "      \"offer\": null,\n"
                          "      \"why\": \"no local address is set\"\n"
                          "error\n"
                          "    cmsdp: there is no offer: no local address is set\n"
                          "status 1\n"),
                "");
}

TEST(ToolDocuments, ADifferenceIsReportedAtItsLine) {
    EXPECT_TEXT(ReportsOf(kCommand + kError + "status 1\n"),
                "a.cases:6: status 1: The texts differ first in line 1.\n");
    EXPECT_TEXT(ReportsOf(kCommand + support::Replaced(kError, "none", "some") + "status 2\n"),
                "a.cases:5: error: The texts differ first in line 1.\n");
    EXPECT_TEXT(ReportsOf(kCommand + kError + "output\n    v=0\nstatus 2\n"),
                "a.cases:7: output: The texts differ first in line 1.\n");
    EXPECT_TEXT(ReportsOf("$ cmsdp version\noutput has\n    no line of it\noutput at /why\n    null\n"),
                "a.cases:5: output has: The texts differ first in line 1.\n"
                "a.cases:7: output at /why: The texts differ first in line 1.\n");
}

// At the command, whether another one follows it or not.
TEST(ToolDocuments, WhatTheDocumentDoesNotSayIsReportedAtTheCommand) {
    EXPECT_TEXT(ReportsOf(kCommand + "$ cmsdp version\n"),
                "a.cases:3: $ cmsdp capabilities none: The texts differ first in line 1.\n"
                "a.cases:3: $ cmsdp capabilities none: The texts differ first in line 1.\n"
                "a.cases:4: $ cmsdp version: The texts differ first in line 1.\n");
}

TEST(ToolDocuments, StepsThatAreMalformed) {
    EXPECT_TEXT(ReportsOf("$ cmsdp version\noutput has\n"),
                "a.cases:4: no lines, so every output would match\n");
    EXPECT_TEXT(ReportsOf("text lines\n    1\ntext lines\n    2\n"),
                "a.cases:5: a second definition of lines\n");
    EXPECT_TEXT(ReportsOf("input lines\n"), "a.cases:3: nothing is called lines\n");
}

} // namespace

} // namespace tool
