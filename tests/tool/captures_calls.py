"""The calls that the captures hold: for each scenario its packets and the options that it is read with."""
import pathlib

from captures_wire import Stream, pcap, udp

CORPUS = pathlib.Path(__file__).resolve().parents[1] / "corpus" / "captures"
ALICE, BOB, PROXY = "192.0.2.1:5060", "192.0.2.2:5060", "192.0.2.9:5060"
KEY = "inline:c3VycHJpc2VzdXJwcmlzZXN1cnByaXNlc3VycHJp"


def corpus(name):
    return (CORPUS / (name + ".sdp")).read_bytes()


def sdp(side, version=1, audio=5004, formats="0 101", direction="sendrecv", video=None, key=""):
    """A description of "alice" or "bob"."""
    address = {"alice": "192.0.2.1", "bob": "192.0.2.2"}[side]
    profile = "RTP/SAVP" if key else "RTP/AVP"
    lines = ["v=0", f"o={side} 7 {version} IN IP4 {address}", "s=-", f"c=IN IP4 {address}", "t=0 0",
             f"m=audio {audio} {profile} {formats}", "a=rtpmap:101 telephone-event/8000", f"a={direction}"]
    lines += [f"a=crypto:1 AES_CM_128_HMAC_SHA1_32 {key}"] if key else []
    lines += [f"m=video {video} {profile} 97", "a=rtpmap:97 H264/90000",
              "a=fmtp:97 profile-level-id=42801f;packetization-mode=1"] if video is not None else []
    return "".join(line + "\r\n" for line in lines).encode()


class Dialog:
    """Messages of one call; requests of "bob" swap From and To."""

    def __init__(self, call_id, compact=False):
        self.call_id, self.compact = call_id, compact

    def headers(self, cseq, side, to_tag, extra, body, length, kind):
        sides = {"alice": f"Alice <sip:alice@example.org>{';tag=a1'}",
                 "bob": f"<sip:bob@example.org>{';tag=' + to_tag if to_tag else ''}"}
        other = "bob" if side == "alice" else "alice"
        names = "v f t i c l" if self.compact else "Via From To Call-ID Content-Type Content-Length"
        via, from_, to, call_id, content, size = names.split()
        lines = [f"{via}: SIP/2.0/UDP host;branch=z9hG4bK{cseq.replace(' ', '')}", f"{from_}: {sides[side]}",
                 f"{to}: {sides[other]}", f"{call_id}: {self.call_id}", f"CSeq: {cseq}", *extra]
        lines += [f"{content}: {kind}"] if body and kind else []
        lines += [f"{size}: {len(body) if length is None else length}"] if length != "" else []
        return "".join(line + "\r\n" for line in lines).encode() + b"\r\n" + body

    def request(self, method, number, body=b"", side="alice", to_tag="b1", extra=(), length=None,
                kind="application/sdp"):
        line = f"{method} sip:{'bob' if side == 'alice' else 'alice'}@example.org SIP/2.0\r\n".encode()
        return line + self.headers(f"{number} {method}", side, to_tag, extra, body, length, kind)

    def response(self, status, number, method="INVITE", body=b"", side="alice", to_tag="b1", extra=(), length=None,
                 kind="application/sdp"):
        line = f"SIP/2.0 {status}\r\n".encode()
        return line + self.headers(f"{number} {method}", side, to_tag, extra, body, length, kind)


def over_udp(*messages, alice=ALICE, bob=BOB):
    """Packets of (milliseconds, "alice" or "bob", message)."""
    return [(at, udp(alice if side == "alice" else bob, bob if side == "alice" else alice, message))
            for at, side, message in messages]


def plain():
    """Compact and folded headers; the INVITE and the 200 are sent twice."""
    call = Dialog("plain@192.0.2.1", compact=True)
    folded = ["Subject: a subject that is", "\tfolded", " twice"]
    invite = call.request("INVITE", 1, sdp("alice", video=5006), to_tag="", extra=folded)
    okay = call.response("200 OK", 1, body=sdp("bob", formats="0", video=0))
    return over_udp((0, "alice", invite), (500, "alice", invite), (600, "bob", call.response("100 Trying", 1)),
                    (700, "bob", call.response("180 Ringing", 1)), (2000, "bob", okay), (2500, "bob", okay),
                    (2600, "alice", call.request("ACK", 1)), (9000, "bob", call.request("BYE", 1, side="bob")),
                    (9020, "alice", call.response("200 OK", 1, "BYE", side="bob")))


def streams():
    """TCP over IPv6: one message in three segments, three messages in one."""
    call = Dialog("tcp@2001:db8::1")
    alice, bob = "[2001:db8::1]:40000", "[2001:db8::2]:5060"
    out, back = Stream(alice, bob), Stream(bob, alice)
    invite = call.request("INVITE", 1, corpus("conf-main-slides-bfcp-offer"), to_tag="")
    answers = call.response("100 Trying", 1) + call.response("180 Ringing", 1)
    answers += call.response("200 OK", 1, body=corpus("baresip-av-to-conf-avp-answer"))
    return [(0, out.segment(invite[:90])), (3, out.segment(invite[90:700])), (6, out.segment(invite[700:])),
            (40, back.segment(answers)), (50, out.segment(call.request("ACK", 1)))]


def again():
    """Hold, a refused video, offers that cross each other."""
    call = Dialog("again@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")),
        (10, "bob", call.response("200 OK", 1, body=sdp("bob"))), (20, "alice", call.request("ACK", 1)),
        (1000, "alice", call.request("INVITE", 2, sdp("alice", 2, direction="sendonly"))),
        (1010, "bob", call.response("200 OK", 2, body=sdp("bob", 2, direction="recvonly"))),
        (1020, "alice", call.request("ACK", 2)),
        (2000, "bob", call.request("UPDATE", 1, sdp("bob", 3, video=5006), side="bob")),
        (2010, "alice", call.response("488 Not Acceptable Here", 1, "UPDATE", side="bob",
                                      extra=['Warning: 304 192.0.2.1 "Media type not available"'])),
        (3000, "alice", call.request("INVITE", 3, sdp("alice", 3))),
        (3001, "bob", call.request("INVITE", 2, sdp("bob", 3, direction="inactive"), side="bob")),
        (3010, "bob", call.response("491 Request Pending", 3)), (3020, "alice", call.request("ACK", 3)),
        (3021, "alice", call.response("491 Request Pending", 2, side="bob")),
        (3030, "bob", call.request("ACK", 2, side="bob")),
        (4000, "alice", call.request("INVITE", 4, sdp("alice", 3))),
        (4010, "bob", call.response("200 OK", 4, body=sdp("bob", 3))), (4020, "alice", call.request("ACK", 4)))


def delayed():
    """The INVITE has no description; the 200 is sent twice."""
    call = Dialog("delayed@192.0.2.1")
    okay = call.response("200 OK", 1, body=sdp("bob", video=5006))
    return over_udp((0, "alice", call.request("INVITE", 1, to_tag="")), (10, "bob", okay), (510, "bob", okay),
                    (520, "alice", call.request("ACK", 1, sdp("alice", video=0))))


def early():
    """A reliable 183, PRACK, an UPDATE before the 200, which repeats the first answer."""
    call = Dialog("early@192.0.2.1")
    answer = sdp("bob")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")),
        (50, "bob", call.response("183 Session Progress", 1, body=answer, extra=["Require: 100rel", "RSeq: 1"])),
        (60, "alice", call.request("PRACK", 2, extra=["RAck: 1 1 INVITE"])),
        (70, "bob", call.response("200 OK", 2, "PRACK")),
        (80, "alice", call.request("UPDATE", 3, sdp("alice", 2, audio=5014))),
        (90, "bob", call.response("200 OK", 3, "UPDATE", body=sdp("bob", 2, audio=5024))),
        (900, "bob", call.response("200 OK", 1, body=answer)), (910, "alice", call.request("ACK", 1)))


def reliable():
    """An INVITE without a description: the offer in a reliable 183, the answer in PRACK."""
    call = Dialog("reliable@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, to_tag="")),
        (50, "bob", call.response("183 Session Progress", 1, body=sdp("bob"), extra=["Require: 100rel", "RSeq: 1"])),
        (60, "alice", call.request("PRACK", 2, sdp("alice"), extra=["RAck: 1 1 INVITE"])),
        (70, "bob", call.response("200 OK", 2, "PRACK")), (900, "bob", call.response("200 OK", 1)),
        (910, "alice", call.request("ACK", 1)))


def challenged():
    """407, the INVITE again with credentials, then the caller gives up."""
    call = Dialog("challenged@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")),
        (10, "bob", call.response("407 Proxy Authentication Required", 1, to_tag="p1")),
        (20, "alice", call.request("ACK", 1, to_tag="p1")),
        (30, "alice", call.request("INVITE", 2, sdp("alice"), to_tag="",
                                   extra=['Proxy-Authorization: Digest username="alice"'])),
        (40, "bob", call.response("180 Ringing", 2)), (5000, "alice", call.request("CANCEL", 2, to_tag="")),
        (5010, "bob", call.response("200 OK", 2, "CANCEL")), (5020, "bob", call.response("487 Request Terminated", 2)),
        (5030, "alice", call.request("ACK", 2)))


def interleaved():
    """Two calls at once, and a registration that is none."""
    first, second = Dialog("first@192.0.2.1"), Dialog("second@192.0.2.3")
    register = Dialog("register@192.0.2.1").request("REGISTER", 1, to_tag="")
    carol = "192.0.2.3:5062"
    packets = over_udp((0, "alice", register), (5, "alice", first.request("INVITE", 1, sdp("alice"), to_tag="")),
                       (30, "bob", first.response("200 OK", 1, body=sdp("bob"))))
    packets += over_udp((20, "alice", second.request("INVITE", 1, corpus("call-linphone-four-suites-offer"), to_tag="")),
                        (25, "bob", second.response("488 Not Acceptable Here", 1)), alice=carol)
    return sorted(packets, key=lambda packet: packet[0])


def middle():
    """The capture begins after the INVITE; later a re-INVITE of the other side."""
    call = Dialog("middle@192.0.2.1")
    return over_udp((0, "bob", call.response("200 OK", 1, body=sdp("bob"))), (10, "alice", call.request("ACK", 1)),
                    (900, "bob", call.request("INVITE", 1, sdp("bob", 2, audio=5008), side="bob")),
                    (910, "alice", call.response("200 OK", 1, side="bob", body=sdp("alice", 2))))


def middle_delayed():
    """The same, but the ACK has a description, so that of the 200 was the offer."""
    call = Dialog("middle-delayed@192.0.2.1")
    return over_udp((0, "bob", call.response("200 OK", 1, body=sdp("bob"))),
                    (10, "alice", call.request("ACK", 1, sdp("alice"))))


def bodies():
    """A multipart body, and Content-Length that is missing, too small and too large."""
    call = Dialog("bodies@192.0.2.1")
    parts = b"--part\r\nContent-Type: text/plain\r\n\r\nv=1\r\n--part\r\nContent-Type: application/sdp\r\n\r\n"
    parts += sdp("alice") + b"\r\n--part--\r\n"
    return over_udp(
        (0, "alice", call.request("INVITE", 1, parts, to_tag="", kind='multipart/mixed; boundary="part"')),
        (10, "bob", call.response("200 OK", 1, body=sdp("bob"), length="")),
        (1000, "alice", call.request("INVITE", 2, sdp("alice", 2), length=60)),
        (1010, "bob", call.response("200 OK", 2, body=sdp("bob", 2), length=600)),
        (2000, "alice", call.request("INVITE", 3, sdp("alice", 3), kind="")),
        (2010, "bob", call.response("200 OK", 3, body=b"\x1f\x8bzip", extra=["Content-Encoding: gzip"])))


def proxied():
    """Both sides of a proxy that puts its own address into the descriptions."""
    call = Dialog("proxied@192.0.2.1")
    offer, answer = sdp("alice"), sdp("bob")
    relayed = [text.replace(b"c=IN IP4 192.0.2.1", b"c=IN IP4 192.0.2.9").replace(b"c=IN IP4 192.0.2.2",
               b"c=IN IP4 192.0.2.9").replace(b" 5004 ", b" 30000 ") for text in (offer, answer)]
    left = over_udp((0, "alice", call.request("INVITE", 1, offer, to_tag="")),
                    (30, "bob", call.response("200 OK", 1, body=relayed[1])),
                    (40, "alice", call.request("ACK", 1)), bob=PROXY)
    right = over_udp((5, "alice", call.request("INVITE", 1, relayed[0], to_tag="")),
                     (25, "bob", call.response("200 OK", 1, body=answer)),
                     (45, "alice", call.request("ACK", 1)), alice=PROXY)
    return sorted(left + right, key=lambda packet: packet[0])


def forked():
    """Two branches ring, the second one takes the call; its 200 has another text than its 183."""
    call = Dialog("forked@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")),
        (10, "bob", call.response("183 Session Progress", 1, body=sdp("bob"), to_tag="b1")),
        (20, "bob", call.response("183 Session Progress", 1, body=sdp("bob", audio=6004), to_tag="b2")),
        (900, "bob", call.response("200 OK", 1, body=sdp("bob", 2, audio=6006), to_tag="b2")))


def secure():
    """Keys are shown nowhere, and a hostile caller's name stays one printable line."""
    call = Dialog("secure@192.0.2.1")
    invite = call.request("INVITE", 1, sdp("alice", key=KEY), to_tag="").replace(
        b"sip:alice@", b"sip:\x1b[31m\xe2\x80\xae\xff@")
    return over_udp((0, "alice", invite), (10, "bob", call.response("488 " + KEY, 1, extra=["Warning: 399 h " + KEY])),
                    (20, "alice", call.request("INVITE", 2, sdp("alice", 2), to_tag="")),
                    (30, "bob", call.response("200 OK", 2, body=sdp("bob"))))


def unanswered():
    """A 200 without an answer, and an ACK whose description answers nothing."""
    call = Dialog("unanswered@192.0.2.1")
    return over_udp((0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")),
                    (10, "bob", call.response("200 OK", 1)), (20, "alice", call.request("ACK", 1, sdp("alice", 2))))


def silent():
    """An offer in the 200 that the ACK does not answer; the INVITE after it is no crossing offer."""
    call = Dialog("silent@192.0.2.1")
    return over_udp((0, "alice", call.request("INVITE", 1, to_tag="")),
                    (10, "bob", call.response("200 OK", 1, body=sdp("bob"))), (20, "alice", call.request("ACK", 1)),
                    (30, "alice", call.request("INVITE", 2, sdp("alice"))),
                    (40, "bob", call.response("500 Server Internal Error", 2, body=sdp("bob", 2))))


SCENARIOS = {
    "plain": (plain(), ["", "--we callee --about call --lines", "--we 192.0.2.9"]),
    "streams": (streams(), ["--we 2001:db8::2", "--call 2"]),
    "again": (again(), ["--top"]),
    "delayed": (delayed(), [""]),
    "early": (early(), ["--about audio.send"]),
    "reliable": (reliable(), ["--top"]),
    "challenged": (challenged(), ["--top"]),
    "interleaved": (interleaved(), ["--top", "--call 2 --we callee", "--call 1 --we 192.0.2.1:5060 --json --top"]),
    "middle": (middle(), ["--top"]),
    "middle-delayed": (middle_delayed(), ["--top"]),
    "bodies": (bodies(), ["--top"]),
    "proxied": (proxied(), ["--about audio.send"]),
    "forked": (forked(), ["--top"]),
    "secure": (secure(), ["--top", "--json --lines"]),
    "unanswered": (unanswered(), ["--top", "--offered"]),
    "silent": (silent(), ["--top"]),
    "cut": (pcap(plain())[:-60], ["--top"]),
}
