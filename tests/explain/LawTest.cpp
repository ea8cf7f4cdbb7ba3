// The laws of explanations over every capture and every prepared negotiation: what a verdict promises, what a
// cure promises, and that no key is ever said.
#include "CureRules.h"
#include "Texts.h"

#include <SDPHandler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace {

using cure::Moved;
using cure::Without;
using cure::WithoutDigits;

using support::AllTexts;
using support::Digest;
using support::NamedText;
using support::Side;

TEST(ExplainLaw, LinesThatChangeNothingCanBeDeleted) {
    for (const NamedText& named : AllTexts()) {
        for (const bool srtp : {false, true}) {
            ExplainInput input = Side(named.text);
            input.srtp = srtp;
            const std::string before = Digest(input);
            input.remote = Without(input, ExplainLines(input), [](const ExplainedLine& line) {
                return line.verdict == ExplainVerdict::Ignored || line.verdict == ExplainVerdict::Dropped;
            });
            EXPECT_EQ(Digest(input), before) << named.name;
        }
    }
}

/// "7 joined 8": number, verdict, the other line or 0.
std::string VerdictsOf(const std::string& remote) {
    std::string verdicts;
    for (const ExplainedLine& line : ExplainLines(Side(remote))) {
        verdicts += std::to_string(line.number) + " " + ExplainVerdictName(line.verdict) + " " +
                    std::to_string(line.byLine) + "\n";
    }
    return verdicts;
}

// Where LF alone parts two lines, the component reads one, by the first keyword in it (P03).
TEST(ExplainLines, AKeywordInAJoinedLineIsNotTheFirstLines) {
    EXPECT_EQ(
        VerdictsOf("v=0\r\nm=application 5070 UDP/BFCP *\r\no=webgw 6120983314\na=floorctrl:c-only\r\n"),
        "1 ignored 0\n"
        "2 used 0\n"
        "3 joined 4\n"
        "4 joined 3\n");
}

// The payload type of an rtpmap line begins after nine characters, with or without a colon (P22).
TEST(ExplainLines, APayloadTypeBeginsWhereTheComponentTakesIt) {
    EXPECT_EQ(VerdictsOf("m=video 5070 RTP/AVP 97 ab\r\n"
                         "a=rtpmap797 H264/90000\r\n"
                         "a=rtpmap:ab H264/90000\r\n"
                         "a=rtpmap: 97 VP8/90000\r\n"),
              "1 used 0\n"
              "2 tolerated 0\n"
              "3 used 0\n"
              "4 dropped 0\n");
}

// A crypto line without a known suite sets the tag only. A line that repeats that tag agrees.
TEST(ExplainLines, ACryptoLineWithoutASuiteSetsTheTag) {
    EXPECT_EQ(VerdictsOf("m=audio 5070 RTP/SAVP 0\r\n"
                         "a=crypto:7 X Y\r\n"
                         "a=crypto:7 X Z\r\n"),
              "1 used 0\n"
              "2 agrees 0\n"
              "3 agrees 0\n");
    EXPECT_EQ(
        VerdictsOf("m=audio 5070 RTP/SAVP 0\r\n"
                   "a=crypto:7 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
                   "a=crypto:7 X Y\r\n"
                   "a=crypto:7 AES_CM_128_HMAC_SHA1_80 Y\r\n"),
        "1 used 0\n"
        "2 used 0\n"
        "3 agrees 0\n"
        "4 dropped 0\n");
}

TEST(ExplainLines, ASuiteIsKeptWhenAnotherKeyFollows) {
    EXPECT_EQ(
        VerdictsOf("m=audio 5070 RTP/SAVP 0\r\n"
                   "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
                   "a=crypto:2 X inline:YXdheSBhdWRpbyBrZXkgMmF3YXkgYXVkaW9zYWx0\r\n"
                   "a=crypto:3 Y inline:YXdheSBhdWRpbyBrZXkgM2F3YXkgYXVkaW9zYWx0\r\n"),
        "1 used 0\n"
        "2 used 0\n"
        "3 overridden 4\n"
        "4 used 0\n");
    EXPECT_EQ(
        VerdictsOf("m=audio 5070 RTP/SAVP 0\r\n"
                   "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
                   "a=crypto:2 X inline:YXdheSBhdWRpbyBrZXkgMmF3YXkgYXVkaW9zYWx0\r\n"
                   "a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgM2F3YXkgYXVkaW9zYWx0\r\n"),
        "1 used 0\n"
        "2 overridden 4\n"
        "3 overridden 4\n"
        "4 used 0\n");
}

/// What is counted of a finding.
std::string Bare(const ExplainFinding& finding) {
    std::string text = std::string(finding.id) + " " + ExplainTopicName(finding.topic) + " " +
                       ExplainSeverityName(finding.severity) + " " + std::string(finding.ledger);
    for (const std::size_t line : finding.lines) {
        text += " " + std::to_string(line);
    }
    text += finding.field == nullptr ? "" : " " + std::string(finding.field->file);
    return text + "\n";
}

TEST(ExplainLaw, WithoutSentencesTheFindingsAreTheSame) {
    ExplainCounter counter;
    for (const NamedText& named : AllTexts()) {
        for (const int way : {0, 1, 2, 3}) {
            ExplainInput input = Side(named.text);
            input.srtp = way % 2 == 1;
            input.remoteAnswers = way > 1;
            std::string with;
            for (const ExplainFinding& finding : Explain(input).findings) {
                with += Bare(finding);
            }
            std::string without;
            for (const ExplainFinding& finding : counter.Findings(input)) {
                without += Bare(finding);
                EXPECT_TRUE(finding.cure.words.empty() && finding.cure.text.empty() &&
                            finding.cure.local.empty() && finding.repair.empty());
                EXPECT_EQ(finding.what + finding.acted + finding.comes, "");
            }
            EXPECT_EQ(without, with) << named.name;
        }
    }
}

// Of one rule as many suspects are made as are examined; the others are counted.
TEST(Explain, PlacesBeyondTheLimitAreCounted) {
    std::string text = "v=0\r\nm=audio 5004 RTP/AVP 0 101\r\na=rtpmap:101 telephone-event/8000\r\n";
    constexpr std::size_t beyond = 36;
    for (std::size_t i = 0; i < kExplainTrials + beyond; ++i) {
        text += "c=IN IP6 2001:db8::1\r\n";
    }
    const Explanation explanation = Explain(Side(text));
    std::size_t found = 0;
    for (const ExplainFinding& finding : explanation.findings) {
        found += finding.id == "E33" && finding.topic == ExplainTopic::Call ? 1 : 0;
    }
    EXPECT_EQ(found, kExplainTrials);
    EXPECT_EQ(explanation.untried, beyond);
}

std::string PlacesOf(std::string_view id, const std::string& remote) {
    std::string places;
    for (const ExplainFinding& finding : Explain(Side(remote)).findings) {
        if (finding.id == id) {
            places += std::to_string(finding.lines[0]) + " " + ExplainTopicName(finding.topic) + "\n";
        }
    }
    return places;
}

// An attribute of RTP in a section of floor control says nothing of a stream.
TEST(Explain, AttributesThatNothingReadsAreThoseOfStreams) {
    EXPECT_EQ(PlacesOf("E84", "m=audio 5004 RTP/AVP 0\r\n"
                              "a=rtcp-mux\r\n"
                              "m=application 5070 UDP/BFCP *\r\n"
                              "a=rtcp-mux\r\n"),
              "2 audio.send\n"
              "2 audio.receive\n");
}

TEST(ExplainLaw, ALineThatIsUsedCannotBeDeleted) {
    for (const NamedText& named : AllTexts()) {
        const ExplainInput input = Side(named.text);
        const std::vector<ExplainedLine> lines = ExplainLines(input);
        const std::string before = Digest(input);
        for (const ExplainedLine& used : lines) {
            if (used.verdict == ExplainVerdict::Used) {
                ExplainInput without = input;
                without.remote = Without(
                    input, lines, [&](const ExplainedLine& line) { return line.number == used.number; });
                EXPECT_NE(Digest(without), before) << named.name << ":" << used.number;
            }
        }
    }
}

/// Rule, topic and place of each finding, so that the same finding is known in two texts; `cure` leads from
/// the text of the explanation to the other one, and with `says` the words count too.
std::multimap<std::string, const ExplainFinding*> ByPlace(const Explanation& of, const ExplainCure& cure,
                                                          bool says) {
    std::multimap<std::string, const ExplainFinding*> named;
    for (const ExplainFinding& finding : of.findings) {
        const std::size_t line = finding.lines.empty() ? 0 : std::min(finding.lines[0], of.lines.size());
        const std::string place =
            finding.field != nullptr
                ? std::string(finding.field->file) + (says ? finding.what : "")
                : std::to_string(Moved(cure, line == 0 ? 0 : of.lines[line - 1].offset)) +
                      (says ? WithoutDigits(finding.what) : "");
        named.emplace(std::string(finding.id) + "/" + ExplainTopicName(finding.topic) + "/" + place,
                      &finding);
    }
    return named;
}

void CheckCure(const NamedText& named, const ExplainInput& input, const Explanation& before,
               const ExplainFinding& finding) {
    const std::string words = named.name + ": " + finding.what + " Cure: " + finding.cure.words;
    const Explanation after = Explain(ExplainCured(input, finding.cure));
    const auto said = ByPlace(after, {}, true);
    for (const auto& entry : ByPlace(before, finding.cure, true)) {
        if (entry.second == &finding) {
            EXPECT_EQ(said.count(entry.first), 0U) << words;
        }
    }
    const auto earlier = ByPlace(before, finding.cure, false);
    for (const auto& entry : ByPlace(after, {}, false)) {
        EXPECT_TRUE(entry.second->severity <= finding.severity || earlier.count(entry.first) != 0)
            << words << "\nopens: " << entry.first;
    }
}

TEST(ExplainLaw, ACureEndsItsFindingAndOpensNoneThatIsWorse) {
    for (const NamedText& named : AllTexts()) {
        const ExplainInput input = Side(named.text);
        const Explanation before = Explain(input);
        std::set<std::string> tried;
        for (const ExplainFinding& finding : before.findings) {
            const bool hasCure = !finding.cure.text.empty() || !finding.cure.local.empty();
            if (hasCure && tried.insert(finding.cure.words).second) {
                CheckCure(named, input, before, finding);
            }
        }
    }
}

std::string AllWords(const Explanation& explanation) {
    std::string words;
    for (const ExplainFinding& finding : explanation.findings) {
        words += finding.what + finding.acted + finding.comes + finding.cure.words + "\n";
    }
    for (const ExplainedLine& line : explanation.lines) {
        words += line.before + line.after + line.why + "\n";
    }
    return words;
}

TEST(ExplainLaw, NoKeyIsSaid) {
    constexpr std::size_t window = 8;
    for (const NamedText& named : AllTexts()) {
        const std::string words = AllWords(Explain(Side(named.text)));
        for (std::size_t at = named.text.find("inline:"); at != std::string::npos;
             at = named.text.find("inline:", at + 1)) {
            const std::string key = named.text.substr(at + 7, 40);
            for (std::size_t i = 0; key.size() == 40 && i + window <= key.size(); ++i) {
                EXPECT_EQ(words.find(key.substr(i, window)), std::string::npos) << named.name;
            }
        }
    }
}

} // namespace
