// The operations that Hostile.h declares.
#include "Hostile.h"

#include "CommonMediaTrace.h"
#include "oom/Allocations.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace hostile {

namespace {

/// Memory grows no faster than the text: the bytes that a parse may allocate for each byte of the text, and
/// the bytes that it may allocate for any text.
constexpr std::size_t kBytesPerByte = 192;
constexpr std::size_t kBytesAlways = 64 * 1024;

/// Counts traces, and searches those that are short enough.
struct Tracer {
    std::size_t traces = 0;
    std::vector<std::string> leaks;

    static void Write(void* context, const char*, const char*, int, const char* text) {
        auto* const self = static_cast<Tracer*>(context);
        ++self->traces;
        const std::string shown(text);
        if (shown.size() < 100000) {
            const std::vector<std::string> found = KeyWindows(shown);
            self->leaks.insert(self->leaks.end(), found.begin(), found.end());
        }
    }
};

std::string Cut(const std::string& value, std::size_t limit) {
    if (value.size() <= limit) {
        return support::MakeVisible(value);
    }
    return support::MakeVisible(value.substr(0, 40)) + "...(" + std::to_string(value.size()) + " bytes)";
}

void DescribeSection(std::ostream& out, std::size_t n, const MediaSession& ms, std::size_t limit) {
    out << "section " << n << " media=" << ms.eMedia << " content=" << ms.eContent << " port=" << ms.iPort
        << " send=" << ms.fSend << " recv=" << ms.fRecv << " addr=" << Cut(ms.strIPAddr, limit) << "\n";
    out << n << " line " << Cut(ms.strFullMLine, limit) << "\n";
    out << n << " tias=" << Cut(ms.strMaxBandwidth, limit) << " ctrl=" << Cut(ms.strFloorctrl, limit)
        << " conf=" << ms.iBfcpConfid << " user=" << ms.iBfcpUserid << "\n";
    out << n << " crypto tag=" << ms.iCryptoTag << " suite=" << ms.cryptoAlgo
        << " text=" << Cut(ms.strBase64Key, limit)
        << " key=" << support::DescribeRow(ms.bufSRTPKey, baseSDP::kKeyLength, sizeof ms.bufSRTPKey)
        << " salt=" << support::DescribeRow(ms.bufSRTPSalt, baseSDP::kSaltLength, sizeof ms.bufSRTPSalt)
        << "\n";
    out << n << " ice [" << Cut(ms.striceufrag, limit) << "] [" << Cut(ms.stricepwd, limit) << "]\n";
    for (const RtpMap* const rm : ms.vecRtpMap) {
        out << n << " format " << Cut(rm->strPayload, limit) << " " << Cut(rm->strEncodingName, limit);
        for (const std::string& parm : rm->vecFmtpParms) {
            out << " [" << Cut(parm, limit) << "]";
        }
        out << "\n";
    }
    for (const std::string& candidate : ms.vecCandidate) {
        out << n << " candidate " << Cut(candidate, limit) << "\n";
    }
    // No line sets these fields.
    EXPECT_EQ(ms.iVideoLabel, 0);
    EXPECT_EQ(ms.iBfcpFloorid, 0);
    EXPECT_EQ(ms.strVideoLevel, "");
}

/// The answer with visible line ends, one line per line.
std::string VisibleAnswer(const std::string& answer, std::size_t limit) {
    std::string shown;
    for (const std::string& line : Lines(answer)) {
        shown += Cut(line, limit) + "\n";
    }
    return shown;
}

/// The outcome as a document has it: no byte that is not printable, no blank at the end of a line.
std::string Shown(const std::string& outcome) {
    std::string shown;
    for (const std::string& line : Lines(outcome)) {
        std::string visible;
        for (const char c : line.substr(0, line.size() - 1)) {
            visible += c == '\\' ? "\\" : support::MakeVisible(std::string(1, c));
        }
        shown += documents::EndVisible(visible) + "\n";
    }
    return shown;
}

/// Requires that each line of the answer ends in CR LF and contains no other CR or LF.
void ExpectWholeLines(const std::string& answer) {
    for (const std::string& line : Lines(answer)) {
        if (line.size() < 2 || line.find('\r') != line.size() - 2 || line.back() != '\n') {
            ADD_FAILURE() << "does not end in CR LF: " << Cut(line, 200);
            return;
        }
    }
}

} // namespace

LocalSDP ConferenceLocal() {
    LocalSDP local = support::PresentationLocal();
    support::GiveKeys(local, "near", support::kSuite32);
    return local;
}

void Begin(SDPHandler& handler) {
    support::Start(handler, ConferenceLocal());
    handler.m_bSRTP = true;
    handler.SetBfcpSupport(true);
}

std::string DescribeHeld(const SDPHandler& handler, std::size_t limit) {
    std::ostringstream out;
    out << "session addr=" << Cut(handler.strSessionIPAddr, limit)
        << " bandwidth=" << Cut(handler.strMaxSessionBandwidth, limit) << "\n";
    std::size_t n = 0;
    for (const MediaSession* const ms : handler.vecRemoteMediaSession) {
        DescribeSection(out, n++, *ms, limit);
    }
    return out.str();
}

std::string Meet(SDPHandler& handler, const std::string& text, std::size_t limit) {
    RemoteSDP remote;
    int status = -1;
    {
        std::string copy(text);
        const allocations::Scope scope;
        status = handler.ParseTheSDP(std::move(copy), remote);
        EXPECT_LE(scope.bytes(), kBytesAlways + kBytesPerByte * text.size());
    }
    EXPECT_EQ(handler.IsOffer(), handler.vecRemoteMediaSession.empty());
    RemoteSDP again;
    if (status == 0) {
        handler.GetRTPData(again);
        EXPECT_TEXT(support::Describe(again), support::Describe(remote));
    }
    const std::string answer = handler.GetLocalSDP();
    ExpectWholeLines(answer);
    return Shown("status=" + std::to_string(status) + "\n" + support::Describe(remote) +
                 DescribeHeld(handler, limit) + "answer\n" + VisibleAnswer(answer, limit));
}

void ExpectAsFresh(SDPHandler& used) {
    static const std::string silent = With("c=IN IP4 192.0.2.2\r\n", "");
    // The first text has no session address, so its result shows the address that was kept.
    for (const std::string& good : {silent, kConference}) {
        SDPHandler fresh;
        Begin(fresh);
        fresh.strSessionIPAddr = used.strSessionIPAddr;
        fresh.m_iSessionVersion = used.m_iSessionVersion;
        const std::size_t everything = std::string::npos;
        EXPECT_TEXT(Meet(used, good, everything), Meet(fresh, good, everything));
    }
}

std::string Outcome(const std::string& text) {
    SCOPED_TRACE("after " + Cut(text, 1000));
    SDPHandler handler;
    Begin(handler);
    const std::string outcome = Meet(handler, text);

    // A trace sink does not change the result.
    SDPHandler traced;
    Begin(traced);
    Tracer tracer;
    const CommonMediaTraceSink sink = {Tracer::Write, &tracer};
    SetCommonMediaTraceSink(&sink);
    EXPECT_TEXT(Meet(traced, text), outcome);
    SetCommonMediaTraceSink(nullptr);
    EXPECT_EQ(tracer.traces, 2 * traced.vecRemoteMediaSession.size());
    EXPECT_EQ(tracer.leaks, std::vector<std::string>());

    ExpectAsFresh(handler);
    return outcome;
}

std::string Difference(const std::string& before, const std::string& after) {
    const std::vector<std::string> a = Lines(before);
    const std::vector<std::string> b = Lines(after);
    if (a.size() > 2000 || b.size() > 2000) {
        return "(more lines than are compared)\n";
    }
    // common[i][j]: length of the longest common subsequence of the lines of a from i on and of b from j on.
    std::vector<std::vector<std::size_t>> common(a.size() + 1, std::vector<std::size_t>(b.size() + 1, 0));
    for (std::size_t i = a.size(); i-- > 0;) {
        for (std::size_t j = b.size(); j-- > 0;) {
            common[i][j] =
                a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    std::string changes;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            ++i;
            ++j;
        } else if (j == b.size() || (i < a.size() && common[i + 1][j] >= common[i][j + 1])) {
            changes += "-" + a[i++];
        } else {
            changes += "+" + b[j++];
        }
    }
    return changes;
}

std::string Changes(const std::string& text) {
    return Difference(kConferenceOutcome, Outcome(text));
}

std::string With(const std::string& what, const std::string& with) {
    return Replaced(kConference, what, with);
}

std::string Repeated(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t n = 0; n < count; ++n) {
        text += piece;
    }
    return text;
}

std::size_t Count(std::string_view text, std::string_view piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string_view::npos;
         at = text.find(piece, at + piece.size())) {
        ++count;
    }
    return count;
}

std::string LineOf(const std::string& text, const std::string& start) {
    for (const std::string& line : Lines(text)) {
        if (line.compare(0, start.size(), start) == 0) {
            return line.substr(0, line.find_first_of("\r\n"));
        }
    }
    return "(no line begins with " + start + ")";
}

std::vector<std::string> Lines(const std::string& text) {
    return support::CutLines(text);
}

std::vector<std::string> KeyWindows(const std::string& text) {
    constexpr std::size_t window = 8;
    static const std::set<std::string> secrets = [] {
        std::set<std::string> found;
        for (const char* const who : {"near", "away"}) {
            for (const char* const stream : {"audio", "video", "slide"}) {
                unsigned char key[baseSDP::kKeyLength];
                unsigned char salt[baseSDP::kSaltLength];
                support::WriteKey(key, salt, who, stream);
                std::string inlineText;
                GetSRTPKey(inlineText, key, salt);
                for (const std::string& secret :
                     {std::string(key, key + sizeof key) + std::string(salt, salt + sizeof salt),
                      inlineText}) {
                    for (std::size_t at = 0; at + window <= secret.size(); ++at) {
                        found.insert(secret.substr(at, window));
                    }
                }
            }
        }
        return found;
    }();
    std::vector<std::string> leaks;
    for (const std::string& secret : secrets) {
        if (text.find(secret) != std::string::npos) {
            leaks.push_back(secret);
        }
    }
    return leaks;
}

} // namespace hostile
