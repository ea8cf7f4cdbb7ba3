#include "../SDPExplain.h"
