// The public headers and those of the system in one source: no name of theirs collides.
#include <windows.h>

#include "CommonMediaTrace.h"
#include "Platform.h"
#include "SDPExplain.h"
#include "SDPHandler.h"
#include "SDPJudge.h"
#include "SDPNegotiator.h"

static_assert(sizeof(GetTickCount()) == 4, "the tick count of the system has 32 bits");

int main() {
    return 0;
}
