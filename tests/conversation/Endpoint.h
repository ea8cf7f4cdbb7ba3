// One side of a conversation: a handler and its record of the other side.
#pragma once

#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"

#include <string>

namespace support {

struct Endpoint {
    SDPHandler handler;
    RemoteSDP remote;

    Endpoint(const LocalSDP& local, std::int32_t sessionID) { Start(handler, local, sessionID); }

    std::string Write() { return handler.GetLocalSDP(); }
    std::string Read(const std::string& text) {
        EXPECT_EQ(handler.ParseTheSDP(text, remote), 0);
        return Describe(remote);
    }
};

/// An endpoint at 192.0.2.1 whose session id is 1000.
struct Near : Endpoint {
    explicit Near(const LocalSDP& local) : Endpoint(local, 1000) {}
};

/// The same capabilities at 192.0.2.2, 4000 ports higher, with session id 2000.
struct Far : Endpoint {
    explicit Far(const LocalSDP& local) : Endpoint(Away(local), 2000) {}
};

} // namespace support
