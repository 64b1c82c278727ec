#pragma once

#include <Corvane/Rasterloom/Host/Errors.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <iterator>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace Corvane::Rasterloom::Host {

namespace Detail {

/// One subscribed callback, as its event's list knows it.
struct EventSlotBase {
    std::atomic<bool> Live{true};
};

/// What a subscription needs to know of its event.
class EventListBase {
public:
    virtual ~EventListBase() = default;
    virtual void Remove(const EventSlotBase* slot) noexcept = 0;
};

} // namespace Detail

/// The token of a subscribed callback: destroying it, or calling `Unsubscribe`, ends the subscription. It may outlive
/// the event and may be destroyed on any thread, in the callback itself as well. A call that another thread has begun
/// before is not waited for.
class [[nodiscard]] Subscription {
public:
    /// Stands for no subscription.
    Subscription() = default;
    /// Made by `Event::Subscribe`.
    Subscription(std::weak_ptr<Detail::EventListBase> list, std::shared_ptr<Detail::EventSlotBase> slot) noexcept
        : m_pList(std::move(list)), m_pSlot(std::move(slot)) {}
    Subscription(Subscription&& other) noexcept = default;
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            Unsubscribe();
            m_pList = std::exchange(other.m_pList, {});
            m_pSlot = std::exchange(other.m_pSlot, {});
        }
        return *this;
    }
    ~Subscription() { Unsubscribe(); }

    /// Ends the subscription; may be repeated.
    void Unsubscribe() noexcept {
        if (const auto slot = std::exchange(m_pSlot, {})) {
            slot->Live.store(false, std::memory_order_release);
            if (const auto list = m_pList.lock()) {
                list->Remove(slot.get());
            }
        }
        m_pList.reset();
    }

    /// True while this token stands for a subscription, even if the event is gone.
    explicit operator bool() const noexcept { return m_pSlot != nullptr; }

private:
    std::weak_ptr<Detail::EventListBase> m_pList;
    std::shared_ptr<Detail::EventSlotBase> m_pSlot;
};

/// A list of subscribed callbacks with an argument record. All members may be called from several threads at once.
template <class Args>
class Event {
public:
    /// What is called; it may be called by several threads at once.
    using Handler = std::function<void(Args&)>;

    Event() = default;
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    /// Adds a callback behind those that are there. It is called until the returned token dies. Fails with
    /// `ArgumentNullException` for an empty function.
    [[nodiscard]] Subscription Subscribe(Handler handler) {
        if (!handler) {
            throw ArgumentNullException("handler");
        }
        auto slot = std::make_shared<Slot>(std::move(handler));
        m_pList->Add(slot);
        return Subscription(m_pList, std::move(slot));
    }

    /// Calls the callbacks that are subscribed at this moment, in the order of subscription, on the caller's thread and
    /// with no lock held, so that they may subscribe and unsubscribe. One that is unsubscribed before its turn is left
    /// out. What a callback throws leaves this call, and the callbacks behind it are not called.
    void Raise(Args& args) const {
        // The event itself may die in a callback; the snapshot does not.
        const auto slots = m_pList->Snapshot();
        for (const auto& slot : *slots) {
            if (slot->Live.load(std::memory_order_acquire)) {
                slot->Callback(args);
            }
        }
    }
    void Raise(Args&& args) const { Raise(args); }

    /// Whether anyone listens at this moment.
    bool HasSubscribers() const { return !m_pList->Snapshot()->empty(); }

private:
    struct Slot : Detail::EventSlotBase {
        explicit Slot(Handler handler) : Callback(std::move(handler)) {}
        Handler Callback;
    };
    using Slots = std::vector<std::shared_ptr<Slot>>;

    /// The list is replaced, never changed, so that a snapshot costs one pointer. Replaced lists die outside the lock:
    /// what a callback has captured may itself be a subscription.
    class List final : public Detail::EventListBase {
    public:
        std::shared_ptr<const Slots> Snapshot() const {
            const std::lock_guard guard(m_mutex);
            return m_pSlots;
        }
        void Add(std::shared_ptr<Slot> slot) { Replace(nullptr, std::move(slot)); }
        void Remove(const Detail::EventSlotBase* removed) noexcept override {
            try {
                Replace(removed, nullptr);
            } catch (...) {
                // Out of memory. The slot is dead already, so its callback is not called any more.
            }
        }

    private:
        void Replace(const Detail::EventSlotBase* removed, std::shared_ptr<Slot> added) {
            std::shared_ptr<const Slots> old;
            const std::lock_guard guard(m_mutex);
            auto slots = std::make_shared<Slots>();
            slots->reserve(m_pSlots->size() + 1);
            std::copy_if(m_pSlots->begin(), m_pSlots->end(), std::back_inserter(*slots),
                         [removed](const auto& slot) { return slot.get() != removed; });
            if (added) {
                slots->push_back(std::move(added));
            }
            old = std::exchange(m_pSlots, std::move(slots));
        }

        mutable std::mutex m_mutex;
        std::shared_ptr<const Slots> m_pSlots = std::make_shared<Slots>();
    };

    std::shared_ptr<List> m_pList = std::make_shared<List>();
};

} // namespace Corvane::Rasterloom::Host
