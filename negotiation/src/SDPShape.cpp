// Stage: shape, the component's text to the text that is sent.
// Input: the component's offer or answer, the slots, a plan per role. Output: every line after "o=".
// Appends to the text; key text in between is wiped.
// kRewrites lists what is rewritten in a line; every other line is the component's own.
// Test: tests/negotiation/shape.cases
#include "SDPShape.h"

#include "SDPHandler.h"
#include "SDPPrefix.h"
#include "SDPPrepare.h"

#include <algorithm>

namespace negotiation {
namespace {

/// The meaning of one of the component's own numbers; kMeanings for any other.
std::size_t MeaningOfOwn(std::string_view number) {
    const std::int32_t own = NumberOrNone(number);
    return static_cast<std::size_t>(std::find(kOwnNumbers.begin(), kOwnNumbers.end(), own) -
                                    kOwnNumbers.begin());
}

/// The slot's number for one of the component's; -1 when the text does not list it.
std::int32_t Mapped(std::string_view number, const Plan& plan) {
    const std::size_t meaning = MeaningOfOwn(number);
    return meaning == kMeanings ? -1 : plan.slot->numbers[meaning];
}

void RewriteMedia(sdp::Writer& text, std::string_view value, const Plan& plan) {
    sdp::Words words(value);
    text << "m=" << plan.slot->media;
    words.Next();
    words.Next();
    words.Next();
    text << " " << plan.port << " " << plan.slot->transport;
    if (plan.slot->role == kFloor) {
        text << " " << plan.slot->formats;
    }
    for (std::string_view word = words.Next(); !word.empty(); word = words.Next()) {
        const std::int32_t number = Mapped(word, plan);
        if (number >= 0) {
            text << " " << number;
        }
    }
    text << "\r\n";
}

void RewriteRtpmap(sdp::Writer& text, std::string_view value, const Plan& plan) {
    const std::int32_t number = Mapped(TakePiece(value, ' '), plan);
    if (number >= 0) {
        text << "a=rtpmap:" << number << " " << value << "\r\n";
    }
}

void RewriteFmtp(sdp::Writer& text, std::string_view value, const Plan& plan) {
    constexpr std::string_view level = "profile-level-id=";
    const std::int32_t number = Mapped(TakePiece(value, ' '), plan);
    if (number < 0) {
        return;
    }
    text << "a=fmtp:" << number << " ";
    const std::string_view profile = plan.slot->profile;
    if (!profile.empty() && sdp::StartsWith(value, level)) {
        text << level << profile;
        value.remove_prefix(level.size() + profile.size());
    }
    text << value << "\r\n";
}

void RewriteDirection(sdp::Writer& text, std::string_view /*value*/, const Plan& plan) {
    text << KeywordOf(plan.slot->ours) << "\r\n";
}

/// "IN IP4 address" with the type that the address has.
void WriteAddress(sdp::Writer& text, std::string_view value) {
    sdp::Words words(value);
    words.Next();
    words.Next();
    const std::string_view address = words.Next();
    text << "IN " << AddressType(address) << " " << address << "\r\n";
}

void RewriteConnection(sdp::Writer& text, std::string_view value, const Plan& /*plan*/) {
    text << "c=";
    WriteAddress(text, value);
}

void RewriteRtcp(sdp::Writer& text, std::string_view value, const Plan& /*plan*/) {
    text << "a=rtcp:" << TakePiece(value, ' ') << " ";
    WriteAddress(text, value);
}

void RewriteFloorControl(sdp::Writer& text, std::string_view value, const Plan& plan) {
    using Floor = SDPNegotiator::FloorRole;
    const Floor role = plan.slot->floorRole;
    text << "a=floorctrl:"
         << (role == Floor::None     ? value
             : role == Floor::Server ? std::string_view("s-only")
                                     : "c-only")
         << "\r\n";
}

struct Rewrite {
    std::string_view example;
    std::string_view keyword;
    void (*write)(sdp::Writer& text, std::string_view value, const Plan& plan); ///< null: see `given`
    std::string Slot::*given; ///< the far end's value, which replaces the component's; empty: none
};

constexpr Rewrite kRewrites[] = {
    {"m=audio 5004 RTP/AVP 0 101", "m=", RewriteMedia, nullptr},
    {"c=IN IP4 192.0.2.10", "c=", RewriteConnection, nullptr},
    {"a=rtpmap:97 H264/90000", "a=rtpmap:", RewriteRtpmap, nullptr},
    {"a=fmtp:97 profile-level-id=42001F;packetization-mode=1", "a=fmtp:", RewriteFmtp, nullptr},
    {"a=inactive", sdp::kDirections[0].keyword, RewriteDirection, nullptr},
    {"a=sendonly", sdp::kDirections[1].keyword, RewriteDirection, nullptr},
    {"a=recvonly", sdp::kDirections[2].keyword, RewriteDirection, nullptr},
    {"a=sendrecv", sdp::kDirections[3].keyword, RewriteDirection, nullptr},
    {"a=rtcp:5005 IN IP4 192.0.2.10", "a=rtcp:", RewriteRtcp, nullptr},
    {"a=floorctrl:c-s", "a=floorctrl:", RewriteFloorControl, nullptr},
    {"a=label:9", "a=label:", nullptr, &Slot::label},
    {"a=content:main", "a=content:", nullptr, &Slot::content},
    {"a=floorid:2 mstrm:9", "a=floorid:", nullptr, &Slot::floor},
    {"a=confid:15", "a=confid:", nullptr, &Slot::conferenceId},
    {"a=userid:15", "a=userid:", nullptr, &Slot::userId},
};

void RewriteLine(sdp::Writer& text, std::string_view line, const Plan& plan) {
    const std::size_t index = RowAt<kRewrites>(line);
    if (index == std::size(kRewrites)) {
        text << line << "\r\n";
        return;
    }
    const Rewrite& row = kRewrites[index];
    if (row.write != nullptr) {
        row.write(text, sdp::After(line, row.keyword.size()), plan);
        return;
    }
    const std::string& given = plan.slot->*row.given;
    if (given.empty()) {
        text << line << "\r\n";
    } else {
        text << row.keyword << given << "\r\n";
    }
}

/// The component's text in its parts.
struct Parts {
    std::string_view session;
    std::array<std::string_view, kRoles> sections;
};

/// The component's text has the roles that have a plan, in their order. Floor control may be there
/// without one; it is the last section and is left out then.
Parts CutParts(std::string_view component, const Plans& plans) {
    Parts parts;
    std::size_t begin = 0;
    std::string_view* part = &parts.session;
    std::size_t role = 0;
    sdp::ForEachLine(component, [&](std::size_t at, std::size_t length) {
        if (!sdp::StartsWith(component.substr(at, length), "m=")) {
            return;
        }
        *part = component.substr(begin, at - begin);
        begin = at;
        while (role < kFloor && plans[role].slot == nullptr) {
            ++role;
        }
        part = &parts.sections[role];
        role = std::min<std::size_t>(role + 1, kFloor);
    });
    *part = component.substr(begin);
    return parts;
}

void WriteSession(sdp::Writer& body, std::string_view lines, const Session& session) {
    sdp::ForEachLine(lines, [&](std::size_t at, std::size_t length) {
        const std::string_view line = lines.substr(at, length);
        if (sdp::StartsWith(line, "t=")) {
            body << session.time;
        } else if (!sdp::StartsWith(line, "v=") && !sdp::StartsWith(line, "o=")) {
            RewriteLine(body, line, {});
        }
    });
}

void WriteCrypto(sdp::Writer& text, const Plan& plan) {
    for (const Plan::Crypto& crypto : plan.crypto) {
        if (crypto.tag.empty()) {
            return;
        }
        for (const sdp::Suite& suite : sdp::kSuites) {
            if (suite.profile == kBothSuites[crypto.suite]) {
                text << "a=crypto:" << crypto.tag << " " << suite.name << " inline:" << crypto.key.View()
                     << "\r\n";
            }
        }
    }
}

/// The component writes no crypto lines here; they are added before the first attribute.
void WriteOpen(sdp::Writer& body, std::string_view lines, const Plan& plan) {
    bool hasAttribute = false;
    sdp::ForEachLine(lines, [&](std::size_t at, std::size_t length) {
        if (!hasAttribute && lines[at] == 'a') {
            WriteCrypto(body, plan);
            hasAttribute = true;
        }
        RewriteLine(body, lines.substr(at, length), plan);
    });
}

void WriteClosed(sdp::Writer& body, const Slot& slot) {
    body << "m=" << slot.media << " 0 " << slot.transport;
    if (!slot.formats.empty()) {
        body << " " << slot.formats;
    }
    for (const std::int16_t number : slot.numbers) {
        if (slot.formats.empty() && number >= 0) {
            body << " " << number;
        }
    }
    body << "\r\n";
}

} // namespace

void WriteBody(sdp::Writer& body, std::string_view component, const Session& session, const Plans& plans) {
    const Parts parts = CutParts(component, plans);
    WriteSession(body, parts.session, session);
    for (const Slot& slot : session.slots) {
        const bool hasPlan = slot.role != kNoRole && plans[slot.role].slot == &slot;
        if (hasPlan) {
            WriteOpen(body, parts.sections[slot.role], plans[slot.role]);
        } else {
            WriteClosed(body, slot);
        }
    }
}

SecretText TextOf(const Key& key) {
    std::string text;
    GetSRTPKey(text, key.key.data(), key.salt.data());
    return SecretText(std::move(text));
}

std::string_view OriginUser(std::string_view component) {
    const std::size_t at = component.find("o=");
    return component.substr(at + 2, component.find(' ', at) - at - 2);
}

std::string_view AddressType(std::string_view address) {
    return address.find(':') == std::string_view::npos ? "IP4" : "IP6";
}

} // namespace negotiation
