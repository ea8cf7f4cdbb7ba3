// Prints how many allocations each operation makes, one operation per line: name, tab, count.
#include "CountedMalloc.h"
#include "Operations.h"

#include <cstdio>

int main() {
    for (const bench::Operation& operation : bench::Operations()) {
        const std::function<void()> run = operation.prepare();
        run();
        const std::size_t before = bench::allocated.calls;
        run();
        std::printf("%s\t%zu\n", operation.name.c_str(), bench::allocated.calls - before);
    }
    return 0;
}
