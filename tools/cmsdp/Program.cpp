// Stage: none; a child process, its output line by line.
// Input: an argument vector. Output: lines of standard output, exit status.
// Touches one child process, which has ended when the call returns.
// posix_spawnp looks the program up in PATH; no shell reads the arguments.
// Test: tests/tool/ProgramTest.cpp
#include "Program.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace cmsdp {

namespace {

void Check(int error, const char* what) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), what);
    }
}

// The end of a pipe from which the program's output comes, and the program.
class Child {
public:
    explicit Child(const std::vector<std::string>& words) {
        std::array<int, 2> ends{};
        Check(pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno, "pipe");
        m_output = ends[0];
        posix_spawn_file_actions_t actions;
        Check(posix_spawn_file_actions_init(&actions), "posix_spawn_file_actions_init");
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        std::vector<char*> arguments;
        arguments.reserve(words.size() + 1);
        for (const std::string& word : words) {
            // The call takes them without const and changes none: the program gets a copy.
            arguments.push_back(
                const_cast<char*>(word.c_str())); // NOLINT(cppcoreguidelines-pro-type-const-cast)
        }
        arguments.push_back(nullptr);
        m_error = posix_spawnp(&m_id, arguments[0], &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
    }
    ~Child() {
        close(m_output);
        if (m_error == 0 && !m_hasEnded) {
            kill(m_id, SIGKILL);
            Wait();
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    int error() const { return m_error; }

    ssize_t Read(char* bytes, std::size_t count) const {
        ssize_t got = 0;
        do {
            got = read(m_output, bytes, count);
        } while (got < 0 && errno == EINTR);
        Check(got < 0 ? errno : 0, "read");
        return got;
    }

    int Wait() {
        int state = 0;
        while (waitpid(m_id, &state, 0) < 0 && errno == EINTR) {
        }
        m_hasEnded = true;
        return WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
    }

private:
    pid_t m_id = -1;
    int m_output = -1;
    int m_error = 0;
    bool m_hasEnded = false;
};

} // namespace

ProgramEnd RunProgram(const std::vector<std::string>& words, std::size_t most,
                      const std::function<void(std::string_view)>& take) {
    ProgramEnd end;
    Child child(words);
    if (child.error() == ENOENT || child.error() == EACCES) {
        return end;
    }
    Check(child.error(), "posix_spawnp");
    end.isFound = true;
    std::string pending; // the line that is not complete yet
    std::array<char, 65536> block{};
    std::size_t total = 0;
    while (const auto count = static_cast<std::size_t>(child.Read(block.data(), block.size()))) {
        total += count;
        if (total > most) {
            return end;
        }
        const std::size_t before = pending.size();
        pending.append(block.data(), count);
        std::size_t begin = 0;
        for (std::size_t feed = pending.find('\n', before); feed != std::string::npos;
             feed = pending.find('\n', begin)) {
            take(std::string_view(pending).substr(begin, feed - begin));
            begin = feed + 1;
        }
        pending.erase(0, begin);
    }
    end.isWhole = true;
    end.status = child.Wait();
    return end;
}

} // namespace cmsdp
