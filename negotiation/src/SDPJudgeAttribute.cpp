// The judge's grammar of attributes and addresses.
//
// Input: one a= line as it was written, or the words of an address. Output: violations of the rules J04, J05,
// J08 and J12 to J14. The table holds the forms that programs are known to get wrong; an attribute without a
// row is free, as RFC 4566, 5.13 has it. No sentence quotes a value.
// Test: tests/judge/SDPJudgeAttributeTest.cpp, tests/judge/broken
#include "SDPJudgeText.h"

#include "InetPton.h"

#include <algorithm>
#include <cctype>

namespace judge {

namespace {

// A name is free; only what looks like an address is held against its type.
bool FitsFamily(std::string_view type, std::string_view written) {
    const std::string address(written);
    unsigned char bytes[sizeof(in6_addr)];
    if (address.find(':') != std::string_view::npos) {
        return type == "IP6" && inet_pton(AF_INET6, address.c_str(), bytes) == 1;
    }
    if (address.find_first_not_of("0123456789.") == std::string_view::npos) {
        return type == "IP4" && inet_pton(AF_INET, address.c_str(), bytes) == 1;
    }
    return std::all_of(address.begin(), address.end(),
                       [](unsigned char c) { return std::isalnum(c) != 0 || c == '-' || c == '.'; });
}

bool IsNumber(std::string_view value) {
    return Number(value).has_value();
}

bool IsTokenList(std::string_view value) {
    const auto pieces = Split(value, ',');
    return std::all_of(pieces.begin(), pieces.end(), IsToken);
}

bool IsRtpmap(std::string_view value) {
    const auto words = Split(value, ' ');
    const auto parts = Split(words.back(), '/');
    return words.size() == 2 && Number(words[0]).value_or(128) <= 127 && IsToken(parts[0]) &&
           (parts.size() == 2 || parts.size() == 3) && Number(parts[1]).value_or(0) > 0;
}

bool IsFmtp(std::string_view value) {
    const auto blank = value.find(' ');
    return blank != std::string_view::npos && IsToken(value.substr(0, blank)) &&
           !Trimmed(value.substr(blank)).empty();
}

bool IsRtcp(std::string_view value) {
    const auto words = Split(value, ' ');
    return (words.size() == 1 || words.size() == 4) && Number(words[0]).value_or(65536) <= 65535;
}

bool IsRoles(std::string_view value) {
    const auto roles = Split(value, ' ');
    return std::all_of(roles.begin(), roles.end(),
                       [](auto role) { return role == "c-only" || role == "s-only" || role == "c-s"; });
}

bool IsFloor(std::string_view value) {
    const auto words = Split(value, ' ');
    return IsId(words[0]) && (words.size() == 1 || Split(words[1], ':').size() == 2);
}

bool IsIceName(std::string_view value) {
    return value.size() >= 4 && value.size() <= 256;
}
bool IsIcePassword(std::string_view value) {
    return value.size() >= 22 && value.size() <= 256;
}

bool IsCrypto(std::string_view value) {
    const auto words = Split(value, ' ');
    const bool blank = std::any_of(words.begin(), words.end(), [](auto word) { return word.empty(); });
    return !blank && words.size() >= 3 && IsNumber(words[0]) && words[0].size() <= 9 && IsToken(words[1]) &&
           words[2].substr(0, 7) == "inline:";
}

struct AttributeForm {
    const char* example;
    std::string_view name;
    bool (*fits)(std::string_view value);
    const char* rule;
};

constexpr AttributeForm kForms[] = {
    {"a=label:8", "label", IsToken, "J08"},
    {"a=content:main,speaker", "content", IsTokenList, "J08"},
    {"a=mid:audio", "mid", IsToken, "J08"},
    {"a=setup:active", "setup", IsToken, "J08"},
    {"a=ptime:20", "ptime", IsNumber, "J08"},
    {"a=maxptime:60", "maxptime", IsNumber, "J08"},
    {"a=rtcp:5005 IN IP4 192.0.2.1", "rtcp", IsRtcp, "J08"},
    {"a=floorctrl:c-only", "floorctrl", IsRoles, "J08"},
    {"a=confid:15", "confid", IsId, "J08"},
    {"a=userid:15", "userid", IsId, "J08"},
    {"a=floorid:2 mstrm:9", "floorid", IsFloor, "J08"},
    {"a=ice-ufrag:8hhY", "ice-ufrag", IsIceName, "J08"},
    {"a=ice-pwd:asd88fgpdd777uzjYhagZg", "ice-pwd", IsIcePassword, "J08"},
    {"a=rtpmap:97 H264/90000", "rtpmap", IsRtpmap, "J12"},
    {"a=fmtp:101 0-15", "fmtp", IsFmtp, "J12"},
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:WVNf...", "crypto", IsCrypto, "J13"},
};

// Bytes of master key and salt (RFC 4568, 6.2; RFC 6188, 3; RFC 7714, 14.2).
constexpr struct {
    std::string_view suite;
    std::size_t length;
} kKeyLengths[] = {
    {"AES_CM_128_HMAC_SHA1_80", 30}, {"AES_CM_128_HMAC_SHA1_32", 30}, {"F8_128_HMAC_SHA1_80", 30},
    {"AES_192_CM_HMAC_SHA1_80", 38}, {"AES_192_CM_HMAC_SHA1_32", 38}, {"AES_256_CM_HMAC_SHA1_80", 46},
    {"AES_256_CM_HMAC_SHA1_32", 46}, {"AEAD_AES_128_GCM", 28},        {"AEAD_AES_256_GCM", 44},
};

// The decoded length of base64 text, or nothing when it is none. Common relays leave the padding away.
std::optional<std::size_t> DecodedLength(std::string_view text) {
    const auto digits = std::min(text.find('='), text.size());
    const std::string_view padding = text.substr(digits);
    const bool padded = padding.empty() || padding == (digits % 4 == 2 ? "==" : "=");
    const bool known =
        std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(digits),
                    [](unsigned char c) { return std::isalnum(c) != 0 || c == '+' || c == '/'; });
    return padded && known ? std::optional(digits * 6 / 8) : std::nullopt;
}

void CheckKeys(const Attribute& line, const Section& section, Verdict& verdict) {
    const Crypto crypto = ReadCrypto(line.value);
    for (const std::string_view key : crypto.keys) {
        for (const auto& [suite, length] : kKeyLengths) {
            if (suite == crypto.suite && DecodedLength(key) != length) {
                verdict.Add("J14", line.line, 0, section,
                            "The key of " + std::string(suite) + " does not decode to " +
                                std::to_string(length) + " bytes.");
            }
        }
        if (!key.empty() && key.find_first_not_of("A=") == std::string_view::npos) {
            verdict.Add("J14", line.line, 0, section, "Every bit of key and salt is zero.");
        }
    }
}

} // namespace

void CheckAttribute(const Line& line, const Section& level, Verdict& verdict) {
    const std::string_view text = line.text.substr(2);
    const auto colon = text.find(':');
    const std::string_view name = text.substr(0, colon);
    const bool bare = colon != std::string_view::npos && Trimmed(text.substr(colon + 1)).empty();
    if (!IsToken(name) || bare) {
        verdict.Add("J08", line.number, 0, level,
                    bare && IsToken(name) ? "Attribute " + Quoted(name) + " has a colon without a value."
                                          : "The attribute has no name.");
        return;
    }
    const std::string_view value =
        colon == std::string_view::npos ? std::string_view{} : text.substr(colon + 1);
    const auto form = std::find_if(std::begin(kForms), std::end(kForms),
                                   [name](const AttributeForm& row) { return row.name == name; });
    if (form != std::end(kForms) && !form->fits(value)) {
        verdict.Add(form->rule, line.number, 0, level,
                    "Attribute '" + std::string(name) + "' is not written as in " + form->example + ".");
    } else if (name == "crypto") {
        CheckKeys({name, value, line.number}, level, verdict);
    } else if (const auto words = Split(value, ' '); name == "rtcp" && words.size() == 4) {
        CheckAddress({words[1], words[2], words[3]}, "J08", line.number, level, verdict);
    }
}

// "IN IP4 192.0.2.1", the last word perhaps with a time to live
void CheckAddress(const std::vector<std::string_view>& words, const char* formRule, std::size_t line,
                  const Section& level, Verdict& verdict) {
    const bool formed = words.size() == 3 && words[0] == "IN" && (words[1] == "IP4" || words[1] == "IP6");
    if (!formed || words[2].empty()) {
        verdict.Add(formRule, line, 0, level, "The address is not IN, IP4 or IP6, and an address.");
    } else if (!FitsFamily(words[1], words[2].substr(0, words[2].find('/')))) {
        verdict.Add("J05", line, 0, level, "The address is none of " + std::string(words[1]) + ".");
    }
}

} // namespace judge
