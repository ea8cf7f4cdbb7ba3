// Stands in for libcrypto where no build of it can be had. The libraries compile with it; it is never run.
#pragma once

extern "C" {
int RAND_bytes(unsigned char* bytes, int length);
}
