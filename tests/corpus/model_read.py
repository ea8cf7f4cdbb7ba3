"""An independent model of the component, in another language: reading a far end's text.

The C++ component reads a far end's session description into a RemoteSDP record and writes the local
offer or answer.  This module does the same work from the same rules and shares no line with it, so that
a golden file rests on two independent readings: where they disagree, one of them is wrong.

Everything here is bytes.  A description is not text in any character set: RFC 4566 section 5 lets most
fields hold any byte, and a far end may send whatever it likes.

This half holds numbers and words, the records, reading (text to sections) and extraction (sections to
record).  The other half, model_write.py, holds the handler and its texts.
"""

from __future__ import annotations

import base64
import re
from dataclasses import dataclass, field

# ---------------------------------------------------------------------------------------------------------
# Numbers and words, as the C library reads them.


def wrap32(number: int) -> int:
    """Narrow to a signed 32-bit integer the way a two's complement machine does."""
    return (number + 0x8000_0000) % 0x1_0000_0000 - 0x8000_0000


def leading_number(text: bytes) -> int:
    """atoi and atol of a 64-bit C library: blanks, a sign, digits; saturated at 64 bits, narrowed to 32."""
    match = re.match(rb"[ \t\n\v\f\r]*([+-]?)0*([0-9]*)", text)
    digits = match.group(2)[:20] or b"0"  # Twenty digits are past 64 bits, whatever follows them.
    value = -int(digits) if match.group(1) == b"-" else int(digits)
    return wrap32(max(-(2**63), min(2**63 - 1, value)))


def hex_number(text: bytes) -> int:
    """strtoul in base 16: blanks, a sign, perhaps 0x; a negative value wraps, an overlong one saturates."""
    match = re.match(rb"[ \t\n\v\f\r]*([+-]?)(?:0[xX](?=[0-9A-Fa-f]))?([0-9A-Fa-f]+)", text)
    if match is None:
        return 0
    value = int(match.group(2), 16)
    if value >= 2**64:
        return 2**64 - 1
    return -value % 2**64 if match.group(1) == b"-" else value


def is_number(text: bytes) -> bool:
    """One or more decimal digits and nothing else: no sign, no blank."""
    return re.fullmatch(rb"[0-9]+", text) is not None


def split(text: bytes, separator: bytes) -> list[bytes]:
    """The parts between separators, empty ones included; an empty text has no parts."""
    return text.split(separator) if text else []


def words(line: bytes) -> list[bytes]:
    """Split at the white space of a C++ stream: blank, tab, line feed, \\v, \\f and carriage return."""
    return line.split()


def decimal(number: int) -> bytes:
    return b"%d" % number


def key_text(key: bytes, salt: bytes) -> bytes:
    """RFC 4568 section 6.1: the base64 of the 16-byte master key followed by the 14-byte master salt."""
    return base64.b64encode(key[:16] + salt[:14])


BASE64_ALPHABET = b"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"


def decode_key(text: bytes) -> tuple[bytes, bytes] | None:
    """Key and salt of the 40 characters, or None.

    The block decoder of OpenSSL takes "=" for six zero bits at any place.  It trims blanks at the start
    and blanks, line ends and "-" at the end; a trimmed text has lost at least one of its 30 bytes, so trimming
    and a foreign character both end in the same refusal.
    """
    bits = 0
    for character in text[:40]:
        value = 0 if character == ord("=") else BASE64_ALPHABET.find(character)
        if value < 0:
            return None
        bits = bits << 6 | value
    block = bits.to_bytes(30, "big")
    return block[:16], block[16:]


# ---------------------------------------------------------------------------------------------------------
# Enumerations and records.  Field names and their order are the component's.

MEDIA_VIDEO, MEDIA_AUDIO, MEDIA_APPLICATION, MEDIA_UNKNOWN = 1, 2, 3, 256
VIDEOTYPE_MAIN, VIDEOTYPE_PRESO, VIDEOTYPE_UNKNOWN = 0, 1, 100
PAYLOAD_G711U, PAYLOAD_H264, PAYLOAD_VP8, PAYLOAD_G729 = 1, 2, 4, 8
PAYLOAD_G7221, PAYLOAD_H264_PACKETIZATION_0, PAYLOAD_G722, PAYLOAD_UNKNOWN = 16, 32, 64, 256
SRTP_AUDIO, SRTP_VIDEO, SRTP_VIDEO_PRESO, SRTP_MAX = 0, 1, 2, 3
CRYPTO_NONE, CRYPTO_AES_CM_128_HMAC_SHA1_32 = 0, 1


@dataclass
class VideoParms:
    iFmtpMaxMbps: int = 0
    iFmtpMaxFrameSize: int = 0
    iFmtpMaxBitRate: int = 0
    eVideoCodec: int = PAYLOAD_UNKNOWN
    eVideoType: int = VIDEOTYPE_UNKNOWN
    iVideoRTPPort: int = 0
    strVideoLevel: bytes = b""
    strVideoIPAddr: bytes = b""
    iVideoPayload: int = 0
    iFmtpPacketizationMode: int = 0
    fVideoSend: bool = False
    fVideoRecv: bool = False
    fIsVideoValid: bool = False


@dataclass
class BaseSDP:
    eAudioCodec: int = PAYLOAD_UNKNOWN
    iAudioRTPPort: int = 0
    iVideoPresoControlPort: int = 0
    iBfcpConfid: int = 0
    iBfcpUserid: int = 0
    fBfcpIsServer: bool = False
    iMaxBandwidth: int = 0
    m_VideoMain: VideoParms = field(default_factory=lambda: VideoParms(eVideoType=VIDEOTYPE_MAIN))
    m_VideoPreso: VideoParms = field(default_factory=lambda: VideoParms(eVideoType=VIDEOTYPE_PRESO))
    bufSRTPKey: list[bytes] = field(default_factory=lambda: [bytes(17)] * SRTP_MAX)
    bufSRTPSalt: list[bytes] = field(default_factory=lambda: [bytes(15)] * SRTP_MAX)
    cryptoAlgo: list[int] = field(default_factory=lambda: [CRYPTO_NONE] * SRTP_MAX)

    def take_keys(self, row: int, section: MediaSession) -> None:
        """Copies 16 and 14 bytes into the row; the spare byte after them keeps its value."""
        self.bufSRTPKey[row] = section.bufSRTPKey + self.bufSRTPKey[row][16:]
        self.bufSRTPSalt[row] = section.bufSRTPSalt + self.bufSRTPSalt[row][14:]
        self.cryptoAlgo[row] = section.cryptoAlgo


@dataclass
class LocalSDP(BaseSDP):
    strMyIPAddr: bytes = b""
    strOExtension: bytes = b""
    strDefaultIPAddr: bytes = b""
    iVideoPayloadMode0: int = 0
    iVideoPayloadMode1: int = 0
    fVideoTxMuted: bool = False
    listAudioCodecPriority: list[int] = field(default_factory=list)


@dataclass
class RemoteSDP(BaseSDP):
    strAudioIPAddr: bytes = b""
    iAudioPayload: int = 0
    iDTMFPayload: int = 0
    fAudioSend: bool = False
    fAudioRecv: bool = False
    fIsAudioValid: bool = False


@dataclass
class RtpMap:
    strPayload: bytes
    strEncodingName: bytes = b""
    vecFmtpParms: list[bytes] = field(default_factory=list)


@dataclass
class MediaSession:
    strFullMLine: bytes
    eMedia: int = MEDIA_UNKNOWN
    eContent: int = VIDEOTYPE_UNKNOWN
    iPort: int = 0
    strIPAddr: bytes = b""
    vecRtpMap: list[RtpMap] = field(default_factory=list)
    fSend: bool = True
    fRecv: bool = True
    strMaxBandwidth: bytes = b""
    bufSRTPKey: bytes = bytes(16)
    bufSRTPSalt: bytes = bytes(14)
    cryptoAlgo: int = CRYPTO_NONE
    iCryptoTag: int = 0
    strBase64Key: bytes = b""
    iBfcpConfid: int = 0
    iBfcpUserid: int = 0
    strFloorctrl: bytes = b""
    striceufrag: bytes = b""
    stricepwd: bytes = b""
    vecCandidate: list[bytes] = field(default_factory=list)

    def is_bfcp(self) -> bool:
        return self.eMedia == MEDIA_APPLICATION and b"BFCP" in self.strFullMLine

    def payload(self, number: bytes) -> RtpMap | None:
        """The first entry of that number; a second entry of the same number gets no attributes."""
        return next((entry for entry in self.vecRtpMap if entry.strPayload == number), None)


# Level name, the level byte of a profile-level-id, and that byte as two digits.  255 stands for level 1b in
# both directions; it is a private code, not the byte that H.264 itself gives to that level.
H264_LEVELS = (
    (b"1", 10, b"0A"),
    (b"1.b", 255, b"FF"),
    (b"1.1", 11, b"0B"),
    (b"1.2", 12, b"0C"),
    (b"1.3", 13, b"0D"),
    (b"2", 20, b"14"),
    (b"2.1", 21, b"15"),
    (b"2.2", 22, b"16"),
    (b"3", 30, b"1E"),
    (b"3.1", 31, b"1F"),
    (b"3.2", 32, b"20"),
    (b"4", 40, b"28"),
    (b"4.1", 41, b"29"),
    (b"4.2", 42, b"2A"),
    (b"5", 50, b"32"),
    (b"5.1", 51, b"33"),
)


def level_name(digits: bytes) -> bytes:
    """Far end's digits to a name; digits without a row read as level 1.3."""
    number = hex_number(digits)
    return next((name for name, code, _ in H264_LEVELS if code == number), b"1.3")


def level_digits(name: bytes) -> bytes:
    """Local name to digits; a name without a row is written as level 2."""
    return next((digits for known, _, digits in H264_LEVELS if known == name), b"14")


# ---------------------------------------------------------------------------------------------------------
# Reading: text to sections.


class Reader:
    """The reading half of a handler.  Only the session address is kept by the next parse."""

    def __init__(self) -> None:
        self.sections: list[MediaSession] = []
        self.session_address = b""
        self.session_bandwidth = b""

    def clear(self) -> None:
        self.sections = []
        self.session_bandwidth = b""

    def read(self, text: bytes) -> None:
        """Give every terminated line to the handler of the first keyword found anywhere in it."""
        for line in text.split(b"\r\n")[:-1]:  # What follows the last line end is no line.
            for keyword, handler in self.DISPATCH:
                if keyword in line:
                    handler(self, line)
                    break

    def connect(self, line: bytes) -> None:
        tokens = words(line)
        if len(tokens) < 3:
            return
        if self.sections:
            self.sections[-1].strIPAddr = tokens[2]
        else:
            self.session_address = tokens[2]

    def media(self, line: bytes) -> None:
        tokens = words(line)
        if len(tokens) < 4:
            return
        section = MediaSession(strFullMLine=line)
        if tokens[0] == b"m=audio":
            section.eMedia = MEDIA_AUDIO
        elif tokens[0] == b"m=video":
            section.eMedia, section.eContent = MEDIA_VIDEO, VIDEOTYPE_MAIN
        elif tokens[0] == b"m=application":
            section.eMedia = MEDIA_APPLICATION
        section.iPort = leading_number(tokens[1])
        section.vecRtpMap = [RtpMap(token) for token in tokens[3:]]
        self.sections.append(section)

    def rtpmap(self, line: bytes) -> None:
        tokens = words(line)
        if not self.sections or len(tokens) < 2 or len(tokens[0]) < 9:
            return
        entry = self.sections[-1].payload(tokens[0][9:])
        if entry is not None:
            entry.strEncodingName = tokens[1]

    def fmtp(self, line: bytes) -> None:
        blank = line.find(b" ")
        if not self.sections or blank < 7:  # Covers a line without any blank, too.
            return
        pieces = split(line[blank + 1 :], b";")
        entry = self.sections[-1].payload(line[7:blank])
        if pieces and entry is not None:
            entry.vecFmtpParms = pieces

    def crypto(self, line: bytes) -> None:
        tokens = words(line)
        if not self.sections or len(tokens) < 3 or b":" not in tokens[0]:
            return
        tag, suite, key = split(tokens[0], b":")[1], tokens[1], tokens[2]
        if suite in (b"AES_CM_128_HMAC_SHA1_80", b"AES_CM_256_HMAC_SHA1_80"):
            return
        section = self.sections[-1]
        if suite == b"AES_CM_128_HMAC_SHA1_32":
            section.cryptoAlgo = CRYPTO_AES_CM_128_HMAC_SHA1_32
        section.iCryptoTag = leading_number(tag) if is_number(tag) else 1
        if len(key) < 47:
            return
        section.strBase64Key = key[7:].split(b"\0")[0]
        decoded = decode_key(key[7:47])
        if decoded is not None:
            section.bufSRTPKey, section.bufSRTPSalt = decoded

    def ice(self, line: bytes) -> None:
        if not self.sections:
            return
        if b"a=ice-ufrag" in line:
            self.sections[-1].striceufrag = line
        elif b"a=ice-pwd" in line:
            self.sections[-1].stricepwd = line

    def candidate(self, line: bytes) -> None:
        if self.sections:
            self.sections[-1].vecCandidate.append(line)

    def content(self, line: bytes) -> None:
        if not self.sections or self.sections[-1].eMedia != MEDIA_VIDEO:
            return
        if b"a=content:main" in line:
            self.sections[-1].eContent = VIDEOTYPE_MAIN
        elif b"a=content:slides" in line:
            self.sections[-1].eContent = VIDEOTYPE_PRESO

    def bandwidth(self, line: bytes) -> None:
        if not self.sections:  # "AS:" is found inside "TIAS:" as well.
            _, found, value = line.partition(b"AS:")
            if found:
                self.session_bandwidth = value
            return
        _, found, value = line.partition(b"TIAS:")
        if found:
            self.sections[-1].strMaxBandwidth = value

    def floor_control(self, line: bytes) -> None:
        if self.sections:
            self.sections[-1].strFloorctrl = line.partition(b"a=floorctrl:")[2]

    def conference_id(self, line: bytes) -> None:
        value = line.partition(b"a=confid:")[2]
        if self.sections and is_number(value):
            self.sections[-1].iBfcpConfid = leading_number(value)

    def user_id(self, line: bytes) -> None:
        value = line.partition(b"a=userid:")[2]
        if self.sections and is_number(value):
            self.sections[-1].iBfcpUserid = leading_number(value)

    def direction(self, line: bytes) -> None:
        """From this side's view: what the far end only sends, this side only receives."""
        for keyword, send, receive in (
            (b"a=inactive", False, False),
            (b"a=sendonly", False, True),
            (b"a=recvonly", True, False),
            (b"a=sendrecv", True, True),
        ):
            if self.sections and keyword in line:
                self.sections[-1].fSend, self.sections[-1].fRecv = send, receive
                return

    DISPATCH = (
        (b"c=", connect),
        (b"m=", media),
        (b"a=rtpmap", rtpmap),
        (b"a=fmtp:", fmtp),
        (b"a=crypto:", crypto),
        (b"a=ice", ice),
        (b"a=candidate:", candidate),
        (b"a=content:", content),
        (b"b=", bandwidth),
        (b"a=floorctrl:", floor_control),
        (b"a=confid:", conference_id),
        (b"a=userid:", user_id),
        (b"a=", direction),
    )


# ---------------------------------------------------------------------------------------------------------
# Extraction: sections to record.


def is_g7221(entry: RtpMap, codecs: int) -> bool:
    """Only 32 kbit/s, and only at the start of the parameter."""
    if not codecs & PAYLOAD_G7221 or entry.strEncodingName != b"G7221/16000":
        return False
    return any(parameter.startswith(b"bitrate=32000") for parameter in entry.vecFmtpParms)


def audio_codec(entry: RtpMap, codecs: int) -> int | None:
    if entry.strPayload == b"9" and codecs & PAYLOAD_G722:
        return PAYLOAD_G722
    if is_g7221(entry, codecs):
        return PAYLOAD_G7221
    if entry.strPayload == b"0" and codecs & PAYLOAD_G711U:
        return PAYLOAD_G711U
    if entry.strPayload == b"18" and codecs & PAYLOAD_G729:
        return PAYLOAD_G729
    return None


def extract(reader: Reader, codecs: int) -> RemoteSDP:
    remote = RemoteSDP()
    if is_number(reader.session_bandwidth):
        remote.iMaxBandwidth = wrap32(leading_number(reader.session_bandwidth) * 1000)
    for section in reader.sections:
        if section.is_bfcp():
            extract_bfcp(remote, section)
        elif section.eMedia == MEDIA_VIDEO and section.eContent == VIDEOTYPE_PRESO:
            if not remote.m_VideoPreso.fIsVideoValid:
                extract_video(remote, remote.m_VideoPreso, section, reader)
        elif section.eMedia == MEDIA_VIDEO and section.eContent == VIDEOTYPE_MAIN:
            if not remote.m_VideoMain.fIsVideoValid:
                extract_video(remote, remote.m_VideoMain, section, reader)
                add_media_bandwidth(remote, section, reader)
        elif section.eMedia == MEDIA_AUDIO and not remote.fIsAudioValid:
            extract_audio(remote, section, codecs, reader)
            add_media_bandwidth(remote, section, reader)
    return remote


def add_media_bandwidth(remote: RemoteSDP, section: MediaSession, reader: Reader) -> None:
    """The sum of the sections is used only if the session has no bandwidth, readable or not."""
    if not reader.session_bandwidth and is_number(section.strMaxBandwidth):
        remote.iMaxBandwidth = wrap32(remote.iMaxBandwidth + leading_number(section.strMaxBandwidth))


def extract_bfcp(remote: RemoteSDP, section: MediaSession) -> None:
    remote.iVideoPresoControlPort = section.iPort
    remote.iBfcpConfid = section.iBfcpConfid
    remote.iBfcpUserid = section.iBfcpUserid
    remote.fBfcpIsServer = section.strFloorctrl == b"s-only"


def extract_audio(remote: RemoteSDP, section: MediaSession, codecs: int, reader: Reader) -> None:
    """The first audio section makes the record valid, even without a common codec."""
    found = False
    for entry in section.vecRtpMap:
        codec = None if found else audio_codec(entry, codecs)
        if codec is not None:
            found = True
            remote.eAudioCodec = codec
            remote.iAudioPayload = leading_number(entry.strPayload)
        if entry.strEncodingName == b"telephone-event/8000":
            remote.iDTMFPayload = leading_number(entry.strPayload)
    remote.iAudioRTPPort = section.iPort
    if section.iPort != 0 and remote.eAudioCodec != PAYLOAD_UNKNOWN:
        remote.fAudioSend, remote.fAudioRecv = section.fSend, section.fRecv
    remote.strAudioIPAddr = section.strIPAddr or reader.session_address
    remote.take_keys(SRTP_AUDIO, section)
    remote.fIsAudioValid = True


def extract_video(remote: RemoteSDP, video: VideoParms, section: MediaSession, reader: Reader) -> None:
    """The first section of each role makes its stream valid, even without H.264."""
    video.eVideoCodec = PAYLOAD_H264
    remote.take_keys(SRTP_VIDEO_PRESO if section.eContent == VIDEOTYPE_PRESO else SRTP_VIDEO, section)
    video.iVideoRTPPort = section.iPort
    if section.iPort != 0:
        video.fVideoRecv, video.fVideoSend = section.fRecv, section.fSend
    video.strVideoIPAddr = section.strIPAddr or reader.session_address
    for entry in section.vecRtpMap:
        if b"H264/9000" not in entry.strEncodingName:
            continue
        video.iVideoPayload = leading_number(entry.strPayload)
        load_h264_parameters(video, entry)
        if video.iFmtpPacketizationMode != 0:
            break
    video.eVideoType = section.eContent
    video.fIsVideoValid = True


def load_h264_parameters(video: VideoParms, entry: RtpMap) -> None:
    """Values are not reset first, so a payload without a parameter inherits it from the payload before it."""
    for parameter in entry.vecFmtpParms:
        pieces = split(parameter, b"=")
        if len(pieces) < 2:
            continue
        key, value = pieces[0], pieces[1]
        if b"profile-level-id" in key:
            if len(value) >= 4:
                video.strVideoLevel = level_name(value[4:])
        elif b"max-mbps" in key:
            if is_number(value):
                video.iFmtpMaxMbps = leading_number(value)
        elif b"max-fs" in key:
            if is_number(value):
                video.iFmtpMaxFrameSize = leading_number(value)
        elif b"max-br" in key:
            if is_number(value):
                video.iFmtpMaxBitRate = leading_number(value)
        elif b"packetization-mode" in key:
            if is_number(value):
                video.iFmtpPacketizationMode = leading_number(value)
