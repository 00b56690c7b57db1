#include "Platform/Dispatch/DispatchGroup.h"
#include "Tests/Support/EventLoop.h"

#include <QCoreApplication>
#include <QThread>
#include <barrier>
#include <gtest/gtest.h>
#include <numeric>
#include <semaphore>
#include <thread>
#include <vector>

using namespace anadrome;
using testing_support::runEventLoopUntil;
using namespace std::chrono_literals;

namespace {

std::vector<int> countUp(int count) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

} // namespace

TEST(DispatchQueue, RunsMainBlocksInOrderOnTheMainThreadAndNeverInline) {
    std::vector<int> order;
    bool isInside = false;
    const auto block = [&](int number) {
        EXPECT_FALSE(isInside);
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        order.push_back(number);
    };
    std::jthread([&] {
        for (int i = 0; i < 50; ++i)
            DispatchQueue::main().async([&, i] { block(i); });
    }).join();
    DispatchQueue::main().async([&] {
        isInside = true;
        DispatchQueue::main().async([&] { block(50); });
        isInside = false;
    });
    EXPECT_TRUE(order.empty());
    EXPECT_TRUE(runEventLoopUntil([&] { return order.size() == 51; }));
    EXPECT_EQ(order, countUp(51));
}

TEST(DispatchQueue, RunsSerialBlocksOneAtATimeInTheOrderOfEachSender) {
    constexpr std::size_t senders = 4;
    constexpr int blocks = 250;
    // Not locked: the queue itself must order the blocks' memory.
    std::vector<std::vector<int>> orders(senders);
    int running = 0;
    bool overlapped = false;
    std::counting_semaphore<> done(0);
    const auto send = [&](const DispatchQueue& queue, std::size_t sender) {
        for (int i = 0; i < blocks; ++i) {
            queue.async([&, sender, i] {
                overlapped |= ++running != 1;
                std::this_thread::sleep_for(1us); // Room for another block to get in between.
                orders[sender].push_back(i);
                --running;
                done.release();
            });
            std::this_thread::sleep_for(1us); // So that the blocks before it are at work meanwhile.
        }
    };
    {
        // The queue's last name goes while blocks are waiting in it.
        const DispatchQueue queue = DispatchQueue::serial("videoQueue");
        std::vector<std::jthread> threads;
        for (std::size_t sender = 0; sender < senders; ++sender)
            threads.emplace_back(send, queue, sender);
    }
    for (std::size_t i = 0; i < senders * blocks; ++i)
        done.acquire();
    EXPECT_FALSE(overlapped);
    for (const auto& order : orders)
        EXPECT_EQ(order, countUp(blocks));
}

TEST(DispatchQueue, RunsManyGlobalBlocksAtTheSameTime) {
    constexpr int blocks = 32;
    std::barrier all(blocks + 1);
    std::counting_semaphore<> done(0);
    for (int i = 0; i < blocks; ++i) {
        DispatchQueue::global(QualityOfService::utility).async([&] {
            all.arrive_and_wait();
            done.release();
        });
    }
    all.arrive_and_wait(); // Would hang if one block had to wait for another to end.
    for (int i = 0; i < blocks; ++i)
        done.acquire();
}

TEST(DispatchGroup, NotifiesWhenTheLastHasLeftAndCanBeUsedAgain) {
    const DispatchGroup group;
    for (int round = 0; round < 2; ++round) {
        std::vector<int> told;
        group.enter();
        group.enter();
        group.notify(DispatchQueue::main(), [&] { told.push_back(1); });
        group.notify(DispatchQueue::main(), [&] { told.push_back(2); });
        DispatchQueue::global(QualityOfService::utility).async([group] { group.leave(); });
        EXPECT_FALSE(group.wait(20ms));
        QCoreApplication::processEvents();
        EXPECT_TRUE(told.empty());
        DispatchQueue::global(QualityOfService::utility).async([group] { group.leave(); });
        EXPECT_TRUE(group.wait(std::chrono::milliseconds::max()));
        EXPECT_TRUE(runEventLoopUntil([&] { return told.size() == 2; }));
        EXPECT_EQ(told, (std::vector<int>{1, 2}));
    }
}
