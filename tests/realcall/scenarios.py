"""The scenarios: who calls whom, with what, what happens during the call, and what has to be proven."""
import dataclasses
import typing

from call import SecondAgent
from checks import (flows, g729_carries, hears, hold_shown, logs, nothing_leaves, secure, sees, silent, sizes,
                    streams, they_hear, they_log, they_see, wrote)
from farends import Baresip, Linphone
from scripted import Scripted


@dataclasses.dataclass
class Scenario:
    name: str
    far: typing.Callable  # makes the far end
    agent: str  # options of the agent, without --call
    checks: list
    incoming: bool = False  # the far end calls
    far_says: tuple = ()  # (seconds after the call was established, word)
    must_fail: bool = False  # a control: it goes well when a check fails
    has_wrong_keys: bool = False
    is_sanitized: bool = False
    limit: float = 25  # seconds

    def options(self):
        return self.agent.split()


AUDIO = "--video none --hang-up-after 2.5 --audio "
SIF = ("352x288", 10)
STILL = ("572x468", 1)
BOTH_TONES = [hears(440), they_hear(1000)]
BOTH_PICTURES = [sees(SIF), they_see()]
PLAIN_AUDIO = [sizes("out", "audio", 172)]
LINPHONE_TWO = "srtp_crypto_suites=AES_CM_128_HMAC_SHA1_80,AES_CM_128_HMAC_SHA1_32"
LINPHONE_32 = "srtp_crypto_suites=AES_CM_128_HMAC_SHA1_32"
LINPHONE_256 = "srtp_crypto_suites=AES_256_CM_HMAC_SHA1_80"


def baresip(*arguments, **named):
    return lambda: Baresip(*arguments, **named)


def linphone(*arguments, **named):
    return lambda: Linphone(*arguments, **named)


def second(options):
    return lambda: SecondAgent(*options.split())


PREFIX = "v=0\r\no=carol 1 1 IN IP4 127.0.0.1\r\ns=-\r\nc=IN IP4 127.0.0.1\r\nt=0 0\r\n"
AUDIO_SECTION = "m=audio 20000 RTP/AVP 0\r\na=rtpmap:0 PCMU/8000\r\n"
VIDEO_SECTION = ("m=video 20002 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n"
                 "a=fmtp:97 profile-level-id=42e01f;packetization-mode=1\r\n")
VIDEO_FIRST = PREFIX + VIDEO_SECTION + AUDIO_SECTION
SEVEN = (
    PREFIX
    + "m=text 20010 RTP/AVP 98\r\na=rtpmap:98 t140/1000\r\n"
    + VIDEO_SECTION
    + "m=application 20012 UDP/DTLS/SCTP webrtc-datachannel\r\na=sctp-port:5000\r\n"
    + AUDIO_SECTION
    + "m=audio 20014 RTP/AVP 8\r\na=rtpmap:8 PCMA/8000\r\n"
    + "m=image 20016 udptl t38\r\n"
    + "m=video 20018 RTP/AVP 31\r\na=rtpmap:31 H261/90000\r\n"
)
SEVEN_ANSWER = (r"^m=text 0 .*^m=video 30002 .*^m=application 0 .*^m=audio 30000 .*^m=audio 0 .*^m=image 0 "
                r".*^m=video 0 ")

HOLD = "--hold-after 2 --resume-after 4.5 --hang-up-after 7"
HELD = (("action hold", 0.7), ("action resume", 0.0))
RESUMED = (("action resume", 0.7), None)


def held(kind="audio"):
    """Media both ways before the hold and after it."""
    return [flows("out", kind, None, ("action hold", 0)), flows("in", kind, None, ("action hold", 0)),
            flows("out", kind, *RESUMED), flows("in", kind, *RESUMED)]


PLAIN = [
    Scenario("PCMU, we call", baresip(), AUDIO + "PCMU", BOTH_TONES + PLAIN_AUDIO),
    Scenario("PCMU, they call", baresip(";audio_codecs=PCMU"), AUDIO + "G722,PCMU", BOTH_TONES + PLAIN_AUDIO,
             incoming=True),
    Scenario("G.722, we call", baresip(), AUDIO + "G722", BOTH_TONES + PLAIN_AUDIO),
    Scenario("G.722, they call", baresip(";audio_codecs=G722/16000/1"), AUDIO + "PCMU,G722", BOTH_TONES + PLAIN_AUDIO,
             incoming=True),
    Scenario("PCMU, we call", linphone(), AUDIO + "PCMU", BOTH_TONES + PLAIN_AUDIO),
    Scenario("PCMU, they call", linphone(), AUDIO + "PCMU", BOTH_TONES + PLAIN_AUDIO, incoming=True),
    Scenario("G.722, we call", linphone(codecs=["G722"]), AUDIO + "G722,PCMU", BOTH_TONES + PLAIN_AUDIO),
    Scenario("G.722, they call", linphone(codecs=["G722"]), AUDIO + "PCMU,G722", BOTH_TONES + PLAIN_AUDIO,
             incoming=True),
    Scenario("G.729, they send", linphone(codecs=["G729"]), AUDIO + "G729", [g729_carries(440)]),
    Scenario("H.264, we call", baresip(), "--audio PCMU --hang-up-after 3.5", BOTH_TONES + BOTH_PICTURES),
    Scenario("H.264, they call", baresip(), "--audio PCMU --hang-up-after 3.5", BOTH_TONES + BOTH_PICTURES,
             incoming=True),
    Scenario("H.264 in mode 0 alone", baresip(), "--audio PCMU --video mode0 --hang-up-after 3.5",
             BOTH_TONES + BOTH_PICTURES + [sizes("out", "video", 1200)]),
    Scenario("H.264, we call", linphone(video=True), "--audio PCMU --hang-up-after 3.5",
             BOTH_TONES + [sees(STILL), they_see()]),
    Scenario("H.264, they call", linphone(video=True), "--audio PCMU --hang-up-after 3.5",
             BOTH_TONES + [sees(STILL), they_see()], incoming=True),
]

SECURE_VIDEO = "--srtp required --audio PCMU --hang-up-after 3.5 --suite "
SECURE = [
    Scenario("SRTP, 32-bit tag, we call", baresip(";mediaenc=srtp"), SECURE_VIDEO + "32",
             BOTH_TONES + BOTH_PICTURES + [sizes("out", "audio", 176), secure(32, "audio", "video")]),
    Scenario("SRTP, 80-bit tag, we call", baresip(";mediaenc=srtp"), SECURE_VIDEO + "80",
             BOTH_TONES + BOTH_PICTURES + [sizes("out", "audio", 182), secure(80, "audio", "video")]),
    Scenario("SRTP, its default (80 alone), they call", baresip(";mediaenc=srtp-mand"), SECURE_VIDEO + "32",
             BOTH_TONES + BOTH_PICTURES + [sizes("out", "audio", 182), secure(80, "audio", "video")], incoming=True),
    Scenario("SRTP, 32-bit tag, we call", linphone(video=True, encryption="srtp", sip=LINPHONE_TWO),
             "--srtp required --audio PCMU --hang-up-after 3.5 --suite 32",
             BOTH_TONES + [sees(STILL), they_see(), sizes("out", "audio", 176), secure(32, "audio", "video")]),
    Scenario("SRTP, 32-bit tag, they call", linphone(video=True, encryption="srtp", sip=LINPHONE_32),
             "--srtp required --audio PCMU --hang-up-after 3.5",
             BOTH_TONES + [sees(STILL), they_see(), sizes("out", "audio", 176), secure(32, "audio", "video")],
             incoming=True),
    Scenario("SRTP, its own four suites, they call", linphone(video=True, encryption="srtp"),
             "--srtp required --audio PCMU --hang-up-after 3.5",
             BOTH_TONES + [sees(STILL), they_see(), sizes("out", "audio", 182), secure(80, "audio", "video")],
             incoming=True),
    Scenario("SRTP, only a suite that we do not read", linphone(encryption="srtp", sip=LINPHONE_256),
             "--srtp required --video none --audio PCMU --patience 4",
             # It calls again without SRTP, which is refused as well.
             [logs("refused with (488)"), nothing_leaves()],
             incoming=True),
    Scenario("SRTP wanted, they refuse: then plain", baresip(modules="g711 g722"),
             "--srtp wanted " + AUDIO + "PCMU", BOTH_TONES + PLAIN_AUDIO + [logs("closed with (488)")]),
    Scenario("SRTP required, they refuse: no call", baresip(modules="g711 g722"),
             "--srtp required " + AUDIO + "PCMU", [logs("closed with 488"), nothing_leaves()]),
    Scenario("SRTP, new keys during the call", baresip(";mediaenc=srtp"),
             "--srtp required --video none --audio PCMU --rekey-after 2 --hang-up-after 5",
             BOTH_TONES + [secure(80, "audio"), flows("out", "audio", ("action rekey", 1), None),
                           flows("in", "audio", ("action rekey", 1), None)]),
]

CHANGES = [
    Scenario("we hold by direction, resume", baresip(), "--audio PCMU " + HOLD,
             BOTH_TONES + held() + [silent("in", "audio", *HELD), silent("in", "video", *HELD), sees(SIF)]),
    Scenario("we hold by direction, resume", linphone(), "--video none --audio PCMU " + HOLD,
             BOTH_TONES + held() + [silent("in", "audio", *HELD)]),
    Scenario("we hold by port 0, resume", baresip(),
             "--audio PCMU " + HOLD.replace("hold", "hold-by-port").replace("resume", "resume-ports"),
             BOTH_TONES + [silent("out", "audio", ("action hold-by-port", 0.7), ("action resume-ports", 0)),
                           silent("in", "audio", ("action hold-by-port", 0.7), ("action resume-ports", 0)),
                           flows("out", "audio", ("action resume-ports", 0.7), None),
                           flows("in", "audio", ("action resume-ports", 0.7), None), hold_shown()]),
    Scenario("re-offer refused: the call goes on", linphone(),
             "--video none --audio PCMU --hold-by-port-after 2 --hang-up-after 5",
             BOTH_TONES + [logs("offer refused with (488)"), flows("out", "audio", ("offer refused", 0.7), None),
                           flows("in", "audio", ("offer refused", 0.7), None)]),
    Scenario("they hold, resume", baresip(), "--audio PCMU --hang-up-after 7",
             BOTH_TONES + [silent("out", "audio", ("kept 03", 0.7), ("kept 05", 0)),
                           silent("out", "video", ("kept 03", 0.7), ("kept 05", 0)),
                           flows("out", "audio", ("kept 05", 0.7), None), hold_shown()],
             far_says=((2, "hold"), (4.5, "resume"))),
    Scenario("they hold, resume", linphone(), "--video none --audio PCMU --hang-up-after 7",
             BOTH_TONES + [silent("out", "audio", ("kept 03", 0.7), ("kept 05", 0)),
                           flows("out", "audio", ("kept 05", 0.7), None), hold_shown()],
             far_says=((2, "hold"), (4.5, "resume"))),
    Scenario("camera muted, shown again", baresip(),
             "--audio PCMU --mute-after 2 --unmute-after 4.5 --hang-up-after 7",
             BOTH_TONES + BOTH_PICTURES
             + [silent("out", "video", ("action mute", 0.7), ("action unmute", 0)),
                flows("in", "video", ("action mute", 0.7), ("action unmute", 0)),
                flows("out", "audio", ("action mute", 0.7), ("action unmute", 0)),
                flows("out", "video", ("action unmute", 1), None)]),
    Scenario("codec changed by a re-offer", baresip(),
             "--video none --audio PCMU,G722 --next-codec-after 1.5 --hang-up-after 5.5",
             # The far end's sine plays at twice its frequency after the change of the sampling rate.
             [hears(880), they_hear(1000)] + PLAIN_AUDIO + [wrote("received-answer", "^m=audio [1-9][0-9]* RTP/AVP 9")]),
    Scenario("video stopped by a re-offer", baresip(), "--audio PCMU --stop-video-after 2.5 --hang-up-after 5.5",
             BOTH_TONES + [silent("out", "video", ("action stop-video", 0.7), None),
                           flows("out", "audio", ("action stop-video", 0.7), None)]),
]

FITTING = [
    Scenario("they decline video", baresip(modules="g711 g722"), "--audio PCMU --hang-up-after 3.5",
             BOTH_TONES + PLAIN_AUDIO + [silent("out", "video"), wrote("received-answer", "^m=video 0 ")]),
    Scenario("we decline video", baresip(), AUDIO + "PCMU",
             BOTH_TONES + PLAIN_AUDIO + [silent("out", "video"), wrote("sent-answer", "^m=video 0 ")], incoming=True),
    Scenario("they have fewer codecs", baresip(modules="g711"), AUDIO + "G722,PCMU", BOTH_TONES + PLAIN_AUDIO),
    Scenario("no common codec, we call", baresip(modules="gsm"), AUDIO + "PCMU",
             [logs("closed with 488"), nothing_leaves()]),
    Scenario("no common codec, they call", baresip(modules="gsm"), AUDIO + "PCMU --patience 4",
             [logs("refused with (488)"), nothing_leaves()], incoming=True),
    Scenario("slides and floor control offered", baresip(), "--audio PCMU --present --hang-up-after 3.5",
             BOTH_TONES + BOTH_PICTURES + [wrote("received-answer", "^m=video 0 .*^m=application 0 ")]),
    Scenario("no offer in our INVITE", baresip(), "--delayed --audio PCMU --hang-up-after 3.5",
             BOTH_TONES + BOTH_PICTURES + [wrote("received-offer", "^m=audio ")]),
    Scenario("video comes first in the offer", lambda: Scripted(VIDEO_FIRST), "--audio PCMU --hang-up-after 3",
             [hears(440), sees(SIF), flows("out", "audio"), flows("out", "video"),
              wrote("sent-answer", "^m=video 30002 .*^m=audio 30000 ")], incoming=True),
    Scenario("seven sections, five not supported", lambda: Scripted(SEVEN), "--audio PCMU --hang-up-after 3",
             [hears(440), sees(SIF), flows("out", "audio"), flows("out", "video"),
              wrote("sent-answer", SEVEN_ANSWER)], incoming=True),
]

FLOOR = [streams("audio", "video main", "video slides", "floor control: to 127.0.0.1:31006"),
         they_log("floor control: to 127.0.0.1:30006")]
AGENTS = [
    Scenario("slides and floor control, SRTP", second("--audio G722 --slides --present --srtp required --suite 32"),
             "--audio G722 --present --srtp required --suite 32 --hang-up-after 6",
             [hears(700), they_hear(1000), sees(SIF, ("640x480", 5)), they_see("352x288", "640x480"),
              secure(32, "audio", "video")] + FLOOR),
    Scenario("slides begin during the call", second("--audio PCMU --slides --srtp wanted"),
             "--audio PCMU --slides --srtp wanted --present-after 2 --hang-up-after 6",
             [hears(700), they_hear(1000), sees(SIF), they_see("352x288", "640x480"),
              secure(80, "audio", "video")] + FLOOR),
    Scenario("no offer in their INVITE", second("--audio PCMU"), "--delayed --audio PCMU --hang-up-after 3.5",
             [hears(700), they_hear(1000), sees(SIF), they_see()]),
    Scenario("plain call becomes SRTP", second("--audio PCMU --srtp wanted --video none"),
             "--video none --audio PCMU --encrypt-after 2 --hang-up-after 5",
             [hears(700), they_hear(1000), secure(80, "audio", begin=("action encrypt", 0.1))]),
]

CONTROLS = [
    Scenario("control: wrong keys", baresip(";mediaenc=srtp"), "--srtp required " + AUDIO + "PCMU",
             [they_hear(1000)], must_fail=True, has_wrong_keys=True),
    Scenario("control: no picture requests", baresip(), "--no-picture-requests --audio PCMU --hang-up-after 3.5",
             [sees(("352x288", 1))], must_fail=True),
]

SANITIZED = [
    Scenario("address sanitizer, we call", baresip(";mediaenc=srtp"),
             "--srtp required --audio PCMU --hold-after 1.5 --resume-after 3 --hang-up-after 5",
             [hears(440), secure(80, "audio", "video")], is_sanitized=True),
    Scenario("address sanitizer, they call", linphone(encryption="srtp"), "--srtp wanted " + AUDIO + "PCMU",
             BOTH_TONES + [secure(80, "audio")], incoming=True, is_sanitized=True),
]

ALL = PLAIN + SECURE + CHANGES + FITTING + AGENTS + CONTROLS + SANITIZED
