// Runs one operation under callgrind and lets it count that operation alone.
//
//     count                 lists the operations
//     count OPERATION       warms up, then runs the operation once between two toggles of the collection
#include "Operations.h"

#include <valgrind/callgrind.h>

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    for (const bench::Operation& operation : bench::Operations()) {
        if (argc < 2) {
            std::puts(operation.name.c_str());
        } else if (operation.name == argv[1]) {
            const std::function<void()> run = operation.prepare();
            // The allocator's lists and the library's first-time work are the warm-up's.
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
    return argc < 2 ? 0 : 2;
}
