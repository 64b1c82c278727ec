#pragma once

#include <cstdint>
#include <exception>
#include <utility>

namespace Corvane::Rasterloom {

/// The argument record of events that have nothing to tell.
struct EventArgs {};

/// How far an operation has come.
class ProgressEventArgs : public EventArgs {
public:
    /// Steps done and steps in all.
    ProgressEventArgs(std::int32_t current, std::int32_t maximum) : m_intCur(current), m_intMax(maximum) {}

    /// Steps done, 0 to `get_Maximum()`.
    std::int32_t get_Current() const noexcept { return m_intCur; }
    /// Steps in all.
    std::int32_t get_Maximum() const noexcept { return m_intMax; }

private:
    std::int32_t m_intCur;
    std::int32_t m_intMax;
};

/// How an operation ended.
class ErrorEventArgs : public EventArgs {
public:
    /// Null for success.
    explicit ErrorEventArgs(std::exception_ptr exception) : m_pException(std::move(exception)) {}

    /// The failure; null for success.
    const std::exception_ptr& get_Exception() const noexcept { return m_pException; }

private:
    std::exception_ptr m_pException;
};

} // namespace Corvane::Rasterloom
