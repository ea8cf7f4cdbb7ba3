// Records of the session description model.
//
//     LocalSDP   what this side can do: the application fills it, SDPHandler writes descriptions from it
//     RemoteSDP  what was negotiated: SDPHandler fills it, the media engine starts from it
//     MediaSession, RtpMap   one "m=" section of the remote description as it was read
//
// The records hold data only. They can be copied freely; key material is wiped when a record is reset or
// destroyed. Nothing here throws but std::bad_alloc.
//
// Direction flags everywhere are this side's own: `Send` says that this side sends. A far end that writes
// "a=sendonly" therefore leaves Send clear and Recv set.
//
//     far end writes   this side sends   this side receives
//     a=sendrecv       yes               yes
//     a=sendonly       no                yes
//     a=recvonly       yes               no
//     a=inactive       no                no
#pragma once

#include "CommonMediaExport.h"
#include "TalmoMedia.h"

#include <cstdint>
#include <list>
#include <string>
#include <vector>

/// Kind of a media section: the media field of an "m=" line (RFC 4566, 5.14).
enum MediaType : std::int32_t {
    MEDIA_VIDEO = 1,
    MEDIA_AUDIO = 2,
    MEDIA_APPLICATION = 3,
    MEDIA_UNKNOWN = 256 ///< any other media; the section keeps its place in the order
};
typedef MediaType MediaType_t; ///< the same type

/// Role of a video stream, "a=content:main" or "a=content:slides" on the wire (RFC 4796, 5).
enum VIDEOTYPE : std::int32_t {
    VIDEOTYPE_MAIN = 0,
    VIDEOTYPE_PRESO = 1,
    VIDEOTYPE_MAX = 2, ///< the number of roles
    VIDEOTYPE_UNKNOWN = 100
};
typedef VIDEOTYPE VideoType_t; ///< the same type

/// Codecs as single bits: a set of codecs is one value, `PayloadType_t(PAYLOAD_G711U | PAYLOAD_G722)`.
enum PayloadType : std::int32_t {
    PAYLOAD_G711U = 1,
    PAYLOAD_H264 = 2, ///< H.264 in packetization mode 1 (RFC 6184, 6.3)
    PAYLOAD_VP8 = 4,
    PAYLOAD_G729 = 8,
    PAYLOAD_G7221 = 16,                ///< G.722.1 at 16 kHz and 32 kbit/s (RFC 5577)
    PAYLOAD_H264_PACKETIZATION_0 = 32, ///< H.264 in packetization mode 0 (RFC 6184, 6.2)
    PAYLOAD_G722 = 64,
    PAYLOAD_UNKNOWN = 256
};
typedef PayloadType PayloadType_t; ///< the same type

/// One video stream.
struct COMMONMEDIA_EXPORT VideoParms {
    std::int32_t iFmtpMaxMbps = 0;      ///< H.264 max-mbps, macroblocks/s; 0 means not given (RFC 6184, 8.1)
    std::int32_t iFmtpMaxFrameSize = 0; ///< H.264 max-fs, macroblocks; 0 means not given
    std::int32_t iFmtpMaxBitRate = 0;   ///< H.264 max-br, units of 1000 bit/s; 0 means not given
    /// Local: set of PAYLOAD_H264 and PAYLOAD_H264_PACKETIZATION_0; 0 means no section at all. The value of a
    /// new record writes an "m=video" line without a format. Remote: PAYLOAD_H264 when a section was found.
    PayloadType_t eVideoCodec = PAYLOAD_UNKNOWN;
    VideoType_t eVideoType = VIDEOTYPE_UNKNOWN; ///< main or presentation stream
    std::int32_t iVideoRTPPort = 0;             ///< RTP port; 0 means declined or on hold
    std::string strVideoLevel;                  ///< H.264 level name, "1", "1.b", ... "5.1"
    std::string strVideoIPAddr;                 ///< remote: address of the stream, as the far end wrote it
    std::int32_t iVideoPayload = 0;             ///< remote: payload type of the chosen format
    std::int32_t iFmtpPacketizationMode = 0;    ///< remote: packetization mode of the chosen format
    bool fVideoSend = false;                    ///< remote: this side may send
    bool fVideoRecv = false;                    ///< remote: this side shall receive
    bool fIsVideoValid = false; ///< remote: a section for this stream was found and the fields above are set

    VideoParms();
    VideoParms(const VideoParms&) = default;
    VideoParms& operator=(const VideoParms&) = default;
    ~VideoParms() = default;

    /// Back to the state of a new record.
    void Reset();
    /// A dump for people, one field per line.
    std::string ToDiag() const;
};

/// What a local and a remote description have in common.
struct COMMONMEDIA_EXPORT baseSDP {
    /// Index of a stream's key material.
    enum SRTP_M_LINE : std::int32_t {
        SRTP_AUDIO = 0,
        SRTP_VIDEO = 1,
        SRTP_VIDEO_PRESO = 2,
        SRTP_MAX = 3 ///< the number of streams, never an index
    };

    static constexpr int kKeyLength = 16;  ///< bytes of an SRTP master key (RFC 3711, 8.2)
    static constexpr int kSaltLength = 14; ///< bytes of an SRTP master salt

    PayloadType_t eAudioCodec;           ///< local: set of codecs; remote: the chosen one, or PAYLOAD_UNKNOWN
    std::int32_t iAudioRTPPort;          ///< RTP port; 0 means declined or on hold
    std::int32_t iVideoPresoControlPort; ///< port of the BFCP channel that controls the presentation
    std::int32_t iBfcpConfid;            ///< BFCP conference id (RFC 4583, 5)
    std::int32_t iBfcpUserid;            ///< BFCP user id (RFC 4583, 5)
    bool fBfcpIsServer;                  ///< remote: the far end is floor control server only
    std::int32_t iMaxBandwidth;          ///< whole session, bit/s; 0 means not limited
    VideoParms m_VideoMain;              ///< the camera
    VideoParms m_VideoPreso;             ///< the shared screen
    unsigned char bufSRTPKey[SRTP_MAX][kKeyLength + 1];   ///< master key per stream, last byte spare
    unsigned char bufSRTPSalt[SRTP_MAX][kSaltLength + 1]; ///< master salt per stream, last byte spare
    /// Suite per stream. Remote: with CRYPTO_NONE the key rows of the stream mean nothing.
    Quor::media::rtp::CryptoParams::CRYPTO_PROFILE cryptoAlgo[SRTP_MAX];

    baseSDP();
    baseSDP(const baseSDP&) = default;
    /// Copies everything but iBfcpConfid, iBfcpUserid and fBfcpIsServer, which stay as they are.
    baseSDP& operator=(const baseSDP& other);
    /// Wipes the key rows.
    ~baseSDP();

    /// Back to the state of a new record: numbers 0, codec PAYLOAD_UNKNOWN, both streams reset and given
    /// their role, key rows wiped, suites CRYPTO_NONE.
    void Reset();
    /// A dump for people, one field per line, the key rows left out.
    std::string ToDiag() const;

    /// Copies kSaltLength bytes from `salt` into row `n`. An `n` outside the rows changes nothing.
    void setSRTPSalt(SRTP_M_LINE n, const unsigned char* salt);
    /// Copies kKeyLength bytes from `key` into row `n`. An `n` outside the rows changes nothing.
    void setSRTPKey(SRTP_M_LINE n, const unsigned char* key);
};

/// The local side's capabilities and addresses, which the application passes to SDPHandler.
struct COMMONMEDIA_EXPORT LocalSDP : public baseSDP {
    std::string strMyIPAddr;               ///< address of the origin line; empty: strDefaultIPAddr is used
    std::string strOExtension;             ///< suffix of the origin's user name; empty: none
    std::string strDefaultIPAddr;          ///< address of the "c=" and "a=rtcp:" lines; an offer needs it
    std::int32_t iVideoPayloadMode0;       ///< payload type offered for H.264 packetization mode 0
    std::int32_t iVideoPayloadMode1;       ///< payload type offered for H.264 packetization mode 1
    bool fVideoTxMuted;                    ///< the user has muted the camera: main video is not sent
    std::list<int> listAudioCodecPriority; ///< PayloadType values, best first; empty: no audio section

    LocalSDP();
    LocalSDP(const LocalSDP&) = default;
    /// As baseSDP::operator=, and every field of this record.
    LocalSDP& operator=(const LocalSDP&) = default;
    ~LocalSDP() = default;

    /// Back to the state of a new record.
    virtual void Reset();
    /// A dump for people, one field per line, the key rows left out.
    std::string ToDiag() const;
};

/// What the far end offered or accepted. The application owns the record; SDPHandler::ParseTheSDP writes it.
struct COMMONMEDIA_EXPORT RemoteSDP : public baseSDP {
    std::string strAudioIPAddr; ///< where to send audio, as the far end wrote it
    std::int32_t iAudioPayload; ///< payload type of the chosen codec
    std::int32_t iDTMFPayload;  ///< payload type of telephone events (RFC 4733); 0 means none
    bool fAudioSend;            ///< this side may send
    bool fAudioRecv;            ///< this side shall receive
    bool fIsAudioValid;         ///< an audio section was found; eAudioCodec tells whether a codec was

    RemoteSDP();

    /// Back to the state of a new record.
    void Reset();
    /// A dump for people, one field per line, the key rows left out.
    std::string ToDiag() const;
};

/// One payload format of a remote media section.
struct RtpMap {
    std::string strPayload;                ///< the format token of the "m=" line, unchanged
    std::string strEncodingName;           ///< second word of its "a=rtpmap:" line, "H264/90000"
    std::vector<std::string> vecFmtpParms; ///< parameters of its last "a=fmtp:" line, blanks kept
};

/// The fields of a MediaSession, copied member by member.
struct MediaSessionFields {
    MediaType_t eMedia = MEDIA_UNKNOWN;       ///< kind, from the "m=" line
    VideoType_t eContent = VIDEOTYPE_UNKNOWN; ///< role of a video section; VIDEOTYPE_UNKNOWN in every other
    std::int32_t iPort = 0;                   ///< port of the "m=" line
    std::string strIPAddr;          ///< address of the section's own "c=" line; empty: the session's is used
    std::vector<RtpMap*> vecRtpMap; ///< formats in "m=" line order; not freed by the destructor
    bool fSend = true;              ///< this side may send
    bool fRecv = true;              ///< this side shall receive
    std::string strFullMLine;       ///< the whole "m=" line
    std::string strVideoLevel;      ///< only dumped; no line sets it
    std::string strMaxBandwidth;    ///< text after "TIAS:", bit/s as the far end wrote it (RFC 3890)
    std::int32_t iVideoLabel = 0;   ///< no line sets it
    unsigned char bufSRTPKey[baseSDP::kKeyLength + 1] = {};   ///< meaningful only when cryptoAlgo is set
    unsigned char bufSRTPSalt[baseSDP::kSaltLength + 1] = {}; ///< meaningful only when cryptoAlgo is set
    Quor::media::rtp::CryptoParams::CRYPTO_PROFILE cryptoAlgo =
        Quor::media::rtp::CryptoParams::CRYPTO_NONE; ///< CRYPTO_NONE until a usable "a=crypto:"
    std::int32_t iCryptoTag = 0;                     ///< tag of the last "a=crypto:" line that was read
    std::string strBase64Key;                        ///< text after "inline:", lifetime and MKI included
    std::int32_t iBfcpConfid = 0;                    ///< from "a=confid:"
    std::int32_t iBfcpUserid = 0;                    ///< from "a=userid:"
    std::int32_t iBfcpFloorid = 0;                   ///< no line sets it
    std::string strFloorctrl;                        ///< text after "a=floorctrl:"
    std::string striceufrag;                         ///< the whole "a=ice-ufrag" line (RFC 8839, 5.4)
    std::string stricepwd;                           ///< the whole "a=ice-pwd" line
    std::vector<std::string> vecCandidate; ///< every "a=candidate:" line, whole, in order (RFC 8839, 5.1)
};

/// One media section of the remote description, as it was read. SDPHandler owns it and its payload formats.
struct COMMONMEDIA_EXPORT MediaSession : public MediaSessionFields {
    MediaSession();
    MediaSession(const MediaSession&) = default;
    /// Copies every field; the formats are shared, not copied. The key text that is replaced is wiped.
    MediaSession& operator=(const MediaSession& other);
    /// Wipes the key material. The RtpMap objects stay alive: delete them first.
    ~MediaSession();

    /// A dump for the trace, one field per line of at most 999 bytes, without the media kind, the "m=" line,
    /// crypto and ICE. Key text that a malformed line put into a field is shown; CommonMediaTrace masks it.
    std::string ToDiag() const;
};
