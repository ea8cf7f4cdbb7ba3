// Pairs of texts in files, and the judge's findings as text.
#pragma once

#include "SDPJudge.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace judged {

inline std::string Directory(const std::string& name) {
    return std::string(COMMONMEDIA_SOURCE_DIR) + "/tests/judge/" + name;
}

inline std::string FileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::vector<std::filesystem::path> Files(const std::string& directory, const std::string& extension) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        if (entry.path().extension() == extension) {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

// One line per violation, such as "J06 line 12, other 5, section 1: The line is ..."
inline std::string Written(const std::vector<JudgeViolation>& violations) {
    std::ostringstream text;
    for (const JudgeViolation& violation : violations) {
        text << violation.rule->id << " line " << violation.line << ", other " << violation.otherLine
             << ", section " << violation.section << ": " << violation.particulars << "\n";
    }
    return text.str();
}

// A file of three parts, each after its heading: [offer] and [answer], or [previous] and [next], then
// [violations]. Lines of the descriptions get the CR LF that the file leaves out; {LF} at the end of a line
// stands for a lone LF, {END} for no line end at all.
struct BrokenPair {
    bool isNext = false;
    std::string first;
    std::string second;
    std::string violations;

    std::vector<JudgeViolation> Judged() const {
        return isNext ? CheckNext(first, second) : CheckAnswer(first, second);
    }
};

inline std::string WithLineEnd(const std::string& line) {
    const auto mark = line.rfind('{');
    const std::string end = mark == std::string::npos ? "" : line.substr(mark);
    if (end == "{LF}") {
        return line.substr(0, mark) + "\n";
    }
    return end == "{END}" ? line.substr(0, mark) : line + "\r\n";
}

inline BrokenPair ReadBrokenPair(const std::string& path) {
    BrokenPair pair;
    std::string* part = nullptr;
    std::istringstream file(FileText(path));
    for (std::string line; std::getline(file, line);) {
        if (line == "[offer]" || line == "[previous]") {
            part = &pair.first;
        } else if (line == "[answer]" || line == "[next]") {
            part = &pair.second;
            pair.isNext = line == "[next]";
        } else if (line == "[violations]") {
            part = &pair.violations;
        } else if (part != nullptr) {
            *part += part == &pair.violations ? line + "\n" : WithLineEnd(line);
        }
    }
    return pair;
}

} // namespace judged
