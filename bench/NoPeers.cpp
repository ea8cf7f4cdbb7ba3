#include "Operations.h"

namespace bench {

// Linked into programs whose figures must not depend on which peers are installed.
std::vector<Operation> PeerOperations() {
    return {};
}

} // namespace bench
