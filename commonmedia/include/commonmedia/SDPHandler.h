#include "../SDPHandler.h"
