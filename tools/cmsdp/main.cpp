// The command cmsdp: reads the command line, runs one verb, writes its result. Everything that a user or a
// far end can do wrong ends here as one line on standard error and an exit status.
//
// Tests: tests/tool/exit-status.cases
#include "CommandLine.h"
#include "Output.h"
#include "Verbs.h"

#include <csignal>
#include <exception>
#include <new>
#include <unistd.h>

namespace {

cmsdp::Outcome Run(const cmsdp::CommandLine& line) {
    const cmsdp::Screen screen = cmsdp::LookAtScreen();
    if (line.readsRemote && line.remote.name == "-" && isatty(STDIN_FILENO) != 0) {
        cmsdp::Complain("reading the description from the terminal; Ctrl-D ends it");
    }
    return line.run(line, screen);
}

} // namespace

int main(int argc, char** argv) {
#ifdef SIGPIPE
    // A reader that went away, such as `head`, ends the command quietly, whatever its parent process ignores.
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
#endif
    try {
        const cmsdp::Outcome outcome = Run(cmsdp::ParseCommandLine(argc, argv));
        cmsdp::WriteOutput(outcome.text, outcome.file);
        for (const std::string& note : outcome.notes) {
            cmsdp::Complain(note);
        }
        return outcome.status;
    } catch (const cmsdp::ToolError& error) {
        cmsdp::Complain(error.what());
        return error.status();
    } catch (const std::bad_alloc&) {
        cmsdp::Complain("there is not enough memory");
    } catch (const std::exception& error) {
        cmsdp::Complain(error.what());
    }
    return cmsdp::kFailed;
}
