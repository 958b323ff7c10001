#pragma once

#include <QProcess>
#include <QSize>
#include <QStringList>

/// Gives this process a runtime folder in its home where it has none: Qt would make one in /tmp.
void makeRuntimeFolder();

/// A virtual X screen of a test's own. For its life it is the display of this process and of those
/// that it starts. Make it before the program's QApplication.
class Screen
{
public:
    /// `options` are further ones for the X server.
    explicit Screen(QSize size = {1280, 800}, const QStringList &options = {});
    ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;
    Screen(Screen &&) = delete;
    Screen &operator=(Screen &&) = delete;

    /// Whether it came up; a test that needs it must fail otherwise.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }

private:
    QProcess m_server;
    bool m_isRunning = false;
};
