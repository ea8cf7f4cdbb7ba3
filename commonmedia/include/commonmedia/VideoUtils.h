#include "../VideoUtils.h"
