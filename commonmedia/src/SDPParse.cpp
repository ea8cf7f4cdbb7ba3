// Stage: parse, text to lines.
// Input: the far end's whole text. Output: each line passed to the one member that reads it, then the record.
// Touches the sections held, which are deleted first, and the session fields that a line sets.
// SDPLines.h has the table of keywords; here each of its rows gets its member function.
// Test: tests/unit/SDPParseTest.cpp
#include "SDPHandler.h"

#include "SDPLines.h"
#include "SDPPayloadIndex.h"
#include "SDPSecrecy.h"

#include <cstddef>
#include <iterator>

int SDPHandler::ParseTheSDP(std::string sdp_string, RemoteSDP& ParsedSDP) {
    /// Provides the handler with an index until the parse ends, by return or by exception.
    struct ProvidedIndex {
        explicit ProvidedIndex(SDPHandler& h) : handler(h) { handler.payloadIndex = &index; }
        ~ProvidedIndex() { handler.payloadIndex = nullptr; }
        ProvidedIndex(const ProvidedIndex&) = delete;
        ProvidedIndex& operator=(const ProvidedIndex&) = delete;

        SDPHandler& handler;
        PayloadIndex index;
    };
    // The copy contains the far end's keys.
    const sdp::WipedAtEnd wiped(sdp_string);
    ClearRemoteMediaSession();
    if (sdp_string.empty()) {
        return 1;
    }
    const ProvidedIndex provided(*this);
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

    const auto process = [this](SDPRow row, std::string_view line) {
        if (row != SDPRow::None) {
            const auto handle = kProcess[static_cast<std::size_t>(row)];
            (this->*handle)(line);
        }
    };
    // Two walks, so that nobody who observes nothing pays for the question at each line.
    if (lineObserver == nullptr) {
        sdp::ForEachLine(text, [&](std::size_t offset, std::size_t length) {
            const std::string_view line(text.data() + offset, length);
            process(sdp::RowOf(line), line);
        });
        return;
    }
    sdp::ForEachLine(text, [&](std::size_t offset, std::size_t length) {
        const std::string_view line(text.data() + offset, length);
        const SDPRow row = sdp::RowOf(line);
        Observe(&SDPLineObserver::before, {row, offset, length, nullptr});
        process(row, line);
        Observe(&SDPLineObserver::after, {row, offset, length, nullptr});
    });
}

void SDPHandler::Observe(void (*SDPLineObserver::*when)(void*, const SDPLine&), SDPLine line) const {
    if (lineObserver->*when != nullptr) {
        line.section = vecRemoteMediaSession.empty() ? nullptr : vecRemoteMediaSession.back();
        (lineObserver->*when)(lineObserver->context, line);
    }
}
