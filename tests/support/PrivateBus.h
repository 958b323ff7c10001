#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// A D-Bus bus of the test's own, in the home of the test. Nothing is on it but what a test starts,
/// and every user may be. For its own life it is the bus of this process and of those that it
/// starts.
class PrivateBus
{
public:
    enum class Kind { session, system };

    explicit PrivateBus(Kind kind);
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;
    PrivateBus(PrivateBus &&) = delete;
    PrivateBus &operator=(PrivateBus &&) = delete;

    /// Whether it came up; a test that needs it must fail otherwise.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    /// Waits until somebody on the bus has a name. False when that doesn't come about.
    [[nodiscard]] bool waitForName(const QString &name) const;
    /// Ends the bus; its address stays.
    void stop();

private:
    const Kind m_kind;
    QProcess m_process;
    bool m_isRunning = false;
};

/// Starts a process that ends with this one, so that a test that crashes leaves none behind. Its
/// errors go to our standard error.
void startWithTest(QProcess &process, const QString &program, const QStringList &arguments);

/// Ends a process, and waits for that; nothing happens when it has ended.
void endProcess(QProcess &process);
