#pragma once

#include <csetjmp>
#include <exception>
#include <utility>

namespace ImagingFramework {

/// Carries failures through the frames of a C library, which no exception may cross: a callback keeps its failure here and
/// jumps back to the call, which raises it. One guard per library object and thread.
class CLibraryGuard {
public:
    CLibraryGuard() = default;
    CLibraryGuard(const CLibraryGuard&) = delete;
    CLibraryGuard& operator=(const CLibraryGuard&) = delete;

    /// Runs calls of the library and raises what a callback failed with. `body` is left by a jump then, so neither it nor
    /// what it calls may own anything that needs a destructor.
    template <class Body>
    void Call(Body body) {
        if (setjmp(m_jump) == 0) {
            body();
        }
        if (m_failure != nullptr) {
            std::rethrow_exception(std::exchange(m_failure, nullptr));
        }
    }

    /// For callbacks: runs a step; false when it failed, and its failure is kept for the end of the call.
    template <class Step>
    bool Try(Step step) noexcept {
        try {
            step();
            return true;
        } catch (...) {
            m_failure = std::current_exception();
            return false;
        }
    }

    /// For callbacks: runs a step and leaves the library when it fails.
    template <class Step>
    void TryOrJump(Step step) noexcept {
        if (!Try(step)) {
            Jump();
        }
    }

    /// For callbacks that hear of an error of the library itself: leaves it with the failure that `raise` throws, or with the
    /// one that was kept before and has led to the error. (A failure as an argument would be lost by the jump.)
    template <class Raise>
    [[noreturn]] void Leave(Raise raise) noexcept {
        if (m_failure == nullptr) {
            Try(raise);
        }
        Jump();
    }

private:
    /// A failure has been kept.
    [[noreturn]] void Jump() noexcept { std::longjmp(m_jump, 1); }

    std::jmp_buf m_jump;
    std::exception_ptr m_failure;
};

} // namespace ImagingFramework
