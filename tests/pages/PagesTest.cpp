// The pages docs/calls.md and docs/handler.md: every block is compiled and run, in the order of the page.
#include "Page.h"

#include <SDPHandler.h>

#include <cstring>
#include <memory>

// The names of a block are those of its page, not of the fixture.
#pragma GCC diagnostic ignored "-Wshadow"

#include "calls.inc"
#include "handler.inc"
