// Repairs that change a value of a stream or are switched together; the others are in repairs.cases.
#include "Call.h"

#include <vector>

using namespace call;

namespace {

/// Every line end is a lone LF.
std::string LineFeeds(const std::string& text) {
    std::string cut;
    for (const char c : text) {
        cut += c == '\r' ? std::string() : std::string(1, c);
    }
    return cut;
}

TEST(Repairs, ParametersInTwoLinesAreJoined) {
    const std::string offer = Far("m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n"
                                  "a=fmtp:97 packetization-mode=1\na=fmtp:97 profile-level-id=42e01f\n"
                                  "a=fmtp:97 max-fs=3600\n");
    SDPNegotiator side = Side(Local());
    ASSERT_TRUE(side.Answer(offer).isTaken);
    EXPECT_EQ(side.Streams()[0].packetizationMode, 1);
    EXPECT_EQ(side.Streams()[0].level, "3.1");
    EXPECT_EQ(side.Streams()[0].maxFs, 3600);
    SDPNegotiator other = Side(Local());
    other.SetRepairs(false);
    ASSERT_TRUE(other.Answer(offer).isTaken);
    EXPECT_EQ(other.Streams()[0].packetizationMode, 0);
    EXPECT_EQ(other.Streams()[0].level, "1");
    EXPECT_EQ(other.Streams()[0].maxFs, 3600);
}

TEST(Repairs, AParameterWithAKeywordInItIsKeptAway) {
    const std::string offer = Far("m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n"
                                  "a=fmtp:97 packetization-mode=1;profile-level-id=42e01f;x-sync=1\n");
    SDPNegotiator side = Side(Local());
    ASSERT_TRUE(side.Answer(offer).isTaken);
    EXPECT_EQ(side.Streams()[0].level, "3.1");
    EXPECT_TEXT(Repaired(side), "R02");
    // Without the repair the component takes the whole line for an address.
    ASSERT_TRUE(side.SetRepair("R02", false));
    ASSERT_TRUE(side.Answer(offer).isTaken);
    EXPECT_EQ(side.Streams()[0].level, "1");
}

TEST(Repairs, LevelsOfTheStandardAreRead) {
    struct {
        std::string_view profileLevelId;
        std::string_view level;
        std::string_view without;
    } const cases[] = {
        {"42f00b", "1.b", "1.1"}, {"640009", "1.b", "1.3"}, {"42e034", "5.1", "1.3"},
        {"42e01f", "3.1", "3.1"}, {"4200FF", "1.b", "1.b"},
    };
    for (const auto& one : cases) {
        const std::string offer =
            Far("m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\na=fmtp:97 profile-level-id=" +
                std::string(one.profileLevelId) + "\n");
        SDPNegotiator side = Side(Local());
        ASSERT_TRUE(side.Answer(offer).isTaken);
        EXPECT_EQ(side.Streams()[0].level, one.level) << one.profileLevelId;
        ASSERT_TRUE(side.SetRepair("R09", false));
        ASSERT_TRUE(side.Answer(offer).isTaken);
        EXPECT_EQ(side.Streams()[0].level, one.without) << one.profileLevelId;
    }
}

TEST(Repairs, TheSessionsIceValuesCountWhereASectionHasNone) {
    const std::string offer =
        Far("m=audio 30000 RTP/AVP 0\na=candidate:1 1 UDP 1 198.51.100.7 30000 typ host\n"
            "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\na=ice-ufrag:own\na=ice-pwd:ownpwd\n",
            "a=ice-ufrag:all\na=ice-pwd:allpwd\n");
    SDPNegotiator side = Side(Local());
    ASSERT_TRUE(side.Answer(offer).isTaken);
    EXPECT_EQ(side.Streams()[0].ice,
              (std::vector<std::string>{"a=candidate:1 1 UDP 1 198.51.100.7 30000 typ host",
                                        "a=ice-ufrag:all", "a=ice-pwd:allpwd"}));
    EXPECT_EQ(side.Streams()[1].ice, (std::vector<std::string>{"a=ice-ufrag:own", "a=ice-pwd:ownpwd"}));
    EXPECT_TEXT(Repaired(side), "R14");
}

TEST(Repairs, TheSessionsTiasIsInBits) {
    SDPNegotiator side = Side(Local());
    const std::string offer = Far("m=audio 30000 RTP/AVP 0\n", "b=TIAS:768000\n");
    ASSERT_TRUE(side.Answer(offer).isTaken);
    EXPECT_EQ(side.MaxBandwidth(), 768000);
    EXPECT_TEXT(Repaired(side), "R15");
    ASSERT_TRUE(side.SetRepair("R15", false));
    ASSERT_TRUE(side.Answer(offer).isTaken);
    EXPECT_EQ(side.MaxBandwidth(), 768000000);
}

TEST(Repairs, AllAreSwitchedTogether) {
    const std::string offer = LineFeeds(Far("m=audio 30000 RTP/AVP 0\n"));
    SDPNegotiator side = Side(Local());
    side.SetRepairs(false);
    EXPECT_EQ(side.Answer(offer).reason, "the offer has no section");
    EXPECT_TEXT(Repaired(side), "");
    side.SetRepairs(true);
    EXPECT_TRUE(side.Answer(offer).isTaken);
    EXPECT_TEXT(Repaired(side), "R01");
}

TEST(Repairs, TheTableIsWhole) {
    const std::vector<SDPNegotiator::Repair> all = SDPNegotiator::AllRepairs();
    ASSERT_EQ(all.size(), 15U);
    for (std::size_t row = 0; row < all.size(); ++row) {
        EXPECT_EQ(all[row].id, (row < 9 ? "R0" : "R") + std::to_string(row + 1));
        EXPECT_FALSE(all[row].ledger.empty());
        EXPECT_FALSE(all[row].sentence.empty());
    }
    SDPNegotiator side = Side(Local());
    EXPECT_FALSE(side.SetRepair("R99", true));
}

} // namespace
