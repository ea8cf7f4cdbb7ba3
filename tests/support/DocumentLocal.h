// The local sets of documents: the sets of Capabilities.h by name, and "field = value" lines that change one.
// A field is called as in SDP.h. Tests: DocumentTest.cpp.
#pragma once

#include "Capabilities.h"
#include "Document.h"

#include <charconv>
#include <list>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace documents {

inline PayloadType_t CodecCalled(const std::string& name) {
    static const std::pair<const char*, PayloadType_t> rows[] = {
        {"PAYLOAD_G711U", PAYLOAD_G711U},
        {"PAYLOAD_G729", PAYLOAD_G729},
        {"PAYLOAD_G7221", PAYLOAD_G7221},
        {"PAYLOAD_G722", PAYLOAD_G722},
        {"PAYLOAD_VP8", PAYLOAD_VP8},
        {"PAYLOAD_H264", PAYLOAD_H264},
        {"PAYLOAD_H264_PACKETIZATION_0", PAYLOAD_H264_PACKETIZATION_0},
    };
    for (const auto& [called, codec] : rows) {
        if (name == called) {
            return codec;
        }
    }
    throw std::invalid_argument("no codec is called " + name);
}

inline support::CRYPTO_PROFILE SuiteCalled(const std::string& name) {
    static const std::pair<const char*, support::CRYPTO_PROFILE> rows[] = {
        {"CRYPTO_NONE", support::kSuiteNone},
        {"CRYPTO_AES_CM_128_HMAC_SHA1_32", support::kSuite32},
        {"CRYPTO_AES_CM_128_HMAC_SHA1_80", support::kSuite80},
        {"CRYPTO_AES_CM_256_HMAC_SHA1_80", support::kSuite256},
        {"CRYPTO_AEAD_AES_GCM_128", support::kSuiteGcm128},
        {"CRYPTO_AEAD_AES_GCM_256", support::kSuiteGcm256},
    };
    for (const auto& [called, suite] : rows) {
        if (name == called) {
            return suite;
        }
    }
    throw std::invalid_argument("no suite is called " + name);
}

inline void Assign(std::int32_t& field, const std::string& value) {
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, field);
    if (error != std::errc() || stop != end) {
        throw std::invalid_argument("no 32-bit number: " + value);
    }
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

inline void Assign(PayloadType_t& field, const std::string& value) {
    std::int32_t codecs = 0;
    for (const std::string& name : WordsOf(value)) {
        codecs |= CodecCalled(name);
    }
    field = static_cast<PayloadType_t>(codecs);
}

inline void Assign(std::list<int>& field, const std::string& value) {
    field.clear();
    for (const std::string& name : WordsOf(value)) {
        field.push_back(CodecCalled(name));
    }
}

template <auto... Path>
void Field(LocalSDP& local, const std::string& value) {
    Assign((local.*....*Path), value);
}

template <int Stream>
void Suite(LocalSDP& local, const std::string& value) {
    local.cryptoAlgo[Stream] = SuiteCalled(value);
}

/// keys = near CRYPTO_AES_CM_128_HMAC_SHA1_32
inline void Keys(LocalSDP& local, const std::string& value) {
    const std::vector<std::string> words = WordsOf(value);
    if (words.size() != 2 || words[0].size() != 4) {
        throw std::invalid_argument("keys are near or away, and a suite: " + value);
    }
    support::GiveKeys(local, words[0], SuiteCalled(words[1]));
}

struct FieldRow {
    const char* name;
    void (*assign)(LocalSDP&, const std::string&);
};

inline constexpr FieldRow kFields[] = {
    {"eAudioCodec", Field<&LocalSDP::eAudioCodec>},
    {"listAudioCodecPriority", Field<&LocalSDP::listAudioCodecPriority>},
    {"iAudioRTPPort", Field<&LocalSDP::iAudioRTPPort>},
    {"iMaxBandwidth", Field<&LocalSDP::iMaxBandwidth>},
    {"strMyIPAddr", Field<&LocalSDP::strMyIPAddr>},
    {"strDefaultIPAddr", Field<&LocalSDP::strDefaultIPAddr>},
    {"strOExtension", Field<&LocalSDP::strOExtension>},
    {"fVideoTxMuted", Field<&LocalSDP::fVideoTxMuted>},
    {"iBfcpConfid", Field<&LocalSDP::iBfcpConfid>},
    {"iBfcpUserid", Field<&LocalSDP::iBfcpUserid>},
    {"iVideoPresoControlPort", Field<&LocalSDP::iVideoPresoControlPort>},
    {"m_VideoMain.eVideoCodec", Field<&LocalSDP::m_VideoMain, &VideoParms::eVideoCodec>},
    {"m_VideoMain.iVideoRTPPort", Field<&LocalSDP::m_VideoMain, &VideoParms::iVideoRTPPort>},
    {"m_VideoMain.strVideoLevel", Field<&LocalSDP::m_VideoMain, &VideoParms::strVideoLevel>},
    {"m_VideoMain.iFmtpMaxMbps", Field<&LocalSDP::m_VideoMain, &VideoParms::iFmtpMaxMbps>},
    {"m_VideoMain.iFmtpMaxFrameSize", Field<&LocalSDP::m_VideoMain, &VideoParms::iFmtpMaxFrameSize>},
    {"m_VideoMain.iFmtpMaxBitRate", Field<&LocalSDP::m_VideoMain, &VideoParms::iFmtpMaxBitRate>},
    {"m_VideoPreso.eVideoCodec", Field<&LocalSDP::m_VideoPreso, &VideoParms::eVideoCodec>},
    {"m_VideoPreso.iVideoRTPPort", Field<&LocalSDP::m_VideoPreso, &VideoParms::iVideoRTPPort>},
    {"m_VideoPreso.strVideoLevel", Field<&LocalSDP::m_VideoPreso, &VideoParms::strVideoLevel>},
    {"keys", Keys},
    {"cryptoAlgo[SRTP_AUDIO]", Suite<baseSDP::SRTP_AUDIO>},
    {"cryptoAlgo[SRTP_VIDEO]", Suite<baseSDP::SRTP_VIDEO>},
    {"cryptoAlgo[SRTP_VIDEO_PRESO]", Suite<baseSDP::SRTP_VIDEO_PRESO>},
};

/// Changes a local set as the lines say; a value may be empty.
inline void ApplyFields(LocalSDP& local, const std::vector<Line>& block) {
    for (const Line& line : block) {
        const std::size_t equals = line.text.find(" =");
        const std::string name = line.text.substr(0, equals);
        const FieldRow* found = nullptr;
        for (const FieldRow& row : kFields) {
            if (name == row.name) {
                found = &row;
            }
        }
        if (equals == std::string::npos || found == nullptr) {
            throw Malformed(line, "no \"field = value\" with a field of a local set");
        }
        try {
            found->assign(local, equals + 3 < line.text.size() ? line.text.substr(equals + 3) : "");
        } catch (const std::invalid_argument& error) {
            throw Malformed(line, error.what());
        }
    }
}

} // namespace documents
