#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/EventArgs.h>
#include <Corvane/Rasterloom/Host/Event.h>

namespace Corvane::Rasterloom {

/// The events of an operation, in the order in which they come: `Starting`, `Started`, `Progress` from 0 up to its
/// maximum, `Stopping`, `Aborted` if it was, `Stopped`; `Paused` and `Continued` between `Started` and `Stopping`.
///
/// They are raised on the thread that runs the operation; in the mode `AsyncViaMessageLoop` on the thread of the loop,
/// `Starting` always on the caller's. A handler may call any member of the object that the text of the event does not
/// exclude, on its own thread. It must not wait for another thread that calls the object, since calls wait while a
/// handler runs, and must not destroy the object, except in `Stopped`, as its last handler, when the operation runs on
/// a worker.
///
/// A failure in a handler does not reach its raiser: it becomes the failure of the operation, in place of the
/// operation's own, and stops it at its next step. `Starting` and, in the mode `Sync`, `Stopped` differ as said there.
/// What is thrown and is no `std::exception` is dropped.
class RASTERLOOM_API ISyncEvents {
public:
    ISyncEvents(const ISyncEvents&) = delete;
    ISyncEvents& operator=(const ISyncEvents&) = delete;
    virtual ~ISyncEvents();

    /// Values never fall, and a success ends at the maximum. A handler may call `Abort`, which takes effect at the next
    /// step and does not wait. It may call `Pause` in the mode `AsyncViaMessageLoop`; in the mode `Sync` the operation
    /// then stands until another thread calls `Continue`, in the mode `Async` the call fails.
    Host::Event<ProgressEventArgs> Progress;
    /// The operation was stopped by `Abort`, or by a handler that failed. A handler may not start the operation anew.
    Host::Event<EventArgs> Aborted;
    /// Raised on the thread that called `Pause`; a handler may call `Continue` and `Abort`.
    Host::Event<EventArgs> Paused;
    /// Raised on the thread that called `Continue`; a handler may call `Abort`, and `Pause` as in `Progress`.
    Host::Event<EventArgs> Continued;
    /// The operation is about to start: a handler may still set mode and priority. `Abort` here lets the operation end
    /// before it begins. A failure reaches the caller of the start, and nothing else happens.
    Host::Event<EventArgs> Starting;
    /// A handler may call `Abort`, which takes effect at the first step.
    Host::Event<EventArgs> Started;
    /// The operation has ended; the object is not yet free, so `Completed` is still false and a new start fails.
    Host::Event<ErrorEventArgs> Stopping;
    /// The object is free again: a handler may start it anew. In the mode `Sync` a failure reaches the caller of the
    /// start.
    Host::Event<ErrorEventArgs> Stopped;

protected:
    ISyncEvents();
};

} // namespace Corvane::Rasterloom
