// Stands in for libcrypto where no build of it can be had. The libraries compile with it; it is never run.
#pragma once

extern "C" {
int EVP_EncodeBlock(unsigned char* text, const unsigned char* bytes, int length);
int EVP_DecodeBlock(unsigned char* bytes, const unsigned char* text, int length);
}
