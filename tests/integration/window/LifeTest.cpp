#include "model/UserDefaults.h"
#include "tests/support/CoreLimit.h"
#include "tests/support/Cycle.h"
#include "tests/support/Waiting.h"
#include "tests/support/WindowSession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

// Closing, opening again, a second start, and the end.

namespace {

class Life : public WindowSession
{
protected:
    void open()
    {
        program.start();
        ASSERT_TRUE(program.shows());
    }

    ShownProgram program;
};

TEST_F(Life, closingTheWindowHidesItAndTheProgramGoesOn)
{
    open();
    close(program);
    EXPECT_TRUE(program.isRunning());
}

TEST_F(Life, aSecondStartBringsTheHiddenWindowBackAndEnds)
{
    open();
    close(program);
    startAgain();
    EXPECT_TRUE(program.shows());
    EXPECT_TRUE(
        eventually([this] { return ManagedScreen::isPainted(program.windows().value(0)); }));
    EXPECT_EQ(program.windows().size(), 1);
}

TEST_F(Life, aSecondStartBringsTheWindowToTheFront)
{
    open();
    const QString window = program.windows().value(0);
    // A different home is a different user's window.
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", home + "/other");
    ShownProgram other;
    other.start();
    qputenv("HOME", home);
    ASSERT_TRUE(other.shows());
    ASSERT_TRUE(
        eventually([&] { return ManagedScreen::activeWindow() == other.windows().value(0); }));
    startAgain();
    EXPECT_TRUE(eventually([&] { return ManagedScreen::activeWindow() == window; }));
    EXPECT_TRUE(other.isRunning());
}

TEST_F(Life, aSecondStartBringsAMinimisedWindowBack)
{
    open();
    ASSERT_TRUE(ManagedScreen::run(QStringLiteral("xdotool"),
                                   {QStringLiteral("windowminimize"), program.windows().value(0)}));
    ASSERT_TRUE(program.hides());
    startAgain();
    EXPECT_TRUE(program.shows());
}

TEST_F(Life, aMaximisedWindowComesBackMaximised)
{
    open();
    const QString window = program.windows().value(0);
    ASSERT_TRUE(ManagedScreen::run(QStringLiteral("wmctrl"),
                                   {QStringLiteral("-i"), QStringLiteral("-r"), window,
                                    QStringLiteral("-b"),
                                    QStringLiteral("add,maximized_vert,maximized_horz")}));
    // All of the screen but what the frame's title takes.
    const auto isMaximised = [this] {
        const QSize size = ManagedScreen::place(program.windows().value(0)).size();
        return size.width() > ManagedScreen::size.width() - 20 &&
               size.height() > ManagedScreen::size.height() - 60;
    };
    ASSERT_TRUE(eventually(isMaximised));
    for (const bool isClosed : {true, false, true}) {
        const QString seen = program.windows().value(0);
        ASSERT_TRUE(isClosed ? ManagedScreen::close(seen)
                             : ManagedScreen::run(QStringLiteral("xdotool"),
                                                  {QStringLiteral("windowminimize"), seen})
                                   .has_value());
        ASSERT_TRUE(program.hides());
        ShownProgram second;
        second.start();
        EXPECT_EQ(second.finish(), 0);
        ASSERT_TRUE(program.shows());
        EXPECT_TRUE(eventually(isMaximised)) << isClosed;
    }
}

TEST_F(Life, aFirstOneThatHangsIsReported)
{
    open();
    program.send(SIGSTOP);
    ShownProgram second;
    second.start();
    EXPECT_TRUE(second.shows());
    EXPECT_TRUE(second.errors().contains("non risponde"));
    // Ending what shows the message ends it as its button does.
    second.send(SIGTERM);
    EXPECT_EQ(second.finish(), 1);
    program.send(SIGCONT);
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(Life, eachSignalEndsItInOrder)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ShownProgram one;
        one.start();
        ASSERT_TRUE(one.shows());
        const QString previews = QDir::tempPath() + QLatin1String("/Vellomar-Anteprima");
        ASSERT_TRUE(QDir().mkpath(previews));
        one.send(signal);
        EXPECT_EQ(one.finish(), 0);
        EXPECT_EQ(one.errors(), "");
        EXPECT_FALSE(QFileInfo::exists(previews));
    }
}

TEST_F(Life, aSignalBeforeTheWindowIsThereEndsItToo)
{
    program.start();
    // The program has come so far that it has a lock of its own.
    ASSERT_TRUE(eventually([] {
        return !QDir(qEnvironmentVariable("XDG_RUNTIME_DIR"))
                    .entryList({QStringLiteral("vellomar-*.lock")})
                    .isEmpty();
    }));
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(Life, theKeysForQuittingEndIt)
{
    open();
    ASSERT_TRUE(
        eventually([this] { return ManagedScreen::activeWindow() == program.windows().value(0); }));
    ASSERT_TRUE(ManagedScreen::press(QStringLiteral("ctrl+q")));
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(Life, aWindowThatWasClosedDoesNotHinderTheEnd)
{
    open();
    close(program);
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(Life, theWindowIsWhereItWasTheLastTime)
{
    open();
    const QString window = program.windows().value(0);
    ASSERT_TRUE(ManagedScreen::run(
        QStringLiteral("xdotool"),
        {QStringLiteral("windowsize"), window, QStringLiteral("1100"), QStringLiteral("800")}));
    ASSERT_TRUE(
        eventually([&] { return ManagedScreen::place(window).size() == QSize(1100, 800); }));
    ASSERT_TRUE(ManagedScreen::run(
        QStringLiteral("xdotool"),
        {QStringLiteral("windowmove"), window, QStringLiteral("120"), QStringLiteral("90")}));
    // It is kept once the window has come to rest.
    ASSERT_TRUE(
        eventually([] { return UserDefaults::value(QLatin1String("windowPlace")).isValid(); }));
    const QRect left = ManagedScreen::place(window);
    program.send(SIGTERM);
    ASSERT_EQ(program.finish(), 0);

    ShownProgram again;
    again.start();
    ASSERT_TRUE(again.shows());
    EXPECT_TRUE(eventually([&] { return ManagedScreen::place(again.windows().value(0)) == left; }));
}

TEST_F(Life, theWindowLeavesNoCore)
{
    allowCores();
    open();
    EXPECT_EQ(coreLimit(program.processId()), "1");
}

} // namespace
