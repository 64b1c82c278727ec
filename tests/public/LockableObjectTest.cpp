#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/GlobalSettings.h>
#include <Corvane/Rasterloom/LockableObject.h>
#include <Corvane/Rasterloom/RasterloomLibraryModule.h>

#include "Throws.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace Corvane::Rasterloom {
namespace {

class Sample : public LockableObject {
public:
    explicit Sample(std::atomic<int>& disposals, bool fail = false) : m_disposals(disposals), m_bFail(fail) {}
    ~Sample() override { DisposeFinally(); }
    using LockableObject::Dispose;

protected:
    void Dispose(bool disposing) override {
        ++m_disposals;
        LockableObject::Dispose(disposing);
        if (m_bFail) {
            throw std::runtime_error("disposal failed");
        }
    }

private:
    std::atomic<int>& m_disposals;
    bool m_bFail;
};

template <class Body>
void OnAnotherThread(Body body) {
    std::thread(body).join();
}

TEST(LockableObject, ASecondLockOnOneThreadFailsAndLeavesTheFirst) {
    std::atomic<int> disposals = 0;
    Sample object(disposals);
    EXPECT_FALSE(object.get_Locked());
    object.Lock();
    EXPECT_EQ(ThrownText<ObjectLockedException>([&] { object.Lock(); }),
              "The instance has already been locked from this thread.");
    EXPECT_TRUE(object.get_Locked());
    object.Unlock();
    object.Unlock(); // once more changes nothing: the next two locks must not both pass
    object.Lock();
    EXPECT_THROW(object.Lock(), ObjectLockedException);
    object.Unlock();
}

TEST(LockableObject, DisabledLocksAreNothing) {
    std::atomic<int> disposals = 0;
    Sample object(disposals);
    object.set_LockingEnabled(false);
    object.Lock();
    object.Lock();
    EXPECT_FALSE(object.get_Locked());
    object.Unlock();
}

TEST(LockableObject, DisposesOnce) {
    std::atomic<int> disposals = 0;
    {
        Sample object(disposals);
        EXPECT_FALSE(object.get_IsDisposed());
        object.Lock();
        EXPECT_THROW(object.Dispose(), ObjectLockedException);
        EXPECT_EQ(disposals, 0);
        object.Unlock();
        object.Dispose();
        EXPECT_TRUE(object.get_IsDisposed());
        object.Dispose();
        object.Lock();
        object.Lock(); // there is no lock any more
    }
    EXPECT_EQ(disposals, 1);
    {
        Sample failing(disposals, true);
        EXPECT_THROW(failing.Dispose(), std::runtime_error);
        EXPECT_TRUE(failing.get_IsDisposed());
    }
    EXPECT_EQ(disposals, 2);
    {
        // Destroyed while its own thread holds the lock, with a failure on top.
        Sample locked(disposals, true);
        locked.Lock();
    }
    EXPECT_EQ(disposals, 3);
}

TEST(LockableObjectThreading, AnyThreadMayUnlock) {
    std::atomic<int> disposals = 0;
    Sample object(disposals);
    object.Lock();
    OnAnotherThread([&] {
        object.set_Timeout(0);
        EXPECT_EQ(ThrownText<TimeoutException>([&] { object.Lock(); }), "The time is out.");
        object.Unlock();
    });
    object.Lock();
    EXPECT_TRUE(object.get_Locked());
}

TEST(LockableObjectThreading, TheLockKeepsOthersOut) {
    std::atomic<int> disposals = 0;
    Sample object(disposals);
    int counter = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < 500; ++n) {
                object.Lock();
                ++counter;
                object.Unlock();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(counter, 2000);
}

TEST(LockableObjectThreading, WaitersComeBackWhenTheObjectIsDisposed) {
    for (int round = 0; round < 50; ++round) {
        std::atomic<int> disposals = 0;
        std::atomic<int> waiting = 0;
        Sample object(disposals);
        object.Lock();
        std::vector<std::thread> waiters;
        for (int i = 0; i < 3; ++i) {
            waiters.emplace_back([&] {
                ++waiting;
                object.Lock();
                // Either the lock was free for a moment, or the object is gone and says so.
                if (object.get_IsDisposed()) {
                    return;
                }
                object.Unlock();
            });
        }
        waiters.emplace_back([&] { object.Dispose(); });
        waiters.emplace_back([&] { object.Dispose(); });
        while (waiting < 3) {
            std::this_thread::yield();
        }
        object.Unlock();
        for (std::thread& waiter : waiters) {
            waiter.join();
        }
        EXPECT_EQ(disposals, 1);
        EXPECT_TRUE(object.get_IsDisposed());
    }
}

TEST(LibraryModule, ComesUpOnDemandAndAgainAfterAShutDown) {
    const auto first = RasterloomLibraryModule::GetInstance();
    EXPECT_EQ(first, RasterloomLibraryModule::GetInstance());
    EXPECT_FALSE(first->get_IsDisposed());
    EXPECT_FALSE(GlobalSettings::get_MultiProcessorSupport());
    EXPECT_FALSE(GlobalSettings::get_IsAdobeCmmAccessible());
    GlobalSettings::set_MultiProcessorSupport(true);
    RasterloomLibraryModule::ShutDown();
    RasterloomLibraryModule::ShutDown();
    EXPECT_TRUE(first->get_IsDisposed());
    EXPECT_TRUE(GlobalSettings::get_MultiProcessorSupport()); // settings are the process's, not the module's
    GlobalSettings::set_MultiProcessorSupport(false);
    EXPECT_NE(first, RasterloomLibraryModule::GetInstance());
}

} // namespace
} // namespace Corvane::Rasterloom
