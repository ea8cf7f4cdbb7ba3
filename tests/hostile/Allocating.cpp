// This program's operators new and delete: they count what a parse asks for and let it fail on order.
#include "oom/ReplacedNew.h"
