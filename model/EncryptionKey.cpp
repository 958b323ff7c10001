#include "model/EncryptionKey.h"

#include "state/Texts.h"

#include <QPointer>

#include <utility>

namespace {

/// The first destination in use that a key doesn't open.
std::optional<DestinationID> refusingDestination(ToolCalls &tools, const AppConfig &config,
                                                 const QString &key)
{
    for (const DestinationID destination : config.enabledDestinations()) {
        if (tools.refusesKey({.dest = destination,
                              .config = config,
                              .password = key,
                              .repositoryOverride = {}})) {
            return destination;
        }
    }
    return std::nullopt;
}

} // namespace

EncryptionKey::EncryptionKey(World world, Settings &settings, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_settings(settings)
{
}

void EncryptionKey::read(const std::function<void()> &done)
{
    if (std::exchange(m_isReading, true)) {
        return;
    }
    const auto finish = [this, done](const StoredKey &stored) {
        m_isReading = false;
        take(stored);
        done();
    };
    m_world.background.runInOrder(
        Background::Lane::Keys, this, [keys = m_world.keys] { return keys->load(); },
        [this, finish](const StoredKey &stored) {
            if (stored.isMissing && !hasKey()) {
                make(finish);
            } else {
                finish(stored);
            }
        });
}

void EncryptionKey::make(const std::function<void(const StoredKey &)> &done)
{
    const bool wasSaved = m_settings.config().keySaved;
    // Nobody can have saved a key that is new.
    withdrawConfirmation([this, wasSaved, done](bool isWithdrawn) {
        if (!isWithdrawn) {
            m_settings.setKeySaved(wasSaved);
            StoredKey none;
            none.error = Texts::tr("Le impostazioni non si possono salvare: non è stata creata "
                                   "nessuna chiave.");
            done(none);
            return;
        }
        m_world.background.runInOrder(
            Background::Lane::Keys, this, [keys = m_world.keys] { return keys->make(); },
            [this, wasSaved, done](const StoredKey &made) {
                if (made.key.isEmpty()) {
                    m_settings.setKeySaved(wasSaved);
                }
                done(made);
            });
    });
}

void EncryptionKey::take(const StoredKey &stored)
{
    if (hasKey()) {
        return; // a key was installed meanwhile
    }
    setError(stored.error);
    setHasPrevious(stored.hasPrevious);
    if (m_value != stored.key) {
        m_value = stored.key;
        Q_EMIT changed();
    }
}

/// Marks the key as unconfirmed in the settings, and reports whether that has reached the disk.
void EncryptionKey::withdrawConfirmation(const std::function<void(bool)> &done)
{
    m_settings.setKeySaved(false);
    m_settings.flush([key = QPointer(this), done](const AppConfig &onDisk) {
        if (key) {
            done(!onDisk.keySaved);
        }
    });
}

void EncryptionKey::copy()
{
    if (!hasKey()) {
        return;
    }
    const qint64 change = m_world.desktop->copyConcealed(m_value);
    setCopied(true);
    m_world.desktop->after(std::chrono::seconds(60),
                           [key = QPointer(this), desktop = m_world.desktop, change] {
                               // Content that was copied meanwhile isn't ours to clear.
                               if (desktop->clipboardChangeCount() == change) {
                                   desktop->clearClipboard();
                               }
                               if (key) {
                                   key->setCopied(false);
                               }
                           });
}

void EncryptionKey::use(const QString &typed, const Result &done)
{
    const QString key = typed.trimmed();
    if (key.isEmpty() || m_isChanging) {
        return;
    }
    if (key == m_value) {
        done(std::nullopt);
        return;
    }
    replace(key, done);
}

void EncryptionKey::replace(const QString &key, const Result &done)
{
    if (std::exchange(m_isChanging, true)) {
        return;
    }
    setChecking(true);
    const Result finish = [this, done](const std::optional<QString> &message) {
        m_isChanging = false;
        setChecking(false);
        done(message);
    };
    m_world.background.run(
        this,
        [tools = m_world.tools, config = m_settings.config(), key] {
            return refusingDestination(*tools, config, key);
        },
        [this, key, finish](const std::optional<DestinationID> &refusing) {
            if (refusing) {
                finish(Texts::tr("Questa chiave non apre il backup su %1. La chiave in uso non è "
                                 "stata cambiata.")
                           .arg(title(*refusing)));
            } else {
                installNow(key, true, finish);
            }
        });
}

void EncryptionKey::install(const QString &key, bool saved, const Result &done)
{
    if (std::exchange(m_isChanging, true)) {
        return;
    }
    installNow(key, saved, [this, done](const std::optional<QString> &message) {
        m_isChanging = false;
        done(message);
    });
}

void EncryptionKey::installNow(const QString &key, bool saved, const Result &done)
{
    const bool wasSaved = m_settings.config().keySaved;
    if (saved) {
        store(key, saved, wasSaved, done);
        return;
    }
    withdrawConfirmation([this, key, wasSaved, done](bool isWithdrawn) {
        if (isWithdrawn) {
            store(key, false, wasSaved, done);
        } else {
            m_settings.setKeySaved(wasSaved);
            done(Texts::tr("Le impostazioni non si possono salvare: la chiave in uso non è stata "
                           "cambiata."));
        }
    });
}

void EncryptionKey::store(const QString &key, bool saved, bool wasSaved, const Result &done)
{
    m_world.background.runInOrder(
        Background::Lane::Keys, this,
        [keys = m_world.keys, key, replaced = m_value] { return keys->install(key, replaced); },
        [this, key, saved, wasSaved, done](const KeyStore::Installation &installed) {
            setHasPrevious(installed.hasPrevious.value_or(m_hasPrevious));
            if (installed.error) {
                m_settings.setKeySaved(wasSaved);
                done(installed.error);
                return;
            }
            m_value = key;
            m_settings.setKeySaved(saved);
            setError(std::nullopt);
            Q_EMIT changed();
            done(std::nullopt);
        });
}

void EncryptionKey::goBack()
{
    if (std::exchange(m_isChanging, true)) {
        return;
    }
    const Result finish = [this](const std::optional<QString> &message) {
        m_isChanging = false;
        setError(message);
    };
    m_world.background.runInOrder(
        Background::Lane::Keys, this, [keys = m_world.keys] { return keys->previous(); },
        [this, finish](const tl::expected<std::optional<QString>, QString> &previous) {
            if (!previous) {
                finish(previous.error());
            } else if (*previous) {
                // The key in use becomes the previous one, so that going back twice changes
                // nothing. It isn't known whether the user has saved this key.
                installNow(**previous, false, finish);
            } else {
                m_isChanging = false;
            }
        });
}

void EncryptionKey::setError(const std::optional<QString> &error)
{
    if (m_error != error) {
        m_error = error;
        Q_EMIT errorChanged();
    }
}

void EncryptionKey::setChecking(bool checking)
{
    if (m_isChecking != checking) {
        m_isChecking = checking;
        Q_EMIT checkingChanged();
    }
}

void EncryptionKey::setHasPrevious(bool hasPrevious)
{
    if (m_hasPrevious != hasPrevious) {
        m_hasPrevious = hasPrevious;
        Q_EMIT hasPreviousChanged();
    }
}

void EncryptionKey::setCopied(bool copied)
{
    if (m_isCopied != copied) {
        m_isCopied = copied;
        Q_EMIT copiedChanged();
    }
}
