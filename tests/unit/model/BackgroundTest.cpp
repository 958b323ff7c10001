#include "model/Background.h"

#include "tests/support/EventLoop.h"

#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <numeric>

namespace {

class BackgroundTest : public testing::Test
{
protected:
    ~BackgroundTest() override { Background::waitForAll(); }

    static void deliver()
    {
        Background::waitForAll();
        QCoreApplication::sendPostedEvents();
    }

    TestApplication application;
    Background background;
    std::unique_ptr<QObject> owner = std::make_unique<QObject>();
};

TEST_F(BackgroundTest, worksOnAThreadAndDeliversOnTheOwners)
{
    const Qt::HANDLE here = QThread::currentThreadId();
    Qt::HANDLE there = nullptr;
    Qt::HANDLE delivered = nullptr;
    int result = 0;
    background.run(
        owner.get(),
        [&there] {
            there = QThread::currentThreadId();
            return 42;
        },
        [&](int value) {
            delivered = QThread::currentThreadId();
            result = value;
        });
    EXPECT_EQ(result, 0);
    deliver();
    EXPECT_EQ(result, 42);
    EXPECT_NE(there, here);
    EXPECT_EQ(delivered, here);
}

TEST_F(BackgroundTest, nothingIsDeliveredToAnOwnerThatHasGone)
{
    std::latch go(1);
    std::atomic_bool hasWorked = false;
    bool wasDelivered = false;
    background.run(
        owner.get(),
        [&] {
            go.wait();
            hasWorked = true;
            return 1;
        },
        [&wasDelivered](int) { wasDelivered = true; });
    owner.reset();
    go.count_down();
    deliver();
    EXPECT_TRUE(hasWorked);
    EXPECT_FALSE(wasDelivered);
}

TEST_F(BackgroundTest, nothingIsDeliveredToAnOwnerThatGoesBeforeTheDelivery)
{
    bool wasDelivered = false;
    background.run(
        owner.get(), [] { return 1; }, [&wasDelivered](int) { wasDelivered = true; });
    Background::waitForAll();
    owner.reset();
    deliver();
    EXPECT_FALSE(wasDelivered);
}

TEST_F(BackgroundTest, anOwnerMayGoInItsOwnDelivery)
{
    background.run(
        owner.get(), [] { return 1; }, [this](int) { owner.reset(); });
    EXPECT_TRUE(eventuallyInLoop([this] { return !owner; }));
}

TEST_F(BackgroundTest, aLaneKeepsItsOrderAndDelaysNothingElse)
{
    std::latch go(1);
    QList<int> order;
    background.runInOrder(Background::Lane::Settings, [&] {
        go.wait();
        order.append(0);
    });
    for (int i = 1; i < 20; ++i) {
        background.runInOrder(Background::Lane::Settings, [&order, i] { order.append(i); });
    }
    bool isElsewhereDone = false;
    background.run(
        owner.get(), [] { return 1; }, [&isElsewhereDone](int) { isElsewhereDone = true; });
    EXPECT_TRUE(eventuallyInLoop([&] { return isElsewhereDone; }));
    go.count_down();
    Background::waitForAll();
    QList<int> expected(20);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
}

TEST_F(BackgroundTest, reportsComeInTheirOrderBeforeTheEnd)
{
    QList<int> reports;
    bool isFinished = false;
    background.runReporting<int>(
        owner.get(),
        [](const auto &report) {
            for (int i = 0; i < 1000; ++i) {
                report(i);
            }
        },
        [&](int value) {
            EXPECT_FALSE(isFinished);
            reports.append(value);
        },
        [&] { isFinished = true; });
    EXPECT_TRUE(eventuallyInLoop([&] { return isFinished; }));
    ASSERT_EQ(reports.size(), 1000);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(reports.at(i), i);
    }
}

TEST_F(BackgroundTest, workThatReportsNothingStillEnds)
{
    bool isFinished = false;
    background.runReporting<int>(
        owner.get(), [](const auto &) {}, [](int) { FAIL(); }, [&] { isFinished = true; });
    EXPECT_TRUE(eventuallyInLoop([&] { return isFinished; }));
}

TEST_F(BackgroundTest, workThatWaitsDoesNotHoldUpOtherWork)
{
    std::latch go(1);
    std::atomic_int waiting = 0;
    for (int i = 0; i < 8; ++i) {
        background.run([&] {
            ++waiting;
            go.wait();
        });
    }
    bool isDone = false;
    background.run(
        owner.get(), [] { return 1; }, [&isDone](int) { isDone = true; });
    EXPECT_TRUE(eventuallyInLoop([&] { return isDone && waiting == 8; }));
    go.count_down();
    Background::waitForAll();
}

TEST_F(BackgroundTest, ownersComeAndGoWhileWorkIsUnderWay)
{
    std::atomic_int worked = 0;
    for (int i = 0; i < 500; ++i) {
        auto shortLived = std::make_unique<QObject>();
        background.run(
            shortLived.get(), [&worked] { return ++worked; }, [](int) {});
        if (i % 3 == 0) {
            QCoreApplication::processEvents();
        }
    }
    deliver();
    EXPECT_EQ(worked, 500);
}

TEST_F(BackgroundTest, aDeliveryGoesWithItsLastReport)
{
    bool isDone = false;
    background.run(
        owner.get(), [] { return 1; }, [&isDone](int) { isDone = true; });
    EXPECT_EQ(owner->children().size(), 1);
    EXPECT_TRUE(eventuallyInLoop([&] { return isDone && owner->children().isEmpty(); }));
}

} // namespace
