// Prints how many allocations each operation makes, one operation per line: what, tab, who, tab, count.
#include "CountedMalloc.h"
#include "Operations.h"

#include <cstdio>

int main() {
    for (const bench::Operation& operation : bench::AllOperations()) {
        const std::function<void()> run = operation.prepare();
        run();
        const std::size_t before = bench::allocated.calls;
        run();
        std::printf("%s\t%s\t%zu\n", operation.what.c_str(), operation.who.c_str(),
                    bench::allocated.calls - before);
    }
    return 0;
}
