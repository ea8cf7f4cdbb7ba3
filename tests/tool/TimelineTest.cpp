// The texts of a call as explain gets them. Calls given as REMOTE: calls.cases, and captures.py.
#include "Timeline.h"

#include <gtest/gtest.h>

namespace tool {

namespace {

// The texts that stand beside the one that is read.
TEST(InputOfStep, HasTheOfferTheAnswerAndWhatStoodBefore) {
    cmsdp::Call call;
    call.steps.resize(4);
    for (std::size_t i = 0; i < 4; ++i) {
        call.steps[i].text = std::string(1, static_cast<char>('a' + i));
        call.steps[i].kind = i % 2 == 0 ? cmsdp::StepKind::Offer : cmsdp::StepKind::Answer;
        call.steps[i].partner = i ^ 1U;
        call.steps[i].previous = i < 2 ? std::optional<std::size_t>() : i - 2;
    }
    const cmsdp::Capabilities side = cmsdp::BuiltInCapabilities();
    const ExplainInput offer = cmsdp::InputOfStep(call, 2, side);
    EXPECT_FALSE(offer.remoteAnswers);
    EXPECT_EQ(offer.remote + "," + offer.before + "," + offer.ourOffer + "," + offer.ourAnswer, "c,a,,d");
    const ExplainInput answer = cmsdp::InputOfStep(call, 3, side);
    EXPECT_TRUE(answer.remoteAnswers);
    EXPECT_EQ(answer.remote + "," + answer.before + "," + answer.ourOffer + "," + answer.ourAnswer, "d,b,c,");
}

} // namespace

} // namespace tool
