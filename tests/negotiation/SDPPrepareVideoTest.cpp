#include "Parts.h"
#include "SDPPrepare.h"

using namespace call;
using namespace negotiation;

namespace {

/// The fmtp line that the component reads of one H.264 format, and the repairs that it needed.
std::string PreparedParameters(std::string_view parms, bool isRepaired = true) {
    Given given("m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\na=fmtp:97 " + std::string(parms) + "\n",
                isRepaired);
    const Formats formats(given.First(), given.FirstLines(), {}, given.repairs);
    sdp::Writer writer(given.text.size());
    given.repairs.Begin();
    WriteVideoFormat(writer, *formats.begin(), given.repairs);
    const std::string text = writer.Take();
    std::string found = text.substr(text.find("a=fmtp:"));
    found.resize(found.size() - 2);
    for (const SDPNegotiator::Repair& repair : given.repairs.Applied()) {
        found += " " + std::string(repair.id);
    }
    return found;
}

TEST(PrepareVideo, KnownParametersAreWrittenAndUnknownOnesAreNot) {
    EXPECT_EQ(PreparedParameters("Max-FS = 3600; x ;;Y=1"), "a=fmtp:96 max-fs=3600; R03 R04");
    EXPECT_EQ(PreparedParameters("Max-FS = 3600; x ;;Y=1", false), "a=fmtp:96 Max-FS = 3600;x;Y=1;");
    EXPECT_EQ(PreparedParameters("PROFILE-LEVEL-ID=42E01F"), "a=fmtp:96 profile-level-id=42E01F; R04");
    EXPECT_EQ(PreparedParameters("x=m=video;max-fs=3600"), "a=fmtp:96 max-fs=3600; R02");
    EXPECT_EQ(PreparedParameters("x=m=video;max-fs=3600", false), "a=fmtp:96 x=m=video;max-fs=3600;");
    EXPECT_EQ(PreparedParameters("x-max-mbps=777777;max-fs=3600"), "a=fmtp:96 max-fs=3600; R02");
    EXPECT_EQ(PreparedParameters("level-asymmetry-allowed=1;max-fs=3600"), "a=fmtp:96 max-fs=3600;");
}

TEST(PrepareVideo, BlanksAroundTheEqualsSignAreCut) {
    EXPECT_EQ(PreparedParameters("profile-level-id = 42801f; packetization-mode = 1; max-mbps = 245000"),
              "a=fmtp:97 profile-level-id=42801f;packetization-mode=1;max-mbps=245000; R03");
    EXPECT_EQ(PreparedParameters("packetization-mode= 1;max-mbps =245000"),
              "a=fmtp:97 packetization-mode=1;max-mbps=245000; R03");
    EXPECT_EQ(PreparedParameters("packetization-mode= 1;max-mbps =245000", false),
              "a=fmtp:97 packetization-mode= 1;max-mbps =245000;");
    // A blank after the semicolon is what examples of the RFC are written with.
    EXPECT_EQ(PreparedParameters("packetization-mode=1; max-fs=3600"),
              "a=fmtp:97 packetization-mode=1;max-fs=3600;");
}

TEST(PrepareVideo, TheFirstOfANameDecides) {
    EXPECT_EQ(PreparedParameters("packetization-mode=0;packetization-mode=1"),
              "a=fmtp:96 packetization-mode=0;");
    EXPECT_EQ(PreparedParameters("max-fs=3600;MAX-FS=8160;max-mbps=108000"),
              "a=fmtp:96 max-fs=3600;max-mbps=108000;");
    EXPECT_EQ(PreparedParameters("profile-level-id=42e01f;profile-level-id=42e028"),
              "a=fmtp:96 profile-level-id=42e01f;");
}

TEST(PrepareVideo, NumbersAreThoseOfTheRecord) {
    EXPECT_EQ(PreparedParameters("max-mbps=2147483647"), "a=fmtp:96 max-mbps=2147483647;");
    for (const std::string_view number :
         {"2147483648", "99999999999", "99999999999999999999", "-1", "36x", "x", ""}) {
        EXPECT_EQ(PreparedParameters("max-mbps=" + std::string(number) + ";max-br=64"),
                  "a=fmtp:96 max-br=64;");
    }
    EXPECT_EQ(PreparedParameters("max-mbps;profile-level-id=;max-br=64"), "a=fmtp:96 max-br=64;");
}

TEST(PrepareVideo, LevelsAreThoseThatTheComponentLists) {
    constexpr struct {
        std::string_view written;
        std::string_view prepared;
        std::string_view unrepaired;
    } kCases[] = {
        {"42e01f", "42e01f", "42e01f"}, // 3.1
        {"42e0", "42e0", "42e0"},       // no level
        {"42", "42", "42"},             // no constraints either
        {"42e01f1", "42e01f1", "42e01f1"},
        {"42e009", "42e0FF", "42e009"}, // 1b
        {"64000b", "64000b", "64000b"}, // 1.1
        {"64100b", "64100b", "64100b"}, // 1.1: no profile with constraint_set3 as a level
        {"42100b", "4210FF", "42100b"}, // 1b
        {"4D100b", "4D10FF", "4D100b"}, // 1b
        {"58100b", "5810FF", "58100b"}, // 1b
        {"58000b", "58000b", "58000b"}, // 1.1
        {"58101f", "58101f", "58101f"}, // 3.1
        {"42e034", "42e033", "42e034"}, // 5.2
        {"42e0ff", "42e0ff", "42e0ff"},
    };
    for (const auto& one : kCases) {
        const std::string written = "profile-level-id=" + std::string(one.written);
        EXPECT_EQ(PreparedParameters(written), "a=fmtp:96 profile-level-id=" + std::string(one.prepared) +
                                                   (one.prepared == one.written ? ";" : "; R09"));
        EXPECT_EQ(PreparedParameters(written, false),
                  "a=fmtp:96 profile-level-id=" + std::string(one.unrepaired) + ";");
    }
}

} // namespace
