#include <Corvane/Rasterloom/Host/SimpleMessageLoop.h>

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace Corvane::Rasterloom::Host {
namespace {

TEST(SimpleMessageLoopThreading, MessagesTimersAndQuit) {
    SimpleMessageLoop loop;
    std::vector<int> order;
    int ticks = 0;
    std::uint64_t timer = 0;
    std::thread poster([&] {
        for (int i = 0; i < 3; ++i) {
            loop.Post([&order, i] { order.push_back(i); });
        }
        loop.Post([&] {
            // Stops itself, then ends the run; what is posted after the quit waits for the next one.
            timer = loop.StartTimer(1, [&] {
                if (++ticks == 2) {
                    loop.StopTimer(timer);
                    loop.Quit();
                    loop.Post([&order] { order.push_back(99); });
                }
            });
        });
    });
    loop.Run();
    poster.join();
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(ticks, 2);

    // A message that posts itself does not hold a round.
    int rounds = 0;
    std::function<void()> again = [&] {
        ++rounds;
        loop.Post(again);
    };
    loop.Post(again);
    EXPECT_TRUE(loop.Pump());
    EXPECT_EQ(order.back(), 99);
    EXPECT_EQ(rounds, 1);
    loop.Quit();
    EXPECT_FALSE(loop.Pump());

    EXPECT_EQ(MessageLoop::get_Current(), nullptr);
    const auto shared = std::make_shared<SimpleMessageLoop>();
    MessageLoop::set_Current(shared);
    std::thread([] { EXPECT_EQ(MessageLoop::get_Current(), nullptr); }).join();
    EXPECT_EQ(MessageLoop::get_Current(), shared);
    MessageLoop::set_Current(nullptr);
}

} // namespace
} // namespace Corvane::Rasterloom::Host
