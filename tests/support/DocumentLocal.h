// "field = value" lines of documents, which change a local set. A field is called as in Fields.h; codecs,
// roles and suites have their names, and "keys" gives all three streams keys. Tests: DocumentTest.cpp.
#pragma once

#include "Capabilities.h"
#include "Document.h"
#include "Fields.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <list>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace documents {

using support::CRYPTO_PROFILE;

struct Named {
    const char* name;
    std::int32_t value;
};

/// The codecs, roles and suites that a value may name.
inline constexpr Named kNamed[] = {
    {"PAYLOAD_G711U", PAYLOAD_G711U},
    {"PAYLOAD_G729", PAYLOAD_G729},
    {"PAYLOAD_G7221", PAYLOAD_G7221},
    {"PAYLOAD_G722", PAYLOAD_G722},
    {"PAYLOAD_VP8", PAYLOAD_VP8},
    {"PAYLOAD_H264", PAYLOAD_H264},
    {"PAYLOAD_H264_PACKETIZATION_0", PAYLOAD_H264_PACKETIZATION_0},
    {"PAYLOAD_UNKNOWN", PAYLOAD_UNKNOWN},
    {"VIDEOTYPE_MAIN", VIDEOTYPE_MAIN},
    {"VIDEOTYPE_PRESO", VIDEOTYPE_PRESO},
    {"VIDEOTYPE_UNKNOWN", VIDEOTYPE_UNKNOWN},
    {"CRYPTO_NONE", support::kSuiteNone},
    {"CRYPTO_AES_CM_128_HMAC_SHA1_32", support::kSuite32},
    {"CRYPTO_AES_CM_128_HMAC_SHA1_80", support::kSuite80},
    {"CRYPTO_AES_CM_256_HMAC_SHA1_80", support::kSuite256},
    {"CRYPTO_AEAD_AES_GCM_128", support::kSuiteGcm128},
    {"CRYPTO_AEAD_AES_GCM_256", support::kSuiteGcm256},
};

/// The number that a word names or writes.
inline std::int32_t NumberOf(const std::string& word) {
    for (const Named& row : kNamed) {
        if (word == row.name) {
            return row.value;
        }
    }
    std::int32_t number = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || stop != end) {
        throw std::invalid_argument("neither a name nor a 32-bit number: " + word);
    }
    return number;
}

inline void Assign(std::int32_t& field, const std::string& value) {
    field = NumberOf(value);
}

inline void Assign(bool& field, const std::string& value) {
    if (value != "true" && value != "false") {
        throw std::invalid_argument("neither true nor false: " + value);
    }
    field = value == "true";
}

inline void Assign(std::string& field, const std::string& value) {
    field = value;
}

inline void Assign(std::list<int>& field, const std::string& value) {
    field.clear();
    for (const std::string& word : WordsOf(value)) {
        field.push_back(NumberOf(word));
    }
}

/// Codecs are a set, so a value may have several names.
template <typename Enum, typename = std::enable_if_t<std::is_enum_v<Enum>>>
void Assign(Enum& field, const std::string& value) {
    std::int32_t bits = 0;
    for (const std::string& word : WordsOf(value)) {
        bits |= NumberOf(word);
    }
    field = static_cast<Enum>(bits);
}

template <std::size_t Length>
void Assign(unsigned char (&/*row*/)[Length], const std::string& /*value*/) {
    throw std::invalid_argument("rows of keys are given by the field keys");
}

/// keys = near CRYPTO_AES_CM_128_HMAC_SHA1_32
inline void GiveKeys(LocalSDP& local, const std::string& value) {
    const std::vector<std::string> words = WordsOf(value);
    if (words.size() != 2 || words[0].size() != 4) {
        throw std::invalid_argument("keys are near or away, and a suite: " + value);
    }
    support::GiveKeys(local, words[0], static_cast<CRYPTO_PROFILE>(NumberOf(words[1])));
}

/// Changes a local set as the lines say; a value may be empty.
inline void ApplyFields(LocalSDP& local, const std::vector<Line>& block) {
    for (const Line& line : block) {
        const std::size_t equals = line.text.find(" =");
        const std::string name = equals == std::string::npos ? "" : line.text.substr(0, equals);
        const std::string value =
            !name.empty() && equals + 3 < line.text.size() ? line.text.substr(equals + 3) : "";
        bool isKnown = name == "keys";
        try {
            if (isKnown) {
                GiveKeys(local, value);
            }
            support::ForEachField(local, [&](const std::string& called, auto& field) {
                if (called == name) {
                    isKnown = true;
                    Assign(field, value);
                }
            });
            if (!isKnown) {
                throw std::invalid_argument(
                    "no \"field = value\" with a field of a local set, called as in SDP.h");
            }
        } catch (const std::invalid_argument& error) {
            throw Malformed(line, error.what());
        }
    }
}

} // namespace documents
