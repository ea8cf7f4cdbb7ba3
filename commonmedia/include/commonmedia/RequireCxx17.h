#include "../RequireCxx17.h"
