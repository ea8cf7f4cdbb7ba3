#include "../CommonMediaTrace.h"
