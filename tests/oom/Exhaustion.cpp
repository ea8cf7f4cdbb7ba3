// This program's operators new and delete, and the loop that Exhaustion.h describes.
#include "oom/ReplacedNew.h"

#include "Exhaustion.h"

#include "CommonMediaTrace.h"
#include "Describe.h"
#include "hostile/Hostile.h"

#include <cstring>

namespace oom {

namespace {

enum class Failing { kOnce, kFromThenOn };
enum class Afterwards { kUseAgain, kDestroy };

struct Round {
    bool hasFailed = false;  ///< std::bad_alloc was thrown
    bool threwOther = false; ///< another exception was thrown
    bool isUsable = true;    ///< the handlers work again
    long long left = 0;      ///< blocks that were not freed
    std::size_t failures = 0;
    std::size_t thrown = 0;
};

/// Reads and answers a good offer; returns record and answer.
std::string Negotiate(SDPHandler& handler) {
    RemoteSDP remote;
    handler.m_iSessionID = 1000;
    handler.m_iSessionVersion = 1;
    const int status = handler.ParseTheSDP(hostile::kConference, remote);
    return std::to_string(status) + support::Describe(remote) + handler.GetLocalSDP();
}

/// The same from a handler that never failed, with the same capabilities and switches.
std::string NegotiateNew(const SDPHandler& like) {
    SDPHandler fresh;
    fresh.InitializeLocalSDP(like.MyLocalSDP);
    fresh.m_bSRTP = like.m_bSRTP;
    fresh.SetBfcpSupport(like.m_fBfcpSupported);
    return Negotiate(fresh);
}

/// While no allocation succeeds a call may throw std::bad_alloc and nothing else.
bool FailsCleanly(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::bad_alloc&) {
        return true;
    } catch (...) {
        return false;
    }
    return true;
}

bool StaysClean(SDPHandler& handler, RemoteSDP& remote) {
    return FailsCleanly([&] { static_cast<void>(handler.GetLocalSDP()); }) &&
           FailsCleanly([&] { handler.GetRTPData(remote); }) &&
           FailsCleanly([&] { handler.ParseTheSDP(hostile::kConference, remote); }) &&
           FailsCleanly([&] { static_cast<void>(remote.ToDiag()); }) &&
           FailsCleanly([&] { handler.ResetRemoteSDP(); });
}

Round RunOnce(const Work& work, std::size_t n, Failing failing, Afterwards afterwards) {
    Round round;
    const allocations::Scope scope;
    {
        Call call;
        work.prepare(call);
        (failing == Failing::kOnce ? allocations::FailOnce : allocations::FailFrom)(n);
        try {
            work.run(call);
        } catch (const std::bad_alloc&) {
            round.hasFailed = true;
        } catch (...) {
            round.threwOther = true;
        }
        if (round.hasFailed && failing == Failing::kFromThenOn) {
            round.threwOther |= call.near && !StaysClean(*call.near, call.atNear);
            round.threwOther |= call.away && !StaysClean(*call.away, call.atAway);
        }
        allocations::StopFailing();
        round.failures = scope.failures();
        round.thrown = scope.thrown();
        if (afterwards == Afterwards::kUseAgain) {
            round.isUsable = (!call.near || Negotiate(*call.near) == NegotiateNew(*call.near)) &&
                             (!call.away || Negotiate(*call.away) == NegotiateNew(*call.away));
        }
    }
    round.left = scope.live();
    return round;
}

std::string Problems(const Round& round) {
    std::string problems;
    if (round.threwOther) {
        problems += " another exception than std::bad_alloc was thrown;";
    }
    if (!round.hasFailed && round.thrown != 0) {
        problems += " the failed allocation was not reported;";
    }
    if (!round.isUsable) {
        problems += " a handler reads or answers differently afterwards;";
    }
    if (round.left != 0) {
        problems += " " + std::to_string(round.left) + " blocks are left;";
    }
    return problems;
}

std::size_t g_traced = 0;

} // namespace

Report Exhausted(const Work& work) {
    // The first run is not counted, because libraries allocate memory of their own at their first use.
    RunOnce(work, 0, Failing::kOnce, Afterwards::kUseAgain);
    Report report;
    for (std::size_t n = 1;; ++n) {
        const Afterwards afterwards = n % 2 == 0 ? Afterwards::kUseAgain : Afterwards::kDestroy;
        const Round once = RunOnce(work, n, Failing::kOnce, Afterwards::kUseAgain);
        const Round on = RunOnce(work, n, Failing::kFromThenOn, afterwards);
        for (const std::string& problems : {Problems(once), Problems(on)}) {
            if (!problems.empty()) {
                report.problems += "allocation " + std::to_string(n) + ":" + problems + "\n";
            }
        }
        if (once.failures == 0) {
            report.sites = n - 1;
            return report;
        }
    }
}

std::size_t CountSites(const Work& work) {
    RunOnce(work, 0, Failing::kOnce, Afterwards::kUseAgain);
    const allocations::Scope scope;
    Call call;
    work.prepare(call);
    const std::size_t before = scope.calls();
    work.run(call);
    return scope.calls() - before;
}

TraceReader::TraceReader() {
    static const CommonMediaTraceSink sink = {
        [](void*, const char*, const char*, int, const char* text) { g_traced += std::strlen(text); },
        nullptr};
    SetCommonMediaTraceSink(&sink);
}

TraceReader::~TraceReader() {
    SetCommonMediaTraceSink(nullptr);
}

std::size_t TraceReader::bytes() {
    return g_traced;
}

} // namespace oom
