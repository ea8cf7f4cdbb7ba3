// SDPHandler: session descriptions of one call (RFC 4566, RFC 3264).
//
// Offering. Give the handler what this side can do, send the text, read the answer:
//
//     SDPHandler handler;
//     handler.InitializeLocalSDP(local);                // codecs, ports, keys, bandwidth
//     handler.SetDefaultLocalIPAddr("192.0.2.1");       // without an address there is no offer
//     std::string offer = handler.GetLocalSDP();        // lines end in CR LF
//     RemoteSDP remote;
//     handler.ParseTheSDP(answer, remote);              // remote now holds what was negotiated
//
// Answering. Read the offer first; from then on GetLocalSDP answers it:
//
//     handler.ParseTheSDP(offer, remote);
//     std::string answer = handler.GetLocalSDP();
//     if (remote.eAudioCodec != PAYLOAD_UNKNOWN && remote.iAudioRTPPort != 0) { ... start audio ... }
//
// Calls without a result, and why:
//
//     handler.GetLocalSDP()            ""   offering, and no default local address is set; answers need none
//     handler.ParseTheSDP("", remote)  1    empty text: the sections are dropped, remote is unchanged
//     handler.ParseTheSDP("v=0", remote)    0, and remote is reset: a line counts only when it ends in CR LF
//     ExtractSRTPKey(text, key, salt)  false: not 40 characters of base64; key and salt keep their bytes
//
// The far end's text is untrusted: nothing in it makes a function throw, fail or read out of bounds. The cost
// grows with the length of the text, so the application has to limit that length. A line that cannot be used
// is ignored. Five kinds of malformed lines have an effect all the same:
//   - A keyword in the middle of a line decides which operation reads the line.
//   - A line that ends in LF alone is joined to the next one.
//   - An "m=" line without a format opens no section; the lines after it are added to the previous section.
//   - A crypto line of an unknown suite, with a tag that is no number or with a broken key replaces the tag,
//     and the key text when the new one has at least 40 characters.
//   - A session bandwidth that is no number replaces the bandwidths of the sections.
// commonmedia/DELIBERATE.md lists all behaviour that is surprising and intended.
//
// Only std::bad_alloc is thrown. If ParseTheSDP throws it, the handler holds the sections read so far, and
// GetLocalSDP would answer those; the record may have its previous values or some of the new ones. Parse
// again, or call ResetRemoteSDP.
//
// Threads: a handler belongs to one thread at a time. Handlers share nothing but the trace sink.
#pragma once

#include "CommonMediaExport.h"
#include "SDP.h"
#include "SDPLineObserver.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Writes the inline key text of an "a=crypto:" line: 16 key bytes and 14 salt bytes in base64, exactly 40
/// characters (RFC 4568, 6.1). Reads 16 bytes at `key` and 14 at `salt`; replaces strBase64Key.
COMMONMEDIA_EXPORT void GetSRTPKey(std::string& strBase64Key, const unsigned char* key,
                                   const unsigned char* salt);

/// The reverse of GetSRTPKey. Reads exactly 40 characters at `bufBase64Key`, whatever follows them. True: 16
/// bytes were written to `key` and 14 to `salt`. False: the text is not base64, and nothing was written.
COMMONMEDIA_EXPORT bool ExtractSRTPKey(const unsigned char* bufBase64Key, unsigned char* key,
                                       unsigned char* salt);

/// A view of the sections of the last remote description, in "m=" line order. Valid until the handler parses
/// again, is reset or ends; empty while the handler offers.
///
///     for (const MediaSession* section : handler.GetRemoteSections()) { ... section->vecCandidate ... }
class RemoteSections {
public:
    /// The caller keeps the sections.
    explicit RemoteSections(const std::vector<MediaSession*>& sections)
        : first(sections.data()), count(sections.size()) {}

    const MediaSession* const* begin() const { return first; }       ///< the first section
    const MediaSession* const* end() const { return first + count; } ///< after the last section
    std::size_t size() const { return count; }                       ///< number of sections
    bool empty() const { return count == 0; }                        ///< true without a section
    /// Precondition: index < size().
    const MediaSession* operator[](std::size_t index) const { return first[index]; }

private:
    const MediaSession* const* first;
    std::size_t count;
};

/// The descriptions of one call; one handler serves one call for its whole life.
class SDPHandler {
public:
    bool m_bSRTP = false; ///< SRTP is wanted: offered always, answered where the far end is secure
    LocalSDP MyLocalSDP;  ///< local capabilities; offers and answers are written from them

    /// A handler that offers: session id from GetTickCount(), version counter 1 (the first description has
    /// version 2), BFCP off, two sections served.
    COMMONMEDIA_EXPORT SDPHandler();
    /// Frees the sections of the last remote description.
    COMMONMEDIA_EXPORT ~SDPHandler();

    /// Not copyable: the sections are owned by pointer, and two handlers with one session id and version
    /// counter would write origin lines that contradict each other (RFC 3264, 8).
    SDPHandler(const SDPHandler&) = delete;
    SDPHandler& operator=(const SDPHandler&) = delete;

    /// Copies `s` into MyLocalSDP, except iBfcpConfid, iBfcpUserid and fBfcpIsServer, which stay unchanged.
    COMMONMEDIA_EXPORT void InitializeLocalSDP(const LocalSDP& s);
    /// Address of the "c=" and "a=rtcp:" lines, and of the origin line when strMyIPAddr is empty.
    COMMONMEDIA_EXPORT void SetDefaultLocalIPAddr(std::string s);
    /// Whether descriptions carry the presentation video and its floor control channel.
    COMMONMEDIA_EXPORT void SetBfcpSupport(bool fSupported);
    /// An answer repeats every remote section after the first `sections` ones at port 0. 2 in a new handler;
    /// floor control needs 4: audio, main video, presentation and the floor control channel.
    COMMONMEDIA_EXPORT void SetMaxSupportedSessions(std::uint32_t sections);
    /// Accepted and not used: no line that this side writes carries a local candidate.
    COMMONMEDIA_EXPORT void SetVideoICECandidate(std::string strCandidate);
    COMMONMEDIA_EXPORT void SetAudioICECandidate(std::string strCandidate); ///< accepted and not used

    /// Reads a remote description, whose lines end in CR LF, in place of the one held before.
    /// @param sdp_string  the far end's text, any bytes
    /// @param ParsedSDP   reset, then filled with what was negotiated; untouched when the text is empty
    /// @return 1 for an empty text, 0 for every other
    COMMONMEDIA_EXPORT int ParseTheSDP(std::string sdp_string, RemoteSDP& ParsedSDP);
    /// Fills `ParsedSDP` from the sections held, as ParseTheSDP does at its end.
    COMMONMEDIA_EXPORT void GetRTPData(RemoteSDP& ParsedSDP);

    /// The local description: an offer while there are no remote sections, otherwise the answer to them. The
    /// version of each description is one higher than that of the previous one.
    /// @return lines ending in CR LF; empty for an offer without a default local address
    COMMONMEDIA_EXPORT std::string GetLocalSDP();
    /// True while no remote section is held: the next description is an offer.
    COMMONMEDIA_EXPORT bool IsOffer() const;
    /// Drops the remote sections, so that the next description is an offer.
    COMMONMEDIA_EXPORT void ResetRemoteSDP();
    /// The remote sections held: what the record has no field for, such as the lines for an ICE agent.
    COMMONMEDIA_EXPORT RemoteSections GetRemoteSections() const;
    /// Reports every line that ParseTheSDP reads to `observer`; null, as in a new handler, reports to nobody
    /// and costs nothing. The caller keeps the record alive until it is replaced or the handler ends.
    COMMONMEDIA_EXPORT void SetLineObserver(const SDPLineObserver* observer);

private:
    using CRYPTO_PROFILE = Quor::media::rtp::CryptoParams::CRYPTO_PROFILE;
    using SRTP_M_LINE = baseSDP::SRTP_M_LINE;

    // State. The remote state lives until the next parse, the local state as long as the handler.
    std::vector<MediaSession*> vecRemoteMediaSession; ///< sections in "m=" line order, owned
    std::string strSessionIPAddr;                     ///< session-level "c=" address; outlives a parse
    std::string strMaxSessionBandwidth;               ///< session-level "b=AS:" text, kbit/s
    std::int32_t m_iSessionID;                        ///< origin line, the same for the handler's life
    std::uint32_t m_iSessionVersion = 1;              ///< origin line, advanced before each description
    bool m_fBfcpSupported = false;                    ///< presentation and floor control are written
    std::uint32_t m_iMaxSupportedSessions = 2;        ///< remote sections answered; the rest is rejected
    const SDPLineObserver* lineObserver = nullptr;    ///< told of every line read
    class PayloadIndex;
    PayloadIndex* payloadIndex = nullptr; ///< formats of a large section; only while a text is read

    void ClearRemoteMediaSession();

    // Parse: text to lines, lines to the section opened last
    void ProcessLines(std::string_view text);
    void Observe(void (*SDPLineObserver::*when)(void*, const SDPLine&), SDPLine line) const;
    void ProcessMedia(std::string_view SDPLine);
    void ProcessConnect(std::string_view SDPLine);
    void ProcessRTPMap(std::string_view SDPLine);
    void ProcessFMTP(std::string_view SDPLine);
    void SaveFmtpParmsToRtpMap(MediaSession* ms, std::vector<std::string> fmtp, std::string_view strPayload);
    RtpMap* FindRtpMap(MediaSession& ms, std::string_view strPayload);
    void ProcessCrypto(std::string_view SDPLine);
    void ProcessICEFragPwd(std::string_view SDPLine);
    void ProcessICECandidate(std::string_view SDPLine);
    void ProcessContent(std::string_view SDPLine);
    void ParseDirectionalAttribute(std::string_view SDPLine);
    void ProcessBandwidth(std::string_view SDPLine);
    void ProcessBfcpFloorCtrl(std::string_view SDPLine);
    void ProcessBfcpConfid(std::string_view SDPLine);
    void ProcessBfcpUserid(std::string_view SDPLine);

    // Extract: sections to record
    void GetAudioRTPData(RemoteSDP& ParsedSDP, const MediaSession* ms) const;
    void GetVideoRTPData(RemoteSDP& ParsedSDP, VideoParms& rs, const MediaSession* ms) const;
    void GetBfcpData(RemoteSDP& ParsedSDP, const MediaSession* ms) const;
    PayloadType_t MatchAudioCodec(const RtpMap* rm) const;
    bool IsG7221Negotiated(const RtpMap* rm) const;
    void LoadH264Parms(VideoParms& rs, const RtpMap* rm) const;
    std::string ConvertVideoLevel(std::string_view strLevel) const;
    std::string ReverseConvertVideoLevel(const std::string& strLevel) const;

    // Build: capabilities to text. Build writes the lines; each Add operation returns the lines of one part.
    class Build;
    std::string GetOffer();
    std::string GetAnswer();
    PayloadType_t GetAudioPayload() const;
    bool IsRemoteSecure(SRTP_M_LINE n) const;
    bool UseSecureParms(SRTP_M_LINE n) const;
    std::string AddOfferPreamble();
    std::string AddO();
    std::string AddC() const;
    std::string AddBandwidth() const;
    std::string AddBandwidthTIAS(bool IsVideo) const;
    std::string AddAudio() const;
    std::string AddRTPMap(PayloadType_t payload) const;
    std::string AddVideo(const VideoParms& parms) const;
    std::string AddLabel(VIDEOTYPE v) const;
    std::string AddContent(VIDEOTYPE v) const;
    std::string AddH264Profile(const VideoParms& parms) const;
    std::string AddH264ProfilePacketization0(const VideoParms& parms) const;
    std::string AddCrypto(SRTP_M_LINE n) const;
    std::string AddApplication() const;
    std::string AddFloorControl() const;
    std::string AddUnsupported() const;
    std::string AddDirectional(MediaType m, VIDEOTYPE v) const;
    std::string AddRTCPAttribute(int port) const;
};
