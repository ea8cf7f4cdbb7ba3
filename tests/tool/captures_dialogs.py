"""Captures of calls with several dialogs: branches, early dialogs, proxies and gateways between the sides."""
from captures_calls import Dialog, over_udp, sdp


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


SCENARIOS = {
    "updates": (updates(), ["--about audio.send"]),
}
