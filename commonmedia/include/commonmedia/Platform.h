#include "../Platform.h"
