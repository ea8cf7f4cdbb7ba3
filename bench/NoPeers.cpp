#include "Operations.h"

namespace bench {

// For programs whose figures must not depend on which other libraries a machine has.
std::vector<Operation> PeerOperations() {
    return {};
}

} // namespace bench
