// This program's operators new and delete: they count the allocations of a parse and let chosen ones fail.
#include "oom/ReplacedNew.h"
