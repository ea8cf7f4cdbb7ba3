"""The programs at the other end of a call: how each is configured, started, told things and read.

Each far end has
    start(folder), stop()       its life; stop returns when it has ended
    say(word)                   "hold" or "resume"
    audio_ports, video_ports    where it receives
    heard()                     WAV file of what it heard
    saw()                       whether it decoded pictures, by its own log
"""
import pathlib
import re
import signal
import socket
import subprocess
import time

import proofs

AGENT_URI = "sip:alice@127.0.0.1:17060"
BARESIP_MODULES = "g711 g722 avcodec srtp"


def wait_until(condition, seconds, what):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if condition():
            return
        time.sleep(0.05)
    raise TimeoutError(f"{what} after {seconds} s")


def read(path):
    return path.read_text(errors="replace") if path.exists() else ""


def end_process(process, number, seconds):
    if process.poll() is None:
        process.send_signal(number)
    try:
        process.wait(seconds)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class Baresip:
    """baresip with a sine as its microphone and a test picture as its camera.

    @param account  parameters of the account: ";mediaenc=srtp", ";audio_codecs=PCMU"
    @param modules  what it can do; without srtp it refuses secure offers"""

    uri = "sip:bob@127.0.0.1:15060"
    name = "baresip"
    audio_ports = video_ports = range(20000, 20101)

    def __init__(self, account="", modules=BARESIP_MODULES):
        self.account = account
        self.modules = modules.split()

    def configuration(self, folder):
        loaded = self.modules + ["sndfile", "cons", "ausine", "aubridge", "fakevideo"]
        # ausine takes no other rate and channel count than these.
        return (
            "sip_listen 127.0.0.1:15060\nnet_interface 127.0.0.1\nrtp_ports 20000-20100\n"
            f"module_path {module_path()}\n"
            "audio_source ausine,440\nausrc_srate 48000\nausrc_channels 2\n"
            "audio_player aubridge,sink\naudio_alert aubridge,alert\n"
            "video_source fakevideo,nil\nvideo_display fakevideo,nil\nvideo_size 352x288\nvideo_fps 15\n"
            f"snd_path {folder}\ncons_listen 127.0.0.1:15564\n"
            + "".join(f"module {module}.so\n" for module in loaded)
            + "module_tmp account.so\nmodule_app menu.so\n"
        )

    def start(self, folder, calls):
        self.folder = folder
        (folder / "config").write_text(self.configuration(folder))
        (folder / "accounts").write_text(f"<{self.uri}>;regint=0;answermode=auto{self.account}\n")
        (folder / "contacts").write_text("")
        command = ["baresip", "-f", str(folder), "-4", "-s", "-t", "20"]
        if calls:
            command += ["-e", f"/dial {AGENT_URI}"]
        self.log = folder / "baresip.log"
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=self.log.open("w"),
                                        stderr=subprocess.STDOUT, cwd=folder)
        wait_until(lambda: "baresip is ready" in read(self.log), 10, "baresip is not ready")

    def say(self, word):
        key = {"hold": b"x", "resume": b"X"}[word]
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as port:
            port.sendto(key, ("127.0.0.1", 15564))

    def stop(self):
        time.sleep(0.2)
        end_process(self.process, signal.SIGTERM, 3)

    def heard(self):
        dumps = sorted(self.folder.glob("dump-*-dec.wav"), key=lambda path: path.stat().st_size)
        return dumps[-1] if dumps else None

    def saw(self):
        size = re.search(r"receiving with resolution (\d+) x (\d+)", read(self.log))
        return f"{size.group(1)}x{size.group(2)}" if size else ""


def module_path():
    return next(str(path.parent) for path in pathlib.Path("/usr/lib").rglob("baresip/modules/g711.so"))


LINPHONE_SETTINGS = """[sip]
sip_port=15070
sip_tcp_port=0
sip_tls_port=0
bind_address=127.0.0.1
use_ipv6=0
media_encryption={encryption}
{sip}
[rtp]
audio_rtp_port=21000-21100
video_rtp_port=21200-21300
[video]
enabled={video}
capture={video}
display={video}
automatically_initiate={video}
automatically_accept={video}
device=StaticImage: Static picture
[sound]
echocancellation=0
{codecs}"""


def linphone_codecs(names):
    """Every audio codec on or off, for linphone enables what is not mentioned."""
    rows = [("PCMU", 8000), ("PCMA", 8000), ("G722", 8000), ("G729", 8000), ("GSM", 8000), ("opus", 48000),
            ("speex", 8000), ("speex", 16000)]
    return "".join(f"[audio_codec_{n}]\nmime={mime}\nrate={rate}\nchannels={2 if mime == 'opus' else 1}\n"
                   f"enabled={int(mime in names)}\n" for n, (mime, rate) in enumerate(rows))


class Linphone:
    """linphonec with a WAV file as its microphone and a still picture, one a second, as its camera.

    @param codecs      audio codecs; None leaves its own
    @param encryption  "none" or "srtp"
    @param sip         further lines of section [sip]"""

    uri = "sip:bob@127.0.0.1:15070"
    name = "linphone"
    audio_ports = range(21000, 21101)
    video_ports = range(21200, 21301)

    def __init__(self, video=False, codecs=None, encryption="none", sip=""):
        self.settings = LINPHONE_SETTINGS.format(video=int(video), encryption=encryption, sip=sip,
                                                 codecs=linphone_codecs(codecs) if codecs else "")
        self.video = video

    def start(self, folder, calls):
        self.folder = folder
        for name in (".local/share/linphone", ".config/linphone", ".cache"):
            (folder / name).mkdir(parents=True)
        (folder / "rc").write_text(self.settings)
        proofs.write_tone(folder / "tone.wav", 440, 20)
        self.log = folder / "linphone.log"
        command = ["linphonec", "-c", str(folder / "rc"), "-a", "-l", str(self.log), "-d", "6"]
        self.process = subprocess.Popen(command + (["-V", "-C"] if self.video else []), stdin=subprocess.PIPE,
                                        stdout=(folder / "linphone.out").open("w"), stderr=subprocess.STDOUT,
                                        cwd=folder, env={"HOME": str(folder), "PATH": "/usr/bin:/bin"}, text=True)
        wait_until(lambda: is_port_open(15070), 10, "linphone is not ready")
        time.sleep(0.5)
        for line in ("ipv6 disable", "soundcard use files", f"play {folder / 'tone.wav'}",
                     f"record {folder / 'heard.wav'}"):
            self.type(line)
        if calls:
            self.type(f"call {AGENT_URI}")

    def type(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        time.sleep(0.15)

    def say(self, word):
        self.type({"hold": "pause", "resume": "resume"}[word])

    def stop(self):
        try:
            self.type("quit")
            self.process.stdin.close()
        except OSError:
            pass
        end_process(self.process, 0, 3)

    def heard(self):
        path = self.folder / "heard.wav"
        return path if path.exists() else None

    def saw(self):
        return "a picture" if "First video frame decoded successfully" in read(self.log) else ""


def is_port_open(port):
    """Whether some program has this UDP port, by the kernel's table."""
    return f":{port:04X} " in pathlib.Path("/proc/net/udp").read_text()
