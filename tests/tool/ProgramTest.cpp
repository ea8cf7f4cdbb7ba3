// Programs run without a shell, their output in lines and bounded.
#include "Program.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace cmsdp {

namespace {

struct Ran {
    ProgramEnd end;
    std::vector<std::string> lines;
};

Ran RunLines(const std::vector<std::string>& words, std::size_t most = 1000) {
    Ran ran;
    ran.end = RunProgram(words, most, [&](std::string_view line) { ran.lines.emplace_back(line); });
    return ran;
}

TEST(Program, ItsOutputComesInLines) {
    const Ran ran = RunLines({"printf", "one\\n\\nthree\\nunended"});
    EXPECT_TRUE(ran.end.isFound);
    EXPECT_TRUE(ran.end.isWhole);
    EXPECT_EQ(ran.end.status, 0);
    EXPECT_EQ(ran.lines, (std::vector<std::string>{"one", "", "three"}));
}

TEST(Program, NoShellReadsItsArguments) {
    const Ran ran = RunLines({"printf", "%s\\n", "$(id) `id` ; id > x * 'a' \"b\""});
    EXPECT_EQ(ran.lines, std::vector<std::string>{"$(id) `id` ; id > x * 'a' \"b\""});
}

TEST(Program, AFailureHasItsStatus) {
    EXPECT_EQ(RunLines({"false"}).end.status, 1);
    EXPECT_EQ(RunLines({"sh", "-c", "kill -9 $$"}).end.status, 128 + 9);
    const Ran ran = RunLines({"sh", "-c", "echo hidden >&2; exit 7"});
    EXPECT_EQ(ran.end.status, 7);
    EXPECT_TRUE(ran.lines.empty());
}

TEST(Program, OneThatIsNotInstalledIsNotFound) {
    const Ran ran = RunLines({"a-program-that-nobody-has"});
    EXPECT_FALSE(ran.end.isFound);
    EXPECT_FALSE(ran.end.isWhole);
    EXPECT_FALSE(RunLines({"/dev/null"}).end.isFound);
}

TEST(Program, OneThatWritesWithoutEndIsEnded) {
    const Ran ran = RunLines({"yes"}, 100000);
    EXPECT_TRUE(ran.end.isFound);
    EXPECT_FALSE(ran.end.isWhole);
    EXPECT_LE(ran.lines.size(), 50000U);
}

TEST(Program, OneWhoseLineIsRefusedIsEnded) {
    EXPECT_THROW(static_cast<void>(
                     RunProgram({"yes"}, 100000, [](std::string_view) { throw std::runtime_error("no"); })),
                 std::runtime_error);
}

} // namespace

} // namespace cmsdp
