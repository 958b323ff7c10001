#include "state/Texts.h"
#include "tools/Rclone.h"
#include "tools/Restic.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <filesystem>

// Opens a repository, or makes it, or completes one whose making was interrupted.
namespace {

namespace fs = std::filesystem;

constexpr QLatin1String rclonePrefix("rclone:");

const QStringList &foldersOfFiles()
{
    static const QStringList folders{QStringLiteral("keys"), QStringLiteral("data"),
                                     QStringLiteral("index"), QStringLiteral("snapshots")};
    return folders;
}

/// Adds all files in a folder of the repository, by their paths inside it; false when they can't
/// all be listed.
bool addFilesOnDisk(const QString &repository, const QString &folder, QStringList &files)
{
    const fs::path root(QFile::encodeName(repository).toStdString());
    std::error_code failure;
    fs::recursive_directory_iterator entry(root / folder.toStdString(), failure);
    if (failure == std::errc::no_such_file_or_directory) {
        return true;
    }
    while (!failure && entry != fs::recursive_directory_iterator()) {
        if (!entry->is_directory(failure) && !failure) {
            files.append(QFile::decodeName(entry->path().lexically_relative(root).c_str()));
        }
        entry.increment(failure);
    }
    return !failure;
}

std::optional<QStringList> filesOnDisk(const QString &repository)
{
    QStringList files;
    for (const QString &folder : foldersOfFiles()) {
        if (!addFilesOnDisk(repository, folder, files)) {
            return std::nullopt;
        }
    }
    return files;
}

std::optional<QStringList> filesOnRemote(const QString &place)
{
    QStringList arguments{QStringLiteral("lsf"), QStringLiteral("--recursive"),
                          QStringLiteral("--files-only")};
    for (const QString &folder : foldersOfFiles()) {
        arguments << QStringLiteral("--include") << u'/' + folder + QLatin1String("/**");
    }
    const auto listed = Rclone::run(arguments + QStringList(place));
    if (!listed || listed->status != 0) {
        return std::nullopt;
    }
    return listed->standardOutput.split(u'\n', Qt::SkipEmptyParts);
}

/// The files of a repository that hold keys, versions or data; absent when they can't all be
/// listed.
std::optional<QStringList> files(const QString &repository)
{
    if (repository.startsWith(rclonePrefix)) {
        return filesOnRemote(repository.sliced(rclonePrefix.size()));
    }
    return repository.startsWith(u'/') ? filesOnDisk(repository) : std::nullopt;
}

bool isKey(const QString &file)
{
    // On a disk a file that was still being written has a further ending.
    static const QRegularExpression name(QStringLiteral(R"(\Akeys/[0-9a-f]{64}(-tmp-\d+)?\z)"));
    return name.match(file).hasMatch();
}

void remove(const QString &repository, const QString &file)
{
    if (repository.startsWith(rclonePrefix)) {
        static_cast<void>(Rclone::run(
            {QStringLiteral("deletefile"), repository.sliced(rclonePrefix.size()) + u'/' + file}));
    } else {
        QFile::remove(repository + u'/' + file);
    }
}

} // namespace

tl::expected<void, ResticError> Restic::prepare() const
{
    const QStringList open{QStringLiteral("cat"), QStringLiteral("config")};
    ProcessResult opened = run(open);
    if (opened.status == ResticExit::repositoryLocked) {
        // A killed check or prune leaves a lock that keeps everybody out; unlock removes it. A lock
        // that stays is in use, perhaps by the restic of a killed run, which soon ends.
        unlock();
        const QString patience = QString::number(lockPatience.count()) + u's';
        opened = run(open + QStringList{QStringLiteral("--retry-lock"), patience});
    }
    if (opened.status == ResticExit::noRepository) {
        return make();
    }
    if (opened.status != 0) {
        return tl::unexpected(describe(opened));
    }
    unlock();
    return {};
}

tl::expected<void, ResticError> Restic::make() const
{
    const QStringList init{QStringLiteral("init")};
    ProcessResult made = run(init);
    if (made.status != 0 && made.standardError.contains(QLatin1String("already contains"))) {
        // The config file is missing, but other files of a repository are there.
        const QString repository = repositoryOverride.value_or(config.repository(dest));
        const auto remains = files(repository);
        if (remains && !std::all_of(remains->cbegin(), remains->cend(), isKey)) {
            return tl::unexpected(ResticError{
                Texts::tr("Nella destinazione manca il file «config» del backup. I dati ci sono "
                          "ancora e non sono stati toccati.")});
        }
        // Keys alone open nothing: the making was interrupted before the config file was written.
        for (const QString &key : remains.value_or(QStringList())) {
            remove(repository, key);
        }
        made = run(init);
    }
    if (made.status != 0) {
        return tl::unexpected(describe(made));
    }
    return {};
}

void Restic::unlock() const
{
    static_cast<void>(run({QStringLiteral("unlock")}));
}
