#pragma once

#include "tests/support/PrivateBus.h"

#include <QProcess>
#include <QString>

/// A private session bus with a real gnome-keyring on it, in the home of the test. For its own life
/// it is the session bus of this process and of those that it starts. Nothing else is on it, and
/// the bus starts nothing by itself.
class KeyringSession
{
public:
    /// Whether there is a keyring; it is open from the start.
    enum class Keyring { unlocked, none };

    /// What answers when the keyring asks the user to unlock it.
    enum class Prompter {
        system,   ///< the desktop's own, which finds no screen here
        refusing, ///< one that says no
        silent,   ///< one that never answers
    };

    explicit KeyringSession(Keyring keyring = Keyring::unlocked);
    ~KeyringSession();
    KeyringSession(const KeyringSession &) = delete;
    KeyringSession &operator=(const KeyringSession &) = delete;
    KeyringSession(KeyringSession &&) = delete;
    KeyringSession &operator=(KeyringSession &&) = delete;

    /// Whether all that was asked for came up; a test that needs it must fail otherwise.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }

    /// Restarts the keyring with what it had stored, locked.
    void restartLocked();
    /// Restarts the keyring with what it had stored, unlocked.
    void restartUnlocked();
    /// Starts a program that answers the keyring's questions. Without it, nothing does.
    void startPrompter(Prompter prompter);
    /// Whether the stand-in for the prompter was asked something.
    [[nodiscard]] bool wasAsked() const;
    /// Starts a service of the secrets' name that is a script of the test's (see
    /// tests/support/hiding_secret_service.py) in place of a keyring.
    void startHidingService(const QStringList &arguments);

    /// Makes the keyring answer no call.
    void pauseKeyring();
    void stopKeyring();
    void stopBus();

private:
    bool startKeyring(bool unlock);
    bool startScript(QProcess &process, const QString &script, const QStringList &arguments);

    PrivateBus m_bus;
    QProcess m_keyring;
    QProcess m_prompter;
    bool m_isRunning = false;
};
