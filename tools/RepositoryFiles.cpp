#include "tools/RepositoryFiles.h"

#include "tools/Rclone.h"

#include <QFile>
#include <QRegularExpression>

#include <filesystem>

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

} // namespace

std::optional<QStringList> RepositoryFiles::list(const QString &repository)
{
    if (repository.startsWith(rclonePrefix)) {
        return filesOnRemote(repository.sliced(rclonePrefix.size()));
    }
    return repository.startsWith(u'/') ? filesOnDisk(repository) : std::nullopt;
}

bool RepositoryFiles::isKey(const QString &file)
{
    // On a disk a file that was still being written has a further ending.
    static const QRegularExpression name(QStringLiteral(R"(\Akeys/[0-9a-f]{64}(-tmp-\d+)?\z)"));
    return name.match(file).hasMatch();
}

void RepositoryFiles::remove(const QString &repository, const QString &file)
{
    if (repository.startsWith(rclonePrefix)) {
        static_cast<void>(Rclone::run(
            {QStringLiteral("deletefile"), repository.sliced(rclonePrefix.size()) + u'/' + file}));
    } else {
        QFile::remove(repository + u'/' + file);
    }
}
