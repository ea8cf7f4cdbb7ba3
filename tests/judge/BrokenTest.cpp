// Answers and next descriptions broken by hand: each file of broken/ names every violation of its text.
#include "Expect.h"
#include "Pairs.h"

#include <gtest/gtest.h>

#include <set>

using namespace judged;

namespace {

std::vector<std::filesystem::path> BrokenFiles() {
    return Files(Directory("broken"), ".txt");
}

} // namespace

TEST(Broken, EachFileHasTheViolationsItNames) {
    for (const auto& path : BrokenFiles()) {
        SCOPED_TRACE(path.filename().string());
        const BrokenPair pair = ReadBrokenPair(path);
        EXPECT_FALSE(pair.violations.empty());
        EXPECT_TEXT(Written(pair.Judged()), pair.violations);
    }
}

TEST(Broken, FortyAnswersAndEveryRule) {
    std::size_t answers = 0;
    std::set<std::string> found;
    for (const auto& path : BrokenFiles()) {
        const BrokenPair pair = ReadBrokenPair(path);
        answers += pair.isNext ? 0 : 1;
        for (const JudgeViolation& violation : pair.Judged()) {
            found.insert(violation.rule->id);
        }
    }
    EXPECT_GE(answers, 40U);
    std::set<std::string> rules;
    for (const JudgeRule& rule : JudgeRules()) {
        EXPECT_TRUE(rules.insert(rule.id).second) << rule.id << " is listed twice";
        EXPECT_EQ(std::string(rule.clause).rfind("RFC ", 0), 0U) << rule.id;
        EXPECT_EQ(std::string(rule.sentence).back(), '.') << rule.id;
    }
    EXPECT_EQ(found, rules);
}

// What follows "inline:" in either text, cut into pieces of eight bytes, is in no sentence.
TEST(Broken, NoSentenceHoldsKeyText) {
    for (const auto& path : BrokenFiles()) {
        SCOPED_TRACE(path.filename().string());
        const BrokenPair pair = ReadBrokenPair(path);
        const std::string texts = pair.first + pair.second;
        const std::string found = Written(pair.Judged());
        for (auto at = texts.find("inline:"); at != std::string::npos; at = texts.find("inline:", at + 1)) {
            const std::string key = texts.substr(at + 7, texts.find('\r', at) - at - 7);
            for (std::size_t piece = 0; piece + 8 <= key.size(); ++piece) {
                EXPECT_EQ(found.find(key.substr(piece, 8)), std::string::npos);
            }
        }
    }
}
