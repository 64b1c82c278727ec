#include "transforms/resize/RowTeam.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <thread>
#include <vector>

namespace ImagingFramework {

bool RowTeam::Member::BeginRow() {
    if (m_alone) {
        return true;
    }
    if (m_team.m_stopped.load()) {
        return false;
    }
    if (m_reports) {
        m_team.ReportFinished();
    } else if (IInternalEvents* const events = m_team.m_host.GetEvents()) {
        events->WaitWhilePaused();
    }
    return true;
}

void RowTeam::Member::EndRows(std::uint32_t rows) {
    m_team.m_finished += rows;
    if (m_alone) {
        m_team.ReportFinished();
    } else if (m_team.IsStopRequested()) {
        m_team.m_stopped = true;
    }
}

bool RowTeam::IsStopRequested() const {
    std::uint16_t abort = 0;
    if (const IInternalEvents* const events = m_host.GetEvents()) {
        events->CheckAbort(&abort);
    }
    return abort != 0;
}

void RowTeam::ReportFinished() {
    // Chunks of a two-pass loop filter a few rows twice; what was announced is the limit.
    const std::uint64_t done = std::min(m_finished.load(), m_announced);
    const std::uint64_t steps =
        std::min<std::uint64_t>(done > m_reported ? done - m_reported : 0, std::numeric_limits<std::int32_t>::max());
    m_reported += steps;
    m_host.UpdateEvents(static_cast<std::int32_t>(steps));
}

void RowTeam::Prepare(std::uint64_t steps) {
    if (m_announced != 0 && IsStopRequested()) {
        // Announcing clears the flag, and a stop between two loops must not be lost.
        throw AbortedException();
    }
    m_announced = steps;
    m_reported = 0;
    m_finished = 0;
    m_prepare(steps);
}

void RowTeam::Finish() {
    m_finished = m_announced;
    ReportFinished();
}

void RowTeam::RunAlone(std::uint32_t rows, const Body& body) {
    Member member(*this, true, true);
    body(member, 0, rows);
}

void RowTeam::Run(std::uint32_t rows, std::uint32_t minimumChunk, const Body& body) {
    const std::uint32_t chunk = std::max({minimumChunk, rows / std::max(m_threads, 1U) / 4, 1U});
    const std::uint32_t threads = std::min(m_threads, (rows - 1) / chunk + 1);
    if (threads <= 1) {
        RunAlone(rows, body);
        return;
    }
    m_nextRow = 0;
    m_stopped = false;
    m_failure = nullptr;
    std::vector<std::thread> workers;
    try {
        for (std::uint32_t i = 1; i < threads; ++i) {
            workers.emplace_back([this, rows, chunk, &body] { Work(Member(*this, false, false), rows, chunk, body); });
        }
    } catch (const std::exception&) {
        // No thread or no memory for one: fewer than wished do the same work.
    }
    Work(Member(*this, false, true), rows, chunk, body);
    for (std::thread& worker : workers) {
        worker.join();
    }
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
    if (m_stopped) {
        throw AbortedException();
    }
}

void RowTeam::Work(Member member, std::uint32_t rows, std::uint32_t chunk, const Body& body) noexcept {
    try {
        while (!m_stopped) {
            const std::uint64_t first = m_nextRow.fetch_add(chunk);
            if (first >= rows) {
                return;
            }
            const auto end = static_cast<std::uint32_t>(std::min<std::uint64_t>(first + chunk, rows));
            body(member, static_cast<std::uint32_t>(first), end);
        }
    } catch (...) {
        const std::lock_guard lock(m_failureMutex);
        if (!m_failure) {
            m_failure = std::current_exception();
        }
        m_stopped = true;
    }
}

} // namespace ImagingFramework
