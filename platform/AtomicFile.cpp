#include "platform/AtomicFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cstdio>

#include <unistd.h>

namespace {

// A temporary file has the final name, a dot, six random characters and this. It is long so that no
// copy of the user's, such as config.json.backup, is taken for one of ours.
constexpr QLatin1String temporaryEnding(".vellomar-partial");

// A link stays a link: its target is replaced.
QString replacedFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isSymLink()) {
        return path;
    }
    const QString target = info.canonicalFilePath();
    return target.isEmpty() ? path : target;
}

bool isOnDisk(QTemporaryFile &file)
{
    return file.flush() && ::fsync(file.handle()) == 0;
}

} // namespace

// Not by QSaveFile, which waits for the disk at every commit and names its temporary files so that
// a killed process's look like any others. A Qt that leaves both open would end this.
bool AtomicFile::write(const QString &path, const QByteArray &content, Lasting lasting)
{
    const QString target = replacedFile(path);
    QTemporaryFile file(target + QLatin1String(".XXXXXX") + temporaryEnding);
    // The temporary file deletes itself on every return but the last.
    if (!file.open() || file.write(content) != content.size()) {
        return false;
    }
    if (lasting == Lasting::throughCrashes ? !isOnDisk(file) : !file.flush()) {
        return false;
    }
    if (std::rename(QFile::encodeName(file.fileName()).constData(),
                    QFile::encodeName(target).constData()) != 0) {
        return false;
    }
    file.setAutoRemove(false);
    return true;
}

void AtomicFile::removeAbandoned(const QString &path)
{
    static constexpr int randomCharacters = 6;
    const QFileInfo info(replacedFile(path));
    const QString beginning = info.fileName() + u'.';
    const qsizetype length = beginning.size() + randomCharacters + temporaryEnding.size();
    QDir folder(info.path());
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        if (name.size() == length && name.startsWith(beginning) && name.endsWith(temporaryEnding)) {
            folder.remove(name);
        }
    }
}
