#include "ui/shell/WindowPlace.h"

#include "model/UserDefaults.h"
#include "tests/support/EventLoop.h"
#include "tests/support/Screen.h"

#include <QApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace {

constexpr QLatin1String placeKey("windowPlace");
constexpr QLatin1String maximizedKey("windowMaximized");
constexpr QSize ordinary(700, 500);

/// A real window on a screen of 1280 by 800.
class WindowPlaceTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(screen.isRunning());
        app = std::make_unique<QApplication>(argc, argv.data());
    }
    void TearDown() override
    {
        window.reset();
        app.reset();
    }

    void open()
    {
        window = std::make_unique<QWindow>();
        window->setMinimumSize(least);
        new WindowPlace(window.get(), ordinary); // the window's own
        window->show();
        ASSERT_TRUE(eventuallyInLoop([this] { return window->isExposed(); }));
    }
    [[nodiscard]] bool keeps(const QRect &place)
    {
        return eventuallyInLoop(
            [&place] { return UserDefaults::value(placeKey) == QVariant(place); });
    }
    [[nodiscard]] bool comesTo(const QRect &place)
    {
        return eventuallyInLoop([this, &place] { return window->geometry() == place; });
    }

    int argc = 1;
    QByteArray name{"test"};
    std::array<char *, 2> argv{name.data(), nullptr};
    Screen screen;
    QSize least{400, 300};
    std::unique_ptr<QApplication> app;
    std::unique_ptr<QWindow> window;
};

TEST_F(WindowPlaceTest, theFirstTimeItHasItsOrdinarySize)
{
    open();
    EXPECT_EQ(window->size(), ordinary);
}

TEST_F(WindowPlaceTest, itComesBackWhereItWas)
{
    open();
    constexpr QRect place(150, 90, 800, 600);
    window->setGeometry(place);
    ASSERT_TRUE(keeps(place));
    open();
    EXPECT_TRUE(comesTo(place));
}

TEST_F(WindowPlaceTest, theEndOfTheProgramDoesNotWaitForItToSettle)
{
    open();
    constexpr QRect place(40, 30, 650, 450);
    window->setGeometry(place);
    ASSERT_TRUE(comesTo(place));
    QTimer::singleShot(0, app.get(), [] { QCoreApplication::exit(0); });
    QApplication::exec();
    EXPECT_EQ(UserDefaults::value(placeKey), QVariant(place));
}

TEST_F(WindowPlaceTest, outsideTheScreenItIsPulledIn)
{
    UserDefaults::set(placeKey, QRect(5000, -3000, 800, 600));
    open();
    EXPECT_TRUE(comesTo(QRect(480, 0, 800, 600)));
}

TEST_F(WindowPlaceTest, whereTheScreenIsSmallerThanTheSmallestSizeItFillsTheScreen)
{
    least = {1500, 900};
    for (const QVariant &kept : {QVariant(), QVariant(QRect(100, 100, 1600, 950))}) {
        UserDefaults::set(placeKey, kept);
        open();
        EXPECT_TRUE(comesTo(QRect(0, 0, 1280, 800)));
        EXPECT_EQ(window->minimumSize(), QSize(1280, 800));
    }
}

TEST_F(WindowPlaceTest, whereOneSideOfTheScreenIsTooSmallOnlyThatSideIsFilled)
{
    least = {500, 900};
    UserDefaults::set(placeKey, QRect(300, 100, 600, 950));
    open();
    EXPECT_TRUE(comesTo(QRect(300, 0, 600, 800)));
    EXPECT_EQ(window->minimumSize(), QSize(500, 800));

    least = {1500, 300};
    UserDefaults::set(placeKey, QRect(50, 200, 1600, 400));
    open();
    EXPECT_TRUE(comesTo(QRect(0, 200, 1280, 400)));
    EXPECT_EQ(window->minimumSize(), QSize(1280, 300));
}

TEST_F(WindowPlaceTest, madeHigherThanTheScreenItStaysWhereItIsFromSideToSide)
{
    open();
    window->setGeometry(QRect(200, 100, 700, 950));
    EXPECT_TRUE(keeps(QRect(200, 0, 700, 800)));
    EXPECT_TRUE(comesTo(QRect(200, 0, 700, 800)));
    window->setGeometry(QRect(100, 250, 1400, 400));
    EXPECT_TRUE(keeps(QRect(0, 250, 1280, 400)));
    EXPECT_TRUE(comesTo(QRect(0, 250, 1280, 400)));
}

TEST_F(WindowPlaceTest, damagedValuesCountAsNone)
{
    for (const QVariant &damaged :
         {QVariant(QStringLiteral("nonsense")), QVariant(QStringLiteral("@Rect(1 2)")),
          QVariant(QRect(10, 10, -5, 300)), QVariant(QRect(10, 10, 0, 0)),
          QVariant(QRect(QPoint(2000000000, 5), QSize(800, 600))),
          QVariant(QRect(0, 0, 2000000000, 2000000000)), QVariant(42),
          QVariant(QByteArray("\xff\xfe"))}) {
        UserDefaults::set(placeKey, damaged);
        UserDefaults::set(maximizedKey, QByteArray("\x01\x02"));
        open();
        EXPECT_EQ(window->size(), ordinary) << damaged.toString().toStdString();
        EXPECT_FALSE(window->windowStates() & Qt::WindowMaximized);
    }
}

TEST_F(WindowPlaceTest, whatFillsTheScreenComesBackSoAndKeepsItsPlaceBefore)
{
    constexpr QRect place(150, 90, 800, 600);
    UserDefaults::set(placeKey, place);
    open();
    ASSERT_TRUE(comesTo(place));
    window->showMaximized();
    ASSERT_TRUE(eventuallyInLoop([] { return UserDefaults::value(maximizedKey).toBool(); }));
    EXPECT_EQ(UserDefaults::value(placeKey), QVariant(place));
    open();
    EXPECT_TRUE(window->windowStates() & Qt::WindowMaximized);
    EXPECT_EQ(UserDefaults::value(placeKey), QVariant(place));
}

} // namespace
