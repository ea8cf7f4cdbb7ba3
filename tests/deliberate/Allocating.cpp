// This program's operators new and delete: they count what a parse asks for.
#include "oom/ReplacedNew.h"
