#pragma once

#include "RunLoop.h"

#include <atomic>
#include <limits>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

/// What every run loop promises. A test program instantiates it with a driver:
///
///     struct MyDriver {
///         std::unique_ptr<MyRunLoop> runLoop = ...;  // may be reset
///         // Turns the loop until `condition` holds; false after `seconds`, as the loop counts them.
///         bool turnUntil(const std::function<bool()>& condition, double seconds = 5);
///         // Called inside a task: the task takes this long. Does nothing if the loop's time stands still.
///         void holdUp(double seconds);
///     };
///     INSTANTIATE_TYPED_TEST_SUITE_P(MyRunLoop, RunLoopContract, MyDriver);
template <typename Driver>
class RunLoopContract : public testing::Test
{
protected:
    RunLoop& loop() { return *driver.runLoop; }
    bool turnUntil(const std::function<bool()>& condition) { return driver.turnUntil(condition); }
    void pass(double seconds)
    {
        driver.turnUntil([] { return false; }, seconds);
    }

    struct Pair {
        Pair() { EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0); }
        ~Pair()
        {
            ::close(ends[0]);
            ::close(ends[1]);
        }
        void send() const { EXPECT_EQ(::write(ends[1], "x", 1), 1); }
        int ends[2]{-1, -1};
    };

    Driver driver;
    std::string order;
};

TYPED_TEST_SUITE_P(RunLoopContract);

TYPED_TEST_P(RunLoopContract, PostedTasksRunLaterInTheirOrder)
{
    auto& order = this->order;
    this->loop().post([&] {
        order += 'a';
        this->loop().post([&] { order += 'd'; });
        order += 'b';
    });
    this->loop().post([&] { order += 'c'; });
    EXPECT_EQ(order, "");
    EXPECT_TRUE(this->turnUntil([&] { return order.size() == 4; }));
    EXPECT_EQ(order, "abcd");
}

TYPED_TEST_P(RunLoopContract, AnyThreadMayPost)
{
    constexpr std::size_t each = 500;
    const auto loopsThread = std::this_thread::get_id();
    std::size_t ran = 0;
    std::atomic<int> posting = 2;
    const auto postMany = [&] {
        for (std::size_t count = 0; count < each; ++count)
            this->loop().post([&] {
                ++ran;
                EXPECT_EQ(std::this_thread::get_id(), loopsThread);
            });
        --posting;
    };
    std::thread one(postMany), other(postMany);
    while (posting > 0) // the loop turns meanwhile, whatever it takes for the time
        this->pass(0.001);
    one.join();
    other.join();
    EXPECT_TRUE(this->turnUntil([&] { return ran == 2 * each; }));
}

TYPED_TEST_P(RunLoopContract, OneShotTimersFireOnceAtTheirTimeAndInTheirOrder)
{
    auto& order = this->order;
    constexpr double endless = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    const double start = this->loop().now();
    std::vector<std::unique_ptr<RunLoopTimer>> timers;
    for (const auto& [seconds, what] :
         {std::pair{0.06, 'c'}, {0.02, 'b'}, {-1.0, 'a'}, {endless, 'x'}, {notANumber, 'x'}})
        timers.push_back(this->loop().startTimer(seconds, RunLoopRepeat::Once, [&, seconds, what] {
            order += what;
            EXPECT_GE(this->loop().now() - start, seconds - 0.001);
        }));
    EXPECT_EQ(order, "");
    EXPECT_TRUE(this->turnUntil([&] { return order.size() >= 3; }));
    this->pass(0.03);
    EXPECT_EQ(order, "abc");
}

TYPED_TEST_P(RunLoopContract, ATimerDestroyedInATaskFiresNoMore)
{
    int fired = 0;
    bool cancelledFired = false;
    std::unique_ptr<RunLoopTimer> itself, another;
    itself = this->loop().startTimer(0.01, RunLoopRepeat::Forever, [&] {
        if (++fired < 3)
            return;
        another.reset();
        itself.reset();
    });
    another = this->loop().startTimer(0.2, RunLoopRepeat::Once, [&] { cancelledFired = true; });
    EXPECT_TRUE(this->turnUntil([&] { return !itself; }));
    this->pass(0.25);
    EXPECT_EQ(fired, 3);
    EXPECT_FALSE(cancelledFired);
}

TYPED_TEST_P(RunLoopContract, AWatchIsCalledOnEveryTurnThatItIsReadyAndOfInterest)
{
    typename TestFixture::Pair pair;
    int readable = 0, writable = 0;
    const auto watch =
        this->loop().watchDescriptor(pair.ends[0], RunLoopInterest::Readable, [&](RunLoopInterest ready) {
            readable += includes(ready, RunLoopInterest::Readable) ? 1 : 0;
            writable += includes(ready, RunLoopInterest::Writable) ? 1 : 0;
        });
    ASSERT_TRUE(watch);
    pair.send();
    bool hasPosted = false;
    this->loop().post([&] { hasPosted = true; });
    EXPECT_TRUE(this->turnUntil([&] { return hasPosted && readable >= 3; })) << "its byte is not read";
    EXPECT_EQ(writable, 0);
    watch->setInterest(RunLoopInterest::Writable);
    EXPECT_TRUE(this->turnUntil([&] { return writable >= 3; }));
    watch->setInterest(RunLoopInterest::None);
    readable = writable = 0;
    this->pass(0.02);
    EXPECT_EQ(readable + writable, 0);
    char unread;
    EXPECT_EQ(::read(pair.ends[0], &unread, 1), 1);
    watch->setInterest(RunLoopInterest::Readable);
    ::shutdown(pair.ends[1], SHUT_RDWR);
    EXPECT_TRUE(this->turnUntil([&] { return readable >= 2; })) << "a hang-up stays ready";
}

TYPED_TEST_P(RunLoopContract, AWatchEndedInAHandlerIsNotCalledAndItsDescriptorCanBeWatchedAgain)
{
    typename TestFixture::Pair first, second;
    std::unique_ptr<RunLoopWatch> one, two;
    int heard = 0, heardAnew = 0;
    const auto endBoth = [&](RunLoopInterest) {
        ++heard;
        one.reset();
        two.reset();
        one = this->loop().watchDescriptor(first.ends[0], RunLoopInterest::Readable, [&](RunLoopInterest) {
            ++heardAnew;
            one.reset();
        });
    };
    one = this->loop().watchDescriptor(first.ends[0], RunLoopInterest::Readable, endBoth);
    two = this->loop().watchDescriptor(second.ends[0], RunLoopInterest::Readable, endBoth);
    first.send();
    second.send();
    EXPECT_TRUE(this->turnUntil([&] { return heardAnew > 0; }));
    this->pass(0.02);
    EXPECT_EQ(heard, 1) << "both were ready in the same turn";
    EXPECT_EQ(heardAnew, 1);
}

TYPED_TEST_P(RunLoopContract, AfterADelayReadyDescriptorsComeBeforeDueTimers)
{
    typename TestFixture::Pair pair;
    auto& order = this->order;
    std::unique_ptr<RunLoopTimer> silence, other;
    std::unique_ptr<RunLoopWatch> watch =
        this->loop().watchDescriptor(pair.ends[0], RunLoopInterest::Readable, [&](RunLoopInterest) {
            order += 'r';
            watch->setInterest(RunLoopInterest::None);
            silence.reset(); // due already, and called off by what was received
        });
    this->loop().post([&] {
        silence = this->loop().startTimer(0.01, RunLoopRepeat::Once, [&] { order += 's'; });
        other = this->loop().startTimer(0.01, RunLoopRepeat::Once, [&] { order += 't'; });
        pair.send();
        this->driver.holdUp(0.02);
    });
    EXPECT_TRUE(this->turnUntil([&] { return order.size() >= 2; }));
    EXPECT_EQ(order, "rt");
}

TYPED_TEST_P(RunLoopContract, WhatWasScheduledMayOutliveTheLoop)
{
    typename TestFixture::Pair pair;
    bool ran = false;
    auto timer = this->loop().startTimer(0.01, RunLoopRepeat::Forever, [&] { ran = true; });
    auto watch = this->loop().watchDescriptor(pair.ends[0], RunLoopInterest::Writable,
                                              [&](RunLoopInterest) { ran = true; });
    this->loop().post([&] { ran = true; });
    this->driver.runLoop.reset();
    watch->setInterest(RunLoopInterest::Readable);
    watch.reset();
    timer.reset();
    EXPECT_FALSE(ran);
}

REGISTER_TYPED_TEST_SUITE_P(RunLoopContract, PostedTasksRunLaterInTheirOrder, AnyThreadMayPost,
                            OneShotTimersFireOnceAtTheirTimeAndInTheirOrder,
                            ATimerDestroyedInATaskFiresNoMore,
                            AWatchIsCalledOnEveryTurnThatItIsReadyAndOfInterest,
                            AWatchEndedInAHandlerIsNotCalledAndItsDescriptorCanBeWatchedAgain,
                            AfterADelayReadyDescriptorsComeBeforeDueTimers,
                            WhatWasScheduledMayOutliveTheLoop);
