// What inspect says of the component's own answer, and of what --fit does.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

class FitNotes : public ToolTest {};

constexpr const char* kVideoFirst = "v=0\r\n"
                                    "o=- 1 1 IN IP4 198.51.100.7\r\n"
                                    "s=-\r\n"
                                    "c=IN IP4 198.51.100.7\r\n"
                                    "t=0 0\r\n"
                                    "m=video 5006 RTP/AVPF 99\r\n"
                                    "a=rtpmap:99 h264/90000\r\n"
                                    "a=fmtp:99 profile-level-id=42e01f;packetization-mode=1\r\n"
                                    "m=audio 5004 RTP/AVPF 0\r\n";

TEST_F(FitNotes, AStreamInAnothersPlaceIsNotNegotiated) {
    const Result run = CmsdpReads(kVideoFirst, {"inspect", "--json"});
    EXPECT_EQ(run.status, 1);
    const auto root = nlohmann::ordered_json::parse(run.out);
    EXPECT_EQ(root["audio"]["negotiated"], false);
    EXPECT_EQ(
        root["audio"]["why"],
        "line 9, B03: section 2 of the offer is section 1 of our answer, which has the video section in "
        "its place; the far end matches sections by their place");
    EXPECT_TEXT(root["fit"].dump(2), R"({
  "why": null,
  "repairs": [
    {
      "id": "R04",
      "ledger": "X03 X12",
      "sentence": "names of codecs count in any case of letters"
    }
  ],
  "sections": [
    {
      "section": 0,
      "kept": true,
      "why": null
    },
    {
      "section": 1,
      "kept": true,
      "why": null
    }
  ]
})");
}

TEST_F(FitNotes, TheTableNamesRuleLedgerAndConsequence) {
    const Result run = CmsdpReads(kVideoFirst, {"inspect"});
    EXPECT_NE(run.out.find("our answer\n"
                           "  note           J21, B03, line 7 of our answer: The media of an answer stand\n"
                           "                 in the order of the offer."),
              std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("with --fit\n"
                           "  does           R04 (X03 X12): names of codecs count in any case of letters\n"
                           "                 section 1 is answered in its place\n"
                           "                 section 2 is answered in its place\n"),
              std::string::npos)
        << run.out;
}

// An answer of the far end is read as one, and nothing of ours is judged.
TEST_F(FitNotes, OfferedTextsAreAnswers) {
    Write("me.json", R"({"video": {"main": {"codecs": []}}, "floor_control": {"enabled": false}})");
    const Result run = CmsdpReads("v=0\r\n"
                                  "o=- 1 1 IN IP4 198.51.100.7\r\n"
                                  "s=-\r\n"
                                  "c=IN IP4 198.51.100.7\r\n"
                                  "t=0 0\r\n"
                                  "m=audio 5004 RTP/AVP 0\r\n",
                                  {"inspect", "--offered", "--json", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    const auto root = nlohmann::ordered_json::parse(run.out);
    EXPECT_EQ(root["notes"].size(), 0U);
    EXPECT_TEXT(root["fit"].dump(),
                R"({"why":null,"repairs":[],"sections":[{"section":0,"kept":true,"why":null}]})");
}

TEST_F(FitNotes, ARefusedTextSaysWhy) {
    const Result run = CmsdpReads("v=0\r\nm=audio 5004 RTP/AVP 8\r\n", {"inspect", "--json"});
    EXPECT_EQ(run.status, 1);
    const auto root = nlohmann::ordered_json::parse(run.out);
    EXPECT_EQ(root["fit"]["why"], "no format of the section is spoken here");
}

} // namespace

} // namespace tool
