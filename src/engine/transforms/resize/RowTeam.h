#pragma once

#include "Common/InternalEvents.h"

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>

namespace ImagingFramework {

/// Runs a loop over independent rows on one thread or on several, with progress and stop checks at every row.
///
/// With several threads the calling one alone reports, the rows finished by all since its last report; each of them waits
/// while the work is paused and reads the stop flag after every row. A stop makes all of them skip what is left, and the
/// call then fails with `AbortedException`, or with what a row itself raised.
class RowTeam {
public:
    /// The calls that a loop body makes around each of its rows.
    class Member {
    public:
        /// False when the rest is to be skipped.
        bool BeginRow();
        void EndRow() { EndRows(1); }
        /// Counts `rows` rows as finished; 0 only looks for a stop.
        void EndRows(std::uint32_t rows);

    private:
        friend class RowTeam;
        Member(RowTeam& team, bool alone, bool reports) : m_team(team), m_alone(alone), m_reports(reports) {}
        RowTeam& m_team;
        bool m_alone;
        bool m_reports;
    };

    /// Works on the rows from `first` up to and without `end`.
    using Body = std::function<void(Member& member, std::uint32_t first, std::uint32_t end)>;

    RowTeam(IInternalEventsHost& host, std::function<void(std::uint64_t)> prepare, std::uint32_t threads)
        : m_host(host), m_prepare(std::move(prepare)), m_threads(threads) {}

    /// Announces the steps of the loops that follow.
    void Prepare(std::uint64_t steps);
    /// All rows in order on the calling thread.
    void RunAlone(std::uint32_t rows, const Body& body);
    /// Rows in chunks of at least `minimumChunk`, on as many threads as allowed.
    void Run(std::uint32_t rows, std::uint32_t minimumChunk, const Body& body);
    /// Reports what was announced and not yet reported.
    void Finish();

private:
    void Work(Member member, std::uint32_t rows, std::uint32_t chunk, const Body& body) noexcept;
    void ReportFinished();
    bool IsStopRequested() const;

    IInternalEventsHost& m_host;
    std::function<void(std::uint64_t)> m_prepare;
    std::uint32_t m_threads;
    std::uint64_t m_announced = 0;
    std::uint64_t m_reported = 0;
    std::atomic<std::uint64_t> m_finished{0};
    std::atomic<std::uint64_t> m_nextRow{0};
    std::atomic<bool> m_stopped{false};
    std::mutex m_failureMutex;
    std::exception_ptr m_failure;
};

} // namespace ImagingFramework
