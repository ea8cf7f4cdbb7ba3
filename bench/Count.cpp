// Runs one operation under callgrind and lets it count that operation alone.
//
//     count              lists the operations: what, tab, who
//     count WHAT WHO     warms up, then runs the operation once between two toggles of the collection
#include "Operations.h"

#include <valgrind/callgrind.h>

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    for (const bench::Operation& operation : bench::AllOperations()) {
        if (argc < 3) {
            std::printf("%s\t%s\n", operation.what.c_str(), operation.who.c_str());
        } else if (operation.what == argv[1] && operation.who == argv[2]) {
            const std::function<void()> run = operation.prepare();
            // The warm-up fills the allocator's lists and does the library's first-time work.
            for (int i = 0; i < 3; ++i) {
                run();
            }
            CALLGRIND_START_INSTRUMENTATION;
            CALLGRIND_TOGGLE_COLLECT;
            run();
            CALLGRIND_TOGGLE_COLLECT;
            return 0;
        }
    }
    return argc < 3 ? 0 : 2;
}
