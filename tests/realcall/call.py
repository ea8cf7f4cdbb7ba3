"""One call: starts the capture, the agent and the far end in a folder, waits, and keeps what they left.

    call = Call(folder, scenario); call.run()
    call.events      what the agent wrote, as (time, text)
    call.texts       its descriptions, by name, "01-sent-offer"
    call.capture     proofs.Capture of the whole call
"""
import os
import pathlib
import signal
import subprocess
import time

import farends
import proofs

# Replaces the first four characters of both keys: ffmpeg then works with keys that nobody agreed.
WRONG_KEYS = """#!/bin/bash
arguments=()
for argument; do
    [ "$previous" = -srtp_out_params ] && argument=AAAA${argument:4}
    arguments+=("$argument")
    previous=$argument
done
exec /usr/bin/ffmpeg "${arguments[@]}" < <(sed 's/inline:..../inline:AAAA/')
"""


class SecondAgent:
    """The example as its own far end, on other ports and with another tone."""

    uri = "sip:alice@127.0.0.1:17064"
    name = "second agent"
    audio_ports = [31000]
    video_ports = [31002, 31004]

    def __init__(self, *options):
        self.options = list(options)

    def start(self, folder, calls):
        self.agent = Agent(folder, ["--sip-port", "17064", "--media-port", "31000", "--tone", "700", *self.options])
        self.agent.wait_for("ready", 5)

    def stop(self):
        self.agent.wait(5)

    def heard(self):
        return self.agent.sound()

    def saw(self):
        return ", ".join(sorted(f"{size} {count}" for size, count in self.agent.sights() if count))


class Agent:
    """The example program, built at EXAMPLE_CALL, with its output in `folder`."""

    def __init__(self, folder, options, program=None, path=""):
        self.folder = folder
        self.log = folder / "agent.log"
        command = [program or os.environ["EXAMPLE_CALL"], "--directory", str(folder), *options]
        environment = dict(os.environ, PATH=f"{path}:{os.environ['PATH']}" if path else os.environ["PATH"])
        (folder / "command").write_text(" ".join(command) + "\n")
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=self.log.open("w"),
                                        stderr=subprocess.STDOUT, env=environment)

    def events(self):
        found = []
        for line in farends.read(self.log).splitlines():
            time_text, _, event = line.partition(" ")
            if time_text.replace(".", "", 1).isdigit():
                found.append((float(time_text), event))
        return found

    def wait_for(self, event, seconds):
        farends.wait_until(lambda: any(text == event for _, text in self.events()) or self.process.poll() is not None,
                           seconds, f"no event '{event}'")

    def wait(self, seconds):
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            raise TimeoutError(f"the agent runs on after {seconds} s") from None

    def sound(self):
        """What the last receiver of audio that ran for a while heard."""
        sounds = sorted(self.folder.glob("audio-receive-*.wav"), key=lambda path: int(path.stem.rsplit("-", 1)[1]))
        long = [path for path in sounds if proofs.length_of(path) > 0.8]
        return long[-1] if long else None

    def sights(self):
        return [proofs.pictures(path) for path in sorted(self.folder.glob("*-receive-*.frames"))]


class Call:
    def __init__(self, folder, scenario):
        self.folder = folder
        self.scenario = scenario
        self.far = scenario.far()

    def run(self):
        scenario = self.scenario
        for name in ("agent", "far"):
            (self.folder / name).mkdir(parents=True)
        dump = subprocess.Popen(["dumpcap", "-q", "-P", "-i", "lo", "-f", "udp", "-w", str(self.folder / "wire.pcap")],
                                stdout=subprocess.DEVNULL, stderr=(self.folder / "dumpcap.log").open("w"))
        farends.wait_until(lambda: (self.folder / "wire.pcap").exists(), 5, "no capture")
        try:
            self.run_both(scenario)
            time.sleep(0.3)
        finally:
            farends.end_process(dump, signal.SIGINT, 3)
        self.events = self.agent.events()
        self.texts = {path.stem: path.read_bytes().decode("latin-1") for path in self.agent.folder.glob("*.sdp")}
        self.capture = proofs.Capture(self.folder / "wire.pcap")

    def run_both(self, scenario):
        incoming = scenario.incoming
        if not incoming:
            self.far.start(self.folder / "far", False)
        self.agent = self.start_agent(scenario)
        self.agent.wait_for("ready", 5)
        if incoming:
            self.far.start(self.folder / "far", True)
        try:
            for after, word in scenario.far_says:
                self.agent.wait_for("settled", 15)
                time.sleep(max(0.0, self.time_of("settled") + after - time.time()))
                self.far.say(word)
            self.status = self.agent.wait(scenario.limit)
        finally:
            self.far.stop()

    def start_agent(self, scenario):
        options = ["--settle", "6"] + scenario.options() + ([] if scenario.incoming else ["--call", self.far.uri])
        path = ""
        if scenario.has_wrong_keys:
            script = self.folder / "ffmpeg"
            script.write_text(WRONG_KEYS)
            script.chmod(0o755)
            path = str(self.folder)
        program = os.environ["EXAMPLE_CALL_ASAN"] if scenario.is_sanitized else None
        return Agent(self.folder / "agent", options, program, path)

    def time_of(self, event):
        """When the agent wrote an event that begins so, the first time."""
        events = self.agent.events()
        return next(time for time, text in events if text.startswith(event))

    def last_streams(self):
        """The stream lines after the last agreement, by section."""
        streams = {}
        for _, text in self.events:
            if text.startswith("stream "):
                streams[text.split()[1]] = text
        return [streams[key] for key in sorted(streams)]
