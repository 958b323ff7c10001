#include "ui/shell/ConcealedClipboard.h"

#include "tests/support/EventLoop.h"
#include "tests/support/Screen.h"

#include <QApplication>
#include <QProcess>
#include <QTimer>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <memory>

#include <sys/prctl.h>

namespace {

/// A real clipboard, between this program and others.
class ConcealedClipboardTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(screen.isRunning());
        app = std::make_unique<QApplication>(argc, argv.data());
        clipboard = std::make_unique<ConcealedClipboard>();
    }
    void TearDown() override
    {
        other.kill();
        other.waitForFinished(20000);
        clipboard.reset();
        app.reset();
    }

    /// What another program finds there in a form; fails when there is no answer.
    [[nodiscard]] static QByteArray seenByOthers(const QString &form)
    {
        QProcess reader;
        reader.start(QStringLiteral("xclip"),
                     {QStringLiteral("-selection"), QStringLiteral("clipboard"),
                      QStringLiteral("-out"), QStringLiteral("-target"), form});
        // It is this process that it asks.
        EXPECT_TRUE(eventuallyInLoop([&reader] { return reader.state() == QProcess::NotRunning; }));
        return reader.readAllStandardOutput();
    }

    /// Another program copies a text and keeps it there. Its notice comes by the event loop.
    void othersCopy(const QByteArray &text)
    {
        other.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        other.start(QStringLiteral("xclip"),
                    {QStringLiteral("-quiet"), QStringLiteral("-selection"),
                     QStringLiteral("clipboard"), QStringLiteral("-in")});
        ASSERT_TRUE(other.waitForStarted(20000));
        other.write(text);
        other.closeWriteChannel();
        ASSERT_TRUE(eventuallyInLoop(
            [&text] { return QGuiApplication::clipboard()->text().toUtf8() == text; }));
    }

    int argc = 1;
    QByteArray name{"test"};
    std::array<char *, 2> argv{name.data(), nullptr};
    Screen screen;
    std::unique_ptr<QApplication> app;
    std::unique_ptr<ConcealedClipboard> clipboard;
    QProcess other;
};

TEST_F(ConcealedClipboardTest, othersGetTheTextAndTheHintsToKeepItOut)
{
    const QByteArray text = "kiu7-\xc3\xa8 key";
    clipboard->copy(QString::fromUtf8(text));
    EXPECT_EQ(seenByOthers(QStringLiteral("UTF8_STRING")), text);
    EXPECT_EQ(seenByOthers(QStringLiteral("x-kde-passwordManagerHint")), "secret");
    const QByteArrayList forms = seenByOthers(QStringLiteral("TARGETS")).split('\n');
    EXPECT_TRUE(forms.contains("org.nspasteboard.ConcealedType"));
    EXPECT_TRUE(forms.contains("x-kde-passwordManagerHint"));
    EXPECT_TRUE(seenByOthers(QStringLiteral("org.nspasteboard.ConcealedType")).isEmpty());
}

TEST_F(ConcealedClipboardTest, whatWasThereBeforeIsGone)
{
    othersCopy("before");
    clipboard->copy(QStringLiteral("key"));
    EXPECT_EQ(seenByOthers(QStringLiteral("UTF8_STRING")), "key");
}

TEST_F(ConcealedClipboardTest, theCountStaysWhileNobodyElseCopies)
{
    const qint64 noted = clipboard->copy(QStringLiteral("key"));
    EXPECT_EQ(seenByOthers(QStringLiteral("UTF8_STRING")), "key");
    EXPECT_EQ(clipboard->changeCount(), noted);
}

TEST_F(ConcealedClipboardTest, anotherProgramsCopyIsAChange)
{
    const qint64 noted = clipboard->copy(QStringLiteral("key"));
    othersCopy("something else");
    EXPECT_TRUE(eventuallyInLoop([&] { return clipboard->changeCount() != noted; }));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("something else"));
}

TEST_F(ConcealedClipboardTest, aCopyOfTheSameTextByAnotherProgramIsAChangeToo)
{
    const qint64 noted = clipboard->copy(QStringLiteral("key"));
    othersCopy("key");
    EXPECT_TRUE(eventuallyInLoop([&] { return clipboard->changeCount() != noted; }));
}

TEST_F(ConcealedClipboardTest, thisProgramsOwnOtherCopiesAreChanges)
{
    const qint64 first = clipboard->copy(QStringLiteral("key"));
    const qint64 second = clipboard->copy(QStringLiteral("key"));
    EXPECT_NE(first, second);
    EXPECT_EQ(clipboard->changeCount(), second);
    QGuiApplication::clipboard()->setText(QStringLiteral("a field's text"));
    EXPECT_NE(clipboard->changeCount(), second);
}

TEST_F(ConcealedClipboardTest, clearedItHoldsNothingForAnyone)
{
    const qint64 noted = clipboard->copy(QStringLiteral("key"));
    clipboard->clear();
    EXPECT_TRUE(seenByOthers(QStringLiteral("UTF8_STRING")).isEmpty());
    EXPECT_NE(clipboard->changeCount(), noted);
}

TEST_F(ConcealedClipboardTest, atTheEndTheKeyIsGoneAndOthersTextsStay)
{
    clipboard->copy(QStringLiteral("key"));
    clipboard.reset();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().isEmpty());

    clipboard = std::make_unique<ConcealedClipboard>();
    clipboard->copy(QStringLiteral("key"));
    QTimer::singleShot(0, app.get(), [] { QCoreApplication::exit(0); });
    QApplication::exec();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().isEmpty());

    clipboard->copy(QStringLiteral("key"));
    othersCopy("theirs");
    clipboard.reset();
    EXPECT_EQ(seenByOthers(QStringLiteral("UTF8_STRING")), "theirs");
}

TEST_F(ConcealedClipboardTest, itMayOutliveTheProgram)
{
    clipboard->copy(QStringLiteral("key"));
    app.reset();
    const qint64 noted = clipboard->changeCount();
    EXPECT_EQ(clipboard->copy(QStringLiteral("key")), noted);
    clipboard->clear();
    clipboard.reset();
}

} // namespace
