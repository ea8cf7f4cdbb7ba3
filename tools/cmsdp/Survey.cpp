// cmsdp survey: what is wrong with a night of calls, and which streams came up?
//
// Tests: tests/tool/survey.cases
#include "Outcome.h"
#include "Output.h"
#include "SurveyCrew.h"
#include "SurveySources.h"
#include "SurveyTally.h"
#include "Verbs.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <unistd.h>

namespace cmsdp {

namespace {

std::atomic<bool> g_isStopped{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

extern "C" void Stop(int /*signal*/) {
    g_isStopped = true;
}

// The first interrupt ends the survey, and ends a read of standard input; the second ends the process.
void StopAtInterrupt() {
    struct sigaction action {};
    action.sa_handler = Stop;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    static_cast<void>(sigaction(SIGINT, &action, nullptr));
}

// "[#####     ]  50 % of 2468" on standard error, when that is a terminal.
class Progress {
public:
    void Expect(std::size_t total) { m_total = total; }
    bool isShown() const { return m_isShown; }

    void Show(std::size_t done) {
        const auto now = std::chrono::steady_clock::now();
        if (!m_isShown || now - m_last < std::chrono::milliseconds(100)) {
            return;
        }
        m_last = now;
        constexpr std::size_t width = 40;
        const std::size_t part = m_total == 0 ? 0 : std::min(done, m_total) * width / m_total;
        Write(m_total == 0 ? "\r" + std::to_string(done) + " lines"
                           : "\r[" + std::string(part, '#') + std::string(width - part, ' ') + "] " +
                                 std::to_string(done) + " of " + std::to_string(m_total));
    }

    void Clear() const {
        if (m_isShown) {
            Write("\r\x1b[K");
        }
    }

private:
    static void Write(const std::string& text) {
        static_cast<void>(!write(STDERR_FILENO, text.data(), text.size()));
    }

    bool m_isShown = isatty(STDERR_FILENO) != 0;
    std::size_t m_total = 0;
    std::chrono::steady_clock::time_point m_last;
};

std::size_t CountFiles(const std::vector<std::string>& paths) {
    std::size_t count = 0;
    NameFiles(paths, [&count](const std::string& /*name*/) {
        ++count;
        return !g_isStopped;
    });
    return count;
}

// Collects lines of JSON until it is worth a write.
class Lines {
public:
    void Add(const std::string& line) {
        constexpr std::size_t enough = 65536;
        m_lines += line;
        if (m_lines.size() >= enough) {
            WritePart(m_lines);
            m_lines.clear();
        }
    }
    const std::string& rest() const { return m_lines; }

private:
    std::string m_lines;
};

void AddWork(const CommandLine& line, SurveyCrew& crew) {
    NameFiles(line.paths, [&](const std::string& name) {
        if (name != "-" && !HoldsJsonLines(name)) {
            return crew.Add({name, {}}, g_isStopped);
        }
        ReadJsonLines(name, line.offered, [&](Surveyed item) {
            return crew.Add({"", std::move(item)}, g_isStopped);
        });
        return !g_isStopped;
    });
}

} // namespace

Outcome RunSurvey(const CommandLine& line, const Screen& /*screen*/) {
    const Capabilities side = SideOf(line.local);
    Surveyor check(side); // what is wrong with the local file is said once, before anything is read
    StopAtInterrupt();
    Progress progress;
    const bool readsInput = std::find(line.paths.begin(), line.paths.end(), "-") != line.paths.end();
    progress.Expect(progress.isShown() && !readsInput ? CountFiles(line.paths) : 0);
    SurveyTally tally;
    Lines lines;
    const auto fold = [&](const SurveyLine& one) {
        if (!one.result.unread.empty()) {
            progress.Clear();
            Complain(one.result.name + ": " + one.result.unread);
        }
        tally.Add(one.result);
        lines.Add(one.json);
    };
    SurveyCrew crew(side, line.offered, line.json, fold, [&](std::size_t done) { progress.Show(done); });
    AddWork(line, crew);
    crew.Finish(g_isStopped);
    progress.Clear();

    Outcome outcome;
    outcome.text = line.json ? lines.rest() : tally.Table();
    outcome.status = g_isStopped ? kInterrupted : tally.read() == 0 ? kRemoteText : kDone;
    if (g_isStopped) {
        outcome.notes.push_back("interrupted after " + std::to_string(tally.read() + tally.unread()) +
                                " descriptions");
    }
    return outcome;
}

} // namespace cmsdp
