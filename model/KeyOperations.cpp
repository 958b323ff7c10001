#include "model/AppModel.h"

#include "model/Background.h"
#include "model/StoredKey.h"
#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/RepositoryKeys.h"
#include "state/Texts.h"

#include <QFileInfo>
#include <QPointer>

#include <utility>

namespace {

/// Whether a destination is there to be asked. A disk that isn't plugged in is not.
bool canBeTried(DestinationID destination, const AppConfig &config)
{
    return Restic{.dest = destination, .config = config, .password = {}, .repositoryOverride = {}}
        .isAvailable();
}

/// The first destination in use that a key doesn't open. Only restic's own word counts: what isn't
/// there yet or can't be reached refuses nothing.
std::optional<DestinationID> refusingDestination(const AppConfig &config, const QString &key)
{
    for (const DestinationID destination : allDestinations) {
        if (!config.isEnabled(destination) || !canBeTried(destination, config)) {
            continue;
        }
        const Restic restic{
            .dest = destination, .config = config, .password = key, .repositoryOverride = {}};
        if (restic.refusesKey()) {
            return destination;
        }
    }
    return std::nullopt;
}

} // namespace

void AppModel::authenticated(OwnerReason reason, std::function<void()> action)
{
    m_desktop->authenticate(reason, [model = QPointer(this), absences = m_absences,
                                     action = std::move(action)](Desktop::Authentication answer) {
        // Where nobody can log in, the person isn't locked out of their own key.
        if (model && model->m_absences == absences && answer != Desktop::Authentication::refused) {
            action();
        }
    });
}

void AppModel::readKey(std::function<void()> done)
{
    if (std::exchange(m_isReadingKey, true)) {
        return;
    }
    const auto finish = [this, done = std::move(done)](const StoredKey &stored) {
        m_isReadingKey = false;
        take(stored);
        done();
    };
    Background().run(this, &StoredKey::load, [this, finish](const StoredKey &stored) {
        const bool wasSaved = m_config.keySaved;
        if (!stored.isMissing || hasKey()) {
            finish(stored);
        } else if (withdrawConfirmation()) {
            // Nobody can have saved a key that is new.
            Background().run(this, &StoredKey::make,
                             [this, finish, wasSaved](const StoredKey &made) {
                                 if (made.key.isEmpty()) {
                                     setKeySaved(wasSaved);
                                 }
                                 finish(made);
                             });
        } else {
            setKeySaved(wasSaved);
            StoredKey none;
            none.error = Texts::tr("Le impostazioni non si possono salvare: non è stata creata "
                                   "nessuna chiave.");
            finish(none);
        }
    });
}

void AppModel::take(const StoredKey &stored)
{
    if (hasKey()) {
        return; // one was installed meanwhile
    }
    assign(m_keyError, stored.error, &AppModel::keyErrorChanged);
    assign(m_hasPreviousKey, stored.hasPrevious, &AppModel::hasPreviousKeyChanged);
    assign(m_password, stored.key, &AppModel::passwordChanged);
}

// Before another key comes to be in use, so that no scheduled backup ever finds it where one is
// confirmed. False when that can't be made to last.
bool AppModel::withdrawConfirmation()
{
    setKeySaved(false);
    return !ConfigStore::load().keySaved;
}

void AppModel::copyKey()
{
    if (!hasKey()) {
        return;
    }
    const qint64 change = m_desktop->copyConcealed(m_password);
    assign(m_keyCopied, true, &AppModel::keyCopiedChanged);
    m_desktop->after(std::chrono::seconds(60),
                     [model = QPointer(this), desktop = m_desktop, change] {
                         // Whatever was copied meanwhile is the person's.
                         if (desktop->clipboardChangeCount() == change) {
                             desktop->clearClipboard();
                         }
                         if (model) {
                             model->assign(model->m_keyCopied, false, &AppModel::keyCopiedChanged);
                         }
                     });
}

void AppModel::requestKeyCopy()
{
    if (hasKey()) {
        authenticated(OwnerReason::copyKey, [this] { copyKey(); });
    }
}

void AppModel::useKey(const QString &typed, KeyResult done)
{
    const QString key = typed.trimmed();
    if (key.isEmpty() || m_keyChecking) {
        return;
    }
    if (key == m_password) {
        done(std::nullopt);
        return;
    }
    replaceKey(key, std::move(done));
}

void AppModel::replaceKey(const QString &key, KeyResult done)
{
    assign(m_keyChecking, true, &AppModel::keyCheckingChanged);
    Background().run(
        this, [config = m_config, key] { return refusingDestination(config, key); },
        [this, key, done = std::move(done)](const std::optional<DestinationID> &refusing) {
            assign(m_keyChecking, false, &AppModel::keyCheckingChanged);
            if (refusing) {
                done(Texts::tr("Questa chiave non apre il backup su %1. La chiave in uso non è "
                               "stata cambiata.")
                         .arg(DestinationIDs::title(*refusing)));
            } else {
                done(install(key, true));
            }
        });
}

std::optional<QString> AppModel::install(const QString &key, bool saved)
{
    const bool wasSaved = m_config.keySaved;
    if (!saved && !withdrawConfirmation()) {
        setKeySaved(wasSaved);
        return Texts::tr("Le impostazioni non si possono salvare: la chiave in uso non è stata "
                         "cambiata.");
    }
    const auto installed = RepositoryKeys::install(key, m_password);
    if (const auto previous = Keychain::read(Keychain::previousRepositoryKey)) {
        assign(m_hasPreviousKey, previous->has_value(), &AppModel::hasPreviousKeyChanged);
    }
    if (!installed) {
        setKeySaved(wasSaved);
        return installed.error().message();
    }
    m_password = key;
    setKeySaved(saved);
    assign(m_keyError, std::optional<QString>(), &AppModel::keyErrorChanged);
    assign(m_kitNotice, std::optional<Notice>(), &AppModel::kitNoticeChanged); // the other key's
    Q_EMIT passwordChanged();
    refreshAll();
    return std::nullopt;
}

void AppModel::requestPreviousKey()
{
    authenticated(OwnerReason::replaceKey, [this] {
        const auto previous = RepositoryKeys::previous();
        if (!previous) {
            assign(m_keyError, std::optional(previous.error().message()),
                   &AppModel::keyErrorChanged);
        } else if (*previous) {
            // The key in use becomes the previous one, so that doing it twice changes nothing.
            // Nobody knows whether the person has this key too.
            assign(m_keyError, install(**previous, false), &AppModel::keyErrorChanged);
        }
    });
}
