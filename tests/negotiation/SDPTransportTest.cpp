#include "SDPTransport.h"

#include <gtest/gtest.h>

namespace {

TEST(Transport, ItsNameSaysWhatSecuresItAndWhatItCarries) {
    struct {
        std::string_view name;
        bool isSavp;
        bool isDtls;
        bool isBfcp;
    } const cases[] = {
        {"RTP/AVP", false, false, false},
        {"RTP/AVPF", false, false, false},
        {"RTP/SAVP", true, false, false},
        {"RTP/SAVPF", true, false, false},
        {"UDP/TLS/RTP/SAVPF", true, true, false},
        {"UDP/BFCP", false, false, true},
        {"TCP/TLS/BFCP", false, true, true},
        {"rtp/savp", false, false, false},
        {"", false, false, false},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(negotiation::IsSavp(one.name), one.isSavp) << one.name;
        EXPECT_EQ(negotiation::IsDtls(one.name), one.isDtls) << one.name;
        EXPECT_EQ(negotiation::IsBfcp(one.name), one.isBfcp) << one.name;
    }
}

} // namespace
