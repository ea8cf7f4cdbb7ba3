// Stage: parse, text to lines.
// Input: the far end's whole text. Output: each line handed to the one handler that reads it.
// Touches the sections held (cleared first) and, through the handlers, whatever a line sets.
// Lines and rows are decided in SDPLines.h; here each row gets its handler.
// Test: tests/unit/SDPParseTest.cpp
#include "SDPHandler.h"

#include "SDPLines.h"
#include "SDPPayloadIndex.h"
#include "SDPWipe.h"

#include <cstddef>
#include <iterator>

namespace {

/// Lends an index to a handler until the scope ends, however it ends.
class LentIndex {
public:
    explicit LentIndex(sdp::PayloadIndex*& pIndex) : m_pIndex(pIndex) { m_pIndex = &m_index; }
    ~LentIndex() { m_pIndex = nullptr; }
    LentIndex(const LentIndex&) = delete;
    LentIndex& operator=(const LentIndex&) = delete;

private:
    sdp::PayloadIndex*& m_pIndex;
    sdp::PayloadIndex m_index;
};

} // namespace

int SDPHandler::ParseTheSDP(std::string sdp_string, RemoteSDP& ParsedSDP) {
    // The copy carries the far end's keys.
    const sdp::WipedAtEnd wiped(sdp_string);
    ClearRemoteMediaSession();
    if (sdp_string.empty()) {
        return 1;
    }
    const LentIndex index(pPayloadIndex);
    ProcessLines(sdp_string);
    GetRTPData(ParsedSDP);
    return 0;
}

void SDPHandler::ProcessLines(std::string_view text) {
    using Process = void (SDPHandler::*)(std::string_view);
    // In the order of sdp::kLineRows, where each row has its example.
    static constexpr Process kProcess[] = {
        &SDPHandler::ProcessConnect,
        &SDPHandler::ProcessMedia,
        &SDPHandler::ProcessRTPMap,
        &SDPHandler::ProcessFMTP,
        &SDPHandler::ProcessCrypto,
        &SDPHandler::ProcessICEFragPwd,
        &SDPHandler::ProcessICECandidate,
        &SDPHandler::ProcessContent,
        &SDPHandler::ProcessBandwidth,
        &SDPHandler::ProcessBfcpFloorCtrl,
        &SDPHandler::ProcessBfcpConfid,
        &SDPHandler::ProcessBfcpUserid,
        &SDPHandler::ParseDirectionalAttribute,
    };
    static_assert(std::size(kProcess) == std::size(sdp::kLineRows));

    sdp::ForEachLine(text, [&](std::size_t offset, std::size_t length) {
        const std::string_view line(text.data() + offset, length);
        const SDPRow row = sdp::RowOf(line);
        if (lineObserver != nullptr) {
            Observe(&SDPLineObserver::before, {row, offset, length, nullptr});
        }
        if (row != SDPRow::None) {
            (this->*kProcess[static_cast<std::size_t>(row)])(line);
        }
        if (lineObserver != nullptr) {
            Observe(&SDPLineObserver::after, {row, offset, length, nullptr});
        }
    });
}

void SDPHandler::Observe(void (*SDPLineObserver::*when)(void*, const SDPLine&), SDPLine line) const {
    if (lineObserver->*when != nullptr) {
        line.section = vecRemoteMediaSession.empty() ? nullptr : vecRemoteMediaSession.back();
        (lineObserver->*when)(lineObserver->context, line);
    }
}
