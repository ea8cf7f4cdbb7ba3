// Each law of the fuzz targets is broken once on purpose and must report it.
#include <Cost.h>
#include <Handling.h>
#include <Keys.h>
#include <Laws.h>
#include <Scenario.h>
#include <Trace.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using fuzz::Key;

constexpr std::uint8_t kNothing[1] = {};

fuzz::Side PlainSide() {
    return fuzz::WholeSide(1);
}

TEST(LawsDeathTest, DifferentTextsArePrintedBothWithControlBytesVisible) {
    EXPECT_DEATH(fuzz::RequireSame("a law", "left", "a\r\nb\\", "right", "a\n\x01"),
                 "LAW BROKEN: a law\n  left \\(5 bytes\\):\n    a\\\\r\\\\n\n    b\\\\\\\\\n  right \\(3 "
                 "bytes\\):\n    a\\\\n\n    \\\\x01\n");
}

TEST(LawsDeathTest, LineWithoutCarriageReturnIsReported) {
    fuzz::CheckLines(PlainSide(), "v=0\r\no=Quillmarshorizon\r\ns=-\r\nc=IN IP4 x\r\nt=0 0\r\n");
    EXPECT_DEATH(fuzz::CheckLines(PlainSide(), "v=0\no=Quillmarshorizon\r\ns=-\r\nc=IN IP4 x\r\nt=0 0\r\n"),
                 "every line ends in CR LF");
    EXPECT_DEATH(fuzz::CheckLines(PlainSide(), "v=0\r\no=Quillmarshorizon\r\ns=-\r\nc=IN IP4 x\r\nt=0 0"),
                 "every line ends in CR LF");
    EXPECT_DEATH(
        fuzz::CheckLines(PlainSide(), "v=0\r\no=Quillmarshorizon\r\ns=-\r\nc=IN IP4 x\r\nt=0 0\r\n\r\n"),
        "no line is empty");
}

TEST(LawsDeathTest, BarePrefixesAreAllowedWithoutARoleOnly) {
    const std::string text = "v=0\r\no=Quillmarshorizon\r\ns=-\r\nc=IN IP4 x\r\nt=0 0\r\na=label:a=content:";
    fuzz::Side side = PlainSide();
    EXPECT_DEATH(fuzz::CheckLines(side, text), "a bare label belongs to a stream without a role");
    side.local.m_VideoMain.eVideoType = VIDEOTYPE_UNKNOWN;
    fuzz::CheckLines(side, text);
    EXPECT_DEATH(fuzz::CheckLines(side, text + "x"), "every line ends in CR LF");
    EXPECT_DEATH(fuzz::CheckLines(side, "v=0\r\no=Quillmarshorizon\r\ns=-\r\nc=IN IP4 x\r\na=rtpmap:\r\n"),
                 "no rtpmap line is bare");
}

TEST(LawsDeathTest, OfferThatReadsBackDifferentlyIsReported) {
    const fuzz::Side side = PlainSide();
    SDPHandler handler;
    fuzz::Prepare(handler, side);
    std::string offer = handler.GetLocalSDP();
    fuzz::CheckReadsBack(side, offer, true);
    const std::size_t level = offer.find("profile-level-id=42001F");
    ASSERT_NE(level, std::string::npos);
    offer[level + std::strlen("profile-level-id=4200")] = '2';
    EXPECT_DEATH(fuzz::CheckReadsBack(side, offer, true), "our level reads back");
}

TEST(LawsDeathTest, ChangedHandlerIsReported) {
    const fuzz::Side side = PlainSide();
    SDPHandler handler;
    fuzz::Prepare(handler, side);
    fuzz::CheckGoodTextAfterwards(handler, side);
    handler.MyLocalSDP.iAudioRTPPort = 4;
    EXPECT_DEATH(fuzz::CheckGoodTextAfterwards(handler, side), "a used handler has the settings of its side");
}

TEST(LawsDeathTest, KeyWindowsAreFoundInEveryForm) {
    const Key key(7);
    fuzz::Watch watch;
    watch.Add(key);
    watch.Check("a text", "inline:*** and " + key.text.substr(3, 7) + " " + key.material.substr(0, 7));
    EXPECT_DEATH(watch.Check("a text", "x" + key.text.substr(30, 8)), "no part of a key leaves");
    EXPECT_DEATH(watch.Check("a text", key.material.substr(22, 8)), "no part of a key leaves");
    std::string hex;
    for (std::size_t i = 4; i < 12; ++i) {
        char digits[3] = "";
        std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(key.material[i]));
        hex += digits;
    }
    EXPECT_DEATH(watch.Check("a text", hex), "no part of a key leaves");
    watch.Check("a text", hex.substr(1));
}

TEST(LawsDeathTest, WindowThatMatchesByChanceIsNotReported) {
    static std::string text;
    const auto run = [](fuzz::Input, std::uint64_t secret) {
        fuzz::Watch watch;
        watch.Add(Key(secret));
        watch.Check("a text", text);
    };
    // A fixed text can contain a window of the first secret only.
    text = Key(fuzz::Hash(kNothing, 0)).text;
    fuzz::RunWithSecret(kNothing, 0, run);
    const auto leak = [](fuzz::Input, std::uint64_t secret) {
        fuzz::Watch watch;
        watch.Add(Key(secret));
        watch.Check("a text", Key(secret).text);
    };
    EXPECT_DEATH(fuzz::RunWithSecret(kNothing, 0, leak), "no part of a key leaves");
}

TEST(Laws, PlantPutsTheKeyWhereItIsReadAndNowhereElse) {
    const Key key(9);
    const std::string other(40, 'B');
    const std::string text = "v=0\r\na=crypto:1 S InLiNe:" + other + "|2\r\na=crypto:1 S methods" + other +
                             "|3\r\nc=IN IP4 " + other +
                             "\r\na=crypto:1 S inline:\r\nb=x\na=crypto:2 S inline:" + other + "\r\n";
    EXPECT_EQ(fuzz::Plant(text, key), "v=0\r\na=crypto:1 S InLiNe:" + key.text + other +
                                          "|2\r\na=crypto:1 S methods" + key.text + "|3\r\nc=IN IP4 " +
                                          other + "\r\na=crypto:1 S inline:" + key.text +
                                          "\r\nb=x\na=crypto:2 S inline:" + key.text + other + "\r\n");
}

TEST(Laws, PlantInWordsPutsItWhereItIsShownAsWell) {
    const Key key(9);
    const std::string other(40, 'B');
    const std::string text = "v=0\r\nc=IN IP4 example" + other + ".x y\r\nc=IN IP4 " + other +
                             "\r\nm=audio 1 RTP/AVP" + other + " 0\r\na=rtpmap:0 ENCODED" + other +
                             " x\r\na=crypto:1 S methods" + other + "c==\r\na=fmtp:0 example" + other +
                             "\r\n";
    EXPECT_EQ(fuzz::PlantInWords(text, key),
              "v=0\r\nc=IN IP4 example" + key.text + ".x y\r\nc=IN IP4 " + other + "\r\nm=audio 1 RTP/AVP" +
                  key.text + " 0\r\na=rtpmap:0 ENCODED" + key.text + " x\r\na=crypto:1 S methods" + key.text +
                  "c==\r\na=fmtp:0 example" + other + "\r\n");
}

TEST(LawsDeathTest, CostAboveTheBudgetIsReported) {
    const fuzz::Budget budget = {"a call", 100, 2, 100, 2};
    fuzz::CheckCost(budget, {120, 1, 120}, 10);
    EXPECT_DEATH(fuzz::CheckCost(budget, {121, 1, 0}, 10), "allocations stay in their budget");
    EXPECT_DEATH(fuzz::CheckCost(budget, {0, 0, 121}, 10), "steps stay in their budget");
}

TEST(Laws, AllocationsAreCounted) {
    const fuzz::Meter meter;
    const std::string text(10000, 'x');
    const fuzz::Cost cost = meter.Read();
    EXPECT_EQ(text.size(), 10000U);
    EXPECT_GE(cost.bytes, 10001U);
    EXPECT_LT(cost.bytes, 10100U);
    EXPECT_EQ(cost.calls, 1U);
}

TEST(Laws, TraceIsCollectedUntilItIsDestroyed) {
    std::string text;
    {
        fuzz::Trace trace(true);
        CommonMediaTrace("file", "function", 3, "%s", "words");
        text = trace.Text();
    }
    EXPECT_EQ(text, "file:3 function words");
    EXPECT_FALSE(CommonMediaTraceEnabled());
}

TEST(LawsDeathTest, ScenarioIsComparedWithItsRecord) {
    const std::uint8_t bytes[] = {0, 1, 0, 3, 0, 255, 0, 0, 0, 0};
    fuzz::Input input(bytes, sizeof bytes);
    const fuzz::Scenario scenario = fuzz::MakeScenario(input, 5, 0xff);
    SDPHandler handler;
    handler.MyLocalSDP.eAudioCodec = PayloadType_t(0xff);
    RemoteSDP remote;
    handler.ParseTheSDP(fuzz::Join(scenario.lines), remote);
    EXPECT_TRUE(remote.fIsAudioValid);
    fuzz::RequireSame("record", "generated", fuzz::RecordText(scenario.wanted), "read",
                      fuzz::RecordText(remote));
    ++remote.iDTMFPayload;
    EXPECT_DEATH(fuzz::RequireSame("record", "generated", fuzz::RecordText(scenario.wanted), "read",
                                   fuzz::RecordText(remote)),
                 "LAW BROKEN: record");
}

} // namespace
