// Answers of real programs to real offers: the judge finds nothing in the correct ones, and the breach in the
// others. real/README.md says where each text comes from.
#include "Expect.h"
#include "Pairs.h"

#include <gtest/gtest.h>

#include <set>

using namespace judged;

namespace {

// Each row is a pair of captured descriptions, offer first.
struct Captured {
    const char* offer;
    const char* answer;
    const char* violations;
};

std::string Capture(const std::string& name) {
    return FileText(std::string(COMMONMEDIA_CORPUS_DIR) + "/captures/" + name + ".sdp");
}

constexpr Captured kCaptured[] = {
    {"chromium-av-default-offer", "aiortc-to-chromium-av-default-answer", ""},
    {"chromium-av-default-offer", "linphone-srtp-to-chromium-av-default-answer", ""},
    {"chromium-av-default-offer", "pion-to-chromium-av-default-answer", ""},
    {"gst-webrtcbin-h264-opus-offer", "baresip-dtls-to-gst-webrtcbin-h264-opus-answer", ""},
    {"rtpengine-conf-savpf-unenc-offer", "baresip-srtp-to-rtpengine-conf-savpf-unenc-answer", ""},
    {"baresip-ice-offer", "linphone-srtp-to-baresip-ice-answer", ""},
    {"baresip-srtp-mand-delayed-offer", "linphone-srtp-to-baresip-srtp-mand-answer", ""},
    {"rtpengine-conf-plain-offer", "baresip-av-to-conf-avp-answer", ""},
    {"rtpengine-conf-plain-offer", "linphone-default-to-conf-avp-answer", ""},
    {"rtpengine-conf-plain-offer", "rtpengine-avp-to-savp-answer", ""},
    {"rtpengine-conf-savp-32-offer", "linphone-srtp-mand-to-conf-savp-32only-answer", ""},
    {"rtpengine-conf-savp-32-offer", "baresip-srtp-mand-to-conf-savp-32-80-answer", ""},
    {"rtpengine-ice-force-offer", "jami-av-to-conf-avp-nobfcp-answer", ""},
    {"rtpengine-ice-force-offer", "linphone-default-to-conf-avp-nobfcp-answer", ""},
    // Breaches of these programs.
    {"chromium-av-default-offer", "baresip-dtls-to-chromium-av-default-answer",
     "J28 line 27, other 41, section 1: Format '116' has profile '42', offered is '4d'.\n"
     "J28 line 27, other 41, section 1: Format '39' has profile '42', offered is '4d'.\n"},
    {"twinkle-many-offer", "baresip-srtp-to-twinkle-many-answer",
     "J32 line 17, other 6, section 0: The transport is 'RTP/AVP'.\n"},
    {"rtpengine-conf-plain-offer", "sipp-uas-to-conf-avp-answer",
     "J20 line 0, other 0, section -1: The answer has 1, the offer 4.\n"},
};

} // namespace

TEST(RealCalls, CapturedPairs) {
    for (const Captured& pair : kCaptured) {
        SCOPED_TRACE(pair.answer);
        EXPECT_TEXT(Written(CheckAnswer(Capture(pair.offer), Capture(pair.answer))), pair.violations);
    }
}

// real/PROGRAM-to-NAME-answer.sdp answers the captured NAME-offer.
TEST(RealCalls, AnswersToCapturedOffers) {
    std::size_t correct = 0;
    for (const auto& path : Files(Directory("real"), ".sdp")) {
        const std::string name = path.stem().string();
        SCOPED_TRACE(name);
        const auto begin = name.find("-to-") + 4;
        const std::string offer = Capture(name.substr(begin, name.rfind("-answer") - begin) + "-offer");
        EXPECT_FALSE(offer.empty());
        EXPECT_TEXT(Written(CheckAnswer(offer, FileText(path))), "");
        ++correct;
    }
    EXPECT_GE(correct, 26U) << "with the fourteen above: forty";
}

// As a text for itself every captured answer is correct, whatever it answers.
TEST(RealCalls, EveryCapturedAnswerIsWellFormed) {
    std::size_t answers = 0;
    for (const auto& path : Files(std::string(COMMONMEDIA_CORPUS_DIR) + "/captures", ".sdp")) {
        if (path.stem().string().rfind("-answer") != std::string::npos) {
            SCOPED_TRACE(path.filename().string());
            const std::string text = FileText(path);
            EXPECT_TEXT(Written(CheckNext(text, text)), "");
            ++answers;
        }
    }
    EXPECT_GE(answers, 45U);
}
