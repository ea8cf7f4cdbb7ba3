"""Packets by hand: Ethernet, IPv4 and IPv6, UDP and TCP, in a pcap file. Checksums of UDP and TCP are 0."""
import ipaddress
import struct


def split(address):
    """("192.0.2.1", 5060) of "192.0.2.1:5060" and ("2001:db8::1", 5060) of "[2001:db8::1]:5060"."""
    host, _, port = address.rpartition(":")
    return ipaddress.ip_address(host.strip("[]")), int(port)


def checksum(data):
    total = sum(struct.unpack(f">{len(data) // 2}H", data))
    while total >> 16:
        total = (total & 0xFFFF) + (total >> 16)
    return ~total & 0xFFFF


def frame(source, target, protocol, payload):
    if source.version == 6:
        header = struct.pack(">IHBB", 0x60000000, len(payload), protocol, 64) + source.packed + target.packed
        kind = 0x86DD
    else:
        header = struct.pack(">BBHHHBBH", 0x45, 0, 20 + len(payload), 1, 0, 64, protocol, 0)
        header += source.packed + target.packed
        header = header[:10] + struct.pack(">H", checksum(header)) + header[12:]
        kind = 0x0800
    return b"\x02\0\0\0\0\x01\x02\0\0\0\0\x02" + struct.pack(">H", kind) + header + payload


def udp(sender, receiver, data):
    (source, source_port), (target, target_port) = split(sender), split(receiver)
    return frame(source, target, 17, struct.pack(">HHHH", source_port, target_port, 8 + len(data), 0) + data)


class Stream:
    """One direction of a TCP connection."""

    def __init__(self, sender, receiver):
        self.sender, self.receiver, self.sequence = split(sender), split(receiver), 1

    def segment(self, data):
        header = struct.pack(">HHIIBBHHH", self.sender[1], self.receiver[1], self.sequence, 1, 0x50, 0x18, 65535, 0, 0)
        self.sequence += len(data)
        return frame(self.sender[0], self.receiver[0], 6, header + data)


def pcap(packets, most=262144):
    """A capture of (milliseconds, frame), each frame cut to a snap length."""
    out = struct.pack("<IHHiIII", 0xA1B2C3D4, 2, 4, 0, 0, most, 1)
    for milliseconds, data in packets:
        seconds, rest = divmod(1_750_000_000_000 + milliseconds, 1000)
        out += struct.pack("<IIII", seconds, rest * 1000, min(len(data), most), len(data)) + data[:most]
    return out
