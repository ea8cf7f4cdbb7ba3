// Stands in for libcrypto where no build of it can be had. The libraries compile with it; it is never run.
#pragma once

#include <cstddef>

extern "C" {
void OPENSSL_cleanse(void* bytes, std::size_t length);
}
