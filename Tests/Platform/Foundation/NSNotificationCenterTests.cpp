#include "Platform/Foundation/NSNotificationCenter.h"

#include <gtest/gtest.h>

namespace anadrome {

namespace {

struct Listener {
    void hear(const NSNotification& notification) { heard.push_back(notification.name); }
    std::vector<std::string> heard;
};

} // namespace

TEST(NSNotificationCenter, CallsThoseWhoAskedForTheNameAndTheObject) {
    NSNotificationCenter center;
    const auto one = std::make_shared<int>(1);
    const auto two = std::make_shared<int>(2);
    const auto listener = std::make_shared<Listener>();
    int any = 0;
    center.addObserver(listener, &Listener::hear, "happened", one);
    const auto token = center.addObserverForName("happened", nullptr, [&](const NSNotification&) { ++any; });
    center.postNotificationName("happened", one);
    center.postNotificationName("happened", two);
    center.postNotificationName("happened", nullptr);
    EXPECT_EQ(listener->heard.size(), 1U);
    EXPECT_EQ(any, 3);

    center.removeObserver(token);
    center.removeObserver(listener);
    center.postNotificationName("happened", one);
    EXPECT_EQ(listener->heard.size(), 1U);
    EXPECT_EQ(any, 3);
}

TEST(NSNotificationCenter, HoldsNeitherObserverNorObject) {
    NSNotificationCenter center;
    auto listener = std::make_shared<Listener>();
    auto object = std::make_shared<int>(1);
    int calls = 0;
    center.addObserver(listener, &Listener::hear, "happened", object);
    center.addObserverForName("happened", object, [&](const NSNotification&) { ++calls; });
    EXPECT_EQ(listener.use_count(), 1);
    EXPECT_EQ(object.use_count(), 1);
    listener.reset();
    center.postNotificationName("happened", object);
    EXPECT_EQ(calls, 1);
    object.reset();
    // Whatever address a new object gets, it isn't the old one.
    for (int i = 0; i < 100; ++i)
        center.postNotificationName("happened", std::make_shared<int>(2));
    EXPECT_EQ(calls, 1);
}

TEST(NSNotificationCenter, BlocksMayUseTheCenter) {
    NSNotificationCenter center;
    int calls = 0;
    NSNotificationCenter::Token second;
    const auto first = center.addObserverForName("happened", nullptr, [&](const NSNotification&) {
        ++calls;
        center.removeObserver(second);
        center.addObserverForName("later", nullptr, [&](const NSNotification&) { ++calls; });
        center.postNotificationName("later", nullptr);
    });
    second = center.addObserverForName("happened", nullptr, [&](const NSNotification&) { calls += 100; });
    center.postNotificationName("happened", nullptr);
    EXPECT_EQ(calls, 2);
}

} // namespace anadrome
