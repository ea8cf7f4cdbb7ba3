// fork and exec, with a bound of a minute so that a hang is a failure and not a wait.
#include "RunTool.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace tool {

namespace {

std::string Slurp(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A terminal whose two ends are this process and the command; its line discipline changes nothing.
class Terminal {
public:
    explicit Terminal(unsigned short columns) : m_near(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (m_near < 0 || grantpt(m_near) != 0 || unlockpt(m_near) != 0) {
            return;
        }
        m_far = open(ptsname(m_near), O_RDWR | O_NOCTTY);
        termios raw{};
        winsize size{};
        size.ws_col = columns;
        ioctl(m_far, TIOCSWINSZ, &size);
        if (tcgetattr(m_far, &raw) == 0) {
            cfmakeraw(&raw);
            tcsetattr(m_far, TCSANOW, &raw);
        }
    }
    ~Terminal() { close(m_near); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    int far() const { return m_far; }
    // Everything until the command's end is closed.
    std::string Drain() const {
        close(m_far);
        std::string bytes;
        std::array<char, 4096> block{};
        ssize_t count = 0;
        while ((count = read(m_near, block.data(), block.size())) > 0) {
            bytes.append(block.data(), static_cast<std::size_t>(count));
        }
        return bytes;
    }

private:
    int m_near;
    int m_far = -1;
};

int OpenOut(const How& how, const std::string& path, const Terminal* terminal) {
    switch (how.out) {
    case Out::kFullDisk:
        return open("/dev/full", O_WRONLY);
    case Out::kBrokenPipe: {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) {
            return -1;
        }
        close(ends[0]);
        return ends[1];
    }
    case Out::kTerminal:
        return terminal->far();
    default:
        return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    }
}

// In the child: replaces the process by the command.
[[noreturn]] void Become(const std::vector<std::string>& arguments, const How& how,
                         const std::string& directory, const Terminal* terminal) {
    const int in = open((directory + "/.stdin").c_str(), O_RDONLY);
    const int out = OpenOut(how, directory + "/.stdout", terminal);
    const int err = open((directory + "/.stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    for (int file = STDERR_FILENO + 1; file < 256; ++file) {
        close(file);
    }
    if (how.out == Out::kClosed) {
        close(STDOUT_FILENO);
    }
    for (const auto& [name, value] : how.environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> argv;
    std::string command = CMSDP_PATH;
    argv.push_back(command.data());
    std::vector<std::string> copies = arguments;
    for (std::string& argument : copies) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    if (chdir(directory.c_str()) == 0) {
        alarm(60);
        execv(CMSDP_PATH, argv.data());
    }
    _exit(126);
}

} // namespace

bool HasTerminals() {
    const int near = posix_openpt(O_RDWR | O_NOCTTY);
    const bool isGiven = near >= 0 && grantpt(near) == 0 && unlockpt(near) == 0 && ptsname(near) != nullptr;
    const int far = isGiven ? open(ptsname(near), O_RDWR | O_NOCTTY) : -1;
    close(far);
    close(near);
    return far >= 0;
}

Folder::Folder() : m_directory(::testing::TempDir() + "cmsdp-XXXXXX") {
    EXPECT_NE(mkdtemp(m_directory.data()), nullptr);
}

Folder::~Folder() {
    std::error_code error;
    std::filesystem::remove_all(m_directory, error);
}

void TerminalTest::SetUp() {
    if (!HasTerminals()) {
        GTEST_SKIP() << "the system gives no pseudo-terminal";
    }
}

void Folder::Write(const std::string& name, const std::string& bytes) const {
    const std::filesystem::path path = m_directory + "/" + name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.flush()) << name;
}

std::string Folder::Read(const std::string& name) const {
    return Slurp(m_directory + "/" + name);
}

Result Folder::Cmsdp(const std::vector<std::string>& arguments, const How& how) const {
    Write(".stdin", how.input);
    Write(".stdout", "");
    std::unique_ptr<Terminal> terminal;
    if (how.out == Out::kTerminal) {
        terminal = std::make_unique<Terminal>(how.columns);
    }
    const pid_t child = fork();
    if (child == 0) {
        Become(arguments, how, m_directory, terminal.get());
    }
    Result run;
    const std::string shown = terminal ? terminal->Drain() : "";
    terminal.reset();
    int state = 0;
    while (waitpid(child, &state, 0) < 0 && errno == EINTR) {
    }
    run.status = WIFEXITED(state) ? WEXITSTATUS(state) : 1000 + WTERMSIG(state);
    run.out = how.out == Out::kTerminal ? shown : Slurp(m_directory + "/.stdout");
    run.err = Slurp(m_directory + "/.stderr");
    return run;
}

Result Folder::CmsdpReads(const std::string& input, const std::vector<std::string>& arguments) const {
    How how;
    how.input = input;
    return Cmsdp(arguments, how);
}

std::string MaskId(const std::string& text) {
    static const std::regex origin(R"((o=Quillmarshorizon\S*) [0-9]+ ([0-9]+ IN ))");
    return std::regex_replace(text, origin, "$1 ID $2");
}

std::string Capture(const std::string& name) {
    std::string text = Slurp(std::string(COMMONMEDIA_CORPUS_DIR) + "/captures/" + name);
    EXPECT_FALSE(text.empty()) << name;
    return text;
}

std::vector<std::string> Captures() {
    std::vector<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(COMMONMEDIA_CORPUS_DIR) + "/captures")) {
        if (entry.path().extension() == ".sdp") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace tool
