#include "model/PreviewFolder.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

QString PreviewFolder::path()
{
    return QDir::tempPath() + QLatin1String("/Vellomar-Anteprima");
}

void PreviewFolder::remove()
{
    struct stat entry = {};
    if (::lstat(QFile::encodeName(path()).constData(), &entry) == 0 && S_ISDIR(entry.st_mode) &&
        entry.st_uid == ::geteuid()) {
        QDir(path()).removeRecursively();
    }
}
