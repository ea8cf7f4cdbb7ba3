#include "Handling.h"

#include "Cost.h"
#include "Judged.h"
#include "Laws.h"
#include "Trace.h"
#include "support/Fields.h"

#include <cstring>
#include <type_traits>

namespace fuzz {

namespace {

constexpr Budget kParse = {"parse", 4096, 72, 4096, 64};
constexpr Budget kTraced = {"parse with a trace sink", 16384, 320, 8192, 64};
// An offer with everything that a local set can have takes 63,616 bytes and 17,344 steps, whatever was read.
constexpr Budget kAnswer = {"answer", 98304, 8, 24576, 16};

/// A record in which no field is that of a reset one.
void Fill(RemoteSDP& remote) {
    support::ForEachField(remote, [](const std::string&, auto& field) {
        using Field = std::remove_reference_t<decltype(field)>;
        if constexpr (std::is_array_v<Field>) {
            std::memset(field, 7, sizeof field);
        } else if constexpr (std::is_same_v<Field, std::string>) {
            field = "7";
        } else {
            field = static_cast<Field>(7);
        }
    });
}

/// The result of a parse depends only on the text, the codec set and the session address before it, and not
/// on what the record held.
void CheckDependence(const Side& side, const std::string& address, const std::string& text,
                     const std::string& record) {
    if (text.empty()) {
        return;
    }
    SDPHandler other;
    other.MyLocalSDP.eAudioCodec = side.local.eAudioCodec;
    other.m_bSRTP = !side.usesSrtp;
    other.SetBfcpSupport(!side.usesBfcp);
    other.SetMaxSupportedSessions(side.served + 1);
    other.strSessionIPAddr = address;
    RemoteSDP ofOther;
    other.ParseTheSDP(text, ofOther);
    RequireSame("the record depends on text and codecs only", "this side", record, "another side",
                RecordText(Judged("another side's record", ofOther)));
}

/// Extracting and parsing again give the same.
void CheckRepetition(SDPHandler& handler, const std::string& text, const std::string& record) {
    RemoteSDP once;
    Fill(once);
    handler.GetRTPData(once);
    RequireSame("extraction twice gives the same", "first", text.empty() ? RecordText(RemoteSDP()) : record,
                "second", RecordText(Judged("extracted record", once)));
    const std::string sections = SectionsText(handler);
    handler.ParseTheSDP(text, once);
    RequireSame("parsing twice gives the same", "first", sections + (text.empty() ? "" : record), "second",
                SectionsText(Judged("handler that read twice", handler)) +
                    (text.empty() ? "" : RecordText(once)));
}

/// What a run reached, so that the kept inputs can be required to reach it.
void Note(const Side& side, const RemoteSDP& remote, const std::string& answer) {
    const auto note = [](bool isReached, const char* state) {
        if (isReached) {
            Reached(state);
        }
    };
    note(remote.fIsAudioValid, "audio was read");
    note(remote.fIsAudioValid && remote.eAudioCodec != PAYLOAD_UNKNOWN, "audio has a codec");
    note(remote.iDTMFPayload != 0, "telephone events were read");
    note(remote.m_VideoMain.fIsVideoValid, "main video was read");
    note(remote.m_VideoPreso.fIsVideoValid, "a presentation was read");
    note(remote.m_VideoMain.iFmtpPacketizationMode == 1, "packetization mode 1 was read");
    note(remote.iVideoPresoControlPort != 0, "floor control was read");
    note(remote.fBfcpIsServer, "the far end serves the floor");
    note(remote.iMaxBandwidth != 0, "bandwidth was read");
    note(remote.cryptoAlgo[baseSDP::SRTP_AUDIO] != 0, "a key was read");
    note(answer.find("m=audio") != std::string::npos, "audio was written");
    note(answer.find("a=content:main") != std::string::npos, "main video was written");
    note(answer.find("a=content:slides") != std::string::npos, "a presentation was written");
    note(answer.find("a=floorctrl:") != std::string::npos, "floor control was written");
    note(answer.find(" inline:") != std::string::npos, "a key was written");
    static const char* const settings[] = {"SRTP off, floor control off", "SRTP on, floor control off",
                                           "SRTP off, floor control on", "SRTP and floor control on"};
    Reached(settings[(side.usesSrtp ? 1 : 0) + (side.usesBfcp ? 2 : 0)]);
    note(side.isTraced, "a trace sink was installed");
    note(side.served != 2, "another number of sections was served");
}

/// The dumps of the records, which show no key. A section's dump shows its fields as they are; its trace is
/// checked instead.
std::string Dumps(const SDPHandler& handler, const RemoteSDP& remote) {
    return remote.ToDiag() + handler.MyLocalSDP.ToDiag();
}

} // namespace

std::string CheckReading(SDPHandler& handler, const Side& side, const std::string& text) {
    const std::string settings = SettingsText(handler);
    const std::string address = handler.strSessionIPAddr;
    const Reading wanted = Read(text, address);
    RemoteSDP remote;
    Fill(remote);
    const std::string filled = RecordText(remote);

    const Meter parsing;
    int result = handler.ParseTheSDP(text, remote);
    CheckCost(side.isTraced ? kTraced : kParse, parsing.Read(), text.size());
    Require(Judged("result", result) == (text.empty() ? 1 : 0),
            "the result is 1 for an empty text and 0 otherwise", std::to_string(result), text);
    const std::string record = RecordText(Judged("record", remote));
    if (text.empty()) {
        RequireSame("an empty text leaves the record", "before", filled, "after", record);
    } else if (text.find("\r\n") == std::string::npos) {
        RequireSame("a text without a whole line resets the record", "reset", RecordText(RemoteSDP()), "read",
                    record);
    }
    RequireSame("the handler holds what the text opens", "opened", HeldText(wanted), "held",
                HeldText(Judged("handler", handler)));
    RequireSame("reading changes no setting", "before", settings, "after", SettingsText(handler));
    CheckDependence(side, address, text, record);
    CheckRepetition(handler, text, record);
    return record;
}

std::string CheckWriting(SDPHandler& handler, const Side& side, const Reading& remote, std::size_t length) {
    const std::string before = SettingsText(handler) + SectionsText(handler);
    const Meter building;
    std::string description = handler.GetLocalSDP();
    CheckCost(kAnswer, building.Read(), length);
    Judged("handler that wrote", handler);
    RequireSame("writing changes the version alone", "before", before, "after",
                SettingsText(handler) + SectionsText(handler));
    CheckDescription(side, remote, Judged("description", description));
    return description;
}

Handled CheckHandling(const Side& side, const std::string& text, Watch watch) {
    Trace trace(side.isTraced);
    SDPHandler handler;
    Prepare(handler, side);
    handler.m_iSessionID = 1000;
    const std::string record = CheckReading(handler, side, text);
    RemoteSDP remote;
    handler.GetRTPData(remote);

    std::string description = CheckWriting(handler, side, Read(text), text.size());
    Note(side, remote, description);

    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        watch.Add(Key(side.local.bufSRTPKey[n], side.local.bufSRTPSalt[n]));
    }
    watch.Check("a dump", Judged("dump", Dumps(handler, remote)));
    watch.Check("the trace", Judged("trace", std::string(trace.Text())));
    CheckGoodTextAfterwards(handler, side);
    return {record, description};
}

} // namespace fuzz
