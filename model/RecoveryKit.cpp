#include "model/RecoveryKit.h"

#include "platform/Clock.h"
#include "state/Fmt.h"
#include "state/Paths.h"
#include "state/Texts.h"

#include <QPointer>
#include <QStringList>

#include <utility>

RecoveryKit::RecoveryKit(World world, Settings &settings, EncryptionKey &key, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_settings(settings)
    , m_key(key)
{
    // The notice is about the kit of the former key.
    connect(&m_key, &EncryptionKey::changed, this, [this] { setNotice(std::nullopt); });
}

void RecoveryKit::setShowing(bool showing)
{
    if (m_isShowing == showing) {
        return;
    }
    m_isShowing = showing;
    Q_EMIT showingChanged();
    if (showing && !m_key.hasKey()) {
        m_key.read([] {});
    }
}

QString RecoveryKit::text() const
{
    const QStringList lines{
        Texts::tr("Vellomar - Kit di recupero"),
        QString(),
        Texts::tr("Mac: %1").arg(Paths::hostname()),
        Texts::tr("Creato il: %1").arg(Fmt::date(Clock::now())),
        QString(),
        Texts::tr("Chiave di cifratura:"),
        m_key.value(),
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

void RecoveryKit::save()
{
    if (!m_key.hasKey()) {
        return;
    }
    m_world.desktop->askSavePath(
        Texts::tr("Kit di recupero Vellomar.txt"),
        Texts::tr("Scegli una chiavetta o un disco diverso da quello dei backup"),
        [kit = QPointer(this)](const std::optional<QString> &path) {
            if (kit && path && !path->isEmpty()) {
                kit->saveTo(*path);
            }
        });
}

void RecoveryKit::saveTo(const QString &path)
{
    report([disks = m_world.disks, path, text = text(),
            localFolder = m_settings.config().localFolder] {
        return disks->saveKit(path, text, localFolder);
    });
}

void RecoveryKit::print()
{
    if (!m_key.hasKey()) {
        return;
    }
    m_world.desktop->print(text(), [kit = QPointer(this)](const Desktop::Printing &printing) {
        if (kit) {
            kit->takePrinting(printing);
        }
    });
}

void RecoveryKit::takePrinting(const Desktop::Printing &printing)
{
    if (printing.failure) {
        setNotice(Notice{Texts::tr("Kit non stampato: %1").arg(*printing.failure), true});
    } else if (printing.file) {
        report([disks = m_world.disks, path = *printing.file,
                localFolder = m_settings.config().localFolder] {
            return disks->kitPlace(path, localFolder);
        });
    } else {
        setNotice(Notice{Texts::tr("Kit stampato."), false});
    }
}

/// Runs work on the disk and shows the notice that it returns, unless the key has changed by then.
template <typename Work>
void RecoveryKit::report(Work work)
{
    m_world.background.run(this, std::move(work),
                           [this, key = m_key.value()](const Notice &notice) {
                               if (key == m_key.value()) {
                                   setNotice(notice);
                               }
                           });
}

void RecoveryKit::setNotice(const std::optional<Notice> &notice)
{
    if (m_notice != notice) {
        m_notice = notice;
        Q_EMIT noticeChanged();
    }
}
