// The threads of a survey: work goes in, results come out in the same order.
//
// Tests: tests/tool/survey.cases, SurveyTest.cpp
#pragma once

#include "SurveyOne.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace cmsdp {

/// A file to read, or a description that was read.
struct SurveyWork {
    std::string file; ///< empty: `item` counts
    Surveyed item;
};

/// A result and its line of JSON; the line is empty where none is wanted.
struct SurveyLine {
    SurveyResult result;
    std::string json;
};

class SurveyCrew {
public:
    using Fold = std::function<void(const SurveyLine&)>;
    using Tick = std::function<void(std::size_t done)>;

    /// Starts a thread for each core. `fold` is called for one result at a time, in order of the work; `tick`
    /// a few times a second by the thread that calls Add or Finish. Both may throw: the survey then ends, and
    /// Finish throws the same.
    SurveyCrew(const Capabilities& side, bool remoteAnswers, bool json, Fold fold, Tick tick);
    ~SurveyCrew();
    SurveyCrew(const SurveyCrew&) = delete;
    SurveyCrew& operator=(const SurveyCrew&) = delete;

    /// Waits while too much work is ahead of what is folded. False: no more is wanted.
    bool Add(SurveyWork work, const std::atomic<bool>& isStopped);
    /// Waits for the end of all work, or of that which was begun when `isStopped`.
    void Finish(const std::atomic<bool>& isStopped);

private:
    void Run(const Capabilities& side);
    std::vector<SurveyLine> Examine(Surveyor& surveyor, const SurveyWork& work) const;
    void Take(std::size_t number, std::vector<SurveyLine> lines);
    void Fail();
    void Join();

    bool m_remoteAnswers;
    bool m_json;
    Fold m_fold;
    Tick m_tick;
    std::mutex m_mutex;
    std::condition_variable m_hasWork;
    std::condition_variable m_hasRoom;
    std::deque<SurveyWork> m_work;
    std::map<std::size_t, std::vector<SurveyLine>> m_done; ///< waits for work before it
    std::size_t m_given = 0;                               ///< number of the next work that is begun
    std::size_t m_added = 0;
    std::size_t m_folded = 0;
    bool m_isEnd = false; ///< nothing is added any more
    std::exception_ptr m_failure;
    std::vector<std::thread> m_threads;
};

} // namespace cmsdp
