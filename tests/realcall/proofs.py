"""What a call left, read independently of the agent: sounds, pictures, packets and SRTP tags.

    tone(path)            (frequency, share) of the sound in one second of a WAV file
    pictures(path)        sizes of the pictures that were decoded
    Capture(path)         the RTP packets of a capture file, by the port they went to
    Tags(texts)           whether an SRTP packet's authentication tag was made with one of the keys in the texts
"""
import array
import base64
import hashlib
import hmac
import math
import re
import struct
import subprocess
import wave


def samples_of(path):
    """(samples of the first channel, rate). A file that was not closed properly is read as far as it goes."""
    data = path.read_bytes()
    start = data.find(b"data") + 8
    channels, rate = struct.unpack_from("<HI", data, data.find(b"fmt ") + 10)
    body = data[start : start + (len(data) - start) // (2 * channels) * (2 * channels)]
    return array.array("h", body)[::channels], rate


def length_of(path):
    """Seconds."""
    if path.stat().st_size < 44:
        return 0.0
    samples, rate = samples_of(path)
    return len(samples) / rate


def tone(path):
    """Frequency by zero crossings and the share of the energy at it, in the second that begins at 70 %.

    Not in the middle of the file: a gap of a hold may lie there."""
    samples, rate = samples_of(path)
    begin = min(len(samples) * 7 // 10, max(0, len(samples) - rate))
    part = samples[begin : begin + rate]
    if len(part) < rate // 2 or not any(part):
        return 0.0, 0.0
    rises = [n for n in range(1, len(part)) if part[n - 1] < 0 <= part[n]]
    if len(rises) < 2:
        return 0.0, 0.0
    frequency = (len(rises) - 1) * rate / (rises[-1] - rises[0])
    return frequency, share_at(part, rate, frequency)


def share_at(part, rate, frequency):
    """Energy at one frequency over the whole energy."""
    step = 2 * math.pi * frequency / rate
    cosine = sum(value * math.cos(step * n) for n, value in enumerate(part))
    sine = sum(value * math.sin(step * n) for n, value in enumerate(part))
    energy = sum(value * value for value in part)
    return 2 * (cosine * cosine + sine * sine) / (len(part) * energy)


def pictures(path):
    """"352x288" and the number of pictures; the file has one line per decoded picture and a head with the size."""
    text = path.read_text(errors="replace") if path.exists() else ""
    size = re.search(r"^#dimensions 0: (\d+x\d+)$", text, re.MULTILINE)
    return (size.group(1) if size else ""), len(re.findall(r"^\d", text, re.MULTILINE))


class Packet:
    def __init__(self, time, source, port, payload):
        self.time = time
        self.source = source
        self.port = port
        self.payload = payload

    def is_rtp(self):
        """RTP version 2; the second byte of RTCP is 200 and more (RFC 5761, 4)."""
        return len(self.payload) >= 12 and self.payload[0] >> 6 == 2 and not 192 <= self.payload[1] <= 223


class Capture:
    """The UDP packets of a pcap file of the loopback device."""

    def __init__(self, path):
        self.packets = []
        data = path.read_bytes()
        at = 24
        while at + 16 <= len(data):
            seconds, micros, length, _ = struct.unpack_from("<IIII", data, at)
            frame = data[at + 16 : at + 16 + length]
            at += 16 + length
            head = 14 + (frame[14] & 15) * 4 if len(frame) > 34 else 0
            if head and frame[12:14] == b"\x08\x00" and frame[23] == 17 and len(frame) >= head + 8:
                source, port, size = struct.unpack_from(">HHH", frame, head)
                payload = frame[head + 8 : head + size]
                self.packets.append(Packet(seconds + micros / 1e6, source, port, payload))

    def rtp_to(self, ports, begin=0.0, end=math.inf):
        return [p for p in self.packets if p.port in ports and p.is_rtp() and begin <= p.time < end]

    def per_half_second(self, ports):
        """Packets in each half second, as "25 25 24", from the first packet to the last."""
        times = [p.time for p in self.rtp_to(ports)]
        if not times:
            return "none"
        counts = [0] * (int((times[-1] - times[0]) * 2) + 1)
        for time in times:
            counts[int((time - times[0]) * 2)] += 1
        return " ".join(str(count) for count in counts)


def keystream(key, salt, label, length):
    """AES in counter mode over zeros: the key derivation of SRTP (RFC 3711, 4.3.1 and 4.3.3)."""
    start = (int.from_bytes(salt, "big") ^ (label << 48)) << 16
    command = ["openssl", "enc", "-aes-128-ctr", "-K", key.hex(), "-iv", start.to_bytes(16, "big").hex()]
    return subprocess.run(command, input=bytes(length), capture_output=True, check=True).stdout


class Tags:
    """The authentication keys of the "a=crypto:" lines of some texts."""

    def __init__(self, texts):
        found = set(re.findall(r"^a=crypto:\S+ AES_CM_128_HMAC_SHA1_(32|80) inline:([A-Za-z0-9+/]{40})",
                               "\n".join(texts), re.MULTILINE))
        self.keys = []
        for bits, inline in sorted(found):
            master = base64.b64decode(inline)
            self.keys.append((int(bits) // 8, keystream(master[:16], master[16:], 1, 20)))

    def made(self, packet):
        """The length of the tag in bits when it was made with one of the keys; 0 otherwise."""
        for length, key in self.keys:
            body, tag = packet.payload[:-length], packet.payload[-length:]
            for rollover in (0, 1):
                wanted = hmac.new(key, body + struct.pack(">I", rollover), hashlib.sha1).digest()
                if hmac.compare_digest(wanted[:length], tag):
                    return length * 8
        return 0


def write_tone(path, frequency, seconds):
    """A sine of 8000 samples/s as a WAV file."""
    with wave.open(str(path), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(8000)
        step = 2 * math.pi * frequency / 8000
        out.writeframes(array.array("h", (int(10000 * math.sin(step * n)) for n in range(8000 * seconds))).tobytes())


def decode_g729(path, sound):
    command = ["ffmpeg", "-hide_banner", "-nostdin", "-y", "-f", "g729", "-bit_rate", "8000", "-i", str(path), str(sound)]
    subprocess.run(command, capture_output=True, check=True)
