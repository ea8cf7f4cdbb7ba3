// Stage: suspects in ICE lines, and in lines about RTCP, packet time and bundling, which nothing reads.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kIce = {
    "E82", "G16", ExplainSeverity::Note, 50,
    "ICE lines are kept whole for an agent (P13), and our text has none of its own (G16)."};
constexpr Rule kHalfIce = {"E83", "P04", ExplainSeverity::Error, 12,
                           "User fragment and password are kept each from its own line of the section, and "
                           "every other a=ice line is dropped (P04)."};
constexpr Rule kDroppedIce = {"E97", "P04", ExplainSeverity::Note, 49,
                              "Of a=ice lines only a=ice-ufrag and a=ice-pwd are kept, and only inside of a "
                              "section; all others are dropped (P04)."};
constexpr Rule kNoIce = {"E86", "", ExplainSeverity::Note, 48,
                         "User fragment and password are those of the section itself; bundling is not read, "
                         "and no section takes those of another."};
constexpr Rule kShortIce = {"E99", "P13", ExplainSeverity::Warning, 13,
                            "The line is kept whole for an agent, which refuses a user fragment of fewer "
                            "than 4 characters and a password of fewer than 22 (P13; RFC 8839, 5.4)."};
constexpr Rule kLocalName = {
    "E177", "P13", ExplainSeverity::Note, 47,
    "A candidate is kept whole for an agent (P13); such a name is one of multicast DNS "
    "(RFC 6762), which hides an address and is known in its own network alone."};
constexpr Rule kMux = {"E84", "", ExplainSeverity::Note, 65, "The component does not read this attribute."};

/// An attribute that changes how RTP is sent and that nothing reads.
struct Unread {
    std::string_view start;
    const char* asks;
    const char* comes;
    bool isPicture = false; ///< of the picture, and not of RTP or RTCP
};
constexpr Unread kUnread[] = {
    {"a=rtcp-mux", " asks for RTCP on the RTP port.",
     "RTCP goes to the port after the RTP port, where a far end that shares one port does not receive it; "
     "RTP is not affected."},
    {"a=rtcp:", " asks for RTCP on a port of its own.",
     "RTCP goes to the port after the RTP port and not to this one; RTP is not affected."},
    {"a=ptime:", " asks for a packet time.",
     "The engine chooses the packet time, so packets may be longer or "
     "shorter than the far end wants."},
    {"a=maxptime:", " limits the packet time.",
     "The engine chooses the packet time, so packets may be longer than the far end wants."},
    {"a=framerate:", " asks for a number of pictures in each second.",
     "The engine chooses the rate within the level, so the far end may get more pictures than it wants.",
     true},
    {"a=imageattr:", " asks for sizes of the picture.",
     "The engine chooses the size within the level, so the picture may have another one than the far end "
     "wants.",
     true},
    {"a=framesize:", " asks for a size of the picture.",
     "The engine chooses the size within the level, so the picture may have another one than the far end "
     "wants.",
     true},
    {"a=bundle-only", " offers the section only as part of a bundle.",
     "The section has ports of its own in our text, and a far end that bundles may not send to them."},
};

/// Whether "a=rtcp:5005" names the port after the RTP port, where RTCP goes in any case.
bool IsUsualRtcp(std::string_view line, const MeantSection& section) {
    const std::vector<std::string_view> words = WordsOf(line, 1);
    const std::string_view port = words.empty() ? std::string_view() : ValueOf(words[0]);
    constexpr std::size_t longest = 5;
    return IsDigits(port) && IsDigits(section.port) && port.size() <= longest &&
           section.port.size() <= longest && std::stoi(std::string(port)) == std::stoi(section.port) + 1;
}

/// Whether an ICE line has a name that no RFC gives (RFC 8839, 5).
bool IsUnknownIce(const std::string& name) {
    static constexpr std::string_view kNames[] = {"a=ice-ufrag", "a=ice-pwd",   "a=ice-lite",
                                                  "a=ice-optio", "a=ice-pacin", "a=ice-misma"};
    return std::none_of(std::begin(kNames), std::end(kNames), [&](std::string_view known) {
        return BeginsWith(name, known) && (known != "a=ice-pwd" || name.substr(9, 1) == ":");
    });
}

/// The ICE lines of one section.
struct IceLines {
    const TextLine* user = nullptr;
    const TextLine* password = nullptr;
    const TextLine* other = nullptr; ///< of a name that no RFC gives
    const TextLine* any = nullptr;   ///< the first of all
};

IceLines IceLinesOf(const Scene& scene, const MeantSection& section) {
    IceLines ice;
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const TextLine& line = scene.reading.lines[i];
        if (line.meant != SDPRow::Ice && line.meant != SDPRow::Candidate) {
            continue;
        }
        ice.any = ice.any == nullptr ? &line : ice.any;
        const std::string spelled = line.isPlain ? std::string() : StartSpelled(line.text);
        const std::string name = Lower((line.isPlain ? line.text : spelled).substr(0, 11));
        ice.user = name == "a=ice-ufrag" ? &line : ice.user;
        ice.password = BeginsWith(name, "a=ice-pwd") ? &line : ice.password;
        ice.other = line.meant == SDPRow::Ice && IsUnknownIce(name) ? &line : ice.other;
    }
    return ice;
}

void FindUnread(Scene& scene, const MeantSection& section) {
    if (!section.IsStream()) {
        return; // Of floor control and other media neither RTP nor a picture is sent.
    }
    const bool isAudio = section.media == "audio";
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const TextLine& line = scene.reading.lines[i];
        const auto* const unread =
            std::find_if(std::begin(kUnread), std::end(kUnread),
                         [&](const Unread& each) { return BeginsWith(line.text, each.start); });
        const bool isUsual = BeginsWith(line.text, "a=rtcp:") && IsUsualRtcp(line.text, section);
        if (unread == std::end(kUnread) || isUsual) {
            continue;
        }
        Suspect& suspect = Blame(scene, kMux, line, {LineWords(line), unread->asks}, {}, {});
        if (unread->isPicture || section.isSlides) {
            suspect.Know(section.isSlides ? Topic::Slides : Topic::MainPicture, {unread->comes});
            continue;
        }
        for (const Topic topic : {isAudio ? Topic::AudioSend : Topic::MainSend,
                                  isAudio ? Topic::AudioReceive : Topic::MainReceive}) {
            suspect.Know(topic, {unread->comes});
        }
    }
}

/// User fragment or password without the other.
void AddHalf(Scene& scene, const IceLines& ice) {
    const bool hasUser = ice.user != nullptr;
    const std::string missing = hasUser ? "a=ice-pwd" : "a=ice-ufrag";
    if (ice.other != nullptr) {
        const std::string text = missing + ":" + std::string(ValueOf(ice.other->text));
        Blame(scene, kHalfIce, *ice.other, {LineWords(*ice.other), " is neither a=ice-ufrag nor a=ice-pwd."},
              {"write its name in line ", ice.other->number, " as ", missing},
              {ReplaceLine(*ice.other, text)});
        return;
    }
    const TextLine& there = hasUser ? *ice.user : *ice.password;
    Blame(scene, kHalfIce, there, {LineWords(there), " has no ", missing, " line beside it."},
          {"insert the ", missing, " line after line ", there.number},
          {InsertAfter(there, missing + ":none")});
}

/// User fragment or password without a value, or with one that an agent refuses.
void AddShortValue(Scene& scene, const TextLine* line, std::size_t least) {
    const std::size_t length = line == nullptr ? least : ValueOf(line->text).size();
    if (length < least) {
        const std::string count =
            length == 0 ? "no value"
                        : Joined({"a value of ", length, length == 1 ? " character" : " characters"});
        Blame(scene, kShortIce, *line, {LineWords(*line), " has ", count, "."}, {}, {})
            .Know(Topic::Ice, {"An ICE agent refuses the user fragment and the password of this "
                               "section, so it checks no candidate."});
    }
}

/// A candidate whose address is a name of multicast DNS; the first one of the section is named.
void FindLocalNames(Scene& scene, const MeantSection& section) {
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const TextLine& line = scene.reading.lines[i];
        if (line.meant == SDPRow::Candidate && line.text.find(".local ") != std::string_view::npos) {
            Blame(scene, kLocalName, line, {LineWords(line), " has a name that ends in .local."}, {}, {})
                .Know(Topic::Ice, {"An agent in another network cannot check this candidate."});
            return;
        }
    }
}

void FindIceSection(Scene& scene, const MeantSection& section) {
    FindLocalNames(scene, section);
    const IceLines ice = IceLinesOf(scene, section);
    const TextLine& media = scene.reading.lines[section.line];
    if (ice.user == nullptr && ice.password == nullptr && scene.hasIce && section.IsStream()) {
        Blame(
            scene, kNoIce, media,
            {LineWords(media), " has no a=ice-ufrag and a=ice-pwd lines after it, and another section has."},
            {}, {})
            .Know(Topic::Ice,
                  {"The section for ", section.media,
                   " has no ufrag and no password, so an ICE agent cannot check its candidates."});
    }
    AddShortValue(scene, ice.user, 4);
    AddShortValue(scene, ice.password, 22);
    if ((ice.user == nullptr) != (ice.password == nullptr)) {
        AddHalf(scene, ice);
    }
    if (ice.any != nullptr) {
        Blame(scene, kIce, *ice.any, {LineWords(*ice.any), " offers ICE."}, {}, {})
            .Know(Topic::Ice,
                  {"The far end sees an end without ICE; a far end that does ICE alone gets no media."});
    }
}

/// The first a=ice line that is neither user fragment nor password, at any level.
void FindDropped(Scene& scene) {
    for (const TextLine& line : scene.reading.lines) {
        const std::string name = line.meant == SDPRow::Ice ? Lower(Trimmed(line.text).substr(0, 11)) : "";
        if (!name.empty() && name != "a=ice-ufrag" && !BeginsWith(name, "a=ice-pwd")) {
            Blame(scene, kDroppedIce, line, {LineWords(line), " is neither a user fragment nor a password."},
                  {}, {})
                .Know(Topic::Ice, {"The ICE agent does not learn it: lite, trickle or pacing have to come to "
                                   "it in another way."});
            return;
        }
    }
}

} // namespace

void FindIce(Scene& scene) {
    FindDropped(scene);
    for (const TextLine& line : scene.reading.lines) {
        scene.hasIce = scene.hasIce || (line.section != kNowhere && BeginsWith(line.text, "a=ice-ufrag"));
    }
    constexpr std::size_t most = 32;
    for (std::size_t i = 0; i < scene.reading.sections.size() && i < most; ++i) {
        FindUnread(scene, scene.reading.sections[i]);
        FindIceSection(scene, scene.reading.sections[i]);
    }
}

} // namespace explain
