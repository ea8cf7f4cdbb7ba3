"""The pages that look.py looks at: files, the words after `cmsdp explain --html PAGE`, and hostile texts."""


def lines(*words):
    return "".join(word + "\r\n" for word in words).encode()


OFFER = lines(
    "v=0", "o=room 3 1 IN IP4 198.51.100.7", "s=Board room", "c=IN IP4 198.51.100.7", "t=0 0",
    "m=audio 49170 RTP/AVP 9 96 101", "a=rtpmap:96 opus/48000/2", "a=rtpmap:101 telephone-event/8000",
    "a=fmtp:101 0-15", "a=sendonly",
    "m=video 49172 RTP/SAVP 97", "a=rtpmap:97 VP8/90000",
    "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:WnQ5b3JkZXJvZnRoZWtleWlzdGhlcmlnaHRvbmU5")

OURS = lines(
    "v=0", "o=- 1 1 IN IP4 192.0.2.1", "s=-", "c=IN IP4 192.0.2.1", "t=0 0",
    "m=audio 16384 RTP/AVP 9 0 101", "a=rtpmap:9 G722/8000", "a=rtpmap:0 PCMU/8000",
    "a=rtpmap:101 telephone-event/8000", "a=fmtp:101 0-15", "a=sendrecv",
    "m=video 16386 RTP/AVP 97", "a=rtpmap:97 H264/90000", "a=fmtp:97 profile-level-id=42801f;packetization-mode=1",
    "a=sendrecv")

ANSWER = lines(
    "v=0", "o=room 3 1 IN IP4 198.51.100.7", "s=Board room", "c=IN IP4 198.51.100.7", "t=0 0",
    "m=audio 49170 RTP/AVP 9 101", "a=rtpmap:9 G722/8000", "a=rtpmap:101 telephone-event/8000",
    "a=fmtp:101 0-15", "a=recvonly",
    "m=video 49172 RTP/AVP 97", "a=rtpmap:97 VP8/90000", "a=sendrecv")

HELD = lines(
    "v=0", "o=- 1 2 IN IP4 192.0.2.1", "s=-", "c=IN IP4 192.0.2.1", "t=0 0",
    "m=audio 16384 RTP/AVP 9 101", "a=rtpmap:9 G722/8000", "a=rtpmap:101 telephone-event/8000", "a=sendonly",
    "m=video 0 RTP/AVP 97")


def invite(method, cseq, body, tag=b""):
    head = (f"{method} SIP/2.0\r\nVia: SIP/2.0/UDP 192.0.2.1:5060;branch=z9hG4bK{cseq}\r\n"
            f"From: <sip:alice@example.org>;tag=a\r\nTo: <sip:room@example.org>{tag.decode()}\r\n"
            f"Call-ID: 3848276298220188511@example.org\r\nCSeq: {cseq}\r\n")
    if body:
        head += "Content-Type: application/sdp\r\n"
    return head.encode() + b"Content-Length: %d\r\n\r\n" % len(body) + body


CALL = b"".join([
    invite("INVITE sip:room@example.org", "1 INVITE", OURS),
    invite("SIP/2.0 200 OK", "1 INVITE", ANSWER, b";tag=b").replace(b"SIP/2.0 200 OK SIP/2.0", b"SIP/2.0 200 OK"),
    invite("INVITE sip:room@example.org", "2 INVITE", HELD, b";tag=b"),
    invite("SIP/2.0 491 Request Pending", "2 INVITE", b"", b";tag=b").replace(
        b"Pending SIP/2.0", b"Pending"),
    invite("BYE sip:room@example.org", "3 BYE", b"", b";tag=b"),
])

CASES = {
    "offer": {"files": {"offer.sdp": OFFER}, "words": ["offer.sdp"]},
    "pair": {"files": {"ours.sdp": OURS, "answer.sdp": ANSWER},
             "words": ["--offered", "--offer", "ours.sdp", "answer.sdp"]},
    "healthy": {"files": {"offer.sdp": OURS}, "words": ["offer.sdp"]},
    "messages": {"files": {"call.txt": CALL}, "words": ["call.txt"]},
    "folder": {"files": {"call/1.sdp": OURS, "call/2.sdp": ANSWER, "call/3.sdp": HELD, "call/4.sdp": ANSWER},
               "words": ["call"]},
}


def around(text):
    """A description with the text in its name, in an attribute and in a format."""
    return (b"v=0\r\no=- 1 1 IN IP4 198.51.100.7\r\ns=" + text + b"\r\nc=IN IP4 198.51.100.7\r\nt=0 0\r\n"
            b"m=audio 49170 RTP/AVP 9 " + text.replace(b" ", b"") + b"\r\na=rtpmap:9 " + text + b"\r\na=" + text + b"\r\n")


HOSTILE = {name: around(text) for name, text in {
    "script": b"</script><script>window.broken=1</script>",
    "style": b"</style><style>*{display:none}</style>",
    "attribute": b"\" onmouseover=\"window.broken=1\" x='",
    "single": b"' autofocus onfocus='window.broken=1",
    "link": b"javascript:window.broken=1 <a href=\"javascript:window.broken=1\">x</a>",
    "image": b"<img src=x onerror=window.broken=1><svg onload=window.broken=1>",
    "comment": b"--><!-- ]]> <![CDATA[ <?xml ?>",
    "entity": b"&lt;script&gt; &#x3c;script&#x3e; &amp &#0;",
    "bidi": "\u202e\u2066cod.exe\u200f\u200b\ufeff".encode(),
    "bytes": b"\xff\xfe\xc0\xbcscript\xc0\xbe\x00\x1b[2J\x7f\x80\r",
    "title": b"</title></head><body><base href=//example.org/>",
    "long": b"<b>" + b"A b" * 350000,
}.items()}
