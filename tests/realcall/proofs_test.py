#!/usr/bin/env python3
"""The proofs themselves: each accepts what it is for and refuses what only looks like it."""
import base64
import hashlib
import hmac
import pathlib
import struct
import sys
import tempfile
import types
import unittest

sys.dont_write_bytecode = True

import checks  # noqa: E402
import proofs  # noqa: E402

# The example of RFC 3711, appendix B.3.
MASTER = bytes.fromhex("E1F97A0D3E018BE0D64FA32C06DE41390EC675AD498AFEEBB6960B3AABE6")
AUTHENTICATION = bytes.fromhex("CEBE321F6FF7716B6FD4AB49AF256A156D38BAA4")
RTP = bytes.fromhex("8000000100000002") + b"ssrc" + b"payload"


def text_with(suite):
    return f"a=crypto:1 {suite} inline:{base64.b64encode(MASTER).decode()}\r\n"


def tagged(body, length, rollover=0):
    return body + hmac.new(AUTHENTICATION, body + struct.pack(">I", rollover), hashlib.sha1).digest()[:length]


def packet(payload, port=20000, time=1.0):
    return proofs.Packet(time, 30000, port, payload)


def frame(payload, port):
    udp = struct.pack(">HHHH", 30000, port, 8 + len(payload), 0) + payload
    return bytes(12) + b"\x08\x00" + b"\x45" + bytes(8) + b"\x11" + bytes(10) + udp


class Tones(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = pathlib.Path(folder.name) / "tone.wav"

    def test_a_sine_has_its_frequency(self):
        proofs.write_tone(self.path, 440, 3)
        self.assertEqual(checks.sounds_like(self.path, 440), "440 Hz")
        self.assertEqual(proofs.length_of(self.path), 3)

    def test_another_sine_is_refused(self):
        proofs.write_tone(self.path, 450, 3)
        with self.assertRaisesRegex(checks.Unproven, "450 Hz"):
            checks.sounds_like(self.path, 440)

    def test_silence_noise_and_no_file_are_refused(self):
        proofs.write_tone(self.path, 0, 3)
        with self.assertRaises(checks.Unproven):
            checks.sounds_like(self.path, 440)
        head = self.path.read_bytes()[:44]
        noise = b"".join(hashlib.sha256(bytes([n % 256, n // 256])).digest() for n in range(1500))
        self.path.write_bytes(head + noise)
        with self.assertRaises(checks.Unproven):
            checks.sounds_like(self.path, 440)
        with self.assertRaisesRegex(checks.Unproven, "no sound"):
            checks.sounds_like(None, 440)


class TagsOfPackets(unittest.TestCase):
    def test_the_derivation_of_the_rfc(self):
        self.assertEqual(proofs.keystream(MASTER[:16], MASTER[16:], 1, 20), AUTHENTICATION)

    def test_a_tag_of_each_length_is_recognised(self):
        for name, length in (("AES_CM_128_HMAC_SHA1_80", 10), ("AES_CM_128_HMAC_SHA1_32", 4)):
            tags = proofs.Tags([text_with(name)])
            self.assertEqual(tags.made(packet(tagged(RTP, length))), 8 * length)
            self.assertEqual(tags.made(packet(tagged(RTP, length, rollover=1))), 8 * length)

    def test_a_plain_or_altered_packet_has_none(self):
        tags = proofs.Tags([text_with("AES_CM_128_HMAC_SHA1_80")])
        good = tagged(RTP, 10)
        self.assertEqual(tags.made(packet(RTP + bytes(10))), 0)
        self.assertEqual(tags.made(packet(good[:12] + b"P" + good[13:])), 0)
        self.assertEqual(tags.made(packet(tagged(RTP, 4))), 0)
        self.assertEqual(proofs.Tags(["a=sendrecv\r\n"]).made(packet(good)), 0)


class Captures(unittest.TestCase):
    def test_rtp_is_told_from_rtcp_and_from_sip_and_counted(self):
        frames = [(1, frame(RTP, 20000)), (1.6, frame(RTP, 20000)), (1.7, frame(b"\x80\xc8" + RTP, 20000)),
                  (1.8, frame(b"INVITE sip:alice", 20000)), (2, frame(RTP, 20002))]
        with tempfile.NamedTemporaryFile() as file:
            file.write(bytes(24))
            for time, data in frames:
                file.write(struct.pack("<IIII", int(time), int(time % 1 * 1e6), len(data), len(data)) + data)
            file.flush()
            capture = proofs.Capture(pathlib.Path(file.name))
        self.assertEqual(len(capture.packets), 5)
        self.assertEqual(len(capture.rtp_to([20000])), 2)
        self.assertEqual(len(capture.rtp_to([20000], 1.5)), 1)
        self.assertEqual(capture.per_half_second([20000, 20002]), "1 1 1")
        self.assertEqual(capture.per_half_second([20004]), "none")


class Checks(unittest.TestCase):
    def call_with(self, *payloads):
        capture = types.SimpleNamespace(
            rtp_to=lambda ports, begin=0, end=9: [packet(payload) for payload in payloads if 20000 in ports])
        far = types.SimpleNamespace(name="far", audio_ports=[20000], video_ports=[20002])
        return types.SimpleNamespace(capture=capture, far=far, texts={"01-sent-offer": text_with("AES_CM_128_HMAC_SHA1_80")})

    def test_one_packet_without_a_tag_is_enough(self):
        _, check = checks.secure(80, "audio")
        self.assertEqual(check(self.call_with(tagged(RTP, 10))), "1 packets, each with a tag of 80 bits")
        with self.assertRaisesRegex(checks.Unproven, "without a tag of ours"):
            check(self.call_with(tagged(RTP, 10), RTP))
        with self.assertRaisesRegex(checks.Unproven, "no audio packet"):
            check(self.call_with())

    def test_sizes_and_silence(self):
        call = self.call_with(RTP, RTP)
        self.assertEqual(checks.sizes("out", "audio", len(RTP))[1](call), f"2 packets of {len(RTP)} bytes")
        with self.assertRaises(checks.Unproven):
            checks.sizes("out", "audio", 172)[1](call)
        with self.assertRaises(checks.Unproven):
            checks.nothing_leaves()[1](call)
        self.assertEqual(checks.nothing_leaves()[1](self.call_with()), "no RTP from us")


if __name__ == "__main__":
    unittest.main()
