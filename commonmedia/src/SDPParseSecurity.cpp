// Stage: parse, "a=crypto:" and ICE lines (RFC 4568, 9.1; RFC 8839, 5).
// Input: one line without its CR LF. Output: key material, ICE lines unchanged.
// Touches the last section. Key text is stored in that section only.
// Of several crypto lines in a section the last one that is read counts.
// Test: tests/unit/SDPParseSecurityTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
#include "SDPSecrecy.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "VideoUtils.h"

void SDPHandler::ProcessCrypto(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty()) {
        return;
    }
    sdp::Words words(SDPLine);
    const std::string_view first = words.Next();
    const std::string_view name = words.Next();
    // [P10] Lines of the two 80-bit suites are skipped, tag and key included: a far end that offers nothing
    // else is answered as not secure.
    const sdp::Suite* const suite = sdp::FindNamed<sdp::kSuites>(name);
    if (suite != nullptr && !suite->isRead) {
        return;
    }
    const std::string_view key = words.Next();
    const std::size_t colon = sdp::FindByte(first, ':');
    // [G02] The tag follows the ":" of the first word. A line without a ":" there is dropped, and so is a
    // line of fewer than three words.
    if (key.empty() || colon == first.size()) {
        return;
    }
    MediaSession* const ms = vecRemoteMediaSession.back();
    // [P11] An unknown suite leaves cryptoAlgo unchanged, but its tag and key are stored.
    if (suite != nullptr) {
        ms->cryptoAlgo = suite->profile;
    }
    // [P19] A tag that is not a number reads 1, the usual tag of a single line.
    const std::string_view tagAndMore = first.substr(colon + 1);
    const std::string_view tag = tagAndMore.substr(0, sdp::FindByte(tagAndMore, ':'));
    ms->iCryptoTag = VideoUtils::IsNumber(tag) ? sdp::Number(tag) : 1;

    constexpr std::size_t methodLength = sdp::kKeyMethod.size();
    if (key.size() < methodLength + sdp::kKeyTextLength) {
        return;
    }
    // [P21] The seven characters before the key are skipped without a comparison.
    const std::string_view keyText = key.substr(methodLength);
    sdp::Wipe(ms->strBase64Key);
    ms->strBase64Key = std::string(keyText.substr(0, keyText.find('\0')));
    // [P12] Text that cannot be decoded replaces the text as well; key and salt keep their bytes.
    ExtractSRTPKey(reinterpret_cast<const unsigned char*>(keyText.data()), ms->bufSRTPKey, ms->bufSRTPSalt);
}

void SDPHandler::ProcessICEFragPwd(std::string_view SDPLine) {
    struct Row {
        std::string_view keyword;
        std::string MediaSession::*field;
    };
    static constexpr Row kRows[] = {
        {"a=ice-ufrag", &MediaSession::striceufrag}, // a=ice-ufrag:F7gI
        {"a=ice-pwd", &MediaSession::stricepwd},     // a=ice-pwd:x9cml/YzichV2+XlhiMu8g
    };
    const Row* const row = sdp::FirstKeyword<kRows>(SDPLine);
    // [P13] The value is the whole line, because the ICE agent reads whole lines.
    if (row != nullptr && !vecRemoteMediaSession.empty()) {
        vecRemoteMediaSession.back()->*row->field = std::string(SDPLine);
    }
}

void SDPHandler::ProcessICECandidate(std::string_view SDPLine) {
    if (vecRemoteMediaSession.empty()) {
        return;
    }
    std::vector<std::string>& candidates = vecRemoteMediaSession.back()->vecCandidate;
    if (candidates.empty()) {
        constexpr std::size_t usualCandidates = 12; // three addresses, two components, two transports
        candidates.reserve(usualCandidates);
    }
    candidates.emplace_back(SDPLine);
}
