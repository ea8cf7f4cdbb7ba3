#include "../SDP.h"
