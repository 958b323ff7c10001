#pragma once

#include "model/Settings.h"
#include "model/World.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

/// The key of the repositories: the one in use, and how it is replaced. The secret store is asked
/// away from the window's thread, one call at a time.
///
/// Before a new key is stored, the settings on disk are marked as unconfirmed, so that no scheduled
/// backup uses a new key under the confirmation of the former one.
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
    /// The last failure concerning the key, as it is shown; absent when there is none.
    [[nodiscard]] const std::optional<QString> &error() const { return m_error; }
    /// Whether a key is being tried on the destinations.
    [[nodiscard]] bool isChecking() const { return m_isChecking; }
    /// Whether the key in use is being replaced.
    [[nodiscard]] bool isChanging() const { return m_isChanging; }
    [[nodiscard]] bool hasPrevious() const { return m_hasPrevious; }
    /// Whether the key was copied and the clipboard is still to be cleared.
    [[nodiscard]] bool isCopied() const { return m_isCopied; }

    /// Asks the secret store for the key, and has one made if there is none. Does nothing while an
    /// earlier call is under way.
    void read(const std::function<void()> &done);
    /// Copies the key to the clipboard for one minute.
    void copy();
    /// Replaces the key by what the user typed, without blanks at the ends. The key in use changes
    /// nothing. `done` isn't called for an empty text, nor while the key is being replaced.
    void use(const QString &typed, const Result &done);
    /// Tries a key on every destination that can be reached and installs it if none refuses. Does
    /// nothing while the key is being replaced.
    void replace(const QString &key, const Result &done);
    /// Makes this the key in use and the former one the previous key. `saved`: whether the user is
    /// known to have saved it. Does nothing while the key is being replaced.
    void install(const QString &key, bool saved, const Result &done);
    /// Makes the previous key the key in use again.
    void goBack();

Q_SIGNALS:
    /// The key in use has changed.
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
