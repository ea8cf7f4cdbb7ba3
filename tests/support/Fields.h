// The fields of every record, listed once in the order of SDP.h. What compares, fills or prints a record
// visits this list, so a new field is added here and nowhere else. FieldsTest.cpp requires that every field
// that SDP.h declares is listed.
//
//     ForEachField(remote, [](const std::string& name, auto& field) { ... });
//         visits "eAudioCodec", ..., "m_VideoMain.iVideoPayload", ..., "bufSRTPKey[0]", ..., "fIsAudioValid"
//     FieldsText(remote)
//         every field with its value, one line each: strAudioIPAddr = "192.0.2.2"
#pragma once

#include <SDP.h>

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace support {

/// Names a record's type for the overloads below.
template <typename Record>
struct Of {};

#define FIELD(name) visit(#name, record.name)

template <typename Record, typename Visit>
void VisitMembers(Of<VideoParms>, Record& record, Visit& visit) {
    FIELD(iFmtpMaxMbps);
    FIELD(iFmtpMaxFrameSize);
    FIELD(iFmtpMaxBitRate);
    FIELD(eVideoCodec);
    FIELD(eVideoType);
    FIELD(iVideoRTPPort);
    FIELD(strVideoLevel);
    FIELD(strVideoIPAddr);
    FIELD(iVideoPayload);
    FIELD(iFmtpPacketizationMode);
    FIELD(fVideoSend);
    FIELD(fVideoRecv);
    FIELD(fIsVideoValid);
}

template <typename Record, typename Visit>
void VisitMembers(Of<baseSDP>, Record& record, Visit& visit) {
    FIELD(eAudioCodec);
    FIELD(iAudioRTPPort);
    FIELD(iVideoPresoControlPort);
    FIELD(iBfcpConfid);
    FIELD(iBfcpUserid);
    FIELD(fBfcpIsServer);
    FIELD(iMaxBandwidth);
    FIELD(m_VideoMain);
    FIELD(m_VideoPreso);
    FIELD(bufSRTPKey);
    FIELD(bufSRTPSalt);
    FIELD(cryptoAlgo);
}

template <typename Record, typename Visit>
void VisitMembers(Of<LocalSDP>, Record& record, Visit& visit) {
    VisitMembers(Of<baseSDP>(), record, visit);
    FIELD(strMyIPAddr);
    FIELD(strOExtension);
    FIELD(strDefaultIPAddr);
    FIELD(iVideoPayloadMode0);
    FIELD(iVideoPayloadMode1);
    FIELD(fVideoTxMuted);
    FIELD(listAudioCodecPriority);
}

template <typename Record, typename Visit>
void VisitMembers(Of<RemoteSDP>, Record& record, Visit& visit) {
    VisitMembers(Of<baseSDP>(), record, visit);
    FIELD(strAudioIPAddr);
    FIELD(iAudioPayload);
    FIELD(iDTMFPayload);
    FIELD(fAudioSend);
    FIELD(fAudioRecv);
    FIELD(fIsAudioValid);
}

template <typename Record, typename Visit>
void VisitMembers(Of<RtpMap>, Record& record, Visit& visit) {
    FIELD(strPayload);
    FIELD(strEncodingName);
    FIELD(vecFmtpParms);
}

template <typename Record, typename Visit>
void VisitMembers(Of<MediaSession>, Record& record, Visit& visit) {
    FIELD(eMedia);
    FIELD(eContent);
    FIELD(iPort);
    FIELD(strIPAddr);
    FIELD(vecRtpMap);
    FIELD(fSend);
    FIELD(fRecv);
    FIELD(strFullMLine);
    FIELD(strVideoLevel);
    FIELD(strMaxBandwidth);
    FIELD(iVideoLabel);
    FIELD(bufSRTPKey);
    FIELD(bufSRTPSalt);
    FIELD(cryptoAlgo);
    FIELD(iCryptoTag);
    FIELD(strBase64Key);
    FIELD(iBfcpConfid);
    FIELD(iBfcpUserid);
    FIELD(iBfcpFloorid);
    FIELD(strFloorctrl);
    FIELD(striceufrag);
    FIELD(stricepwd);
    FIELD(vecCandidate);
}

#undef FIELD

template <typename Record, typename Visit>
void ForEachField(Record& record, const Visit& visit, const std::string& prefix = "");

/// Visits a field. A stream is visited field by field, an array element by element, a row of bytes as a
/// whole.
template <typename Field, typename Visit>
void VisitField(const std::string& name, Field& field, const Visit& visit) {
    using Type = std::remove_const_t<Field>;
    if constexpr (std::is_same_v<Type, VideoParms>) {
        ForEachField(field, visit, name + ".");
    } else if constexpr (std::is_array_v<Type> &&
                         !std::is_same_v<std::remove_extent_t<Type>, unsigned char>) {
        for (std::size_t n = 0; n < std::extent_v<Type>; ++n) {
            VisitField(name + "[" + std::to_string(n) + "]", field[n], visit);
        }
    } else {
        visit(name, field);
    }
}

/// Calls `visit(name, field)` for every field of a record, the fields of its base first.
template <typename Record, typename Visit>
void ForEachField(Record& record, const Visit& visit, const std::string& prefix) {
    // One text for all names: a fuzzer visits records some thousand times a second.
    std::string full = prefix;
    const auto visitMember = [&](const char* name, auto& member) {
        full.replace(prefix.size(), std::string::npos, name);
        VisitField(full, member, visit);
    };
    VisitMembers(Of<std::remove_const_t<Record>>(), record, visitMember);
}

/// Appends printable ASCII unchanged, a backslash doubled, a quotation mark escaped in strings, other bytes
/// as \xNN.
inline void AppendEscaped(std::string& out, std::string_view text, bool isString) {
    static const char* const digits = "0123456789abcdef";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\' || (isString && c == '"')) {
            out += '\\';
            out += c;
        } else if (byte >= 0x20 && byte < 0x7f) {
            out += c;
        } else {
            out += "\\x";
            out += digits[byte >> 4U];
            out += digits[byte & 0xfU];
        }
    }
}

inline std::string Escaped(std::string_view text, bool isString) {
    std::string shown;
    AppendEscaped(shown, text, isString);
    return shown;
}

template <typename Record>
void AppendFields(std::string& out, const Record& record);

inline void AppendValue(std::string& out, std::int32_t value) {
    out += std::to_string(value);
}

inline void AppendValue(std::string& out, bool value) {
    out += value ? "true" : "false";
}

template <typename Enum, typename = std::enable_if_t<std::is_enum_v<Enum>>>
void AppendValue(std::string& out, const Enum& value) {
    out += std::to_string(static_cast<std::int32_t>(value));
}

inline void AppendValue(std::string& out, const std::string& value) {
    out += '"';
    AppendEscaped(out, value, true);
    out += '"';
}

/// A row of bytes as hexadecimal digits.
template <std::size_t N>
void AppendValue(std::string& out, const unsigned char (&row)[N]) {
    static const char* const digits = "0123456789abcdef";
    for (const unsigned char byte : row) {
        out += digits[byte >> 4U];
        out += digits[byte & 0xfU];
    }
}

inline void AppendValue(std::string& out, const std::list<int>& values) {
    const char* before = "{";
    for (const int value : values) {
        out += before;
        out += std::to_string(value);
        before = " ";
    }
    out += values.empty() ? "{}" : "}";
}

inline void AppendValue(std::string& out, const std::vector<std::string>& values) {
    const char* before = "{";
    for (const std::string& value : values) {
        out += before;
        AppendValue(out, value);
        before = ", ";
    }
    out += values.empty() ? "{}" : "}";
}

/// The fields of each format, a format per block.
inline void AppendValue(std::string& out, const std::vector<RtpMap*>& formats) {
    out += "{";
    for (const RtpMap* const format : formats) {
        out += "{\n";
        AppendFields(out, *format);
        out += "}";
    }
    out += "}";
}

template <typename Record>
void AppendFields(std::string& out, const Record& record) {
    ForEachField(record, [&out](const std::string& name, const auto& field) {
        out += name;
        out += " = ";
        AppendValue(out, field);
        out += "\n";
    });
}

template <typename Value>
std::string ValueText(const Value& value) {
    std::string text;
    AppendValue(text, value);
    return text;
}

/// Every field of a record with its value, one line each. Two records are equal if their texts are.
template <typename Record>
std::string FieldsText(const Record& record) {
    std::string text;
    text.reserve(2048);
    AppendFields(text, record);
    return text;
}

} // namespace support
