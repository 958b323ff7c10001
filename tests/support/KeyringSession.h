#pragma once

#include <QProcess>
#include <QString>

/// A private session bus with a real gnome-keyring on it, in the home of the test. For its own life
/// it is the session bus of this process and of those that it starts.
class KeyringSession
{
public:
    /// Whether the login keyring is open from the start, or locked (and made beforehand).
    enum class Keyring { unlocked, none };

    explicit KeyringSession(Keyring keyring = Keyring::unlocked);
    ~KeyringSession();
    KeyringSession(const KeyringSession &) = delete;
    KeyringSession &operator=(const KeyringSession &) = delete;
    KeyringSession(KeyringSession &&) = delete;
    KeyringSession &operator=(KeyringSession &&) = delete;

    /// Whether bus and keyring came up; a test that needs them must fail otherwise.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }

    /// Stops the keyring and starts it anew on what it had kept, now locked.
    void restartLocked();

private:
    bool startKeyring(bool unlock);
    void stopKeyring();

    QProcess m_bus;
    QProcess m_keyring;
    bool m_isRunning = false;
};
