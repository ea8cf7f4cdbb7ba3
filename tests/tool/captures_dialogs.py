"""Captures of calls with several dialogs: branches, early dialogs, proxies and gateways between the sides."""
from captures_calls import ALICE, BOB, Dialog, PROXY, over_udp, sdp
from captures_frames import with_a_gap
from captures_wire import Stream, pcap, udp


def updates():
    """Two UPDATEs that cross each other."""
    call = Dialog("updates@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")),
        (10, "bob", call.response("200 OK", 1, body=sdp("bob"))), (20, "alice", call.request("ACK", 1)),
        (1000, "alice", call.request("UPDATE", 2, sdp("alice", 2, audio=5014))),
        (1001, "bob", call.request("UPDATE", 1, sdp("bob", 2, audio=5024), side="bob")),
        (1010, "bob", call.response("491 Request Pending", 2, "UPDATE")),
        (1011, "alice", call.response("491 Request Pending", 1, "UPDATE", side="bob")),
        (4000, "bob", call.request("UPDATE", 2, sdp("bob", 2, audio=5024), side="bob")),
        (4010, "alice", call.response("200 OK", 2, "UPDATE", body=sdp("alice", 2, audio=5014), side="bob")))


def early_branches():
    """Two reliable early dialogs; an UPDATE with the same number in each of them; the second one is accepted."""
    call = Dialog("early-branches@192.0.2.1")
    rel = ["Require: 100rel", "RSeq: 1"]
    packets = [(0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag=""))]
    for at, tag, port in ((10, "b1", 6004), (20, "b2", 6014)):
        answer = sdp("bob", audio=port, direction="sendrecv" if tag == "b1" else "inactive")
        packets += [(at, "bob", call.response("183 Session Progress", 1, body=answer, to_tag=tag, extra=rel)),
                    (at + 1, "alice", call.request("PRACK", 2, to_tag=tag, extra=["RAck: 1 1 INVITE"])),
                    (at + 2, "bob", call.response("200 OK", 2, "PRACK", to_tag=tag))]
    for at, tag, port in ((30, "b1", 6004), (40, "b2", 6014)):
        packets += [(at, "alice", call.request("UPDATE", 3, sdp("alice", 2, audio=5014), to_tag=tag)),
                    (at + 1, "bob", call.response("200 OK", 3, "UPDATE", body=sdp("bob", 2, audio=port), to_tag=tag))]
    packets += [(90, "bob", call.response("200 OK", 1, to_tag="b2")), (91, "alice", call.request("ACK", 1, to_tag="b2"))]
    return over_udp(*packets)


def accepted_twice():
    """Both branches accept; the first one is ended, the second one is put on hold and ended."""
    call = Dialog("accepted-twice@192.0.2.1")
    packets = [(0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag=""))]
    for at, tag, port in ((10, "b1", 6004), (20, "b2", 6014)):
        packets += [(at, "bob", call.response("200 OK", 1, body=sdp("bob", audio=port), to_tag=tag)),
                    (at + 1, "alice", call.request("ACK", 1, to_tag=tag))]
    return over_udp(
        *packets, (30, "alice", call.request("BYE", 2, to_tag="b1")),
        (31, "bob", call.response("200 OK", 2, "BYE", to_tag="b1")),
        (40, "alice", call.request("INVITE", 2, sdp("alice", 2, direction="sendonly"), to_tag="b2")),
        (41, "bob", call.response("200 OK", 2, body=sdp("bob", 2, audio=6014, direction="recvonly"), to_tag="b2")),
        (42, "alice", call.request("ACK", 2, to_tag="b2")), (50, "alice", call.request("BYE", 3, to_tag="b2")))


def won_by_second():
    """Two branches answer, the second one is accepted with the text of its 183: the offer is read with that answer."""
    call = Dialog("won-by-second@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice", formats="0 8 101"), to_tag="")),
        (10, "bob", call.response("183 Session Progress", 1, body=sdp("bob", formats="8 101"), to_tag="b1")),
        (20, "bob", call.response("183 Session Progress", 1, body=sdp("bob", formats="0"), to_tag="b2")),
        (90, "bob", call.response("200 OK", 1, body=sdp("bob", formats="0"), to_tag="b2")))


def through(text, port):
    """The description as a media proxy passes it on."""
    for host in (b"192.0.2.1", b"192.0.2.2"):
        text = text.replace(b"c=IN IP4 " + host, b"c=IN IP4 192.0.2.9")
    return text.replace(b" 5004 ", b" %d " % port)


def media_proxy():
    """A proxy that relays media: its trace has both hops, and each is held and resumed for itself."""
    call = Dialog("media-proxy@192.0.2.1")
    packets = []
    for number, (direction, mirrored) in enumerate((("sendrecv", "sendrecv"), ("sendonly", "recvonly")), 1):
        at = number * 1000
        offer = sdp("alice", number, direction=direction)
        answer = sdp("bob", number, direction=mirrored)
        tag = "" if number == 1 else "b1"
        packets += [(at, udp(ALICE, PROXY, call.request("INVITE", number, offer, to_tag=tag))),
                    (at + 1, udp(PROXY, BOB, call.request("INVITE", number, through(offer, 30000), to_tag=tag))),
                    (at + 2, udp(BOB, PROXY, call.response("200 OK", number, body=answer))),
                    (at + 3, udp(PROXY, ALICE, call.response("200 OK", number, body=through(answer, 30002)))),
                    (at + 4, udp(ALICE, PROXY, call.request("ACK", number))),
                    (at + 5, udp(PROXY, BOB, call.request("ACK", number)))]
    return packets + [(3000, udp(ALICE, PROXY, call.request("BYE", 3))), (3001, udp(PROXY, BOB, call.request("BYE", 3)))]


def gateway():
    """A gateway that keeps the Call-ID and the numbers and makes dialogs of its own."""
    left, right = Dialog("gateway@192.0.2.1"), Dialog("gateway@192.0.2.1")
    packets = []

    def other(message):
        return message.replace(b"tag=a1", b"tag=g1").replace(b"tag=b1", b"tag=h1")

    for number, (direction, mirrored) in enumerate((("sendrecv", "sendrecv"), ("sendonly", "recvonly")), 1):
        at = number * 1000
        tag = "" if number == 1 else "b1"
        offer, answer = sdp("alice", number, direction=direction), sdp("bob", number, direction=mirrored)
        packets += [(at, udp(ALICE, PROXY, left.request("INVITE", number, offer, to_tag=tag))),
                    (at + 1, udp(PROXY, BOB, other(right.request("INVITE", number, through(offer, 30000), to_tag=tag)))),
                    (at + 2, udp(BOB, PROXY, other(right.response("200 OK", number, body=answer)))),
                    (at + 3, udp(PROXY, ALICE, left.response("200 OK", number, body=through(answer, 30002))))]
    return packets + [(3000, udp(ALICE, PROXY, left.request("BYE", 3))),
                      (3001, udp(PROXY, BOB, other(right.request("BYE", 3))))]


def answers_that_differ():
    """A 183, a 180 that differs in its version alone, a 200 with other ports; the re-INVITE stands against the 183."""
    call = Dialog("answers-that-differ@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice", formats="0 8 101"), to_tag="")),
        (10, "bob", call.response("183 Session Progress", 1, body=sdp("bob"))),
        (20, "bob", call.response("180 Ringing", 1, body=sdp("bob", 2))),
        (30, "bob", call.response("200 OK", 1, body=sdp("bob", 3, audio=6024))), (40, "alice", call.request("ACK", 1)),
        (50, "bob", call.request("INVITE", 1, sdp("bob", 4, audio=6024), side="bob")),
        (60, "alice", call.response("200 OK", 1, body=sdp("alice", 2), side="bob")))


def unread():
    """Offers and answers that are encoded: they are there all the same."""
    call = Dialog("unread@192.0.2.1")
    zipped, mark = b"\x1f\x8bzip", ["Content-Encoding: gzip"]
    return over_udp(
        (0, "alice", call.request("INVITE", 1, zipped, to_tag="", extra=mark)),
        (10, "bob", call.response("200 OK", 1, body=sdp("bob"))), (20, "alice", call.request("ACK", 1)),
        (30, "alice", call.request("INVITE", 2)), (40, "bob", call.response("200 OK", 2, body=zipped, extra=mark)),
        (50, "alice", call.request("ACK", 2, sdp("alice"))), (60, "alice", call.request("INVITE", 3, sdp("alice", 2))),
        (70, "bob", call.response("200 OK", 3, body=zipped, extra=mark)), (80, "alice", call.request("ACK", 3)))


def snapped(most):
    """Frames cut by the snap length: UDP, then TCP over IPv6 in the same call's reverse direction."""
    call, back = Dialog("snapped@192.0.2.1"), Stream("[2001:db8::2]:5060", "[2001:db8::1]:5060")
    return pcap(over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice", video=5006), to_tag="")),
        (10, "bob", call.response("200 OK", 1, body=sdp("bob"))), (20, "alice", call.request("ACK", 1)),
        (30, "alice", call.request("INVITE", 2, sdp("alice", 2, direction="sendonly", video=0))),
        (40, "bob", call.response("200 OK", 2, body=sdp("bob", 2)))) + [
            (50, back.segment(call.request("UPDATE", 3, sdp("bob", 3, video=0), side="bob")))], most)


def missing():
    """A 200 without its ACK, then an offer without a response and one without an answer."""
    call = Dialog("missing@192.0.2.1")
    okay = call.response("200 OK", 1, body=sdp("bob"))
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")), (10, "bob", okay), (510, "bob", okay),
        (1510, "bob", okay), (2000, "bob", call.request("UPDATE", 1, sdp("bob", 2), side="bob")),
        (3000, "alice", call.request("INVITE", 2, sdp("alice", 2))), (3010, "bob", call.response("100 Trying", 2)))


def replaced():
    """A call that takes over the one before it, one that takes over an unknown one, and one without a description."""
    packets = []
    tags = "@192.0.2.1;to-tag=b1;from-tag=a1"
    for at, name, extra in ((0, "one@192.0.2.1", []), (10, "two@192.0.2.1", ["Replaces: one" + tags]),
                            (20, "three@192.0.2.1", ["Replaces: none" + tags])):
        call = Dialog(name)
        packets += [(at, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="", extra=extra)),
                    (at + 1, "bob", call.response("200 OK", 1, body=sdp("bob"))),
                    (at + 2, "alice", call.request("ACK", 1))]
    return over_udp(*packets, (30, "alice", Dialog("four@192.0.2.1").request("INVITE", 1, to_tag="")))


RELIABLE = ["Require: 100rel", "RSeq: 1"]


def forked_delayed():
    """The INVITE has no description; two branches offer in a 200, each is answered in its ACK."""
    call = Dialog("forked-delayed@192.0.2.1")
    packets = [(0, "alice", call.request("INVITE", 1, to_tag=""))]
    for at, tag, port in ((10, "b1", 6004), (12, "b2", 6014)):
        packets += [(at, "bob", call.response("200 OK", 1, body=sdp("bob", audio=port), to_tag=tag)),
                    (at + 10, "alice", call.request("ACK", 1, sdp("alice"), to_tag=tag))]
    held = sdp("bob", 2, audio=6014, direction="sendonly")
    return over_udp(
        *sorted(packets, key=lambda packet: packet[0]), (30, "alice", call.request("BYE", 2, to_tag="b1")),
        (1000, "bob", call.request("INVITE", 1, held, side="bob", to_tag="b2")),
        (1010, "alice", call.response("200 OK", 1, body=sdp("alice", 2, direction="recvonly"), side="bob", to_tag="b2")),
        (1020, "bob", call.request("ACK", 1, side="bob", to_tag="b2")), (2000, "alice", call.request("BYE", 3, to_tag="b2")))


def forked_reliable():
    """The same with offers in reliable 183s and answers in PRACK; then the caller gives up."""
    call = Dialog("forked-reliable@192.0.2.1")
    packets = [(0, "alice", call.request("INVITE", 1, to_tag=""))]
    for at, tag, port in ((10, "b1", 6004), (12, "b2", 6014), (14, "b3", 6024)):
        packets += [(at, "bob", call.response("183 Session Progress", 1, body=sdp("bob", audio=port), to_tag=tag,
                                              extra=RELIABLE))]
        packets += [(at + 10, "alice", call.request("PRACK", 2, sdp("alice"), to_tag=tag, extra=["RAck: 1 1 INVITE"])),
                    (at + 11, "bob", call.response("200 OK", 2, "PRACK", to_tag=tag))] if tag != "b3" else []
    return over_udp(*sorted(packets, key=lambda packet: packet[0]), (40, "alice", call.request("CANCEL", 1, to_tag="")),
                    (50, "bob", call.response("487 Request Terminated", 1, to_tag="b1")))


def crossing_bye():
    """A re-INVITE and a BYE that cross each other."""
    call = Dialog("crossing-bye@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")), (10, "bob", call.response("200 OK", 1, body=sdp("bob"))),
        (20, "alice", call.request("ACK", 1)), (1000, "alice", call.request("INVITE", 2, sdp("alice", 2, direction="sendonly"))),
        (1001, "bob", call.request("BYE", 1, side="bob")), (1010, "bob", call.response("481 Call/Transaction Does Not Exist", 2)),
        (1011, "alice", call.request("ACK", 2)), (1012, "alice", call.response("200 OK", 1, "BYE", side="bob")))


def early_offers():
    """Offers in PRACK and UPDATE before the 200, which has no description; one is refused, one comes later."""
    call = Dialog("early-offers@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")),
        (10, "bob", call.response("183 Session Progress", 1, body=sdp("bob"), extra=RELIABLE)),
        (20, "alice", call.request("PRACK", 2, sdp("alice", 2, audio=5014), extra=["RAck: 1 1 INVITE"])),
        (21, "bob", call.response("200 OK", 2, "PRACK", body=sdp("bob", 2, audio=6014))),
        (30, "alice", call.request("UPDATE", 3, sdp("alice", 3, audio=5024))),
        (31, "bob", call.response("200 OK", 3, "UPDATE", body=sdp("bob", 3, audio=6024))),
        (32, "bob", call.request("UPDATE", 1, sdp("bob", 4, audio=6034), side="bob")),
        (33, "alice", call.response("504 Server Time-out", 1, "UPDATE", side="bob")),
        (40, "bob", call.response("200 OK", 1)), (41, "alice", call.request("ACK", 1)),
        (1000, "bob", call.request("UPDATE", 2, sdp("bob", 4, audio=6034), side="bob")),
        (1001, "alice", call.response("200 OK", 2, "UPDATE", body=sdp("alice", 4, audio=5034), side="bob")),
        (2000, "alice", call.request("UPDATE", 4)), (2001, "bob", call.response("200 OK", 4, "UPDATE")),
        (3000, "bob", call.request("BYE", 3, side="bob")))


def aside():
    """Descriptions in OPTIONS and INFO within a call."""
    call = Dialog("aside@192.0.2.1")
    return over_udp(
        (0, "alice", call.request("INVITE", 1, sdp("alice"), to_tag="")), (10, "bob", call.response("200 OK", 1, body=sdp("bob"))),
        (20, "alice", call.request("ACK", 1)), (30, "bob", call.request("OPTIONS", 1, side="bob")),
        (31, "alice", call.response("200 OK", 1, "OPTIONS", body=sdp("alice"), side="bob")),
        (40, "alice", call.request("INFO", 2, sdp("alice"))))


SCENARIOS = {
    "updates": (updates(), ["--about audio.send"]),
    "early-branches": (early_branches(), ["--about audio.send"]),
    "accepted-twice": (accepted_twice(), ["--about audio.send"]),
    "won-by-second": (won_by_second(), ["--top"]),
    "media-proxy": (media_proxy(), ["--about audio.send"]),
    "gateway": (gateway(), ["--about audio.send"]),
    "snapped": (snapped(430), ["--about audio.codec", "survey"]),
    "snapped-headers": (snapped(260), ["--about audio.codec"]),
    "missing": (missing(), ["--about audio.codec"]),
    "replaced": (replaced(), [f"--about audio.codec --we callee --call {call}" for call in (2, 3, 4)]),
    "unread": (unread(), ["--about audio.codec"]),
    "forked-delayed": (forked_delayed(), ["--about audio.send"]),
    "forked-reliable": (forked_reliable(), ["--about audio.codec"]),
    "crossing-bye": (crossing_bye(), ["--about audio.codec"]),
    "early-offers": (early_offers(), ["--about audio.send"]),
    "gap": (with_a_gap(), ["--about audio.codec"]),
    "aside": (aside(), ["--about audio.codec"]),
    "answers-that-differ": (answers_that_differ(), ["--about audio.send"]),
}
