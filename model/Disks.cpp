#include "model/Disks.h"

#include "model/PreviewFolder.h"
#include "model/SourceScanner.h"
#include "state/LocalDisk.h"
#include "state/Paths.h"
#include "state/PrivateFile.h"
#include "state/Texts.h"

#include <QFileInfo>
#include <QStorageInfo>

namespace {

QStringList measuredExcludes(const AppConfig &config)
{
    if (!config.localEnabled) {
        return config.excludes;
    }
    // A repository inside a source isn't something to back up, and may itself be named by a link.
    const QString repository = config.repository(DestinationID::Local);
    return config.excludes + QStringList{repository, QFileInfo(repository).canonicalFilePath()};
}

std::optional<Disks::Volume> volumeOf(const QString &folder)
{
    const QStorageInfo storage(folder);
    if (!storage.isValid() || storage.bytesTotal() <= 0 || storage.bytesAvailable() < 0) {
        return std::nullopt;
    }
    return Disks::Volume{.free = storage.bytesAvailable(), .total = storage.bytesTotal()};
}

class OwnDisks final : public Disks
{
public:
    LocalPlace localPlace(const AppConfig &config) override
    {
        const QString &folder = config.localFolder;
        if (folder.isEmpty() || !QFileInfo::exists(folder) ||
            LocalDisk::isAway(config.repository(DestinationID::Local))) {
            return {};
        }
        return {.isBesideHome = Paths::volume(folder) == Paths::volume(Paths::home()),
                .volume = volumeOf(folder)};
    }

    QStringList folders(const QStringList &paths) override
    {
        QStringList found = paths;
        found.removeIf([](const QString &path) { return !QFileInfo(path).isDir(); });
        return found;
    }

    qint64 size(const QString &source, const AppConfig &config,
                const std::function<void(qint64)> &progress, const std::stop_token &stop) override
    {
        return SourceScanner::size(source, measuredExcludes(config), progress, stop);
    }

    Notice saveKit(const QString &path, const QString &text, const QString &localFolder) override
    {
        if (const std::optional<QString> failure = PrivateFile::write(path, text.toUtf8())) {
            return {Texts::tr("Kit non salvato: %1").arg(*failure), true};
        }
        return kitPlace(path, localFolder);
    }

    Notice kitPlace(const QString &path, const QString &localFolder) override
    {
        const std::optional<QString> volume = Paths::volume(path);
        if (!localFolder.isEmpty() && Paths::volume(localFolder) == volume) {
            return {Texts::tr("Il kit è sullo stesso disco dei backup: chi trova il disco può "
                              "leggerli. Spostalo altrove."),
                    true};
        }
        if (Paths::volume(Paths::home()) == volume) {
            return {
                Texts::tr("Il kit è salvato su questo Mac: se il Mac si rompe o viene rubato va "
                          "perso con lui. Copialo su una chiavetta o stampalo."),
                true};
        }
        return {Texts::tr("Kit salvato in %1.").arg(Paths::abbreviatedHome(path)), false};
    }

    void removePreviews() override { PreviewFolder::remove(); }
};

} // namespace

std::shared_ptr<Disks> Disks::real()
{
    return std::make_shared<OwnDisks>();
}
