// The key codec in both directions, and "a=crypto:" lines, against an independent model.
//
// Bytes 0 to 29 are a key and a salt and bytes 30 to 69 a key text. The next two are an offset in that text
// and the character put there. The rest are crypto lines of one audio section, separated by LF.
#include "Cost.h"
#include "Handling.h"
#include "Judged.h"
#include "Keys.h"
#include "Laws.h"
#include "Targets.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <vector>

namespace fuzz {

namespace {

constexpr std::size_t kTextLength = 40;
constexpr Budget kLine = {"crypto line", 256, 4, 256, 32};

/// The six bits of a base64 character, 0 for padding, negative for any other character.
int SixBits(char c) {
    if (c >= 'A' && c <= 'Z') {
        return c - 'A';
    }
    if (c >= 'a' && c <= 'z') {
        return c - 'a' + 26;
    }
    if (c >= '0' && c <= '9') {
        return c - '0' + 52;
    }
    if (c == '+') {
        return 62;
    }
    if (c == '/') {
        return 63;
    }
    return c == '=' ? 0 : -1;
}

/// The 30 bytes of a key text; empty if a character is not base64.
std::string Decode(const std::string& text) {
    std::string bytes;
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kTextLength; ++i) {
        const int six = SixBits(text[i]);
        if (six < 0) {
            return {};
        }
        bits = bits << 6U | static_cast<std::uint32_t>(six);
        if (i % 4 == 3) {
            bytes += static_cast<char>(bits >> 16U & 0xffU);
            bytes += static_cast<char>(bits >> 8U & 0xffU);
            bytes += static_cast<char>(bits & 0xffU);
        }
    }
    return bytes;
}

/// Blocks of exactly the length that the codec may access, so the sanitizer reports one byte more.
struct Buffers {
    explicit Buffers(char fill) {
        std::fill_n(key.get(), baseSDP::kKeyLength, static_cast<unsigned char>(fill));
        std::fill_n(salt.get(), baseSDP::kSaltLength, static_cast<unsigned char>(fill));
    }
    std::string Material() const { return Key(key.get(), salt.get()).material; }

    std::unique_ptr<unsigned char[]> key{new unsigned char[baseSDP::kKeyLength]};
    std::unique_ptr<unsigned char[]> salt{new unsigned char[baseSDP::kSaltLength]};
};

void CheckEncode(const std::string& material, const std::string& before) {
    Buffers from('\0');
    std::copy_n(material.begin(), baseSDP::kKeyLength, from.key.get());
    std::copy_n(material.begin() + baseSDP::kKeyLength, baseSDP::kSaltLength, from.salt.get());
    std::string text = before;
    GetSRTPKey(text, from.key.get(), from.salt.get());
    RequireSame("a key is written as base64", "written", Judged("key text", text), "wanted",
                Base64(material));

    Buffers to('#');
    bool isDecoded =
        ExtractSRTPKey(reinterpret_cast<const unsigned char*>(text.data()), to.key.get(), to.salt.get());
    Require(Judged("decoded own text", isDecoded), "a key that is written is read", text, text);
    Judged("own key", to.key[0]);
    RequireSame("a key comes back", "written", material, "read", to.Material());
}

void CheckDecode(const std::string& text) {
    const std::unique_ptr<unsigned char[]> exact(new unsigned char[kTextLength]);
    std::copy_n(text.begin(), kTextLength, exact.get());
    Buffers to('#');
    bool isDecoded = ExtractSRTPKey(exact.get(), to.key.get(), to.salt.get());
    const std::string wanted = Decode(text);
    Reached(wanted.empty() ? "a text that is no key" : "a text that is a key");
    Require(Judged("decoded", isDecoded) == !wanted.empty(), "base64 is read and nothing else",
            std::to_string(isDecoded), text);
    Judged("key", to.key[0]);
    RequireSame("a text that is no key changes no byte", "wanted",
                wanted.empty() ? std::string(baseSDP::kKeyLength + baseSDP::kSaltLength, '#') : wanted,
                "read", to.Material());
}

/// The independent model: the values that crypto lines store in a section.
struct Model {
    std::int32_t suite = 0;
    std::int32_t tag = 0;
    std::string text;
    std::string material = std::string(baseSDP::kKeyLength + baseSDP::kSaltLength, '\0');

    void Read(const std::string& line) {
        std::istringstream stream(line);
        std::vector<std::string> words;
        for (std::string word; words.size() < 3 && stream >> word;) {
            words.push_back(word);
        }
        if (words.size() < 3 || words[1] == "AES_CM_128_HMAC_SHA1_80" ||
            words[1] == "AES_CM_256_HMAC_SHA1_80" || words[0].find(':') == std::string::npos) {
            return;
        }
        if (words[1] == "AES_CM_128_HMAC_SHA1_32") {
            suite = 1;
        }
        std::string number = words[0].substr(words[0].find(':') + 1);
        number = number.substr(0, number.find(':'));
        const bool isDigits = !number.empty() && number.find_first_not_of("0123456789") == std::string::npos;
        tag = isDigits ? static_cast<std::int32_t>(std::strtol(number.c_str(), nullptr, 10)) : 1;
        if (words[2].size() < 47) {
            return;
        }
        text = words[2].substr(7).c_str();
        const std::string decoded = Decode(words[2].substr(7, kTextLength));
        material = decoded.empty() ? material : decoded;
    }

    std::string Text() const {
        return "suite=" + std::to_string(suite) + " tag=" + std::to_string(tag) + " text=" + text +
               " material=" + material;
    }
};

std::string SectionText(const MediaSession& ms) {
    Model found;
    found.suite = ms.cryptoAlgo;
    found.tag = ms.iCryptoTag;
    found.text = ms.strBase64Key;
    found.material = Key(ms.bufSRTPKey, ms.bufSRTPSalt).material;
    return found.Text();
}

/// The crypto line of our answer: the far end's tag, our suite, our key.
std::string AnswerLine(const Side& side, const Model& model) {
    if (model.suite == 0) {
        return {};
    }
    return "a=crypto:" + std::to_string(model.tag) + " AES_CM_128_HMAC_SHA1_32 inline:" +
           Key(side.local.bufSRTPKey[0], side.local.bufSRTPSalt[0]).text + "\r\n";
}

void CheckLinesOf(const std::string& text, std::uint64_t secret) {
    const Side side = WholeSide(secret);
    SDPHandler handler;
    Prepare(handler, side);
    RemoteSDP remote;
    handler.ParseTheSDP("m=audio 5004 RTP/SAVP 0\r\n", remote);
    Model model;
    std::string line;
    for (std::istringstream lines(text); std::getline(lines, line);) {
        const Meter meter;
        handler.ProcessCrypto(line);
        CheckCost(kLine, meter.Read(), line.size());
        model.Read(line);
        RequireSame("a crypto line is read as the model reads it", line.c_str(), model.Text(), "read",
                    SectionText(*Judged("handler", handler).vecRemoteMediaSession.back()));
    }
    Reached(model.suite == 0 ? "no crypto line counted" : "a crypto line counted");
    RequireSame("our answer takes the tag", "wanted", AnswerLine(side, model), "written",
                Judged("crypto line", handler.AddCrypto(baseSDP::SRTP_AUDIO)));
    handler.GetRTPData(remote);
    RequireSame("the record holds the section's key", "wanted", model.material, "record",
                Key(Judged("record", remote).bufSRTPKey[0], remote.bufSRTPSalt[0]).material);
    CheckGoodTextAfterwards(handler, side);

    std::string whole = "m=audio 5004 RTP/SAVP 0\r\n";
    for (std::istringstream lines(text); std::getline(lines, line);) {
        whole += line + "\r\n";
    }
    CheckHandling(side, whole, {});
}

void Run(Input input, std::uint64_t secret) {
    std::string material = input.Take(baseSDP::kKeyLength + baseSDP::kSaltLength);
    material.resize(baseSDP::kKeyLength + baseSDP::kSaltLength);
    std::string text = input.Take(kTextLength);
    text.resize(kTextLength, 'A');
    const std::size_t at = input.Below(kTextLength);
    const auto stranger = static_cast<char>(input.Byte());
    const std::string lines = input.Rest();

    CheckEncode(material, lines);
    CheckDecode(text);
    // A base64 text with one character replaced.
    std::string nearly = Base64(material);
    CheckDecode(nearly);
    nearly[at] = stranger;
    CheckDecode(nearly);
    CheckLinesOf(lines, secret);
}

} // namespace

} // namespace fuzz

void FuzzKey(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, fuzz::Run);
}
