// Runs the built command the way a user does: arguments, standard input, environment, and whatever stands at
// the other end of standard output. Each run happens in a directory of its own, so that file names in
// messages are short and the same everywhere.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tool {

/// What a run left behind.
struct Result {
    int status = -1; ///< exit status; 1000 plus the signal when one ended it
    std::string out;
    std::string err;
};

/// What stands at the other end of standard output.
enum class Out { kFile, kClosed, kFullDisk, kBrokenPipe, kTerminal };

/// How a run differs from the ordinary.
struct How {
    std::string input;
    Out out = Out::kFile;
    unsigned short columns = 0; ///< of the terminal; 0: it does not know
    std::vector<std::pair<std::string, std::string>> environment;
};

/// False where the system gives no pseudo-terminal, as in a bare chroot without /dev/pts.
bool HasTerminals();

/// A directory of its own, removed at the end.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    /// Writes a file into the directory, and the directories in its name.
    void Write(const std::string& name, const std::string& bytes) const;
    std::string Read(const std::string& name) const;
    /// Runs cmsdp in the directory.
    Result Cmsdp(const std::vector<std::string>& arguments, const How& how = {}) const;
    /// The same with a text on standard input.
    Result CmsdpReads(const std::string& input, const std::vector<std::string>& arguments) const;

protected:
    std::string m_directory;
};

/// A test with such a directory.
class ToolTest : public ::testing::Test, protected Folder {};

/// A test that runs the command on a terminal; skipped where there is none.
class TerminalTest : public ToolTest {
protected:
    void SetUp() override;
};

/// The session id is the tick count of the run, so it is written as "ID". Nothing else is changed.
std::string MaskId(const std::string& text);

/// A captured description of the corpus.
std::string Capture(const std::string& name);
/// The names of all of them.
std::vector<std::string> Captures();

} // namespace tool
