#pragma once

#include "model/Settings.h"
#include "model/World.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

/// The key of the repositories: the one in use, and the ways to another one. The secret store is
/// asked away from the window's thread, one call at a time.
///
/// A key counts as unconfirmed in the settings, on the disk, before it comes to be the one in use,
/// so that no scheduled backup ever finds it where another one is confirmed.
class EncryptionKey final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool hasKey READ hasKey NOTIFY changed FINAL)
    Q_PROPERTY(QString error READ errorText NOTIFY errorChanged FINAL)
    Q_PROPERTY(bool checking READ isChecking NOTIFY checkingChanged FINAL)
    Q_PROPERTY(bool hasPrevious READ hasPrevious NOTIFY hasPreviousChanged FINAL)
    Q_PROPERTY(bool copied READ isCopied NOTIFY copiedChanged FINAL)

public:
    /// Absent on success, otherwise what to show.
    using Result = std::function<void(const std::optional<QString> &message)>;

    /// `settings` outlives this.
    EncryptionKey(World world, Settings &settings, QObject *parent = nullptr);

    /// Whether there is a key in use. Without one there is nothing to save, print, copy or confirm.
    [[nodiscard]] bool hasKey() const { return !m_value.isEmpty(); }
    /// The key in use; empty when the secret store didn't give it.
    [[nodiscard]] const QString &value() const { return m_value; }
    /// What went wrong with the key last, as it is shown.
    [[nodiscard]] const std::optional<QString> &error() const { return m_error; }
    /// Whether a key is being tried on the destinations.
    [[nodiscard]] bool isChecking() const { return m_isChecking; }
    /// Whether another key is about to come to be in use.
    [[nodiscard]] bool isChanging() const { return m_isChanging; }
    [[nodiscard]] bool hasPrevious() const { return m_hasPrevious; }
    /// Whether the key was copied and the clipboard is still to be cleared.
    [[nodiscard]] bool isCopied() const { return m_isCopied; }

    /// Asks the secret store for the key, and has one made where there is none. Not called twice at
    /// once: a second call does nothing.
    void read(const std::function<void()> &done);
    /// Copies the key to the clipboard for one minute.
    void copy();
    /// What the user typed in: blanks at the ends don't count, nothing and the key in use change
    /// nothing. `done` isn't called for nothing, nor while another key is on its way.
    void use(const QString &typed, const Result &done);
    /// Tries a key on every destination that can be reached and installs it if none refuses. Does
    /// nothing while another key is on its way.
    void replace(const QString &key, const Result &done);
    /// Makes a key the key in use, the former one the previous one. `saved`: whether the user is
    /// known to have it. Does nothing while another key is on its way.
    void install(const QString &key, bool saved, const Result &done);
    /// Takes back the previous key.
    void goBack();

Q_SIGNALS:
    /// Another key is in use.
    void changed();
    void errorChanged();
    void checkingChanged();
    void hasPreviousChanged();
    void copiedChanged();

private:
    void make(const std::function<void(const StoredKey &)> &done);
    void withdrawConfirmation(const std::function<void(bool isWithdrawn)> &done);
    void installNow(const QString &key, bool saved, const Result &done);
    void store(const QString &key, bool saved, bool wasSaved, const Result &done);
    void take(const StoredKey &stored);
    void setError(const std::optional<QString> &error);
    void setChecking(bool checking);
    void setHasPrevious(bool hasPrevious);
    void setCopied(bool copied);
    [[nodiscard]] QString errorText() const { return m_error.value_or(QString()); }

    const World m_world;
    Settings &m_settings;
    QString m_value;
    std::optional<QString> m_error;
    bool m_isReading = false;
    bool m_isChecking = false;
    bool m_isChanging = false;
    bool m_hasPrevious = false;
    bool m_isCopied = false;
};
