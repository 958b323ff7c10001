#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// A private D-Bus bus in the home of the test, open to every user, on which is only what a test
/// starts. As long as it lives, it is the bus of this process and its children.
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
    /// Waits until a process on the bus owns a name. False when none does in time.
    [[nodiscard]] bool waitForName(const QString &name) const;
    /// Ends the bus; its address stays.
    void stop();

private:
    const Kind m_kind;
    QProcess m_process;
    bool m_isRunning = false;
};

/// Starts a process that ends with this one, also when the test crashes. Its standard error is
/// ours.
void startWithTest(QProcess &process, const QString &program, const QStringList &arguments);

/// Ends a process and waits for it; does nothing when it has ended already.
void endProcess(QProcess &process);
