// Texts made of every byte, of every part of a keyword, of every position of a good text.
#include "Document.h"
#include "Hostile.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

using namespace hostile;

TEST(Hostile, C01_EmptyTextLeavesTheRecordAndDropsTheSections) {
    Endpoint near;
    EXPECT_EQ(near.handler.ParseTheSDP(kConference, near.remote), 0);
    const std::string before = support::Describe(near.remote);
    EXPECT_FALSE(near.handler.IsOffer());
    EXPECT_EQ(near.handler.ParseTheSDP("", near.remote), 1);
    EXPECT_TEXT(support::Describe(near.remote), before);
    EXPECT_TRUE(near.handler.IsOffer());
    EXPECT_TEXT(DescribeHeld(near.handler, 200), "session addr=192.0.2.2 bandwidth=\n");
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C02_OneByteOfEveryValue) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_TEXT(Outcome(std::string(1, static_cast<char>(byte))), kNothingOutcome);
    }
}

TEST(Hostile, C03_LastLineOfOneCharacter) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string last(1, static_cast<char>(byte));
        EXPECT_TEXT(Changes(kConference + last), "");
        EXPECT_TEXT(Changes(kConference + last + "\r\n"), "");
        EXPECT_TEXT(Outcome("\r\n" + last), kNothingOutcome);
    }
}

TEST(Hostile, C04_TextCutAtEveryByteIsReadUpToItsLastLineEnd) {
    std::string whole = kNothingOutcome;
    for (std::size_t length = 1; length <= kConference.size(); ++length) {
        const std::string text = kConference.substr(0, length);
        if (text.back() == '\n') {
            whole = Outcome(text);
        } else {
            EXPECT_TEXT(Outcome(text), whole);
        }
    }
    EXPECT_TEXT(whole, kConferenceOutcome);
}

TEST(Hostile, C07_NulAtEveryPosition) {
    for (std::size_t at = 0; at <= kConference.size(); ++at) {
        std::string text = kConference;
        Outcome(text.insert(at, 1, '\0'));
    }
    EXPECT_TEXT(Outcome(std::string(4096, '\0')), kNothingOutcome);
}

TEST(Hostile, C08_BytesBeyondAsciiAtEveryPosition) {
    for (std::size_t at = 0; at <= kConference.size(); ++at) {
        std::string text = kConference;
        Outcome(text.insert(at, 1, static_cast<char>(0x80 + at % 128)));
    }
    std::string all;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_TEXT(Outcome(all), kNothingOutcome);
    EXPECT_TEXT(Changes(With("t=0 0\r\n", "t=0 0\r\n" + all + "\r\n")), "");
}

TEST(Hostile, C12_ElfFile) {
    std::ifstream file("/proc/self/exe", std::ios::binary);
    std::string program{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_EQ(program.substr(1, 3), "ELF");
    program.resize(std::min(program.size(), std::size_t{1} << 20U));
    Outcome(program);
    Outcome(program + "\r\n");
    EXPECT_TEXT(Outcome(program.substr(0, 64)), kNothingOutcome);
}

/// The sections of kConference, each with its lines.
std::vector<std::string> Sections() {
    std::vector<std::string> sections;
    for (const std::string& line : Lines(kConference)) {
        if (line.compare(0, 2, "m=") == 0) {
            sections.emplace_back();
        }
        if (!sections.empty()) {
            sections.back() += line;
        }
    }
    return sections;
}

/// kConference with the lines in its session block and at the end of every section.
std::string Everywhere(const std::string& lines) {
    std::string text = kSessionBlock + lines;
    for (const std::string& section : Sections()) {
        text += section + lines;
    }
    return text;
}

std::string Attributes() {
    std::string attributes;
    for (const std::string& line : Lines(kConference)) {
        attributes += line.compare(0, 2, "a=") == 0 ? line : "";
    }
    return attributes;
}

TEST(Hostile, C14_AttributesBeforeAnySection) {
    EXPECT_TEXT(Changes(Attributes() + kConference), "");
    EXPECT_TEXT(Outcome(Attributes()), kNothingOutcome);
}

TEST(Hostile, C16_UnknownLetters) {
    std::string lines;
    for (int letter = 1; letter < 256; ++letter) {
        lines += std::string(1, static_cast<char>(letter)) + "=x\r\n";
    }
    EXPECT_TEXT(Changes(Everywhere(lines)), "");
    EXPECT_TEXT(Outcome(lines), kNothingOutcome);
}

TEST(Hostile, C16_EveryBeginningOfEveryKeyword) {
    for (const std::string keyword :
         {"a=rtpmap:", "a=fmtp:", "a=crypto:", "a=ice-ufrag:", "a=ice-pwd:", "a=candidate:",
          "a=content:slides", "b=TIAS:", "b=AS:", "a=floorctrl:", "a=confid:", "a=userid:", "a=sendrecv",
          "a=sendonly", "a=recvonly", "a=inactive"}) {
        for (std::size_t length = 1; length <= keyword.size(); ++length) {
            const std::string line = keyword.substr(0, length) + "\r\n";
            EXPECT_TEXT(Outcome(line), kNothingOutcome);
            EXPECT_TEXT(Changes(With("t=0 0\r\n", "t=0 0\r\n" + line)), "");
            EXPECT_TEXT(Changes(With("9 0 101\r\n", "9 0 101\r\n" + line)),
                        line == "a=candidate:\r\n" ? "+0 candidate a=candidate:\n" : "");
        }
    }
}

TEST(Hostile, C21_WholeTextInTheOtherCase) {
    std::string swapped = kConference;
    for (char& c : swapped) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) {
            c = static_cast<char>(c ^ 0x20);
        }
    }
    EXPECT_TEXT(Outcome(swapped), kNothingOutcome);
}

TEST(Hostile, C21_EveryWordInTheOtherCase) {
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    for (std::size_t at = 0; at < kConference.size();) {
        std::string text = kConference;
        for (; at < text.size() && letter(text[at]); ++at) {
            text[at] = static_cast<char>(text[at] ^ 0x20);
        }
        if (text != kConference) {
            Outcome(text);
        }
        ++at;
    }
}

TEST(Hostile, C23_SectionsAddedDroppedAndReorderedInLaterRounds) {
    const std::vector<std::string> sections = Sections();
    ASSERT_EQ(sections.size(), 4U);
    const std::string many = Repeated("m=video 7000 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n", 20);
    const std::string rounds[] = {
        kConference,
        kConference + many,                                                    // added
        kSessionBlock + sections[0],                                           // dropped
        kSessionBlock + sections[3] + sections[2] + sections[1] + sections[0], // reordered
        sections[1] + sections[0],                                             // and no session block
        kSessionBlock,                                                         // all gone
        kSessionBlock + "b=AS:64\r\n" + sections[2],                           // one back
        kSessionBlock + sections[0] + sections[0] + sections[1] + sections[1] + many,
        kConference,
    };
    Endpoint near;
    for (const std::string& round : rounds) {
        Endpoint fresh;
        fresh.handler.strSessionIPAddr = near.handler.strSessionIPAddr;
        fresh.handler.m_iSessionVersion = near.handler.m_iSessionVersion;
        EXPECT_TEXT(Meet(near.handler, round), Meet(fresh.handler, round));
    }
    EXPECT_TEXT(Difference(kConferenceOutcome, Meet(near.handler, kConference)),
                "-o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\\r\\n\n"
                "+o=Quillmarshorizon 1000 11 IN IP4 192.0.2.1\\r\\n\n");
    ExpectAsFresh(near.handler);
}

const std::string kKey = "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0";

/// A key text that cannot be decoded: the suite is set, so the stream counts as secure, but has no key.
std::string Undecoded(const std::string& shownText) {
    return "-srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
           "+srtp audio suite=1 key=- salt=-\n"
           "-0 crypto tag=1 suite=1 text=" +
           kKey +
           " key=away audio key 1 salt=away audiosalt\n"
           "+0 crypto tag=1 suite=1 text=" +
           shownText + " key=- salt=-\n";
}

TEST(Hostile, C42_KeyTextThatIsNotBase64) {
    for (std::size_t at = 0; at < kKey.size(); ++at) {
        std::string text = kKey;
        text[at] = "!-_.,%\"*"[at % 8];
        EXPECT_TEXT(Changes(With(kKey, text)), Undecoded(text));
    }
    EXPECT_TEXT(Changes(With(kKey, "\xff\xfeYXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYW")),
                Undecoded("\\xff\\xfeYXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYW"));
    // A hyphen at the end does not end the data.
    EXPECT_TEXT(Changes(With(kKey, "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9z----")),
                Undecoded("YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9z----"));
}

const std::string kCandidateLine = "a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\r\n";
const std::string kCandidateUsual = "-0 candidate a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\n";

TEST(Hostile, C49_CandidatesCutShort) {
    for (std::size_t length = 12; length < kCandidateLine.size() - 2; ++length) {
        const std::string line = kCandidateLine.substr(0, length);
        EXPECT_TEXT(Changes(With(kCandidateLine, line + "\r\n")),
                    kCandidateUsual + "+0 candidate " + documents::EndVisible(line) + "\n");
    }
    EXPECT_TEXT(Changes(With(kCandidateLine, "a=candidate\r\na=candidates:1\r\na=Candidate:1\r\n")),
                kCandidateUsual);
}

} // namespace
