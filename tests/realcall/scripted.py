"""A caller that sends one offer given as text, for offers that neither far end can be made to write.

SIP over UDP: INVITE, ACK, and a response to what comes. ffmpeg sends to the ports that the answer gives, section by section, so that
media arrive only when the answer has the sections of the offer in their order.
"""
import re
import socket
import subprocess
import threading

PORT = 15080
AGENT = ("127.0.0.1", 17060)
SENDERS = {
    "audio": "-f lavfi -i sine=frequency=440:sample_rate=8000:samples_per_frame=160 -c:a pcm_mulaw -ac 1 "
             "-payload_type {number} -f rtp rtp://127.0.0.1:{port}?pkt_size=172",
    "video": "-f lavfi -i testsrc=size=352x288:rate=15 -c:v libx264 -profile:v baseline -pix_fmt yuv420p -g 15 "
             "-tune zerolatency -preset ultrafast -payload_type {number} -f rtp rtp://127.0.0.1:{port}?pkt_size=1200",
}


def request(method, number, to_tag, body=""):
    kind = "Content-Type: application/sdp\r\n" if body else ""
    return (
        f"{method} sip:alice@127.0.0.1:17060 SIP/2.0\r\n"
        f"Via: SIP/2.0/UDP 127.0.0.1:{PORT};branch=z9hG4bK-{method}-{number}\r\n"
        "Max-Forwards: 70\r\n"
        f"From: <sip:carol@127.0.0.1:{PORT}>;tag=scripted\r\n"
        f"To: <sip:alice@127.0.0.1:17060>{to_tag}\r\n"
        "Call-ID: scripted-1@127.0.0.1\r\n"
        f"CSeq: {number} {'INVITE' if method == 'ACK' else method}\r\n"
        f"Contact: <sip:carol@127.0.0.1:{PORT}>\r\n"
        f"{kind}Content-Length: {len(body)}\r\n\r\n{body}"
    ).encode()


class Scripted:
    """Calls the agent with `offer`; the sections whose media names have a sender and whose port the answer
    does not reject get media for as long as the call lasts."""

    name = "scripted caller"
    uri = ""
    audio_ports = [20000]
    video_ports = [20002]

    def __init__(self, offer):
        self.offer = offer

    def start(self, folder, calls):
        self.folder = folder
        self.answer = ""
        self.thread = threading.Thread(target=self.call)
        self.thread.start()

    def call(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sip:
            sip.bind(("127.0.0.1", PORT))
            sip.settimeout(5)
            sip.sendto(request("INVITE", 1, "", self.offer), AGENT)
            head = ""
            while not re.match(r"SIP/2.0 [2-6]", head):
                head, _, body = sip.recv(65535).decode(errors="replace").partition("\r\n\r\n")
            to_tag = ";tag=" + re.search(r"^To:.*;tag=([^\s;]+)", head, re.MULTILINE).group(1)
            sip.sendto(request("ACK", 1, to_tag), AGENT)
            if head.startswith("SIP/2.0 200"):
                self.answer = body
                senders = self.start_senders()
                self.wait_for_bye(sip)
                for sender in senders:
                    sender.kill()
                    sender.wait()

    @staticmethod
    def wait_for_bye(sip):
        """Answers every request until the agent ends the call."""
        sip.settimeout(30)
        message = ""
        while not message.startswith("BYE "):
            message = sip.recv(65535).decode(errors="replace")
            kept = re.findall(r"^((?:Via|From|To|Call-ID|CSeq):.*)$", message, re.MULTILINE)
            reply = "\r\n".join(["SIP/2.0 200 OK", *(line.rstrip("\r") for line in kept), "Content-Length: 0"])
            if not message.startswith("SIP/2.0"):
                sip.sendto((reply + "\r\n\r\n").encode(), AGENT)

    def start_senders(self):
        """One sender per section of ours that the answer takes at the same place."""
        processes = []
        ours = re.findall(r"^m=(\w+) (\d+) \S+ (\d+)", self.offer, re.MULTILINE)
        theirs = re.findall(r"^m=(\w+) (\d+) \S+ (\d+)", self.answer, re.MULTILINE)
        for (media, _, _), (answered, port, number) in zip(ours, theirs):
            if media == answered and port != "0" and media in SENDERS:
                words = SENDERS[media].format(number=number, port=port).split()
                log = (self.folder / f"{media}.log").open("w")
                processes.append(subprocess.Popen(["ffmpeg", "-hide_banner", "-nostdin", "-re"] + words,
                                                  stdout=subprocess.DEVNULL, stderr=log))
        return processes

    def stop(self):
        self.thread.join(10)

    def heard(self):
        return None

    def saw(self):
        return ""
