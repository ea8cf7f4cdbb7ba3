#include "Peer.h"

#include "Baselines.h"
#include "Inputs.h"
#include "Operations.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

const std::vector<PeerRow>& Peers() {
    static const std::vector<PeerRow> peers = {
#ifdef BENCH_HAVE_GST
        {"gst-sdp", MakeGst},
#endif
#ifdef BENCH_HAVE_SOFIA
        {"sofia-sip", MakeSofia},
#endif
#ifdef BENCH_HAVE_OSIP
        {"osip2", MakeOsip},
#endif
#ifdef BENCH_HAVE_RE
        {"libre", MakeRe},
#endif
    };
    return peers;
}

void PeerFailed(const char* name, const char* what) {
    std::fprintf(stderr, "%s: %s failed\n", name, what);
    std::exit(2);
}

namespace {

/// What every reader has to find, counted line by line.
Taken Expected(const std::string& text) {
    Taken taken;
    bool inSection = false;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = rest.find("\r\n");
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 2);
        const auto begins = [line](std::string_view start) { return line.substr(0, start.size()) == start; };
        if (begins("m=")) {
            inSection = true;
            for (std::size_t at = line.find(' '); at != std::string_view::npos; at = line.find(' ', at + 1)) {
                ++taken.formats;
            }
            taken.formats -= 2; // the port and the transport
        }
        if (!inSection) {
            continue;
        }
        taken.names += begins("a=rtpmap:") ? 1 : 0;
        taken.parameters += begins("a=fmtp:") ? 1 : 0;
        taken.keys += begins("a=crypto:") ? 1 : 0;
        taken.candidates += begins("a=candidate:") ? 1 : 0;
        taken.bandwidths += begins("b=") ? 1 : 0;
        taken.attributes += line == "a=sendrecv" ? 1 : 0;
        for (const char* const name : kSingleAttributes) {
            taken.attributes += begins(std::string("a=") + name + ":") ? 1 : 0;
        }
    }
    return taken;
}

/// Prints what a peer leaves out: a peer that does less work cannot be compared.
void Compare(const PeerRow& row, char letter, const Taken& expected, const Taken& taken) {
    struct Field {
        const char* name;
        std::size_t Taken::*count;
    };
    static constexpr Field kFields[] = {
        {"formats", &Taken::formats},       {"rtpmap", &Taken::names},
        {"fmtp", &Taken::parameters},       {"keys", &Taken::keys},
        {"candidates", &Taken::candidates}, {"bandwidths", &Taken::bandwidths},
        {"attributes", &Taken::attributes},
    };
    for (const Field& field : kFields) {
        if (taken.*field.count != expected.*field.count) {
            std::fprintf(stderr, "%s takes %zu of %zu %s from %c\n", row.name, taken.*field.count,
                         expected.*field.count, field.name, letter);
        }
    }
}

std::function<void()> PrepareRead(const PeerRow& row, char letter) {
    const std::shared_ptr<Peer> peer = row.make();
    const std::string text = ReadInput(letter);
    Compare(row, letter, Expected(text), peer->Read(text));
    return [peer, text] { peer->Read(text); };
}

std::function<void()> PrepareWrite(const PeerRow& row, char letter) {
    const std::shared_ptr<Peer> peer = row.make();
    peer->Hold(ReadInput(letter));
    if (peer->Write() < ReadInput(letter).size() * 8 / 10) {
        PeerFailed(row.name, "to write all of the text");
    }
    return [peer] { peer->Write(); };
}

/// The session and its capabilities are made once, so only taking the offer and writing the answer is
/// measured.
std::function<void()> PrepareNegotiate(const PeerRow& row, char letter) {
    const std::shared_ptr<Peer> peer = row.make();
    const std::string text = ReadInput(letter);
    peer->Hold(text);
    if (peer->Negotiate(text) < text.size() / 4) {
        PeerFailed(row.name, "to answer all of the offer");
    }
    return [peer, text] { peer->Negotiate(text); };
}

} // namespace

std::vector<Operation> PeerOperations() {
    std::vector<Operation> all;
    for (const PeerRow& row : Peers()) {
        for (const Input& input : kInputs) {
            const char letter = input.letter;
            all.push_back({std::string("parse ") + letter, row.name,
                           [&row, letter] { return PrepareRead(row, letter); }});
        }
        all.push_back({"answer c", row.name, [&row] { return PrepareWrite(row, 'c'); }});
        if (row.make()->CanNegotiate()) {
            for (const char letter : {'b', 'c', 'd'}) {
                all.push_back({std::string("negotiate ") + letter, row.name,
                               [&row, letter] { return PrepareNegotiate(row, letter); }});
            }
        }
    }
    for (const Baseline& baseline : kBaselines) {
        for (const Input& input : kInputs) {
            const char letter = input.letter;
            all.push_back({std::string("parse ") + letter, baseline.name, [&baseline, letter] {
                               const std::string text = ReadInput(letter);
                               return [&baseline, text] { baseline.read(text); };
                           }});
        }
    }
    return all;
}

} // namespace bench
