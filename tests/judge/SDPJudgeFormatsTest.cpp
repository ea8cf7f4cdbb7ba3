// The formats of a section that answers another.
#include "Alone.h"

using namespace judged;

namespace {

std::string Video(const std::string& parameters) {
    return "m=video 5004 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\na=fmtp:97 " + parameters + "\r\n";
}

/// What is said of an answer's profile.
std::string Profiles(const std::string& offered, const std::string& answered) {
    return Answer(Video("profile-level-id=" + offered), Video("profile-level-id=" + answered));
}

std::string Other(const std::string& offered, const std::string& answered) {
    return "J28 line 6, other 6, section 0: Format '97' has profile '" + answered + "', offered is '" +
           offered + "'.\n";
}

} // namespace

TEST(JudgeFormats, ConstrainedOrNotBaselineIsOneProfile) {
    EXPECT_TEXT(Profiles("42e01f", "42000d"), "");
    EXPECT_TEXT(Profiles("4d801f", "42e01f"), "");
    EXPECT_TEXT(Profiles("58801f", "42e01f"), "");
    EXPECT_TEXT(Profiles("4d001f", "42e01f"), Other("4d", "42"));
    EXPECT_TEXT(Profiles("58001f", "4d001f"), Other("58", "4d"));
    EXPECT_TEXT(Profiles("64001f", "64000d"), "");
    EXPECT_TEXT(Profiles("6e001f", "6e101f"), Other("6e", "6e intra"));
    EXPECT_TEXT(Profiles("4d101f", "4d001f"), "");
    EXPECT_TEXT(Profiles("58101f", "58001f"), "");
    EXPECT_TEXT(Profiles("64", "42e01f"), "");
    EXPECT_TEXT(Profiles("64x01f", "42e01f"), "");
    EXPECT_TEXT(Answer(Video("max-fs=1"), Video("packetization-mode=")), "");
}

TEST(JudgeFormats, AStaticNumberMayBeOfferedWithHalfAName) {
    const auto named = [](const std::string& format, const std::string& name) {
        return "m=audio 5004 RTP/AVP " + format + "\r\na=rtpmap:" + format + " " + name + "\r\n";
    };
    EXPECT_TEXT(Answer(named("9", "G722"), named("9", "G722/8000")), "");
    EXPECT_TEXT(Answer(named("9", "g722/16000"), named("9", "G722/8000")), "");
    EXPECT_TEXT(Answer(named("0", "PCMU"), named("0", "PCMU/8000")), "");
    EXPECT_TEXT(Answer(named("9", "G722/8000"), named("9", "G722/16000")),
                "J26 line 6, other 6, section 0: Format '9' is 'g722/16000', offered is 'g722/8000'.\n");
    EXPECT_TEXT(Answer(named("0", "PCMU/16000"), named("0", "PCMU/8000")),
                "J26 line 6, other 6, section 0: Format '0' is 'pcmu/8000', offered is 'pcmu/16000'.\n");
    EXPECT_TEXT(Answer(named("9", "PCMU"), named("9", "G722/8000")),
                "J26 line 6, other 6, section 0: Format '9' is 'g722/8000', offered is 'pcmu'.\n");
    EXPECT_TEXT(Answer(named("97", "G722/16000"), named("97", "G722/8000")),
                "J26 line 6, other 6, section 0: Format '97' is 'g722/8000', offered is 'g722/16000'.\n");
    EXPECT_TEXT(Answer(named("x", "G722"), named("x", "G722/8000")),
                "J07 line 6, other 0, section 0: Format 'x' is no payload type.\n"
                "J26 line 6, other 6, section 0: Format 'x' is 'g722/8000', offered is 'g722'.\n"
                "J12 line 7, other 0, section 0: Attribute 'rtpmap' is not written as in "
                "a=rtpmap:97 H264/90000.\n");
}

TEST(JudgeFormats, TonesAloneAreNoCall) {
    const std::string offer = "m=audio 5004 RTP/AVP 0 13 101\r\na=rtpmap:101 telephone-event/8000\r\n";
    const std::string tones =
        "J27 line 6, other 6, section 0: The section can carry nothing but tones or comfort noise.\n";
    EXPECT_TEXT(Answer(offer, "m=audio 5004 RTP/AVP 0 13\r\n"), "");
    EXPECT_TEXT(Answer(offer, "m=audio 5004 RTP/AVP 13\r\n"), tones);
    EXPECT_TEXT(Answer("m=audio 5004 TCP/MSRP *\r\n", "m=audio 5004 TCP/MSRP *\r\n"), "");
}

TEST(JudgeFormats, TheBitRateOfG7221IsTheOffered) {
    const std::string named = "m=audio 5004 RTP/AVP 97\r\na=rtpmap:97 G7221/16000\r\n";
    EXPECT_TEXT(Answer(named + "a=fmtp:97 bitrate=24000\r\n", named + "a=fmtp:97 bitrate=32000\r\n"),
                "J40 line 6, other 6, section 0: Format '97' has bit rate '32000', offered is '24000'.\n");
    EXPECT_TEXT(Answer(named, named + "a=fmtp:97 bitrate=32000\r\n"), "");
}

TEST(JudgeFormats, AStreamOfMpegTellsItsChannelsItself) {
    EXPECT_TEXT(
        Answer("m=audio 5004 RTP/AVP 14\r\n", "m=audio 5004 RTP/AVP 14\r\na=rtpmap:14 MPA/90000/2\r\n"), "");
    EXPECT_TEXT(
        Answer("m=audio 5004 RTP/AVP 14\r\n", "m=audio 5004 RTP/AVP 14\r\na=rtpmap:14 MPA/90000/3\r\n"),
        "J26 line 6, other 6, section 0: Format '14' is 'mpa/90000/3', offered is 'mpa/90000'.\n");
}
