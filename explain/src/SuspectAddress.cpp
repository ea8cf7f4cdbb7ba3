// Stage: suspects in addresses: connection lines and sections without one.
// Input: the lines and the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kZeroAddress = {"E30", "", ExplainSeverity::Error, 16,
                               "An address is taken as it stands: 0.0.0.0 is no hold here, the direction "
                               "stays open (RFC 3264, 8.4 holds by direction)."};
constexpr Rule kMulticast = {"E31", "", ExplainSeverity::Error, 17,
                             "The address is the whole third word of a c= line; a suffix for time to live "
                             "and count stays part of it."};
constexpr Rule kNoAddress = {"E32", "P18", ExplainSeverity::Error, 8,
                             "Without a c= line in the section or the session the address of the description "
                             "read before is kept, or there is none (P18)."};
constexpr Rule kShortAddress = {"E35", "P18", ExplainSeverity::Error, 7,
                                "The address is the third word of a c= line, and a line of fewer words is "
                                "dropped; the address of the session, or of the description before, is kept "
                                "(P18)."};
constexpr Rule kBadAddress = {"E34", "", ExplainSeverity::Error, 16,
                              "An address is taken as it stands and not checked, so the engine gets one that "
                              "it cannot send to."};
constexpr Rule kAddressKind = {
    "E33", "B25", ExplainSeverity::Warning, 17,
    "An address is taken as it stands, its type (IP4, IP6) is not read, and our own is always written as IP4 "
    "(B25)."};
constexpr Rule kPrivateAddress = {"E159", "", ExplainSeverity::Note, 64,
                                  "An address is taken as it stands and not checked, whatever network it is "
                                  "of."};

constexpr Rule kOwnAddressThere = {"E171", "", ExplainSeverity::Warning, 15,
                                   "An address is taken as it stands and not compared with our own; two ends "
                                   "with one address are usual only "
                                   "where both stand behind one translator."};

/// The address in the o= line, where the far end is most likely reached.
std::string OriginAddress(const Reading& reading) {
    const std::vector<std::string_view> words = WordsOf(reading.origin, 6);
    const bool isUsable = words.size() == 6 && IsIpv4(words[5]) && words[5] != "0.0.0.0";
    return isUsable ? std::string(words[5]) : "192.0.2.2";
}

/// The connection line that counts for a section: the last one in it, or null for that of the session.
const TextLine* OwnConnection(const Reading& reading, const MeantSection& section) {
    const TextLine* own = nullptr;
    for (std::size_t i = section.line; i <= section.last; ++i) {
        own = reading.lines[i].meant == SDPRow::Connection ? &reading.lines[i] : own;
    }
    return own;
}

/// What is sent to the address of a connection line: streams whose first section it counts for.
std::vector<Topic> SentTo(const Reading& reading, const TextLine& line) {
    const MeantSection* first[3] = {};
    for (const MeantSection& section : reading.sections) {
        const std::size_t kind = section.media == "audio"   ? 0
                                 : section.media != "video" ? 3
                                 : section.isSlides         ? 2
                                                            : 1;
        if (kind < std::size(first) && first[kind] == nullptr) {
            first[kind] = &section;
        }
    }
    static constexpr Topic kSent[] = {Topic::AudioSend, Topic::MainSend, Topic::Slides};
    std::vector<Topic> topics;
    for (std::size_t kind = 0; kind < std::size(first); ++kind) {
        const TextLine* const own = first[kind] == nullptr ? nullptr : OwnConnection(reading, *first[kind]);
        if (first[kind] != nullptr && (own == nullptr ? line.section == kNowhere : own == &line)) {
            topics.push_back(kSent[kind]);
        }
    }
    return topics;
}

void AddShort(Scene& scene, const TextLine& line) {
    const std::string text = "c=IN IP4 " + OriginAddress(scene.reading);
    if (WordsOf(Canonical(line, scene.reading), 3).size() < 3) {
        Blame(scene, kShortAddress, line, {LineWords(line), " has fewer than three words."},
              {"write line ", line.number, " as ", InQuotes(text)}, {ReplaceLine(line, text)})
            .isTakenAway = true;
    }
}

void AddZero(Scene& scene, const TextLine& line) {
    const MeantSection* const section = scene.reading.SectionOf(line);
    const std::string place =
        section == nullptr ? "."
                           : Joined({" (section of line ", scene.reading.lines[section->line].number, ")."});
    Suspect& suspect = Blame(
        scene, kZeroAddress, line,
        {LineWords(line), " has the address 0.0.0.0, an old form of hold or a text for ICE alone", place},
        {"write the far end's address in line ", line.number},
        {ReplaceLine(line, WithWord(line, 2, OriginAddress(scene.reading)))});
    if (scene.reading.hasIce && !scene.reading.hasCandidate) {
        suspect.Know(Topic::Ice, {"There is neither a candidate nor a usable address, so no media flow."});
    }
}

/// Digits and dots that are no address, or not that of one end.
void AddBad(Scene& scene, const TextLine& line, std::string_view address) {
    const bool isAddress = IsIpv4(address);
    Suspect& suspect = Blame(scene, kBadAddress, line,
                             {LineWords(line), isAddress ? " has a multicast or broadcast address."
                                                         : " has digits and dots that are no IPv4 address."},
                             {"write the far end's address in line ", line.number},
                             {ReplaceLine(line, WithWord(line, 2, OriginAddress(scene.reading)))});
    for (const Topic topic : {Topic::AudioSend, Topic::MainSend, Topic::Slides, Topic::Call}) {
        suspect.Know(topic, {"Media would go to ", AsShown(address),
                             isAddress ? ", which is not one end." : ", which is nowhere."});
    }
}

/// IPv6 or a name.
void AddOtherKind(Scene& scene, const TextLine& line, std::string_view address) {
    if (IsFull(scene, kAddressKind)) {
        return;
    }
    constexpr std::string_view ofIpv6 = "0123456789abcdefABCDEF:.";
    const std::string_view literal = address.substr(0, address.find('%'));
    const bool isIpv6 = literal.find(':') != std::string_view::npos &&
                        literal.find_first_not_of(ofIpv6) == std::string_view::npos;
    Suspect& suspect =
        Blame(scene, kAddressKind, line,
              {LineWords(line), isIpv6 ? " has an IPv6 address."
                                       : " has a host name or another text that is no IPv4 address."},
              {"write an IPv4 address of the far end in line ", line.number},
              {ReplaceLine(line, "c=IN IP4 " + OriginAddress(scene.reading))});
    std::vector<Topic> topics = SentTo(scene.reading, line);
    topics.push_back(Topic::Call);
    for (const Topic topic : topics) {
        suspect.Know(topic, {"Media go to ", AsShown(address),
                             isIpv6 ? ", which an end with IPv4 alone does not reach."
                                    : ", which is reached only where the engine looks up names."});
    }
}

void AddPrivate(Scene& scene, const TextLine& line, std::string_view address) {
    if (IsFull(scene, kPrivateAddress)) {
        return;
    }
    Suspect& suspect = Blame(scene, kPrivateAddress, line,
                             {LineWords(line), " has a loopback, private or link-local address."}, {}, {});
    for (const Topic topic : SentTo(scene.reading, line)) {
        suspect.Know(topic, {"Media go to ", AsShown(address),
                             BeginsWith(address, "127.") ? ", which only its own host reaches."
                                                         : ", which only its own network reaches."});
    }
}

void FindAddress(Scene& scene, const TextLine& line) {
    const std::vector<std::string_view> words = WordsOf(line.text, 4);
    if (words.size() < 3) {
        AddShort(scene, line);
        return;
    }
    const std::string address(words[2]);
    const std::size_t slash = address.find('/');
    if (address == "0.0.0.0") {
        AddZero(scene, line);
    } else if (slash != std::string::npos &&
               address.find_first_not_of("0123456789/", slash) == std::string::npos &&
               address.find("//") == std::string::npos) {
        Blame(scene, kMulticast, line, {LineWords(line), " has a suffix after its address."},
              {"write the address alone in line ", line.number},
              {ReplaceLine(line, WithWord(line, 2, address.substr(0, slash)))});
    } else if (IsPrivate(address) && IsIpv4(address)) {
        AddPrivate(scene, line, address);
    } else if (!IsUnicast(address) && address.find_first_not_of("0123456789.") == std::string::npos) {
        AddBad(scene, line, address);
    } else if (!IsIpv4(address) && !IsIpv4(std::string_view(address).substr(0, address.find(':')))) {
        AddOtherKind(scene, line, address);
    }
}

/// Our own address in a text whose origin has another one: a device on the way wrote it there.
void FindOwnAddressThere(Scene& scene) {
    const std::string& own = scene.input.local.strDefaultIPAddr;
    const std::string origin = OriginAddress(scene.reading);
    // Without our offer the address of the record may be a sample, which others use as well.
    const bool isOffered = scene.input.remoteAnswers &&
                           scene.input.ourOffer.find("c=IN IP4 " + own + "\r\n") != std::string::npos;
    if (!isOffered || !IsUnicast(own) || WordOf(scene.reading.origin, 5) != origin || origin == own) {
        return;
    }
    constexpr std::size_t most = 8;
    std::size_t count = 0;
    for (const TextLine& line : scene.reading.lines) {
        if (line.meant != SDPRow::Connection || WordOf(line.text, 2) != own || ++count > most) {
            continue;
        }
        Suspect& suspect =
            Blame(scene, kOwnAddressThere, line,
                  {LineWords(line), " has the address of this side, strDefaultIPAddr (default_address)."},
                  {"write the far end's address in line ", line.number},
                  {ReplaceLine(line, WithWord(line, 2, origin))});
        for (const Topic topic : SentTo(scene.reading, line)) {
            suspect.Know(topic, {"Media go back to this side."});
        }
    }
}

/// The address line of another section that is nearest after an m= line, or the last one before it; null
/// when no section has a usable one.
const TextLine* AddressElsewhere(const Reading& reading, const TextLine& media) {
    const TextLine* nearest = nullptr;
    for (const TextLine& line : reading.lines) {
        if (line.meant == SDPRow::Connection && IsUnicast(WordOf(line.text, 2))) {
            nearest = &line;
            if (line.number > media.number) {
                break;
            }
        }
    }
    return nearest;
}

/// A section without an address line, in a session without one.
void AddMissing(Scene& scene, const TextLine& media) {
    const TextLine* const other = AddressElsewhere(scene.reading, media);
    const std::string address(other != nullptr ? WordOf(other->text, 2) : OriginAddress(scene.reading));
    const std::string text = "c=IN IP4 " + address;
    std::string what = Joined({LineWords(media), " has no c= line in its section, and the session has none"});
    if (other != nullptr) {
        const MeantSection& section = *scene.reading.SectionOf(*other);
        Append(what,
               {"; line ", other->number, ", ", InQuotes(other->text), ", counts for the section of line ",
                scene.reading.lines[section.line].number, " alone"});
    }
    Suspect& suspect =
        Blame(scene, kNoAddress, media, {what, "."},
              {"insert ", InQuotes(text), " after line ", media.number}, {InsertAfter(media, text)});
    suspect.isTakenAway = true;
    if (other != nullptr) {
        suspect.lines.push_back(other->number);
    }
}

void FindMissingAddress(Scene& scene) {
    const Reading& reading = scene.reading;
    bool hasSession = false;
    for (const TextLine& line : reading.lines) {
        hasSession = hasSession || (line.section == kNowhere && line.meant == SDPRow::Connection);
    }
    if (hasSession || reading.sections.empty()) {
        return;
    }
    std::vector<const TextLine*> bare;
    for (const MeantSection& section : reading.sections) {
        const auto first = reading.lines.begin() + static_cast<std::ptrdiff_t>(section.line);
        const auto last = reading.lines.begin() + static_cast<std::ptrdiff_t>(section.last) + 1;
        if (std::none_of(first, last,
                         [](const TextLine& line) { return line.meant == SDPRow::Connection; })) {
            bare.push_back(&*first);
        }
    }
    constexpr std::size_t most = 8;
    for (std::size_t i = 0; i < bare.size() && i < most; ++i) {
        AddMissing(scene, *bare[i]);
    }
}

} // namespace

void FindAddresses(Scene& scene) {
    for (const TextLine& line : scene.reading.lines) {
        if (line.meant == SDPRow::Connection) {
            FindAddress(scene, line);
        }
    }
    FindOwnAddressThere(scene);
    FindMissingAddress(scene);
}

} // namespace explain
