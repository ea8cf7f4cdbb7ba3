// Stage: none; construction of the handler, its setters, deletion of the remote sections.
// Input: the application's calls. Output: none.
// Touches the whole state of the handler.
// Sections and their formats are deleted here and nowhere else.
// Test: tests/unit/SDPHandlerTest.cpp
#include "SDPHandler.h"

#include "Platform.h"

#include <algorithm>

// The tick count is stored unchanged: counts from 2147483648 become negative ids, which the origin line
// writes as unsigned numbers.
SDPHandler::SDPHandler() : m_iSessionID(static_cast<std::int32_t>(GetTickCount())) {}

SDPHandler::~SDPHandler() {
    ClearRemoteMediaSession();
}

void SDPHandler::InitializeLocalSDP(const LocalSDP& s) {
    MyLocalSDP = s;
}

void SDPHandler::SetDefaultLocalIPAddr(std::string s) {
    MyLocalSDP.strDefaultIPAddr = std::move(s);
}

void SDPHandler::SetBfcpSupport(bool fSupported) {
    m_fBfcpSupported = fSupported;
}

void SDPHandler::SetMaxSupportedSessions(std::uint32_t sections) {
    m_iMaxSupportedSessions = sections;
}

void SDPHandler::SetLineObserver(const SDPLineObserver* observer) {
    lineObserver = observer;
}

RemoteSections SDPHandler::GetRemoteSections() const {
    return RemoteSections(vecRemoteMediaSession);
}

// [G16] Local candidates are accepted and not kept: no description contains one. A call that failed would
// only make applications handle an error that has no effect on the wire.
void SDPHandler::SetVideoICECandidate(std::string /*strCandidate*/) {}

void SDPHandler::SetAudioICECandidate(std::string /*strCandidate*/) {}

bool SDPHandler::IsOffer() const {
    return vecRemoteMediaSession.empty();
}

void SDPHandler::ResetRemoteSDP() {
    ClearRemoteMediaSession();
}

void SDPHandler::ClearRemoteMediaSession() {
    // Last first: the allocator then needs fewer steps for the next description.
    for (; !vecRemoteMediaSession.empty(); vecRemoteMediaSession.pop_back()) {
        const MediaSession* const ms = vecRemoteMediaSession.back();
        std::for_each(ms->vecRtpMap.rbegin(), ms->vecRtpMap.rend(), [](const RtpMap* rm) { delete rm; });
        delete ms;
    }
    strMaxSessionBandwidth.clear();
    // [P18] The session address is kept for a next description without a session-level "c=" line.
}
