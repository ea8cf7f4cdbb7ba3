#include "Handling.h"

#include "Cost.h"
#include "Laws.h"
#include "Trace.h"

namespace fuzz {

namespace {

constexpr Budget kParse = {"parse", 4096, 72, 4096, 64};
constexpr Budget kTraced = {"parse with a trace sink", 16384, 320, 8192, 64};
constexpr Budget kAnswer = {"answer", 65536, 8, 16384, 16};

/// The result of a parse depends only on the text, the codec set and the session address before it.
void CheckDependence(const Side& side, const std::string& text, const std::string& record) {
    SDPHandler other;
    other.MyLocalSDP.eAudioCodec = side.local.eAudioCodec;
    other.m_bSRTP = !side.usesSrtp;
    other.SetBfcpSupport(!side.usesBfcp);
    RemoteSDP ofOther;
    other.ParseTheSDP(text, ofOther);
    RequireSame("the record depends on text and codecs only", "this side", record, "another side",
                RecordText(ofOther));
}

/// The dumps of the records, which show no key. A section's dump shows its fields as they are; its trace is
/// checked instead.
std::string Dumps(const SDPHandler& handler, const RemoteSDP& remote) {
    return remote.ToDiag() + handler.MyLocalSDP.ToDiag();
}

} // namespace

Handled CheckHandling(const Side& side, const std::string& text, Watch watch) {
    Trace trace(side.isTraced);
    SDPHandler handler;
    Prepare(handler, side);
    handler.m_iSessionID = 1000;
    RemoteSDP remote;
    const std::string untouched = RecordText(remote);

    const Meter parsing;
    const int result = handler.ParseTheSDP(text, remote);
    CheckCost(side.isTraced ? kTraced : kParse, parsing.Read(), text.size());
    const std::string record = RecordText(remote);
    Require(result == (text.empty() ? 1 : 0), "the result is 1 for an empty text and 0 otherwise",
            std::to_string(result), text);
    if (text.find("\r\n") == std::string::npos) {
        RequireSame("a text without a whole line leaves the record unchanged", "before", untouched, "after",
                    record);
    }

    RemoteSDP again;
    handler.GetRTPData(again);
    RequireSame("extraction twice gives the same", "first", record, "second", RecordText(again));
    CheckDependence(side, text, record);
    const std::string sections = SectionsText(handler);
    handler.ParseTheSDP(text, again);
    RequireSame("parsing twice gives the same", "first", sections, "second", SectionsText(handler));

    const Meter building;
    const std::string description = handler.GetLocalSDP();
    CheckCost(kAnswer, building.Read(), text.size());
    CheckDescription(handler, side, description);

    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        watch.Add(Key(side.local.bufSRTPKey[n], side.local.bufSRTPSalt[n]));
    }
    watch.Check("a dump", Dumps(handler, remote));
    watch.Check("the trace", trace.Text());
    CheckGoodTextAfterwards(handler, side);
    return {record, description};
}

} // namespace fuzz
