// Texts and sides for the tests of explanations: every capture, every prepared broken negotiation, and a
// digest of everything that a text comes to.
#pragma once

#include "Capabilities.h"

#include <SDPExplain.h>
#include <SDPHandler.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace support {

/// The side that the command has without a local file, floor control only where it is offered.
inline ExplainInput Side(std::string remote) {
    ExplainInput input;
    input.local = AudioLocal();
    input.local.eAudioCodec = kAllAudio;
    input.local.iAudioRTPPort = 16384;
    input.local.iMaxBandwidth = 1064000;
    input.local.iVideoPayloadMode1 = 97;
    input.local.iVideoPayloadMode0 = 126;
    input.local.m_VideoMain.eVideoCodec = kBothModes;
    input.local.m_VideoMain.iVideoRTPPort = 16386;
    input.local.m_VideoMain.strVideoLevel = "3.1";
    input.local.m_VideoPreso.eVideoCodec = kBothModes;
    input.local.m_VideoPreso.iVideoRTPPort = 16388;
    input.local.m_VideoPreso.strVideoLevel = "4";
    input.local.iVideoPresoControlPort = 16390;
    GiveKeys(input.local, "near", kSuite32);
    input.floorControl = true;
    input.floorControlIfOffered = true;
    input.servedSections = 4;
    input.remote = std::move(remote);
    return input;
}

struct NamedText {
    std::string name;
    std::string text;
};

/// Every description of the corpus and of the prepared negotiations.
inline std::vector<NamedText> AllTexts() {
    namespace fs = std::filesystem;
    std::vector<NamedText> texts;
    const fs::path source = COMMONMEDIA_SOURCE_DIR;
    for (const char* const folder : {"tests/corpus/captures", "tests/explain/cases"}) {
        for (const auto& entry : fs::recursive_directory_iterator(source / folder)) {
            if (entry.path().extension() == ".sdp") {
                std::ifstream file(entry.path(), std::ios::binary);
                texts.push_back({entry.path().string(), {std::istreambuf_iterator<char>(file), {}}});
            }
        }
    }
    return texts;
}

/// Record, sections and answer of a run, keys included: equal digests mean an equal call. The origin line is
/// left out, its session id is another in every run.
inline std::string Digest(const ExplainInput& input) {
    SDPHandler handler;
    handler.InitializeLocalSDP(input.local);
    handler.m_bSRTP = input.srtp;
    handler.SetMaxSupportedSessions(input.servedSections);
    handler.SetBfcpSupport(input.floorControl);
    RemoteSDP record;
    handler.ParseTheSDP(input.remote, record);
    std::string digest = record.ToDiag();
    for (const auto& key : record.bufSRTPKey) {
        digest.append(std::begin(key), std::end(key));
    }
    for (const MediaSession* const section : handler.GetRemoteSections()) {
        digest += section->ToDiag() + section->strFullMLine + section->strBase64Key + section->striceufrag +
                  section->stricepwd + std::to_string(section->iCryptoTag) +
                  std::to_string(section->cryptoAlgo);
        for (const std::string& candidate : section->vecCandidate) {
            digest += candidate;
        }
    }
    const std::string ours = handler.IsOffer() ? "" : handler.GetLocalSDP();
    return digest + ours.substr(std::min(ours.size(), ours.find("\r\ns=")));
}

} // namespace support
