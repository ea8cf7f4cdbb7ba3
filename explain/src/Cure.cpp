// Stage: an edit to the input that it makes.
// Input: the input, a cure. Output: the input with the cure applied.
// Touches nothing. The table of local fields is here, with what sets each.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>

namespace explain {

namespace {

using Suites = Quor::media::rtp::CryptoParams::CRYPTO_PROFILE;
using Set = void (*)(ExplainInput&, const ExplainLocalChange&);

struct Row {
    ExplainLocalField field;
    Set set;
};

template <VideoParms baseSDP::*kStream, std::int32_t VideoParms::*kField>
void SetVideo(ExplainInput& input, const ExplainLocalChange& change) {
    input.local.*kStream.*kField = change.number;
}

template <std::int32_t baseSDP::*kField>
void SetShared(ExplainInput& input, const ExplainLocalChange& change) {
    input.local.*kField = change.number;
}

template <std::int32_t LocalSDP::*kField>
void SetOwn(ExplainInput& input, const ExplainLocalChange& change) {
    input.local.*kField = change.number;
}

template <std::string LocalSDP::*kField>
void SetText(ExplainInput& input, const ExplainLocalChange& change) {
    input.local.*kField = change.text;
}

template <VideoParms baseSDP::*kStream>
void SetCodecs(ExplainInput& input, const ExplainLocalChange& change) {
    (input.local.*kStream).eVideoCodec = static_cast<PayloadType_t>(change.number);
}

template <VideoParms baseSDP::*kStream>
void SetLevel(ExplainInput& input, const ExplainLocalChange& change) {
    (input.local.*kStream).strVideoLevel = change.text;
}

template <VideoParms baseSDP::*kStream>
void SetRole(ExplainInput& input, const ExplainLocalChange& change) {
    (input.local.*kStream).eVideoType = static_cast<VideoType_t>(change.number);
}

template <int kStream>
void SetSuite(ExplainInput& input, const ExplainLocalChange& change) {
    input.local.cryptoAlgo[kStream] = static_cast<Suites>(change.number);
}

/// Adds the codecs of a set to the list, which then has each of them once; the empty set clears it.
void SetPriority(ExplainInput& input, const ExplainLocalChange& change) {
    std::list<int>& priority = input.local.listAudioCodecPriority;
    if (change.number == 0) {
        priority.clear();
    }
    for (const std::int32_t codec : {PAYLOAD_G7221, PAYLOAD_G722, PAYLOAD_G711U, PAYLOAD_G729}) {
        if ((change.number & codec) != 0) {
            priority.push_back(codec);
        }
    }
    for (auto codec = priority.begin(); codec != priority.end();) {
        codec =
            std::find(priority.begin(), codec, *codec) == codec ? std::next(codec) : priority.erase(codec);
    }
}

constexpr VideoParms baseSDP::*kMain = &baseSDP::m_VideoMain;
constexpr VideoParms baseSDP::*kPreso = &baseSDP::m_VideoPreso;

const Row kRows[] = {
    {{"strDefaultIPAddr", "default_address"}, SetText<&LocalSDP::strDefaultIPAddr>},
    {{"strMyIPAddr", "origin_address"}, SetText<&LocalSDP::strMyIPAddr>},
    {{"strOExtension", "origin_extension"}, SetText<&LocalSDP::strOExtension>},
    {{"iMaxBandwidth", "max_bandwidth_bit_per_s"}, SetShared<&baseSDP::iMaxBandwidth>},
    {{"m_bSRTP", "srtp"},
     [](ExplainInput& input, const ExplainLocalChange& change) { input.srtp = change.number != 0; }},
    {{"SetMaxSupportedSessions", "served_sections"},
     [](ExplainInput& input, const ExplainLocalChange& change) {
         input.servedSections = static_cast<std::uint32_t>(change.number);
     }},
    {{"iAudioRTPPort", "audio.port"}, SetShared<&baseSDP::iAudioRTPPort>},
    {{"eAudioCodec", "audio.codecs"},
     [](ExplainInput& input, const ExplainLocalChange& change) {
         input.local.eAudioCodec = static_cast<PayloadType_t>(change.number);
     }},
    {{"listAudioCodecPriority", "audio.priority"}, SetPriority},
    {{"cryptoAlgo[SRTP_AUDIO]", "audio.suite"}, SetSuite<baseSDP::SRTP_AUDIO>},
    {{"iVideoPayloadMode1", "video.payload_type_mode_1"}, SetOwn<&LocalSDP::iVideoPayloadMode1>},
    {{"iVideoPayloadMode0", "video.payload_type_mode_0"}, SetOwn<&LocalSDP::iVideoPayloadMode0>},
    {{"fVideoTxMuted", "video.muted"},
     [](ExplainInput& input, const ExplainLocalChange& change) {
         input.local.fVideoTxMuted = change.number != 0;
     }},
    {{"m_VideoMain.eVideoCodec", "video.main.codecs"}, SetCodecs<kMain>},
    {{"m_VideoMain.iVideoRTPPort", "video.main.port"}, SetVideo<kMain, &VideoParms::iVideoRTPPort>},
    {{"m_VideoMain.strVideoLevel", "video.main.level"}, SetLevel<kMain>},
    {{"m_VideoMain.eVideoType", "video.main.role"}, SetRole<kMain>},
    {{"m_VideoMain.iFmtpMaxMbps", "video.main.max_macroblocks_per_s"},
     SetVideo<kMain, &VideoParms::iFmtpMaxMbps>},
    {{"m_VideoMain.iFmtpMaxFrameSize", "video.main.max_frame_macroblocks"},
     SetVideo<kMain, &VideoParms::iFmtpMaxFrameSize>},
    {{"m_VideoMain.iFmtpMaxBitRate", "video.main.max_bit_rate_x1000_bit_per_s"},
     SetVideo<kMain, &VideoParms::iFmtpMaxBitRate>},
    {{"cryptoAlgo[SRTP_VIDEO]", "video.main.suite"}, SetSuite<baseSDP::SRTP_VIDEO>},
    {{"m_VideoPreso.eVideoCodec", "video.presentation.codecs"}, SetCodecs<kPreso>},
    {{"m_VideoPreso.iVideoRTPPort", "video.presentation.port"}, SetVideo<kPreso, &VideoParms::iVideoRTPPort>},
    {{"m_VideoPreso.strVideoLevel", "video.presentation.level"}, SetLevel<kPreso>},
    {{"m_VideoPreso.eVideoType", "video.presentation.role"}, SetRole<kPreso>},
    {{"m_VideoPreso.iFmtpMaxMbps", "video.presentation.max_macroblocks_per_s"},
     SetVideo<kPreso, &VideoParms::iFmtpMaxMbps>},
    {{"m_VideoPreso.iFmtpMaxFrameSize", "video.presentation.max_frame_macroblocks"},
     SetVideo<kPreso, &VideoParms::iFmtpMaxFrameSize>},
    {{"m_VideoPreso.iFmtpMaxBitRate", "video.presentation.max_bit_rate_x1000_bit_per_s"},
     SetVideo<kPreso, &VideoParms::iFmtpMaxBitRate>},
    {{"cryptoAlgo[SRTP_VIDEO_PRESO]", "video.presentation.suite"}, SetSuite<baseSDP::SRTP_VIDEO_PRESO>},
    {{"SetBfcpSupport", "floor_control.enabled"},
     [](ExplainInput& input, const ExplainLocalChange& change) { input.floorControl = change.number != 0; }},
    {{"iVideoPresoControlPort", "floor_control.port"}, SetShared<&baseSDP::iVideoPresoControlPort>},
    {{"iBfcpConfid", "floor_control.conference_id"}, SetShared<&baseSDP::iBfcpConfid>},
    {{"iBfcpUserid", "floor_control.user_id"}, SetShared<&baseSDP::iBfcpUserid>},
};

} // namespace

void Edit(const std::string& remote, const ExplainCure& cure, std::string& text) {
    text.clear();
    std::size_t at = 0;
    for (const ExplainTextChange& change : cure.text) {
        if (change.offset >= at && change.offset <= remote.size()) {
            text.append(remote, at, change.offset - at);
            text += change.text;
            at = std::min(remote.size(), change.offset + change.length);
        }
    }
    text.append(remote, at, std::string::npos);
}

const ExplainLocalField* LocalField(std::string_view file) {
    const std::vector<ExplainLocalField>& fields = ExplainLocalFields();
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const ExplainLocalField& field) { return field.file == file; });
    return found == fields.end() ? nullptr : &*found;
}

} // namespace explain

const std::vector<ExplainLocalField>& ExplainLocalFields() {
    static const std::vector<ExplainLocalField> fields = [] {
        std::vector<ExplainLocalField> all;
        for (const explain::Row& row : explain::kRows) {
            all.push_back(row.field);
        }
        return all;
    }();
    return fields;
}

ExplainInput ExplainCured(const ExplainInput& input, const ExplainCure& cure) {
    ExplainInput cured = input;
    explain::Edit(input.remote, cure, cured.remote);
    for (const ExplainLocalChange& change : cure.local) {
        for (const explain::Row& row : explain::kRows) {
            if (change.field != nullptr && row.field.file == change.field->file) {
                row.set(cured, change);
            }
        }
    }
    return cured;
}
