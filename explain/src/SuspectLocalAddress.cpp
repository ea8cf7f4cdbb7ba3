// Stage: suspects in the local addresses: that of the c= line and that of the o= line, with its extension.
// Input: the local record. Output: suspects that blame a field.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kNoOwnAddress = {"E120", "B01", ExplainSeverity::Error, 3,
                                "The c= and a=rtcp lines always have the default address; an offer is not "
                                "written without one, and an answer has a c= line without an address (B01)."};
constexpr Rule kOwnAddressKind = {"E121", "B25", ExplainSeverity::Error, 4,
                                  "Each address of ours is written after IP4 as it is, whatever it is (B25); "
                                  "0.0.0.0 is an old form of hold "
                                  "(RFC 3264, 8.4)."};
constexpr Rule kTwoAddresses = {"E122", "B01", ExplainSeverity::Note, 49,
                                "The c= line has the default address and the o= line the own one (B01)."};
constexpr Rule kPrivate = {"E139", "B01", ExplainSeverity::Note, 50,
                           "The c= line always has the default address, whatever network the far end is in "
                           "(B01)."};
constexpr Rule kOrigin = {"E135", "", ExplainSeverity::Error, 9,
                          "The extension is written into the first word of the o= line as it is."};

constexpr Topic kAsked[] = {Topic::Call, Topic::AudioReceive, Topic::MainReceive, Topic::Slides};
constexpr const char* kDefaultName = "strDefaultIPAddr (default_address) ";
constexpr const char* kSampleAddress = "192.0.2.1";

/// Reports a suspect on the call and on everything that our text asks for.
void KnowAsked(Suspect& suspect, Pieces comes) {
    for (const Topic topic : kAsked) {
        suspect.Know(topic, comes);
    }
}

bool IsPublic(const std::string& address) {
    return IsIpv4(address) && !IsPrivate(address);
}

void AddNoDefault(Scene& scene) {
    Suspect& suspect = BlameField(scene, kNoOwnAddress, "default_address", {kDefaultName, "is empty."},
                                  {"set default_address"}, 0, kSampleAddress);
    const char* const comes = scene.input.remoteAnswers
                                  ? "No offer is written at all."
                                  : "Our answer's c= line has no address, so nothing can be sent to us "
                                    "and a strict reader refuses the text.";
    KnowAsked(suspect, {comes});
    suspect.Know(Topic::AudioSend, {comes});
    suspect.Know(Topic::MainSend, {comes});
}

/// The address that media are asked for at.
void FindDefaultAddress(Scene& scene) {
    const std::string& address = scene.input.local.strDefaultIPAddr;
    if (address.empty()) {
        AddNoDefault(scene);
    } else if (!IsUnicast(address)) {
        const bool isOfMany = IsIpv4(address) && address[0] != '0';
        KnowAsked(BlameField(scene, kOwnAddressKind, "default_address",
                             {kDefaultName, "is ", AsShown(address),
                              isOfMany ? ", a multicast or broadcast address." : ", no usable IPv4 address."},
                             {"set default_address to an IPv4 address"}, 0, kSampleAddress),
                  {"Our text says c=IN IP4 ", AsShown(address), ", to which the far end cannot send."});
    } else if (IsPrivate(address)) {
        const std::string& own = scene.input.local.strMyIPAddr;
        const bool isPublic = IsPublic(own);
        KnowAsked(
            BlameField(scene, kPrivate, "default_address",
                       {kDefaultName, "is ", address, ", a loopback, private or link-local address",
                        isPublic ? ", and strMyIPAddr (origin_address) is " : "", isPublic ? own : "", "."},
                       {"set default_address to ", isPublic ? own : "an address that the far end reaches"}, 0,
                       isPublic ? own : kSampleAddress),
            {"Media for us go to ", address, ", which only its own network reaches."});
    }
}

/// The address of the o= line. Beside a private default address a public one is what that should be.
void FindOriginAddress(Scene& scene) {
    const std::string& address = scene.input.local.strDefaultIPAddr;
    const std::string& own = scene.input.local.strMyIPAddr;
    if (own.empty() || (IsUnicast(address) && IsPrivate(address) && IsPublic(own))) {
        return;
    }
    if (!IsIpv4(own)) {
        BlameField(scene, kOwnAddressKind, "origin_address",
                   {"strMyIPAddr (origin_address) is ", AsShown(own), ", no IPv4 address."},
                   {"set origin_address to an IPv4 address"}, 0, IsIpv4(address) ? address : kSampleAddress)
            .Know(Topic::Call,
                  {"Our o= line says IN IP4 ", AsShown(own), ", so a strict reader refuses the text."});
    } else if (own != address) {
        KnowAsked(BlameField(scene, kTwoAddresses, "origin_address",
                             {"strMyIPAddr (origin_address) is ", AsShown(own), " and ", kDefaultName, "is ",
                              AsShown(address), "."},
                             {"set origin_address to the default address"}, 0, address),
                  {"Media are asked for at the default address, ", AsShown(address), ", alone."});
    }
}

void FindExtension(Scene& scene) {
    const std::string& extension = scene.input.local.strOExtension;
    if (extension.find_first_of(" \t\r\n") != std::string::npos) {
        BlameField(scene, kOrigin, "origin_extension",
                   {"strOExtension (origin_extension) contains white space."},
                   {"take the white space out of origin_extension"}, 0, "x")
            .Know(Topic::Call, {"Our o= line has a word too many, so a strict reader refuses the text."});
    }
}

} // namespace

void FindLocalAddress(Scene& scene) {
    FindDefaultAddress(scene);
    FindOriginAddress(scene);
    FindExtension(scene);
}

} // namespace explain
