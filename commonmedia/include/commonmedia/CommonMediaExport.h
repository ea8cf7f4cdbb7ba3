#include "../CommonMediaExport.h"
