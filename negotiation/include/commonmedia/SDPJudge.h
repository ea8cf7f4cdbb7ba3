#include "../SDPJudge.h"
