// The classes of hostile texts, given to a negotiator as an offer and as an answer, and to the judge beside
// themselves: twice the text takes about twice the memory.
#include "Capabilities.h"
#include "HostileTexts.h"
#include "oom/Allocations.h"

#include <SDPJudge.h>
#include <SDPNegotiator.h>

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <ostream>
#include <string>

namespace support {

/// Names the test after its class.
void PrintTo(const HostileText& hostile, std::ostream* out) {
    *out << hostile.name;
}

} // namespace support

namespace {

constexpr std::size_t kSize = 16384;
constexpr std::size_t kGrowth = 4;
constexpr double kSteepest = 1.12;

/// What one operation takes of the memory.
struct Cost {
    std::size_t calls = 0;
    std::size_t bytes = 0;
};

SDPNegotiator Begun() {
    SDPNegotiator call;
    call.SetLocal(support::PresentationLocal());
    call.SetSrtp(SDPNegotiator::Srtp::Wanted);
    call.Present(true);
    return call;
}

Cost OfAnswer(const std::string& text) {
    SDPNegotiator call = Begun();
    const allocations::Scope scope;
    call.Answer(text);
    return {scope.calls(), scope.bytes()};
}

/// The text's lines are in the first section of an answer that fits our offer.
Cost OfAccept(const std::string& text) {
    SDPNegotiator call = Begun();
    const std::string offer = call.Offer().text;
    std::string answer = "v=0\r\no=- 1 1 IN IP4 192.0.2.2\r\ns=-\r\nc=IN IP4 192.0.2.2\r\nt=0 0\r\n";
    for (std::size_t at = offer.find("\nm="); at != std::string::npos; at = offer.find("\nm=", at + 1)) {
        answer += offer.substr(at + 1, offer.find('\n', at + 1) - at);
    }
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        const std::string line = text.substr(at, end == std::string::npos ? end : end - at + 1);
        answer += line.find("m=") == std::string::npos && line.find('\r') + 1 >= line.size() - 1 ? line : "";
        at += line.size();
    }
    const allocations::Scope scope;
    call.Accept(answer);
    return {scope.calls(), scope.bytes()};
}

Cost OfCheckAnswer(const std::string& text) {
    const allocations::Scope scope;
    CheckAnswer(text, text);
    return {scope.calls(), scope.bytes()};
}

Cost OfCheckNext(const std::string& text) {
    const allocations::Scope scope;
    CheckNext(text, text);
    return {scope.calls(), scope.bytes()};
}

double Slope(std::size_t small, std::size_t large) {
    return std::log(static_cast<double>(large + 1) / static_cast<double>(small + 1)) /
           std::log(static_cast<double>(kGrowth));
}

class HostileNegotiation : public testing::TestWithParam<support::HostileText> {};

TEST_P(HostileNegotiation, MemoryGrowsAsTheText) {
    const std::string small = GetParam().make(kSize);
    const std::string large = GetParam().make(kGrowth * kSize);
    for (const auto operation : {OfAnswer, OfAccept, OfCheckAnswer, OfCheckNext}) {
        const Cost before = operation(small);
        const Cost after = operation(large);
        EXPECT_GT(before.bytes, 0U);
        EXPECT_LE(Slope(before.calls, after.calls), kSteepest) << before.calls << " " << after.calls;
        EXPECT_LE(Slope(before.bytes, after.bytes), kSteepest) << before.bytes << " " << after.bytes;
    }
}

std::string NameOf(const testing::TestParamInfo<support::HostileText>& info) {
    std::string name = std::to_string(info.index);
    for (const char c : info.param.name) {
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Classes, HostileNegotiation, testing::ValuesIn(support::HostileClasses()), NameOf);

} // namespace
