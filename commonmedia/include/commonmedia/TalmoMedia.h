#include "../TalmoMedia.h"
