// RegisterDocuments(directory) makes a test of each section of every file NAME.cases of a directory of tests.
// A difference is reported at its line of the document; a malformed document is a test that fails there.
// Tests: DocumentTest.cpp.
#pragma once

#include "DocumentRun.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>
#include <vector>

namespace documents {

/// A test that runs `body`, which gets where to report; a malformed document is a failure, too.
class DocumentTest : public ::testing::Test {
public:
    explicit DocumentTest(std::function<void(const Report&)> body) : m_body(std::move(body)) {}
    void TestBody() override {
        const Report report = [](const Line& line, const std::string& what) {
            ADD_FAILURE_AT(line.path.c_str(), line.number) << what;
        };
        try {
            m_body(report);
        } catch (const Malformed& problem) {
            report(problem.Where(), problem.what());
        }
    }

private:
    std::function<void(const Report&)> m_body;
};

inline void Register(const std::string& suite, const std::string& name, const Line& line,
                     const std::function<void(const Report&)>& body) {
    // The type of TEST, so that a suite may have documents and code.
    ::testing::RegisterTest(suite.c_str(), name.c_str(), nullptr, nullptr, line.path.c_str(), line.number,
                            [body]() -> ::testing::Test* { return new DocumentTest(body); });
}

inline Document ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw Malformed({path, 0, ""}, "cannot be read");
    }
    return ReadDocument(path, {std::istreambuf_iterator<char>(file), {}});
}

template <typename Player>
void RegisterFile(const std::string& path, const std::vector<Step>& common) {
    const Document document = ReadFile(path);
    std::vector<Step> shared = common;
    shared.insert(shared.end(), document.shared.begin(), document.shared.end());
    for (const Section& section : document.sections) {
        const std::string& name = section.heading.text;
        Register(name.substr(0, name.find('.')), name.substr(name.find('.') + 1), section.heading,
                 [shared, section](const Report& report) { Run<Player>(shared, section, report); });
    }
}

/// Registers the documents of a directory of tests; returns how many. The steps of `common`, a document of
/// tests/ or "", are those of every section.
template <typename Player>
int RegisterDocumentsOf(const std::string& directory, const std::string& common) {
    const std::string tests = std::string(COMMONMEDIA_SOURCE_DIR) + "/tests/";
    std::set<std::string> paths;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(tests + directory, error)) {
        if (entry.path().extension() == ".cases") {
            paths.insert(entry.path().string());
        }
    }
    if (paths.empty()) {
        paths.insert(tests + directory); // A directory cannot be read, so a failing test reports it.
    }
    for (const std::string& path : paths) {
        try {
            RegisterFile<Player>(path,
                                 common.empty() ? std::vector<Step>() : ReadFile(tests + common).shared);
        } catch (const Malformed& problem) {
            const std::string stem = std::filesystem::path(path).stem().string();
            Register("Malformed", stem, problem.Where(), [problem](const Report&) { throw problem; });
        }
    }
    return static_cast<int>(paths.size());
}

/// The same for documents of handlers. tests/support/locals.cases defines the local sets that they share.
inline int RegisterDocuments(const std::string& directory) {
    return RegisterDocumentsOf<Player>(directory, "support/locals.cases");
}

} // namespace documents
