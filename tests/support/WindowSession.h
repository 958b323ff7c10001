#pragma once

#include "tests/support/Installation.h"
#include "tests/support/KeyringSession.h"
#include "tests/support/Screen.h"

#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <optional>

/// The real program with its window, in a home and a process of its own. What is still running at
/// the object's end is killed.
class ShownProgram
{
public:
    explicit ShownProgram(QString program = Installation::builtProgram());
    ~ShownProgram();
    ShownProgram(const ShownProgram &) = delete;
    ShownProgram &operator=(const ShownProgram &) = delete;
    ShownProgram(ShownProgram &&) = delete;
    ShownProgram &operator=(ShownProgram &&) = delete;

    void start(const QStringList &arguments = {});
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    [[nodiscard]] bool isRunning();
    void send(int signal) const;
    /// Waits for the end and gives the exit code; -1 when a signal ended it or it didn't end.
    int finish();
    /// All that it wrote to standard error.
    QByteArray errors();

    /// Numbers of its windows of that title that are on the screen now. The panel has the main
    /// window's title, and counts only in panels().
    [[nodiscard]] QStringList windows(const QString &title = mainTitle()) const;
    [[nodiscard]] QStringList panels() const;
    /// Waits until there is such a window.
    [[nodiscard]] bool shows(const QString &title = mainTitle()) const;
    /// Waits until there is none.
    [[nodiscard]] bool hides(const QString &title = mainTitle()) const;

    static QString mainTitle() { return QStringLiteral("Vellomar"); }

private:
    [[nodiscard]] QStringList found(const QString &title) const;

    QString m_program;
    QProcess m_process;
    QByteArray m_errors;
};

/// A screen with a window manager on it.
class ManagedScreen
{
public:
    ManagedScreen();
    ~ManagedScreen();
    ManagedScreen(const ManagedScreen &) = delete;
    ManagedScreen &operator=(const ManagedScreen &) = delete;
    ManagedScreen(ManagedScreen &&) = delete;
    ManagedScreen &operator=(ManagedScreen &&) = delete;

    /// Waits until both are up; a test that needs them must fail otherwise.
    [[nodiscard]] bool isRunning();
    static constexpr QSize size{1600, 1000};

    /// Where the window of that number is, without its frame.
    static QRect place(const QString &window);
    /// Number of the window that has the keyboard; empty for none.
    static QString activeWindow();
    /// Asks a window to close, as its close button does.
    static bool close(const QString &window);
    /// Presses keys, as "ctrl+q".
    static bool press(const QString &keys);
    static bool click(const QPoint &place);
    /// Whether a window that nothing covers shows anything, which is many colours.
    static bool isPainted(const QString &window);
    /// A hash of what the lowest 56 points of a window show now; absent when there is no such
    /// window.
    static std::optional<QString> pictureOfFoot(const QString &window);
    /// Runs a program of the screen's and gives what it prints; absent when it fails.
    static std::optional<QString> run(const QString &program, const QStringList &arguments);

private:
    Screen m_screen{size};
    QProcess m_manager;
};

/// What a desktop is to the program: a session bus with an open keyring, and a screen.
class WindowSession : public testing::Test
{
protected:
    void SetUp() override;

    /// Closes the main window of a program, which goes on without it.
    static void close(const ShownProgram &program);
    /// Starts the program once more and expects it to end without errors.
    static void startAgain();

    KeyringSession session;
    ManagedScreen screen;
};
