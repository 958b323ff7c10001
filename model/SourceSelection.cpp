#include "model/SourceSelection.h"

#include "state/Texts.h"
#include "tools/ResticPattern.h"

#include <QPointer>

#include <utility>

namespace {

/// Why what was dropped isn't a source now.
QString refused(const QStringList &things)
{
    if (things.size() == 1) {
        return Texts::tr("\"%1\" non è una cartella.").arg(things.first());
    }
    return Texts::tr("Si possono aggiungere solo cartelle.");
}

QString nameOf(const QUrl &thing)
{
    return thing.fileName().isEmpty() ? thing.toDisplayString() : thing.fileName();
}

} // namespace

SourceSelection::SourceSelection(World world, Settings &settings, Measurement &measurement,
                                 QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_settings(settings)
    , m_measurement(measurement)
{
    connect(&m_settings, &Settings::changed, this, [this](const AppConfig &before) {
        if (before.excludes != m_settings.config().excludes) {
            look();
        }
    });
    look();
}

void SourceSelection::add()
{
    m_world.desktop->askFolders({.prompt = Texts::tr("Aggiungi"), .message = {}, .startFolder = {}},
                                [sources = QPointer(this)](const QStringList &folders) {
                                    if (sources) {
                                        sources->append(folders);
                                    }
                                });
}

void SourceSelection::addDropped(const QList<QUrl> &things)
{
    setRefusal({});
    QStringList paths;
    QStringList strange;
    for (const QUrl &thing : things) {
        if (thing.isLocalFile()) {
            paths.append(thing.adjusted(QUrl::StripTrailingSlash).toLocalFile());
        } else {
            strange.append(nameOf(thing));
        }
    }
    m_world.background.run(
        this, [disks = m_world.disks, paths] { return disks->folders(paths); },
        [this, paths, strange](const QStringList &folders) {
            QStringList refusedNames = strange;
            for (const QString &path : paths) {
                if (!folders.contains(path)) {
                    refusedNames.append(nameOf(QUrl::fromLocalFile(path)));
                }
            }
            append(folders);
            setRefusal(refusedNames.isEmpty() ? QString() : refused(refusedNames));
        });
}

void SourceSelection::append(const QStringList &folders)
{
    for (const QString &folder : folders) {
        AppConfig config = m_settings.config();
        if (!config.sources.contains(folder)) {
            config.sources.append(folder);
            m_settings.setConfig(config);
        }
    }
}

void SourceSelection::remove(const QString &path)
{
    AppConfig config = m_settings.config();
    config.sources.removeAll(path);
    m_settings.setConfig(config);
}

void SourceSelection::addExclude(const QString &typed)
{
    const QString pattern = typed.trimmed();
    setExcludeError({});
    if (pattern.isEmpty()) {
        return;
    }
    AppConfig config = m_settings.config();
    if (!config.excludes.contains(pattern)) {
        if (!isResticPattern(pattern)) {
            setExcludeError(
                Texts::tr("Questa esclusione non è valida: controlla parentesi quadre e barre "
                          "rovesciate."));
            return;
        }
        config.excludes.append(pattern);
        m_settings.setConfig(config);
    }
    Q_EMIT excludeTaken();
}

void SourceSelection::removeExclude(const QString &pattern)
{
    AppConfig config = m_settings.config();
    config.excludes.removeAll(pattern);
    m_settings.setConfig(config);
}

void SourceSelection::restoreDefaultExcludes()
{
    AppConfig config = m_settings.config();
    config.excludes = AppConfig().excludes;
    m_settings.setConfig(config);
}

void SourceSelection::forgetRefusals()
{
    setRefusal({});
    setExcludeError({});
}

void SourceSelection::look()
{
    QStringList wrong = m_settings.config().excludes;
    wrong.removeIf([](const QString &pattern) { return isResticPattern(pattern); });
    if (std::exchange(m_wrongExcludes, wrong) != wrong) {
        Q_EMIT wrongExcludesChanged();
    }
}

void SourceSelection::setRefusal(const QString &refusal)
{
    if (m_refusal != refusal) {
        m_refusal = refusal;
        Q_EMIT refusalChanged();
    }
}

void SourceSelection::setExcludeError(const QString &error)
{
    if (m_excludeError != error) {
        m_excludeError = error;
        Q_EMIT excludeErrorChanged();
    }
}
