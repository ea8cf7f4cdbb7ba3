// A run that takes from another one what is the same in both has the same facts as a run of its own.
#include "BriefRun.h"

#include "Texts.h"

#include <gtest/gtest.h>

namespace {

using support::AllTexts;
using support::NamedText;
using support::Side;

std::string FactsOf(const explain::State& state) {
    std::string text;
    for (std::size_t i = 0; i < explain::kParts; ++i) {
        const auto part = static_cast<explain::Part>(i);
        for (const explain::Fact& fact : state.Facts(part)) {
            explain::Append(text, {ExplainTopicName(fact.topic), " ", static_cast<int>(fact.about), " ",
                                   static_cast<int>(fact.which), fact.isDead ? " dead" : "",
                                   fact.isHard ? " hard " : " ", fact.hidden, " ",
                                   state.MakerOf(part).ClauseOf(fact), "\n"});
        }
    }
    return text;
}

/// The input with a line deleted or doubled in turn: some changes make no difference, some make all.
ExplainInput Changed(const ExplainInput& input, const std::vector<ExplainedLine>& lines, std::size_t i) {
    const std::size_t end = i + 1 < lines.size() ? lines[i + 1].offset : input.remote.size();
    const std::size_t length = end - lines[i].offset;
    ExplainInput changed = input;
    if (i % 2 == 0) {
        changed.remote.erase(lines[i].offset, length);
    } else {
        changed.remote.insert(end, input.remote, lines[i].offset, length);
    }
    return changed;
}

std::size_t TakenParts(const explain::State& state) {
    std::size_t taken = 0;
    for (std::size_t part = 0; part < explain::kParts; ++part) {
        taken += &state.MakerOf(static_cast<explain::Part>(part)) == &state ? 0 : 1;
    }
    return taken;
}

TEST(SameRun, HasTheFactsOfARunOfItsOwn) {
    std::size_t all = 0;
    std::size_t some = 0;
    for (const NamedText& named : AllTexts()) {
        const ExplainInput input = Side(named.text);
        explain::State known;
        explain::Run(input, known);
        const std::vector<ExplainedLine> lines = ExplainLines(input);
        explain::OurTexts texts;
        for (std::size_t i = 0; i < lines.size(); i += 7) {
            const ExplainInput changed = Changed(input, lines, i);
            explain::State alone;
            explain::Run(changed, alone);
            explain::State after;
            explain::Run(changed, after, &known, &texts);
            EXPECT_EQ(FactsOf(after), FactsOf(alone)) << named.name << ":" << lines[i].number;
            EXPECT_EQ(explain::AfterOrigin(after.ours->text), explain::AfterOrigin(alone.ours->text));
            const std::size_t taken = TakenParts(after);
            ++(taken == explain::kParts ? all : some);
        }
    }
    EXPECT_GT(all, 0U);
    EXPECT_GT(some, 0U);
}

std::string Flags(const explain::Effects& effects) {
    std::string text;
    for (std::size_t i = 0; i < effects.size(); ++i) {
        const explain::Effect& effect = effects[i];
        explain::Append(text, {ExplainTopicName(static_cast<ExplainTopic>(i)), effect.isAny ? " any" : "",
                               effect.heals ? " heals" : "", effect.takes ? " takes" : "",
                               effect.isHard ? " hard" : "", "\n"});
    }
    return text;
}

/// Edits of a line that finders make, and some that reach into the next section or the line before.
std::vector<ExplainCure> EditsOf(const std::string& text, const ExplainedLine& line, std::size_t end) {
    const std::string words = text.substr(line.offset, line.length);
    const std::size_t half = line.offset + line.length / 2;
    const std::vector<std::vector<ExplainTextChange>> edits = {
        {{line.offset, end - line.offset, ""}},
        {{end, 0, words + "\r\n"}},
        {{end, 0, words}},
        {{line.offset, 0, "a=recvonly\r\n"}},
        {{line.offset, line.length, "a=sendonly\r\n" + words}},
        {{line.offset, line.length, words + "\r\nm=video 1 RTP/AVP 97"}},
        {{half, 0, "\r\n"}},
        {{half, line.offset + line.length - half, "9"}},
        {{line.offset, 1, "A"}, {end, 0, "a=inactive\r\n"}},
        {{half, text.size() - half, ""}},
    };
    std::vector<ExplainCure> cures;
    for (const auto& edit : edits) {
        ExplainCure cure;
        cure.text = edit;
        cures.push_back(cure);
    }
    return cures;
}

TEST(BriefRun, HasTheEffectsOfARunOfTheWholeText) {
    std::size_t number = 0;
    std::size_t effective = 0;
    for (const NamedText& named : AllTexts()) {
        ExplainInput input = Side(named.text);
        input.srtp = ++number % 3 == 0;
        input.remoteAnswers = number % 4 == 0;
        explain::State known;
        explain::Run(input, known);
        explain::OurTexts texts;
        const explain::Reading reading = explain::Read(input.remote);
        explain::BriefRuns brief(input, reading, known, texts);
        const std::vector<ExplainedLine> lines = ExplainLines(input);
        for (std::size_t i = number % 5; i < lines.size(); i += 5) {
            const std::size_t end = i + 1 < lines.size() ? lines[i + 1].offset : input.remote.size();
            const std::vector<ExplainCure> cures = EditsOf(input.remote, lines[i], end);
            const ExplainCure& cure = cures[(number + i) % cures.size()];
            explain::State alone;
            explain::Run(ExplainCured(input, cure), alone);
            const std::string flags = Flags(explain::EffectsOf(known, alone, false));
            EXPECT_EQ(Flags(brief.EffectsOf(cure)), flags)
                << named.name << ":" << lines[i].number << " edit " << (number + i) % cures.size();
            effective += flags.find(" any") == std::string::npos ? 0 : 1;
        }
    }
    EXPECT_GT(effective, 0U);
}

// Two local sides write one text after o= lines that are read in two ways.
TEST(SameRun, TextsAfterOtherOriginsAreNotMixed) {
    explain::OurTexts texts;
    const std::string after = "\r\ns=-\r\nm=audio 5004 RTP/AVP 0\r\n";
    const auto plain = texts.Read("v=0\r\no=x 1 2 IN IP4 192.0.2.1" + after, "x");
    const auto again = texts.Read("v=0\r\no=x 3 4 IN IP4 192.0.2.1" + after, "x");
    const auto other = texts.Read("v=0\r\no=c=a b 192.0.2.9 5 6 IN IP4 192.0.2.1" + after, "c=a b 192.0.2.9");
    EXPECT_EQ(again, plain);
    EXPECT_EQ(plain->read.strAudioIPAddr, "");
    EXPECT_EQ(other->read.strAudioIPAddr, "192.0.2.9");
}

} // namespace
