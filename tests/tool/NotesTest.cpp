// The documents show a note of every rule, and each note has a line, a source and what comes of it.
#include "Documents.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>

namespace tool {

namespace {

// The notes that notes.cases expects of texts, not of our answer.
std::set<std::string> NotesOfTheDocument() {
    std::set<std::string> notes;
    const documents::Document document =
        documents::ReadFile(COMMONMEDIA_SOURCE_DIR "/tests/tool/notes.cases");
    for (const documents::Section& section : document.sections) {
        for (const documents::Step& step : section.steps) {
            const std::string& head = step.head.text;
            const bool isList = head.size() > 6 && head.compare(head.size() - 6, 6, "/notes") == 0;
            if (!isList || head == "output at /our_answer/notes") {
                continue;
            }
            std::string list;
            for (const documents::Line& line : step.block) {
                list += documents::Unescape(line);
            }
            for (const nlohmann::json& note : nlohmann::json::parse(list)) {
                notes.insert(note.get<std::string>());
            }
        }
    }
    return notes;
}

// The sources of a rule as they stand in its file: {"P11", or {view.section.line, "srtp",
std::set<std::string> IdsInSources() {
    std::set<std::string> ids;
    const std::regex id(R"re("([A-Z]\d\d|srtp|suite|RFC \d+, [\d.]+)",)re");
    for (const char* const name :
         {"NotesOnLines", "NotesOnStreams", "NotesOnKeys", "NotesOnAnswer", "Report"}) {
        std::ifstream file(std::string(COMMONMEDIA_SOURCE_DIR "/tools/cmsdp/") + name + ".cpp");
        const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        for (std::sregex_iterator at(text.begin(), text.end(), id); at != std::sregex_iterator(); ++at) {
            ids.insert((*at)[1]);
        }
    }
    return ids;
}

TEST(NotesOfEveryRule, HaveLineSourceAndConsequence) {
    const std::regex form(
        R"re(line \d+(?: of our answer)?, ([A-Z]\d\d|srtp|suite|RFC \d+, [\d.]+): .+(?:[;,] .+))re");
    std::set<std::string> ids = {"B03"}; // a reason of a stream that is not negotiated
    for (const std::string& note : NotesOfTheDocument()) {
        std::smatch found;
        const bool isRest = note == "and 12 more";
        EXPECT_TRUE(isRest || std::regex_match(note, found, form)) << note;
        ids.insert(isRest ? "B03" : found[1].str());
    }
    EXPECT_EQ(ids, IdsInSources());
}

} // namespace

} // namespace tool
