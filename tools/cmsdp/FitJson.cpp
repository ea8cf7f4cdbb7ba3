// Streams and repairs as JSON. A number that is not there is null; enumerations are written by name.
//
// Tests: tests/tool/fit.cases
#include "FitJson.h"

#include "Fit.h"
#include "Names.h"

namespace cmsdp {

namespace {

using nlohmann::ordered_json;
using Stream = SDPNegotiator::Stream;
using Quor::media::rtp::CryptoParams;

ordered_json OrNull(int number, int none) {
    return number == none ? ordered_json() : ordered_json(number);
}

ordered_json OrNull(const std::string& text) {
    return text.empty() ? ordered_json() : ordered_json(text);
}

void AddRtp(ordered_json& object, const Stream& stream, Secrets& secrets) {
    object["rtcp_address"] = secrets.Hide(stream.rtcpAddress);
    object["rtcp_port"] = stream.rtcpPort;
    object["codec"] =
        stream.codec == PAYLOAD_UNKNOWN ? ordered_json() : ordered_json(NameOf(CodecNames(), stream.codec));
    object["send_payload_type"] = OrNull(stream.sendPayload, -1);
    object["receive_payload_type"] = OrNull(stream.receivePayload, -1);
    object["ptime_ms"] = OrNull(stream.ptime, 0);
}

void AddVideo(ordered_json& object, const Stream& stream) {
    object["profile"] = OrNull(stream.profile);
    object["level"] = OrNull(stream.level);
    object["packetization_mode"] = stream.packetizationMode;
    object["max_macroblocks_per_s"] = OrNull(stream.maxMbps, 0);
    object["max_frame_macroblocks"] = OrNull(stream.maxFs, 0);
    object["max_bit_rate_x1000_bit_per_s"] = OrNull(stream.maxBr, 0);
    object["pictures"] = ordered_json::array();
    for (const SDPNegotiator::Picture& picture : stream.pictures) {
        object["pictures"].push_back(
            {{"width", picture.width}, {"height", picture.height}, {"pictures_per_s", picture.rate}});
    }
}

std::string KeyText(const SDPNegotiator::Key& key, Secrets& secrets) {
    std::string text;
    GetSRTPKey(text, key.key.data(), key.salt.data());
    return secrets.HideKey(text);
}

void AddSecurity(ordered_json& object, const Stream& stream, Secrets& secrets) {
    const bool isSecure = stream.suite != CryptoParams::CRYPTO_NONE;
    object["suite"] = isSecure ? ordered_json(NameOf(SuiteNames(), stream.suite)) : ordered_json();
    object["our_key"] = isSecure ? ordered_json(KeyText(stream.ourKey, secrets)) : ordered_json();
    object["their_key"] = isSecure ? ordered_json(KeyText(stream.theirKey, secrets)) : ordered_json();
    object["lifetime"] = OrNull(secrets.Hide(stream.lifetime));
    object["mki"] = OrNull(secrets.Hide(stream.mki));
}

void AddFloor(ordered_json& object, const Stream& stream, Secrets& secrets) {
    using Role = SDPNegotiator::FloorRole;
    object["role"] = stream.floorRole == Role::Server   ? ordered_json("server")
                     : stream.floorRole == Role::Client ? ordered_json("client")
                                                        : ordered_json();
    object["conference_id"] = stream.conferenceId;
    object["user_id"] = stream.userId;
    object["floor"] = OrNull(secrets.Hide(stream.floor));
}

ordered_json ChangesJson(std::uint32_t changes) {
    ordered_json list = ordered_json::array();
    for (const std::string& change : ChangesInWords(changes)) {
        list.push_back(change);
    }
    return list;
}

ordered_json StreamJson(const Stream& stream, Secrets& secrets) {
    ordered_json object;
    object["section"] = stream.section;
    object["stream"] = OrNull(NameOf(stream));
    object["state"] = StateInWords(stream.state);
    object["why"] = OrNull(std::string(stream.reason));
    object["changes"] = ChangesJson(stream.changes);
    if (!IsAgreed(stream)) {
        return object;
    }
    object["sends"] = stream.send;
    object["receives"] = stream.receive;
    object["address"] = secrets.Hide(stream.address);
    object["port"] = stream.port;
    if (stream.media == SDPNegotiator::Media::FloorControl) {
        AddFloor(object, stream, secrets);
        return object;
    }
    AddRtp(object, stream, secrets);
    if (stream.media == SDPNegotiator::Media::Video) {
        AddVideo(object, stream);
    } else {
        object["send_dtmf_payload_type"] = OrNull(stream.sendEvents, -1);
        object["receive_dtmf_payload_type"] = OrNull(stream.receiveEvents, -1);
    }
    AddSecurity(object, stream, secrets);
    object["ice"] = ordered_json::array();
    for (const std::string& line : stream.ice) {
        object["ice"].push_back(secrets.Hide(line));
    }
    return object;
}

} // namespace

ordered_json StreamsJson(const std::vector<Stream>& streams, Secrets& secrets) {
    ordered_json list = ordered_json::array();
    for (const Stream& stream : streams) {
        list.push_back(StreamJson(stream, secrets));
    }
    return list;
}

ordered_json RepairsJson(const std::vector<SDPNegotiator::Repair>& repairs) {
    ordered_json list = ordered_json::array();
    for (const SDPNegotiator::Repair& repair : repairs) {
        list.push_back({{"id", repair.id}, {"ledger", repair.ledger}, {"sentence", repair.sentence}});
    }
    return list;
}

ordered_json TextJson(const std::string& text, Secrets& secrets) {
    return text.empty() ? ordered_json() : ordered_json(secrets.Hide(text));
}

std::string Written(const ordered_json& root) {
    return root.dump(2, ' ', true, ordered_json::error_handler_t::replace) + "\n";
}

} // namespace cmsdp
