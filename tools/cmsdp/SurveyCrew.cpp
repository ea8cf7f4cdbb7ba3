// What is ahead is bounded, so memory does not grow with the number of descriptions.
//
// Tests: tests/tool/survey.cases, SurveyTest.cpp
#include "SurveyCrew.h"

#include "SurveySources.h"

#include <algorithm>
#include <chrono>
#include <csignal>

namespace cmsdp {

namespace {

constexpr std::size_t kAhead = 256;
constexpr auto kPause = std::chrono::milliseconds(100);

} // namespace

SurveyCrew::SurveyCrew(const Capabilities& side, bool remoteAnswers, bool json, Fold fold, Tick tick)
    : m_remoteAnswers(remoteAnswers), m_json(json), m_fold(std::move(fold)), m_tick(std::move(tick)) {
    // An interrupt is for the thread that adds work: it may wait for standard input.
    sigset_t interrupt;
    sigset_t before;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    pthread_sigmask(SIG_BLOCK, &interrupt, &before);
    const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
    for (unsigned i = 0; i < cores; ++i) {
        m_threads.emplace_back([this, side] { Run(side); });
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

SurveyCrew::~SurveyCrew() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_work.clear();
        m_isEnd = true;
    }
    Join();
}

void SurveyCrew::Join() {
    m_hasWork.notify_all();
    for (std::thread& thread : m_threads) {
        thread.join();
    }
    m_threads.clear();
}

bool SurveyCrew::Add(SurveyWork work, const std::atomic<bool>& isStopped) {
    std::unique_lock<std::mutex> lock(m_mutex);
    while (m_added - m_folded >= kAhead && !m_failure && !isStopped) {
        m_hasRoom.wait_for(lock, kPause);
        m_tick(m_folded);
    }
    if (m_failure || isStopped) {
        return false;
    }
    m_work.push_back(std::move(work));
    ++m_added;
    m_hasWork.notify_one();
    return true;
}

void SurveyCrew::Finish(const std::atomic<bool>& isStopped) {
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_isEnd = true;
        m_hasWork.notify_all();
        while (m_folded < m_added && !m_failure && !isStopped) {
            m_hasRoom.wait_for(lock, kPause);
            m_tick(m_folded);
        }
        m_work.clear();
    }
    Join();
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
}

std::vector<SurveyLine> SurveyCrew::Examine(Surveyor& surveyor, const SurveyWork& work) const {
    std::vector<SurveyLine> lines;
    const auto take = [&](const Surveyed& item) {
        SurveyLine line{surveyor.Examine(item), ""};
        line.json = m_json ? SurveyJson(line.result) : "";
        lines.push_back(std::move(line));
        return true;
    };
    if (work.file.empty()) {
        take(work.item);
    } else {
        ReadItems(work.file, m_remoteAnswers, take);
    }
    return lines;
}

void SurveyCrew::Run(const Capabilities& side) {
    try {
        Surveyor surveyor(side);
        while (true) {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_hasWork.wait(lock, [this] { return m_isEnd || !m_work.empty(); });
            if (m_work.empty()) {
                return;
            }
            const SurveyWork work = std::move(m_work.front());
            m_work.pop_front();
            const std::size_t number = m_given++;
            lock.unlock();
            Take(number, Examine(surveyor, work));
        }
    } catch (...) {
        Fail();
    }
}

void SurveyCrew::Take(std::size_t number, std::vector<SurveyLine> lines) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_done.emplace(number, std::move(lines));
    for (auto next = m_done.find(m_folded); next != m_done.end(); next = m_done.find(m_folded)) {
        for (const SurveyLine& line : next->second) {
            m_fold(line);
        }
        m_done.erase(next);
        ++m_folded;
    }
    m_hasRoom.notify_all();
}

void SurveyCrew::Fail() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_failure = m_failure ? m_failure : std::current_exception();
    m_work.clear();
    m_isEnd = true;
    m_hasWork.notify_all();
    m_hasRoom.notify_all();
}

} // namespace cmsdp
