#include "Parts.h"

using namespace call;
using namespace negotiation;

namespace {

/// The formats of a section, "97=mode1(42e0) 0=PCMU 8=-".
std::string Read(std::string_view section, bool isRepaired = true, const Bound* bound = nullptr) {
    static constexpr std::string_view names[] = {"G722",   "G7221", "PCMU",  "G729",
                                                 "events", "mode1", "mode0", "-"};
    Given given(section, isRepaired);
    std::string text;
    for (const Format& format : Formats(given.First(), given.FirstLines(), {bound, true}, given.repairs)) {
        text += (text.empty() ? "" : " ") + std::to_string(format.number) + "=" +
                std::string(names[format.meaning]);
        text += format.profile.empty() ? "" : "(" + std::string(format.profile) + ")";
    }
    return text;
}

TEST(Formats, NamesTellTheCodec) {
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0 8 9 18 13\n"), "0=PCMU 8=- 9=G722 18=G729 13=-");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97\na=rtpmap:97 PCMU/8000\n"), "97=PCMU");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97\na=rtpmap:97 PCMU/8000/1\n"), "97=PCMU");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97\na=rtpmap:97 PCMU/8000/2\n"), "97=-");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97\na=rtpmap:97 pcmu/8000\n"), "97=PCMU");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 18\na=rtpmap:18 G729a/8000\n"), "18=G729");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97\na=rtpmap:97 G729a/8000\n"), "97=-");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 9\na=rtpmap:9 G722/16000\n"), "9=G722");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97\na=rtpmap:97 G722/16000\n"), "97=-");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0 9 18\na=rtpmap:0 pcmu\na=rtpmap:9 G722\na=rtpmap:18 G729\n"),
              "0=PCMU 9=G722 18=G729");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0 97\na=rtpmap:0 G722\na=rtpmap:97 PCMU\n"), "0=- 97=-");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0\na=rtpmap:0 opus/48000/2\n"), "0=-");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0\na=rtpmap:0 G722/8000\n"), "0=G722");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 101\na=rtpmap:101 telephone-event/8000\n"), "101=events");
}

TEST(Formats, WhatIsNoPayloadNumberIsLeftOut) {
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0 x 128 00 09 -1 127\n"), "0=PCMU 127=-");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0 0\n"), "0=PCMU");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0 0\n", false), "0=PCMU 0=PCMU");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP\n"), "");
}

TEST(Formats, LinesWithoutAnEntryOrANameSayNothing) {
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97 0\na=rtpmap:97\na=rtpmap:98 PCMU/8000\na=rtpmap:\na=fmtp:98 "
                   "x=1\na=fmtp:\n"),
              "97=- 0=PCMU");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97\na=rtpmap:97 PCMU/8000\na=rtpmap:97\n"), "97=PCMU");
}

TEST(Formats, ABlankBehindTheKeywordIsARepair) {
    constexpr std::string_view section = "m=video 1 RTP/AVP 97\na=rtpmap: 97 H264/90000\n"
                                         "a=fmtp: 97 packetization-mode=1\n";
    EXPECT_EQ(Read(section), "97=mode1(4200)");
    EXPECT_EQ(Read(section, false), "97=-");
    EXPECT_EQ(Read("m=video 1 RTP/AVP 97\na=rtpmap:97 H264/90000\na=fmtp: 97 packetization-mode=1\n", false),
              "97=mode0(4200)");
}

TEST(Formats, WithoutRepairsNamesAndNumbersCountAsTheComponentReadsThem) {
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97\na=rtpmap:97 PCMU/8000\n", false), "97=-");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 0\na=rtpmap:0 G722/8000\n", false), "0=PCMU");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 18\na=rtpmap:18 G729a/8000\n", false), "18=G729");
    EXPECT_EQ(Read("m=video 1 RTP/AVP 97\na=rtpmap:97 h264/90000\n", false), "97=-");
    EXPECT_EQ(Read("m=video 1 RTP/AVP 97\na=rtpmap:97 H264/90000\na=fmtp:97 packetization-mode=1\n"
                   "a=fmtp:97 profile-level-id=42e01f\n",
                   false),
              "97=mode0(42e0)");
}

TEST(Formats, TheBitRateBelongsToG7221) {
    constexpr std::string_view named = "m=audio 1 RTP/AVP 104\na=rtpmap:104 G7221/16000\n";
    EXPECT_EQ(Read(named), "104=-");
    EXPECT_EQ(Read(std::string(named) + "a=fmtp:104 bitrate=24000\n"), "104=-");
    EXPECT_EQ(Read(std::string(named) + "a=fmtp:104 bitrate=32000\n"), "104=G7221");
    EXPECT_EQ(Read(std::string(named) + "a=fmtp:104 x=1;bitrate = 32000\n"), "104=G7221");
    EXPECT_EQ(Read(std::string(named) + "a=fmtp:104 bitrate = 32000\n", false), "104=-");
    EXPECT_EQ(Read(std::string(named) + "a=fmtp:104 bitrate=32000\n", false), "104=G7221");
}

TEST(Formats, ModesAndProfilesOfH264) {
    constexpr std::string_view named = "m=video 1 RTP/AVP 97\na=rtpmap:97 H264/90000\na=fmtp:97 ";
    EXPECT_EQ(Read(std::string(named) + "packetization-mode=0\n"), "97=mode0(4200)");
    EXPECT_EQ(Read(std::string(named) + "packetization-mode=2\n"), "97=-");
    EXPECT_EQ(Read(std::string(named) + ";; Packetization-Mode = 1 ;profile-level-id=64001F\n"),
              "97=mode1(6400)");
    EXPECT_EQ(Read(std::string(named) + "profile-level-id=42e0\n"), "97=mode0(4200)");
    EXPECT_EQ(Read(std::string(named) + "profile-level-id=42e0zz\n"), "97=mode0(4200)");
}

TEST(Formats, ABoundNumberKeepsItsMeaning) {
    Bound bound;
    bound.fill(kMeanings);
    bound[97] = kG722;
    bound[0] = kG711U;
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97 0 9\na=rtpmap:97 PCMU/8000\n", true, &bound), "97=- 0=PCMU 9=G722");
    EXPECT_EQ(Read("m=audio 1 RTP/AVP 97 0 9\na=rtpmap:97 G722/8000\n", true, &bound),
              "97=G722 0=PCMU 9=G722");
}

/// The two H.264 formats that are chosen of a list such as "mode1(42e0)" under the numbers 97, 98, ...
std::string Chosen(std::string_view fmtps, bool takesMode1) {
    std::string section = "m=video 1 RTP/AVP 97 98 99 100\na=rtpmap:100 VP8/90000\n";
    int number = 97;
    while (!fmtps.empty()) {
        const std::string id = std::to_string(number++);
        section +=
            "a=rtpmap:" + id + " H264/90000\na=fmtp:" + id + " " + std::string(TakePiece(fmtps, ' ')) + "\n";
    }
    Given given(section);
    const Formats formats(given.First(), given.FirstLines(), {}, given.repairs);
    const VideoFormats chosen = ChooseH264(formats, takesMode1);
    return (chosen.first == nullptr ? "-" : std::to_string(chosen.first->number)) + " " +
           (chosen.second == nullptr ? "-" : std::to_string(chosen.second->number));
}

TEST(Formats, BaselineComesFirstAndThenModeOne) {
    constexpr std::string_view both = "profile-level-id=42e01f "
                                      "profile-level-id=42E01f;packetization-mode=1";
    EXPECT_EQ(Chosen("", true), "- -");
    EXPECT_EQ(Chosen(both, true), "98 97");
    EXPECT_EQ(Chosen(both, false), "97 -");
    EXPECT_EQ(Chosen("profile-level-id=64001f;packetization-mode=1 profile-level-id=42e01f", true), "98 -");
    EXPECT_EQ(Chosen("profile-level-id=64001f profile-level-id=64001f;packetization-mode=1", true), "98 97");
    EXPECT_EQ(Chosen("packetization-mode=1", false), "- -");
    EXPECT_EQ(Chosen("packetization-mode=1 packetization-mode=1 packetization-mode=0", true), "97 99");
}

} // namespace
