"""One call in many framings, which all give the same timeline: VLAN tags, cooked and raw captures, tunnels, fragments,
extension headers, segments in any order, messages after empty lines, WebSocket frames."""
import base64
import hashlib
import ipaddress
import re
import struct

from captures_calls import Dialog, over_udp, sdp
from captures_wire import checksum, frame, pcap, split, udp

ALICE6, BOB6 = "[2001:db8::1]:5060", "[2001:db8::2]:5060"


def call():
    """Hold, resume, and a session refresh of the other side with the same version."""
    dialog = Dialog("frames@192.0.2.1")
    return [
        (0, "alice", dialog.request("INVITE", 1, sdp("alice"), to_tag="")), (5, "bob", dialog.response("180 Ringing", 1)),
        (10, "bob", dialog.response("200 OK", 1, body=sdp("bob"))), (20, "alice", dialog.request("ACK", 1)),
        (1000, "alice", dialog.request("INVITE", 2, sdp("alice", 2, direction="sendonly"))),
        (1010, "bob", dialog.response("200 OK", 2, body=sdp("bob", 2, direction="recvonly"))),
        (1020, "alice", dialog.request("ACK", 2)),
        (2000, "alice", dialog.request("INVITE", 3, sdp("alice", 3))),
        (2010, "bob", dialog.response("200 OK", 3, body=sdp("bob", 3))), (2020, "alice", dialog.request("ACK", 3)),
        (2500, "bob", dialog.request("INVITE", 1, sdp("bob", 3), side="bob")),
        (2510, "alice", dialog.response("200 OK", 1, body=sdp("alice", 3), side="bob")),
        (2520, "bob", dialog.request("ACK", 1, side="bob")), (3000, "alice", dialog.request("BYE", 4)),
        (3010, "bob", dialog.response("200 OK", 4, "BYE"))]


def tagged(data, *tags):
    return data[:12] + b"".join(struct.pack(">HH", kind, value) for kind, value in tags) + data[12:]


def linked(packets, link):
    """A capture with another link type."""
    return re.sub(rb"(?s)^(.{20})....", lambda found: found[1] + struct.pack("<I", link), pcap(packets))


def pcapng(packets):
    def block(kind, body):
        body += b"\0" * (-len(body) % 4)
        return struct.pack("<II", kind, len(body) + 12) + body + struct.pack("<I", len(body) + 12)

    out = block(0x0A0D0D0A, struct.pack("<IHHq", 0x1A2B3C4D, 1, 0, -1)) + block(1, struct.pack("<HHI", 1, 0, 262144))
    for milliseconds, data in packets:
        time = (1_750_000_000_000 + milliseconds) * 1000
        out += block(6, struct.pack("<IIIII", 0, time >> 32, time & 0xFFFFFFFF, len(data), len(data)) + data)
    return out


def tunnel(data, protocol, header=b""):
    return frame(ipaddress.ip_address("198.51.100.1"), ipaddress.ip_address("198.51.100.2"), protocol, header + data)


def fragments4(data, number, size=200):
    header, payload = data[14:34], data[34:]
    for at in range(0, len(payload), size):
        part = payload[at:at + size]
        flags = (0x2000 if at + size < len(payload) else 0) | at // 8
        made = header[:2] + struct.pack(">HHH", 20 + len(part), number, flags) + header[8:10] + b"\0\0" + header[12:]
        yield data[:14] + made[:10] + struct.pack(">H", checksum(made)) + made[12:] + part


def fragments6(data, number, size=400):
    header, payload = data[14:54], data[54:]
    for at in range(0, len(payload), size):
        part = payload[at:at + size]
        more = 1 if at + size < len(payload) else 0
        yield (data[:14] + header[:4] + struct.pack(">H", len(part) + 8) + b"\x2c" + header[7:] +
               struct.pack(">BBHI", header[6], 0, at | more, number) + part)


def extended(data):
    """Hop-by-hop and destination options in front of UDP."""
    header, payload = data[14:54], data[54:]
    options = b"\x3c\0\1\4\0\0\0\0" + bytes([header[6]]) + b"\0\1\4\0\0\0\0"
    return data[:14] + header[:4] + struct.pack(">H", len(payload) + 16) + b"\0" + header[7:] + options + payload


class Connection:
    """Both directions of a TCP connection of the two sides."""

    def __init__(self, port):
        self.ends = {"alice": [split("192.0.2.1:50000"), 1000], "bob": [split(f"192.0.2.2:{port}"), 5000]}

    def segment(self, side, data, flags=0x18):
        mine, other = self.ends[side], self.ends["bob" if side == "alice" else "alice"]
        (source, source_port), (target, target_port) = mine[0], other[0]
        header = struct.pack(">HHIIBBHHH", source_port, target_port, mine[1], other[1], 0x50, flags, 65535, 0, 0)
        mine[1] += len(data) + (1 if flags & 3 else 0)
        return frame(source, target, 6, header + data)


def over_tcp(messages, size=10000, change=lambda parts: parts, port=5060, first=()):
    """The messages of a side that follow each other go into one piece, which is cut into segments."""
    tcp = Connection(port)
    packets = [(0, tcp.segment("alice", b"", 2)), (0, tcp.segment("bob", b"", 0x12)), (0, tcp.segment("alice", b"", 0x10))]
    packets += [(0, tcp.segment(side, data)) for side, data in first]
    for at, side, data in messages:
        parts = [tcp.segment(side, data[begin:begin + size]) for begin in range(0, len(data), size)]
        packets += [(at, part) for part in change(parts)]
    return packets


def together(messages):
    """Messages of one side that follow each other within 20 ms as one, at the time of the last."""
    joined = []
    for at, side, data in messages:
        if joined and joined[-1][1] == side and at - joined[-1][0] < 20:
            joined[-1] = (at, side, joined[-1][2] + data)
        else:
            joined.append((at, side, data))
    return joined


def web_socket(data, side):
    """RFC 6455, 5.2: what the client sends is masked."""
    mask = b"\1\2\3\4" if side == "alice" else b""
    length = bytes([len(data)]) if len(data) < 126 else b"\x7e" + struct.pack(">H", len(data))
    masked = bytes(byte ^ mask[i % 4] for i, byte in enumerate(data)) if mask else data
    return b"\x81" + bytes([length[0] | (0x80 if mask else 0)]) + length[1:] + mask + masked


def upgrade():
    key = base64.b64encode(b"0123456789abcdef").decode()
    proof = base64.b64encode(hashlib.sha1((key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11").encode()).digest()).decode()
    same = "Upgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Protocol: sip\r\n"
    return [("alice", f"GET / HTTP/1.1\r\nHost: x\r\n{same}Sec-WebSocket-Key: {key}\r\nSec-WebSocket-Version: 13\r\n\r\n"
             .encode()),
            ("bob", f"HTTP/1.1 101 Switching Protocols\r\n{same}Sec-WebSocket-Accept: {proof}\r\n\r\n".encode())]


def framings():
    """The name of a framing and its capture."""
    messages = call()
    plain = over_udp(*messages)
    over6 = over_udp(*messages, alice=ALICE6, bob=BOB6)
    cooked = struct.pack(">HHH8s", 0, 1, 6, b"\2\0\0\0\0\1\0\0")
    cooked2 = struct.pack(">HHIHBB8s", 0x0800, 0, 1, 1, 0, 6, b"\2\0\0\0\0\1\0\0")
    each = lambda change, packets=plain: [(at, change(data)) for at, data in packets]
    spread = lambda change, packets=plain: [(at, part) for number, (at, data) in enumerate(packets)
                                            for part in change(data, number + 1)]
    yield "vlan", pcap(each(lambda data: tagged(data, (0x8100, 7))))
    yield "two-vlans", pcap(each(lambda data: tagged(data, (0x88A8, 7), (0x8100, 8))))
    yield "raw", linked(each(lambda data: data[14:]), 101)
    yield "loopback", linked(each(lambda data: struct.pack("<I", 2) + data[14:]), 0)
    yield "cooked", linked(each(lambda data: cooked + b"\x08\0" + data[14:]), 113)
    yield "cooked-2", linked(each(lambda data: cooked2 + data[14:]), 276)
    yield "pcapng", pcapng(plain)
    yield "mpls", pcap(each(lambda data: data[:12] + b"\x88\x47\0\6\x41\x40" + data[14:]))
    yield "pppoe", pcap(each(lambda data: data[:12] + b"\x88\x64\x11\0\0\1" + struct.pack(">H", len(data) - 12) + b"\0\x21" +
                             data[14:]))
    yield "in-ip", pcap(each(lambda data: tunnel(data[14:], 4)))
    yield "in-gre", pcap(each(lambda data: tunnel(data[14:], 47, b"\0\0\x08\0")))
    yield "in-vxlan", pcap(each(lambda data: udp("198.51.100.1:40000", "198.51.100.2:4789", b"\x08\0\0\0\0\0\7\0" + data)))
    yield "tcp-in-vxlan", pcap(each(lambda data: udp("198.51.100.1:40000", "198.51.100.2:4789", b"\x08\0\0\0\0\0\7\0" + data),
                                    over_tcp(messages)))
    yield "6-in-4", pcap(each(lambda data: tunnel(data[14:], 41), over6))
    yield "extension-headers", pcap(each(extended, over6))
    yield "fragments", pcap(spread(fragments4))
    yield "fragments-reversed", pcap(spread(lambda data, number: reversed(list(fragments4(data, number)))))
    yield "fragments-6", pcap(spread(lambda data, number: reversed(list(fragments6(data, number))), over6))
    yield "after-empty-lines", pcap(over_udp(*((at, side, b"\r\n" + data) for at, side, data in messages)))
    yield "keep-alives", pcap(over_udp(*(piece for at, side, data in messages
                                         for piece in ((at, side, b"\r\n\r\n"), (at, side, data)))))
    yield "other-ports", pcap(over_udp(*messages, alice="192.0.2.1:40000", bob="192.0.2.2:41000"))
    yield "tcp", pcap(over_tcp(messages))
    yield "tcp-together", pcap(over_tcp(together(messages), 300))
    yield "tcp-reversed", pcap(over_tcp(messages, 200, lambda parts: parts[::-1]))
    yield "tcp-twice", pcap(over_tcp(messages, 250, lambda parts: [part for part in parts for _ in range(2)]))
    yield "tcp-after-empty-lines", pcap(over_tcp([(at, side, b"\r\n\r\n" + data) for at, side, data in messages]))
    framed = [(at, side, web_socket(data, side)) for at, side, data in messages]
    yield "web-socket", pcap(over_tcp(framed, port=80, first=upgrade()))
    yield "web-socket-in-segments", pcap(over_tcp(framed, 300, port=8080, first=upgrade()))


def with_a_gap():
    """A segment of the second message of the callee is not in the capture."""
    packets = over_tcp(call()[:6], 200)
    missing = [place for place, (at, _) in enumerate(packets) if at == 10][1]
    return pcap(packets[:missing] + packets[missing + 1:])


def not_readable():
    """The name of a capture without a call that can be read, the capture, and what is said of it."""
    hello = b"\x16\3\1\0\x2e\1\0\0\x2a\3\3" + b"R" * 32 + b"\0\0\2\0\x2f\1\0\0\0"
    secret = [(at, side, b"\x17\3\3" + struct.pack(">H", len(data)) + bytes(byte ^ 0xA5 for byte in data))
              for at, side, data in call()]
    yield ("tls", pcap(over_tcp(secret, port=5061, first=[("alice", hello)])),
           "; frame 4 is TLS, which tshark reads when its keys are in the capture: "
           "editcap --inject-secrets tls,KEYS IN OUT")
    dialog = Dialog("options@192.0.2.1")
    yield ("options", pcap(over_udp((0, "alice", dialog.request("OPTIONS", 1, to_tag="")),
                                    (1, "bob", dialog.response("200 OK", 1, "OPTIONS", body=sdp("bob"))))),
           "; no SIP message in it is of an INVITE")
    framed = [(at, side, web_socket(data, side)) for at, side, data in call()]
    yield ("web-socket-without-its-beginning", pcap(over_tcp(framed, port=80)),
           '; frame 5 holds "SIP/2.0", but tshark does not take it for SIP')
