#include "model/AppModel.h"

#include "model/Disks.h"
#include "platform/Clock.h"
#include "state/Fmt.h"
#include "state/Paths.h"
#include "state/Texts.h"

#include <QPointer>

// The sheet that gets the key out of this machine, so that the backups don't die with it.

namespace {

/// What to say of a kit that was sent to a printer.
Notice printedNotice(const Desktop::Printing &printing, const QString &localFolder)
{
    if (printing.failure) {
        return {Texts::tr("Kit non stampato: %1").arg(*printing.failure), true};
    }
    return printing.file ? Disks::real()->kitPlace(*printing.file, localFolder)
                         : Notice{Texts::tr("Kit stampato."), false};
}

} // namespace

QString AppModel::recoveryKitText() const
{
    const QStringList lines{
        Texts::tr("Vellomar - Kit di recupero"),
        QString(),
        Texts::tr("Mac: %1").arg(Paths::hostname()),
        Texts::tr("Creato il: %1").arg(Fmt::date(Clock::now())),
        QString(),
        Texts::tr("Chiave di cifratura:"),
        m_password,
        QString(),
        Texts::tr("Come ripristinare su un altro Mac:"),
        Texts::tr("1. Installa Vellomar."),
        Texts::tr("2. Apri Ripristina e scegli \"Da un altro Mac\"."),
        Texts::tr("3. Indica dove si trova il backup e inserisci questa chiave."),
        QString(),
        Texts::tr("Conserva questo foglio lontano dal Mac. Chi lo possiede può leggere i tuoi "
                  "backup."),
    };
    return lines.join(u'\n');
}

void AppModel::openRecoveryKit()
{
    if (!m_config.keySaved) {
        // The key has never left this machine: there is nothing yet to guard from its person.
        setShowingRecoveryKit(true);
        return;
    }
    authenticated(OwnerReason::showKey, [this] { setShowingRecoveryKit(true); });
}

void AppModel::saveRecoveryKit()
{
    if (!hasKey()) {
        return;
    }
    m_desktop->askSavePath(Texts::tr("Kit di recupero Vellomar.txt"),
                           Texts::tr("Scegli una chiavetta o un disco diverso da quello dei "
                                     "backup"),
                           [model = QPointer(this)](const std::optional<QString> &path) {
                               if (model && path && !path->isEmpty()) {
                                   model->saveRecoveryKitTo(*path);
                               }
                           });
}

void AppModel::saveRecoveryKitTo(const QString &path)
{
    const Notice notice = Disks::real()->saveKit(path, recoveryKitText(), m_config.localFolder);
    assign(m_kitNotice, std::optional(notice), &AppModel::kitNoticeChanged);
}

void AppModel::printRecoveryKit()
{
    if (!hasKey()) {
        return;
    }
    m_desktop->print(
        recoveryKitText(), [model = QPointer(this)](const Desktop::Printing &printing) {
            if (model) {
                model->assign(model->m_kitNotice,
                              std::optional(printedNotice(printing, model->m_config.localFolder)),
                              &AppModel::kitNoticeChanged);
            }
        });
}

void AppModel::confirmKeySaved()
{
    if (!hasKey()) {
        return; // what the user has isn't the key that is still to come
    }
    setKeySaved(true);
    setShowingRecoveryKit(false);
    if (std::exchange(m_backupAfterKit, false)) {
        startBackup();
    }
}
