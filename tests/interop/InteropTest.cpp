// Every description that this project writes, read by four readers that others wrote: each text is taken with
// the sections that it has, or refused for a reason that the ledger of deliberate behaviours names.
#include "ForeignReader.h"
#include "Texts.h"

#include "Expect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using interop::Reading;
using interop::Text;

/// A deliberate behaviour of the component that makes a reader refuse a text or see other sections.
struct Reason {
    const char* example;
    const char* pattern; ///< found in a text that shows the behaviour
    const char* id;      ///< section of commonmedia/DELIBERATE.md
    std::set<std::string> readers;
};

const std::vector<Reason>& Reasons() {
    static const std::vector<Reason> reasons = {
        {"b=AS:-64", "b=AS:-", "B04", {"libre"}},
        {"a=label:a=content:m=audio 0 RTP/AVP 0",
         "a=label:a=content:",
         "B09",
         {"libre", "oSIP", "Sofia-SIP", "tshark"}},
        {"m=video 0 RTP/AVP  126", "m=video \\d+ RTP/S?AVP  \\d", "B10", {"tshark"}},
        {"a=crypto:1  inline:...", "a=crypto:\\d+  inline:", "B14", {"tshark"}},
        {"m=application  UDP/BFCP *", "m=application  ", "B15", {"libre", "oSIP", "Sofia-SIP", "tshark"}},
        {"m=video 16386 RTP/AVP ", "m=video \\d+ RTP/S?AVP \r\n", "B23", {"tshark"}},
    };
    return reasons;
}

/// The values of the "m=" lines, as they are written.
std::vector<std::string> SectionsOf(const std::string& text) {
    std::vector<std::string> sections;
    for (const std::string& line : support::CutLines(text)) {
        if (line.compare(0, 2, "m=") == 0) {
            sections.push_back(line.substr(2, line.find_first_of("\r\n") - 2));
        }
    }
    return sections;
}

/// The same words with one blank between two, as a reader returns them that does not keep blanks.
std::string SingleBlanks(const std::string& section) {
    std::istringstream words(section);
    std::string single;
    for (std::string word; words >> word;) {
        single += (single.empty() ? "" : " ") + word;
    }
    return single;
}

/// Empty when the reader took the text with its sections; otherwise what it saw.
std::string Difference(const Text& text, const Reading& reading) {
    std::string written;
    std::string read;
    for (const std::string& section : SectionsOf(text.body)) {
        written += "    " + SingleBlanks(section) + "\n";
    }
    for (const std::string& section : reading.sections) {
        read += "    " + SingleBlanks(section) + "\n";
    }
    if (reading.isTaken && read == written) {
        return "";
    }
    return (reading.isTaken ? "takes\n" + read : "refuses: " + reading.complaint + "\n") + "written are\n" +
           written;
}

std::map<std::string, std::vector<Reading>> ReadAll(const std::vector<Text>& texts) {
    std::map<std::string, std::vector<Reading>> readings;
    std::vector<std::string> bodies;
    for (const Text& text : texts) {
        bodies.push_back(text.body);
        readings["Sofia-SIP"].push_back(interop::ReadWithSofia(text.body));
        readings["oSIP"].push_back(interop::ReadWithOsip(text.body));
        readings["libre"].push_back(interop::ReadWithRe(text.body));
    }
    readings["tshark"] = interop::ReadWithTshark(bodies);
    return readings;
}

/// "B09 libre" for each pair of a behaviour and a reader that did not take such a text unchanged.
std::set<std::string> Refused(const std::vector<Text>& texts) {
    std::set<std::string> refused;
    for (const auto& [reader, readings] : ReadAll(texts)) {
        EXPECT_EQ(readings.size(), texts.size()) << reader;
        for (std::size_t n = 0; n < std::min(readings.size(), texts.size()); ++n) {
            const std::string difference = Difference(texts[n], readings[n]);
            if (difference.empty()) {
                continue;
            }
            bool isExplained = false;
            for (const Reason& reason : Reasons()) {
                if (reason.readers.count(reader) != 0 &&
                    std::regex_search(texts[n].body, std::regex(reason.pattern))) {
                    isExplained = true;
                    refused.insert(std::string(reason.id) + " " + reader);
                }
            }
            EXPECT_TRUE(isExplained) << texts[n].name << ": " << reader << " " << difference
                                     << support::MakeVisible(texts[n].body);
        }
    }
    return refused;
}

using Set = std::set<std::string>;

TEST(Interop, AnswersToTheCorpusAreReadOrRefusedForAKnownReason) {
    const std::vector<Text> texts = interop::CorpusAnswers();
    EXPECT_GE(texts.size(), 116U * 8U);
    EXPECT_EQ(Refused(texts), (Set{"B10 tshark", "B15 Sofia-SIP", "B15 libre", "B15 oSIP", "B15 tshark"}));
}

TEST(Interop, ConversationsAreReadOrRefusedForAKnownReason) {
    const std::vector<Text> texts = interop::Conversations();
    EXPECT_EQ(texts.size(), 8U * 8U * 6U);
    EXPECT_EQ(Refused(texts), (Set{"B10 tshark", "B15 Sofia-SIP", "B15 libre", "B15 oSIP", "B15 tshark"}));
}

TEST(Interop, TextsOfRandomCapabilitiesAreReadOrRefusedForAKnownReason) {
    const std::vector<Text> texts = interop::RandomTexts();
    EXPECT_EQ(texts.size(), 400U + 399U);
    EXPECT_EQ(Refused(texts),
              (Set{"B04 libre", "B09 Sofia-SIP", "B09 libre", "B09 oSIP", "B09 tshark", "B10 tshark",
                   "B14 tshark", "B15 Sofia-SIP", "B15 libre", "B15 oSIP", "B15 tshark", "B23 tshark"}));
}

TEST(Interop, NegotiatedTextsAreReadByAllAsTheyStand) {
    const std::vector<Text> texts = interop::NegotiatedTexts();
    EXPECT_GE(texts.size(), 1200U);
    for (const auto& [reader, readings] : ReadAll(texts)) {
        ASSERT_EQ(readings.size(), texts.size()) << reader;
        for (std::size_t n = 0; n < texts.size(); ++n) {
            EXPECT_EQ(Difference(texts[n], readings[n]), "") << texts[n].name << ": " << reader << "\n"
                                                             << support::MakeVisible(texts[n].body);
        }
    }
}

} // namespace
