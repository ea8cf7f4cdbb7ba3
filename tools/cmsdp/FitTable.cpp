// A stream that is not agreed shows its reason and nothing else: nothing starts with its other values.
//
// Tests: tests/tool/call.cases
#include "FitTable.h"

#include "Fit.h"
#include "Names.h"
#include "Visible.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

using Stream = SDPNegotiator::Stream;
using Media = SDPNegotiator::Media;
using Quor::media::rtp::CryptoParams;

std::string Title(const Stream& stream) {
    std::string name = NameOf(stream);
    std::replace(name.begin(), name.end(), '_', ' ');
    return name.empty() ? "section " + std::to_string(stream.section + 1) : name;
}

std::string PlaceCell(const std::string& address, int port) {
    const bool isSix = address.find(':') != std::string::npos;
    return (isSix ? '[' + Short(address) + ']' : Short(address)) + ':' + std::to_string(port);
}

std::string Codec(const Stream& stream) {
    const bool isVideo = stream.media == Media::Video;
    return isVideo ? "H.264, packetization mode " + std::to_string(stream.packetizationMode)
                   : CodecInWords(stream.codec);
}

// "97", or "97 sent, 126 received".
std::string Numbers(int sent, int received) {
    if (sent < 0 && received < 0) {
        return "";
    }
    return sent == received ? std::to_string(sent)
                            : std::to_string(sent) + " sent, " + std::to_string(received) + " received";
}

// "1280x720 at 30/s, 640x480 at 60/s": the sizes that fit.
std::string Pictures(const Stream& stream) {
    std::vector<std::string> sizes;
    for (const SDPNegotiator::Picture& picture : stream.pictures) {
        if (picture.rate != 0) {
            sizes.push_back(std::to_string(picture.width) + "x" + std::to_string(picture.height) + " at " +
                            std::to_string(picture.rate) + "/s");
        }
    }
    return Listed(sizes, sizes.size());
}

std::string Key(const SDPNegotiator::Key& key, Secrets& secrets) {
    std::string text;
    GetSRTPKey(text, key.key.data(), key.salt.data());
    return secrets.HideKey(text);
}

std::string Floor(const Stream& stream) {
    using Role = SDPNegotiator::FloorRole;
    const char* const role = stream.floorRole == Role::Server   ? "server"
                             : stream.floorRole == Role::Client ? "client"
                                                                : "none";
    return std::string("this side is ") + role + ", conference " + std::to_string(stream.conferenceId) +
           ", user " + std::to_string(stream.userId);
}

Block BlockOf(const Stream& stream, Secrets& secrets) {
    const bool isAgreed = IsAgreed(stream);
    const bool isFloor = stream.media == Media::FloorControl;
    const bool isRtp = isAgreed && !isFloor;
    const bool isVideo = isRtp && stream.media == Media::Video;
    const bool isSecure = isRtp && stream.suite != CryptoParams::CRYPTO_NONE;
    const std::vector<std::string> changes = ChangesInWords(stream.changes);
    Block block{Title(stream), {}};
    const auto row = [&block, &secrets](const char* label, bool isShown, const std::string& text) {
        block.rows.push_back({label, {{isShown ? Visible(secrets.Hide(text)) : ""}}});
    };
    block.rows.push_back({"state", {{StateInWords(stream.state), isAgreed ? Mood::kGood : Mood::kBad}}});
    row("why", true, std::string(stream.reason));
    row("changed", true, Listed(changes, changes.size()));
    row("codec", isRtp, Codec(stream));
    row("payload type", isRtp, Numbers(stream.sendPayload, stream.receivePayload));
    row("DTMF payload", isRtp, Numbers(stream.sendEvents, stream.receiveEvents));
    row("address", isAgreed, PlaceCell(stream.address, stream.port));
    row("RTCP", isRtp, PlaceCell(stream.rtcpAddress, stream.rtcpPort));
    row("direction", isRtp, DirectionInWords(stream.send, stream.receive));
    row("profile", isVideo, stream.profile);
    row("level", isVideo, stream.level);
    row("may send", isVideo, Pictures(stream));
    row("suite", isRtp, NameOf(SuiteNames(), stream.suite));
    row("our key", isSecure, isSecure ? Key(stream.ourKey, secrets) : "");
    row("their key", isSecure, isSecure ? Key(stream.theirKey, secrets) : "");
    row("floor", isAgreed && isFloor, Floor(stream));
    return block;
}

} // namespace

std::vector<Block> StreamBlocks(const std::vector<Stream>& streams, Secrets& secrets) {
    std::vector<Block> blocks;
    blocks.reserve(streams.size());
    for (const Stream& stream : streams) {
        blocks.push_back(BlockOf(stream, secrets));
    }
    return blocks;
}

} // namespace cmsdp
