#include "state/AtomicFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

bool AtomicFile::write(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.commit();
}

void AtomicFile::removeAbandoned(const QString &path)
{
    // QSaveFile's temporary name is the final one, a full stop and six characters.
    const QFileInfo info(path);
    QDir folder(info.path());
    const QStringList names =
        folder.entryList({info.fileName() + QLatin1String(".??????")}, QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        folder.remove(name);
    }
}
