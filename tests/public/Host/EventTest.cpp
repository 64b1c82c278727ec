#include <Corvane/Rasterloom/EventArgs.h>
#include <Corvane/Rasterloom/Host/Event.h>

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

namespace Corvane::Rasterloom::Host {
namespace {

struct TextArgs {
    std::string Text;
};

TEST(Event, CallsInOrderOfSubscriptionUntilTheTokenDies) {
    Event<TextArgs> event;
    EXPECT_FALSE(event.HasSubscribers());
    Subscription a = event.Subscribe([](TextArgs& args) { args.Text += 'a'; });
    std::optional<Subscription> b = event.Subscribe([](TextArgs& args) { args.Text += 'b'; });
    Subscription c = event.Subscribe([](TextArgs& args) { args.Text += 'c'; });
    TextArgs args;
    event.Raise(args);
    b.reset();
    event.Raise(args);
    Subscription moved = std::move(a);
    EXPECT_FALSE(a); // NOLINT(bugprone-use-after-move): the moved-from token stands for nothing
    event.Raise(args);
    c = std::move(moved); // the subscription that c held ends
    event.Raise(args);
    c.Unsubscribe();
    c.Unsubscribe();
    event.Raise(args);
    EXPECT_EQ(args.Text, "abcacaca");
    EXPECT_FALSE(event.HasSubscribers());
    EXPECT_THROW((void)event.Subscribe(nullptr), ArgumentNullException);
}

TEST(Event, HandlersMayChangeTheListAndEndTheEvent) {
    auto event = std::make_unique<Event<TextArgs>>();
    Subscription late;
    Subscription last;
    Subscription first = event->Subscribe([&](TextArgs& args) {
        args.Text += '1';
        first.Unsubscribe();
        last.Unsubscribe(); // has not had its turn, so it is left out
        late = event->Subscribe([](TextArgs& inner) { inner.Text += 'L'; });
    });
    last = event->Subscribe([](TextArgs& args) { args.Text += '2'; });
    TextArgs args;
    event->Raise(args);
    EXPECT_EQ(args.Text, "1"); // the one that was added is not in the snapshot
    event->Raise(args);
    EXPECT_EQ(args.Text, "1L");

    Subscription killer = event->Subscribe([&](TextArgs&) { event.reset(); });
    Subscription behind = event->Subscribe([](TextArgs& inner) { inner.Text += 'B'; });
    event->Raise(args);
    EXPECT_EQ(args.Text, "1LLB");
    // All tokens die behind their event now.
}

TEST(Event, CapturedTokensAndFailuresLeaveTheEventWhole) {
    Event<TextArgs> event;
    // Dropping the outer callback drops the token that it has captured, which is of the same event.
    auto inner = std::make_shared<Subscription>(event.Subscribe([](TextArgs& args) { args.Text += 'i'; }));
    Subscription outer = event.Subscribe([inner](TextArgs&) {});
    inner.reset();
    outer.Unsubscribe();
    EXPECT_FALSE(event.HasSubscribers());

    Subscription thrower = event.Subscribe([](TextArgs&) { throw std::runtime_error("no"); });
    Subscription behind = event.Subscribe([](TextArgs& args) { args.Text += 'b'; });
    TextArgs args;
    EXPECT_THROW(event.Raise(args), std::runtime_error);
    EXPECT_EQ(args.Text, "");
    thrower.Unsubscribe();
    event.Raise(args);
    EXPECT_EQ(args.Text, "b");
}

TEST(EventThreading, SubscribersComeAndGoWhileOthersRaise) {
    auto event = std::make_unique<Event<ProgressEventArgs>>();
    std::atomic<int> steady{0};
    std::atomic<int> passing{0};
    Subscription kept = event->Subscribe([&](ProgressEventArgs& args) { steady += args.get_Current(); });
    Subscription orphan;
    constexpr int rounds = 500;
    std::thread raiser([&] {
        for (int i = 0; i < rounds; ++i) {
            event->Raise(ProgressEventArgs(1, rounds));
        }
    });
    std::thread visitor([&] {
        for (int i = 0; i < rounds; ++i) {
            const Subscription visit = event->Subscribe([&](ProgressEventArgs&) { ++passing; });
        }
        orphan = event->Subscribe([&](ProgressEventArgs&) { ++passing; });
    });
    raiser.join();
    visitor.join();
    EXPECT_EQ(steady, rounds);
    std::thread ender([&] { event.reset(); });
    orphan.Unsubscribe();
    ender.join();
}

} // namespace
} // namespace Corvane::Rasterloom::Host
