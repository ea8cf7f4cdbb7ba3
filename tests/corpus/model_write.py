"""An independent model of the component, in another language: what a handler writes.

The other half is model_read.py.  The methods of Handler are in the order of the text they write.
"""

from __future__ import annotations

from model_read import (
    CRYPTO_NONE,
    MEDIA_AUDIO,
    MEDIA_VIDEO,
    PAYLOAD_G7221,
    PAYLOAD_G711U,
    PAYLOAD_G722,
    PAYLOAD_G729,
    PAYLOAD_H264,
    PAYLOAD_H264_PACKETIZATION_0,
    PAYLOAD_UNKNOWN,
    SRTP_AUDIO,
    SRTP_VIDEO,
    SRTP_VIDEO_PRESO,
    VIDEOTYPE_MAIN,
    VIDEOTYPE_PRESO,
    VIDEOTYPE_UNKNOWN,
    LocalSDP,
    MediaSession,
    Reader,
    RemoteSDP,
    VideoParms,
    audio_codec,
    decimal,
    extract,
    key_text,
    level_digits,
    words,
    wrap32,
)

AUDIO_TOKEN = {PAYLOAD_G7221: b" 104", PAYLOAD_G711U: b" 0", PAYLOAD_G729: b" 18", PAYLOAD_G722: b" 9"}

SUITE_NAME = {
    1: b"AES_CM_128_HMAC_SHA1_32",
    2: b"AES_CM_128_HMAC_SHA1_80",
    3: b"AES_CM_256_HMAC_SHA1_80",
    4: b"",
    5: b"",
}


class Handler:
    """One negotiation: local capabilities, the switches, and the far end's last description."""

    def __init__(
        self,
        local: LocalSDP,
        srtp: bool = False,
        bfcp: bool = False,
        session_id: int = 0,
        session_version: int = 1,
        max_sessions: int = 2,
    ) -> None:
        self.local = local
        self.srtp = srtp
        self.bfcp = bfcp
        self.session_id = session_id
        self.session_version = session_version
        self.max_sessions = max_sessions
        self.reader = Reader()

    @property
    def sections(self) -> list[MediaSession]:
        return self.reader.sections

    def parse(self, text: bytes) -> RemoteSDP | None:
        """Returns the record, or None for an empty text, which clears the sections and changes no record."""
        self.reader.clear()
        if not text:
            return None
        self.reader.read(text)
        return extract(self.reader, self.local.eAudioCodec)

    def local_text(self) -> bytes:
        """An answer while remote sections are held, else an offer, which needs a default address."""
        if not self.sections and not self.local.strDefaultIPAddr:
            return b""
        text = self.preamble() + self.audio() + self.video(self.local.m_VideoMain)
        if self.bfcp:
            text += self.video(self.local.m_VideoPreso) + self.application() + self.floor_control()
        if len(self.sections) > self.max_sessions:
            text += self.unsupported()
        return text

    def preamble(self) -> bytes:
        connection = b"c=IN IP4 " + self.local.strDefaultIPAddr + b"\r\n"
        bandwidth = b""
        if self.local.iMaxBandwidth != 0:
            kilobits = abs(self.local.iMaxBandwidth) // 1000  # Truncated toward zero.
            sign = -1 if self.local.iMaxBandwidth < 0 else 1
            bandwidth = b"b=AS:" + decimal(sign * kilobits) + b"\r\n"
        return b"v=0\r\n" + self.origin() + b"s=-\r\n" + connection + bandwidth + b"t=0 0\r\n"

    def origin(self) -> bytes:
        """The id is written unsigned and the version signed."""
        self.session_version = (self.session_version + 1) % 2**32
        name = b"o=Quillmarshorizon" + (b"-" + self.local.strOExtension if self.local.strOExtension else b"")
        numbers = b" %d %d" % (self.session_id % 2**32, wrap32(self.session_version))
        address = self.local.strMyIPAddr or self.local.strDefaultIPAddr
        return name + numbers + b" IN IP4 " + address + b"\r\n"

    def audio(self) -> bytes:
        if not self.local.listAudioCodecPriority:
            return b""
        chosen = self.answered_codec() if self.sections else self.local.eAudioCodec
        priority = self.local.listAudioCodecPriority
        listed = [codec for codec in priority if codec in AUDIO_TOKEN and codec & chosen]
        secure = self.is_secure(SRTP_AUDIO)
        port = self.local.iAudioRTPPort
        text = b"m=audio " + decimal(port) + b" RTP/" + (b"SAVP" if secure else b"AVP")
        text += b"".join(AUDIO_TOKEN[codec] for codec in listed) + b" 101\r\n"
        text += self.media_bandwidth(is_video=False)
        if secure:
            text += self.crypto(SRTP_AUDIO)
        text += b"".join(self.rtpmap(codec) for codec in listed)
        text += b"a=rtpmap:101 telephone-event/8000\r\na=fmtp:101 0-15\r\n"
        text += self.direction(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN)
        if port != 0:
            text += self.rtcp(wrap32(port + 1))
        return text

    def answered_codec(self) -> int:
        """The first match decides for its section, the last section with a match for the answer."""
        chosen = PAYLOAD_UNKNOWN
        for section in self.sections:
            if section.eMedia != MEDIA_AUDIO:
                continue
            for entry in section.vecRtpMap:
                codec = audio_codec(entry, self.local.eAudioCodec)
                if codec is not None:
                    chosen = codec
                    break
        return chosen

    def rtpmap(self, payload: int) -> bytes:
        if payload == PAYLOAD_G711U:
            return b"a=rtpmap:0 PCMU/8000\r\n"
        if payload == PAYLOAD_G729:
            return b"a=rtpmap:18 G729/8000\r\na=fmtp:18 annexb=no\r\n"
        if payload == PAYLOAD_G7221:
            return b"a=rtpmap:104 G7221/16000\r\na=fmtp:104 bitrate=32000\r\n"
        if payload == PAYLOAD_G722:
            return b"a=rtpmap:9 G722/8000\r\n"
        if payload == PAYLOAD_H264:
            return b"a=rtpmap:" + decimal(self.local.iVideoPayloadMode1) + b" H264/90000\r\n"
        if payload == PAYLOAD_H264_PACKETIZATION_0:
            return b"a=rtpmap:" + decimal(self.local.iVideoPayloadMode0) + b" H264/90000\r\n"
        return b"a=rtpmap:"

    def media_bandwidth(self, is_video: bool) -> bytes:
        """Audio has 64000 bit/s, and every video section names the whole rest."""
        if self.local.iMaxBandwidth <= 63999:
            return b""
        bits = self.local.iMaxBandwidth - 64000 if is_video else 64000
        return b"b=TIAS:" + decimal(bits) + b"\r\n" if bits >= 1 else b""

    def video(self, video: VideoParms) -> bytes:
        if video.eVideoCodec == 0:
            return b""
        row = SRTP_VIDEO_PRESO if video.eVideoType == VIDEOTYPE_PRESO else SRTP_VIDEO
        mode1 = bool(video.eVideoCodec & PAYLOAD_H264)
        mode0 = bool(video.eVideoCodec & (PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0))
        secure = self.is_secure(row)
        text = b"m=video " + decimal(video.iVideoRTPPort) + b" RTP/" + (b"SAVP " if secure else b"AVP ")
        if mode1:
            text += decimal(self.local.iVideoPayloadMode1)
        if mode0:
            text += b" " + decimal(self.local.iVideoPayloadMode0)
        text += b"\r\n"
        if mode1:
            text += self.media_bandwidth(is_video=True)
            if secure:
                text += self.crypto(row)
            text += self.rtpmap(PAYLOAD_H264) + self.h264_format(video, packetization_mode=1)
        if mode0:
            text += self.rtpmap(PAYLOAD_H264_PACKETIZATION_0)
            text += self.h264_format(video, packetization_mode=0)
            text += self.direction(MEDIA_VIDEO, video.eVideoType)
            if video.iVideoRTPPort != 0:
                text += self.rtcp(wrap32(video.iVideoRTPPort + 1))
        label = {VIDEOTYPE_PRESO: b"9\r\n", VIDEOTYPE_MAIN: b"8\r\n"}.get(video.eVideoType, b"")
        content = {VIDEOTYPE_PRESO: b"slides\r\n", VIDEOTYPE_MAIN: b"main\r\n"}.get(video.eVideoType, b"")
        return text + b"a=label:" + label + b"a=content:" + content

    def h264_format(self, video: VideoParms, packetization_mode: int) -> bytes:
        payload = self.local.iVideoPayloadMode1 if packetization_mode == 1 else self.local.iVideoPayloadMode0
        text = b"a=fmtp:" + decimal(payload) + b" profile-level-id=4200" + level_digits(video.strVideoLevel)
        if video.iFmtpMaxBitRate != 0:
            text += b";max-br=" + decimal(video.iFmtpMaxBitRate)
        if video.iFmtpMaxMbps != 0:
            text += b";max-mbps=" + decimal(video.iFmtpMaxMbps)
        if video.iFmtpMaxFrameSize != 0:
            text += b";max-fs=" + decimal(video.iFmtpMaxFrameSize | 1)
        if packetization_mode == 1:
            text += b";packetization-mode=1;max-rcmd-nalu-size=32000"
        else:
            text += b";packetization-mode=0;max-rcmd-nalu-size=0"
        return text + b";level-asymmetry-allowed=1\r\n"

    def is_secure(self, row: int) -> bool:
        """An offer is secure if SRTP is wanted; an answer only if the far end also named a suite that is read."""
        if not self.srtp or not self.sections:
            return self.srtp
        return any(self.secures(row, section) for section in self.sections)

    @staticmethod
    def secures(row: int, section: MediaSession) -> bool:
        """The profile: any secure video section makes main video secure, also the presentation."""
        if section.cryptoAlgo == CRYPTO_NONE:
            return False
        if row == SRTP_AUDIO:
            return section.eMedia == MEDIA_AUDIO
        if row == SRTP_VIDEO:
            return section.eMedia == MEDIA_VIDEO
        return section.eMedia == MEDIA_VIDEO and section.eContent == VIDEOTYPE_PRESO

    def crypto(self, row: int) -> bytes:
        if self.local.cryptoAlgo[row] == CRYPTO_NONE:
            return b""
        tag = 1
        if self.sections:
            match = next((section for section in self.sections if self.keys_for(row, section)), None)
            if match is None:
                return b""
            tag = match.iCryptoTag
        suite = SUITE_NAME.get(self.local.cryptoAlgo[row], b"")
        inline = key_text(self.local.bufSRTPKey[row], self.local.bufSRTPSalt[row])
        return b"a=crypto:" + decimal(tag) + b" " + suite + b" inline:" + inline + b"\r\n"

    @classmethod
    def keys_for(cls, row: int, section: MediaSession) -> bool:
        """The crypto line: main video needs a secure main video section."""
        return cls.secures(row, section) and (row != SRTP_VIDEO or section.eContent == VIDEOTYPE_MAIN)

    def direction(self, media: int, content: int) -> bytes:
        muted = media == MEDIA_VIDEO and content == VIDEOTYPE_MAIN and self.local.fVideoTxMuted
        if not self.sections:
            return b"a=recvonly\r\n" if muted else b"a=sendrecv\r\n"
        for section in self.sections:
            if section.eMedia == media and section.eContent == content:
                send = section.fSend and section.iPort != 0 and not muted
                receive = section.fRecv and section.iPort != 0
                if send and receive:
                    return b"a=sendrecv\r\n"
                if receive:
                    return b"a=recvonly\r\n"
                return b"a=sendonly\r\n" if send else b"a=inactive\r\n"
        return b""

    def rtcp(self, port: int) -> bytes:
        return b"a=rtcp:" + decimal(port) + b" IN IP4 " + self.local.strDefaultIPAddr + b"\r\n"

    def application(self) -> bytes:
        """The first floor-control section gives the port; without one an answer names no port at all."""
        port = b""
        if not self.sections:
            port = decimal(self.local.iVideoPresoControlPort)
        for section in self.sections:
            if section.is_bfcp():
                port = decimal(self.local.iVideoPresoControlPort) if section.iPort != 0 else b"0"
                break
        return b"m=application " + port + b" UDP/BFCP *\r\n"

    def floor_control(self) -> bytes:
        """The last floor-control section gives the role."""
        role = b"" if self.sections else b"a=floorctrl:c-s\r\n"
        for section in self.sections:
            if section.is_bfcp():
                client = section.strFloorctrl == b"s-only"
                role = b"a=floorctrl:c-only\r\n" if client else b"a=floorctrl:s-only\r\n"
        return role + b"a=floorid:2 mstrm:9\r\na=confid:15\r\na=userid:15\r\n"

    def unsupported(self) -> bytes:
        text = b""
        for section in self.sections[self.max_sessions :]:
            tokens = words(section.strFullMLine)
            if not tokens:
                continue
            text += b" ".join([tokens[0], b"0"] + tokens[2:]) + b"\r\n"
            if section.strIPAddr:
                text += b"c=IN IP4 " + section.strIPAddr + b"\r\n"
        return text
