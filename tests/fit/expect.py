"""What an answer should take of an offer, by a small independent reading of the offer.

Shares nothing with the component or the layers over it. The side that answers speaks G.711 mu-law, G.722,
G.722.1 at 32 kbit/s, G.729 and H.264 in packetization modes 0 and 1, over RTP/AVP, AVPF, SAVP and SAVPF, with
both 128-bit suites of RFC 4568.
"""
import base64
import binascii
import re

PLAIN = ("RTP/AVP", "RTP/AVPF")
SECURE = ("RTP/SAVP", "RTP/SAVPF")
SUITES = ("AES_CM_128_HMAC_SHA1_32", "AES_CM_128_HMAC_SHA1_80")
STATIC = {"0": "PCMU/8000", "9": "G722/8000", "18": "G729/8000"}
AUDIO = ("PCMU/8000", "G722/8000", "G729/8000")


class Section:
    def __init__(self, line):
        words = line[2:].split()
        self.media = words[0].lower() if words else ""
        self.port = words[1] if len(words) > 1 else "0"
        self.transport = words[2].upper() if len(words) > 2 else ""
        self.formats = words[3:]
        self.lines = []

    def is_open(self):
        port = self.port.split("/")[0]
        return port.isdigit() and 0 < int(port) < 65536

    def values(self, name):
        return [line.split(":", 1)[1].strip() for line in self.lines if line.startswith("a=" + name + ":")]

    def name_of(self, number):
        for value in self.values("rtpmap"):
            words = value.split()
            if len(words) > 1 and words[0] == number:
                return re.sub(r"(/\d+)/1$", r"\1", words[1].upper())
        return STATIC.get(number, "")

    def parameters(self, number):
        found = {}
        for value in self.values("fmtp"):
            words = value.split(None, 1)
            if len(words) > 1 and words[0] == number:
                for piece in words[1].split(";"):
                    key, _, text = piece.partition("=")
                    found.setdefault(key.strip(), text.strip())
        return found


def sections(offer):
    found = []
    for line in re.split(r"\r\n|\r|\n", offer):
        if line.startswith("m="):
            found.append(Section(line))
        elif found:
            found[-1].lines.append(line)
    return found


def speaks(section, number):
    name = section.name_of(number)
    parameters = section.parameters(number)
    if section.media == "video":
        return name == "H264/90000" and parameters.get("packetization-mode", "0") in ("0", "1", "")
    if name == "G7221/16000":
        return parameters.get("bitrate") == "32000"
    return name in AUDIO or (number == "18" and name == "G729A/8000")


def is_usable(line):
    words = line.split()
    if len(words) < 3 or not re.fullmatch(r"\d{1,9}", words[0]) or words[1] not in SUITES:
        return False
    if not words[2].lower().startswith("inline:") or ";" in words[2]:
        return False
    key = words[2][7:].split("|")[0]
    try:
        length = len(base64.b64decode(key, validate=True))
    except binascii.Error:
        return False
    return length == 30 and all(word.startswith(("WSH=", "-")) for word in words[3:])


def role_of(section):
    if section.media == "audio":
        return "audio"
    if section.media == "video":
        is_slides = any(value.split(",")[0] == "slides" for value in section.values("content"))
        return "slides" if is_slides else "main"
    is_floor = section.media == "application" and section.transport == "UDP/BFCP"
    return "floor" if is_floor else None


def can_be_taken(section, srtp):
    """srtp: "off", "wanted" or "required"."""
    if not section.is_open():
        return False
    if role_of(section) == "floor":
        return True
    allowed = {"off": PLAIN, "wanted": PLAIN + SECURE, "required": SECURE}[srtp]
    if section.transport not in allowed:
        return False
    if section.transport in SECURE and not any(is_usable(line) for line in section.values("crypto")):
        return False
    return any(speaks(section, number) for number in section.formats)


def taken(offer, srtp):
    """The places of the sections that the answer accepts, by role."""
    chosen = {}
    found = sections(offer)
    for place, section in enumerate(found):
        role = role_of(section)
        if role is None or not can_be_taken(section, srtp):
            continue
        is_better = (role in chosen and section.transport in SECURE
                     and found[chosen[role]].transport not in SECURE)
        if role not in chosen or is_better:
            chosen[role] = place
    if "slides" not in chosen:
        chosen.pop("floor", None)
    return chosen


def is_hold(offer):
    """Whether every section has port 0, which is answered and not refused."""
    found = sections(offer)
    return bool(found) and not any(section.is_open() for section in found)
