// classes.txt lists every class of hostile input with its tests. This test compares the list with the tests
// of the program, so neither can change alone.
#include "Hostile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace {

constexpr int kClasses = 63;

/// The prefix of a class's test names: "C07_" for class 7.
std::string Prefix(int number) {
    return std::string("C") + (number < 10 ? "0" : "") + std::to_string(number) + "_";
}

/// All tests of the suite Hostile in this program, also those that a filter excludes.
std::set<std::string> Tests() {
    std::set<std::string> names;
    const ::testing::UnitTest& unit = *::testing::UnitTest::GetInstance();
    for (int s = 0; s < unit.total_test_suite_count(); ++s) {
        const ::testing::TestSuite& suite = *unit.GetTestSuite(s);
        for (int t = 0; std::string(suite.name()) == "Hostile" && t < suite.total_test_count(); ++t) {
            names.insert(suite.GetTestInfo(t)->name());
        }
    }
    return names;
}

std::string Trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

/// Returns the problem of one line of the list, and removes its tests from the set of unlisted ones.
std::vector<std::string> LineProblems(const std::string& line, int number, const std::set<std::string>& tests,
                                      std::set<std::string>& unlisted) {
    std::istringstream cells(line);
    std::string cell[3];
    for (std::string& text : cell) {
        std::getline(cells, text, '|');
        text = Trimmed(text);
    }
    std::vector<std::string> problems;
    if (cell[0] != Prefix(number).substr(1, 2)) {
        problems.push_back("class " + std::to_string(number) + " expected, found: " + line);
    }
    if (cell[1].empty()) {
        problems.push_back("class " + cell[0] + " says nothing");
    }
    std::istringstream words(cell[2]);
    const std::vector<std::string> names{std::istream_iterator<std::string>(words), {}};
    if (names.empty()) {
        problems.push_back("class " + cell[0] + " has no test");
    }
    for (const std::string& name : names) {
        if (name.compare(0, 4, Prefix(number)) != 0) {
            problems.push_back(name + " is no test of class " + cell[0]);
        }
        if (tests.count(name) == 0) {
            problems.push_back(name + " is listed and does not exist");
        }
        unlisted.erase(name);
    }
    return problems;
}

std::vector<std::string> Problems(const std::string& list, const std::set<std::string>& tests) {
    std::vector<std::string> problems;
    std::set<std::string> unlisted = tests;
    std::istringstream lines(list);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::vector<std::string> found = LineProblems(line, ++number, tests, unlisted);
        problems.insert(problems.end(), found.begin(), found.end());
    }
    if (number != kClasses) {
        problems.push_back(std::to_string(number) + " classes are listed");
    }
    for (const std::string& name : unlisted) {
        problems.push_back(name + " exists and is not listed");
    }
    return problems;
}

std::string List() {
    std::ifstream file(std::string(COMMONMEDIA_SOURCE_DIR) + "/tests/hostile/classes.txt");
    EXPECT_TRUE(file);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

using Found = std::vector<std::string>;

TEST(HostileList, EveryClassHasItsTestsAndEveryTestItsClass) {
    EXPECT_EQ(Problems(List(), Tests()), Found());
}

TEST(HostileList, NoticesATestThatIsGoneOrNew) {
    std::set<std::string> tests = Tests();
    ASSERT_EQ(tests.erase("C26_PayloadNumbersBeyondSevenBits"), 1U);
    EXPECT_EQ(Problems(List(), tests),
              Found({"C26_PayloadNumbersBeyondSevenBits is listed and does not exist"}));
    tests = Tests();
    tests.insert("C26_PayloadNumbersThatAreNegative");
    EXPECT_EQ(Problems(List(), tests), Found({"C26_PayloadNumbersThatAreNegative exists and is not listed"}));
}

TEST(HostileList, NoticesAClassThatIsGoneOrHasNoTest) {
    const std::string whole = List();
    const std::size_t begin = whole.find("63 | ");
    ASSERT_NE(begin, std::string::npos);
    const std::string shorter = whole.substr(0, begin);
    EXPECT_EQ(Problems(shorter, Tests()),
              Found({"62 classes are listed", "C63_TickCountAtItsWrap exists and is not listed"}));
    EXPECT_EQ(Problems(shorter + "63 | the tick count |\n", Tests()),
              Found({"class 63 has no test", "C63_TickCountAtItsWrap exists and is not listed"}));
    EXPECT_EQ(Problems(shorter + "64 | | C63_TickCountAtItsWrap\n", Tests()),
              Found({"class 63 expected, found: 64 | | C63_TickCountAtItsWrap", "class 64 says nothing"}));
    EXPECT_EQ(Problems(shorter + "63 | x | C63_TickCountAtItsWrap C62_SessionVersionAtItsWrap\n", Tests()),
              Found({"C62_SessionVersionAtItsWrap is no test of class 63"}));
}

} // namespace
