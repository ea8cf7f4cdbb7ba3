"""What a scenario has to show. Each function here returns a check; a check takes a finished call and returns
what it found, or raises Unproven.

    "here" checks say what this side heard and saw, "there" checks the far end, "wire" checks the packets.
"""
import re

import proofs


class Unproven(Exception):
    pass


def demand(condition, found):
    if not condition:
        raise Unproven(found)
    return found


def sounds_like(path, wanted, tolerance=0.01):
    if path is None:
        raise Unproven("no sound")
    frequency, share = proofs.tone(path)
    found = f"{frequency:.0f} Hz"
    demand(abs(frequency - wanted) <= tolerance * wanted and share >= 0.5, f"{found} (share {share:.2f})")
    return found


# --- here -------------------------------------------------------------------------------------------------


def hears(wanted):
    return "here", lambda call: sounds_like(call.agent.sound(), wanted)


def sees(*wanted):
    """Pictures: pairs of a size and the least number of pictures."""
    def check(call):
        seen = {}
        for size, count in call.agent.sights():
            seen[size] = seen.get(size, 0) + count
        found = ", ".join(f"{seen[size]} of {size}" for size in sorted(seen) if seen[size]) or "no picture"
        return demand(all(seen.get(size, 0) >= least for size, least in wanted), found)
    return "here", check


def logs(pattern):
    """The agent's log has such a line; the first group, or the whole match, is what is shown."""
    def check(call):
        for _, event in call.events:
            match = re.search(pattern, event)
            if match:
                return match.group(1) if match.groups() else match.group(0)
        raise Unproven(f"no event '{pattern}'")
    return "here", check


def streams(*wanted):
    """The last agreement, one pattern per section."""
    def check(call):
        lines = call.last_streams()
        fits = len(lines) == len(wanted) and all(re.search(pattern, line) for pattern, line in zip(wanted, lines))
        return demand(fits, f"the streams {lines}") and ""
    return "here", check


def wrote(name, pattern):
    """A text of the call, given by the end of its name ("sent-answer"), holds such lines."""
    def check(call):
        texts = [text for key, text in sorted(call.texts.items()) if key.endswith(name)]
        return demand(any(re.search(pattern, text, re.MULTILINE | re.DOTALL) for text in texts),
                      f"no {name} with {pattern}") and ""
    return "here", check


# --- there ------------------------------------------------------------------------------------------------


def they_hear(wanted):
    return "there", lambda call: sounds_like(call.far.heard(), wanted)


def they_see(*sizes):
    """Pictures, by the far end's own account; each of the sizes, if any are given."""
    def check(call):
        seen = call.far.saw()
        return demand(seen and all(size in seen for size in sizes), seen or "no picture")
    return "there", check


def they_log(pattern):
    """The second agent's log has such a line."""
    def check(call):
        return demand(any(re.search(pattern, event) for _, event in call.far.agent.events()), f"no event '{pattern}'") and ""
    return "there", check


# --- wire -------------------------------------------------------------------------------------------------


def between(call, begin, end):
    """Times of two events of the agent, with seconds to add, ("action hold", 0.7); None is the start or end."""
    first = call.time_of(begin[0]) + begin[1] if begin else 0.0
    last = call.time_of(end[0]) + end[1] if end else float("inf")
    return first, last


def ours(call, kind):
    offset = {"audio": [30000], "video": [30002, 30004]}
    return offset[kind]


def theirs(call, kind):
    return call.far.audio_ports if kind == "audio" else call.far.video_ports


def packets(call, way, kind, begin=None, end=None):
    ports = theirs(call, kind) if way == "out" else ours(call, kind)
    found = call.capture.rtp_to(ports, *between(call, begin, end))
    if call.far.name == "baresip" and way == "out":
        # One range for both streams: they are told apart by what our texts list.
        found = [p for p in found if is_video(call, p) == (kind == "video")]
    return found


def is_video(call, packet):
    return packet.payload[1] & 0x7F >= 96


def silent(way, kind, begin=None, end=None):
    def check(call):
        count = len(packets(call, way, kind, begin, end))
        return demand(count == 0, f"{count} {kind} packets {way}") and ""
    return "wire", check


def flows(way, kind, begin=None, end=None, least=10):
    def check(call):
        count = len(packets(call, way, kind, begin, end))
        return demand(count >= least, f"{count} {kind} packets {way}, wanted {least}") and ""
    return "wire", check


def hold_shown():
    """Our packets in each half second, so that the gap is seen."""
    return "wire", lambda call: call.capture.per_half_second([*theirs(call, "audio"), *theirs(call, "video")])


def sizes(way, kind, wanted):
    """Every packet of the stream has this size, or at most this size for video."""
    def check(call):
        found = sorted({len(p.payload) for p in packets(call, way, kind)})
        fits = found and (found == [wanted] if kind == "audio" else found[-1] <= wanted)
        return demand(fits, f"sizes {found[:6]}") and f"{len(packets(call, way, kind))} packets of {'at most ' if kind == 'video' else ''}{wanted} bytes"
    return "wire", check


def secure(bits, *kinds, begin=None):
    """Every RTP packet that we sent, from `begin` on, carries a tag of this length made with a key that we offered or answered."""
    def check(call):
        tags = proofs.Tags([text for name, text in call.texts.items() if "sent" in name])
        count = 0
        for kind in kinds:
            sent = packets(call, "out", kind, begin)
            demand(sent, f"no {kind} packet")
            for packet in sent:
                demand(tags.made(packet) == bits, f"a {kind} packet of {len(packet.payload)} bytes without a tag of ours")
            count += len(sent)
        return f"{count} packets, each with a tag of {bits} bits"
    return "wire", check


def nothing_leaves():
    def check(call):
        count = len(packets(call, "out", "audio")) + len(packets(call, "out", "video"))
        return demand(count == 0, f"{count} packets left") and "no RTP from us"
    return "wire", check


def g729_carries(wanted):
    """The ten-byte frames cut from the capture, decoded by ffmpeg, are the tone."""
    def check(call):
        frames = b"".join(p.payload[12:] for p in packets(call, "in", "audio") if len(p.payload) in (22, 32))
        path = call.folder / "cut.g729"
        path.write_bytes(frames)
        sound = call.folder / "cut.wav"
        proofs.decode_g729(path, sound)
        return sounds_like(sound, wanted)
    return "here", check
