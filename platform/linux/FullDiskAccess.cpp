#include "platform/FullDiskAccess.h"

#include <QFile>
#include <QFileInfo>

#include <dirent.h>

namespace {

bool canBeListed(const QString &folder)
{
    DIR *const entries = ::opendir(QFile::encodeName(folder).constData());
    if (entries == nullptr) {
        return false;
    }
    ::closedir(entries);
    return QFileInfo(folder).isExecutable();
}

/// The folders that the sandbox gives access to, as flatpak writes them: "home", "xdg-music:ro",
/// "!~/private".
QList<QByteArray> sharedFolders(QFile &file)
{
    bool isInContext = false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith('[')) {
            isInContext = line == "[Context]";
        } else if (isInContext && line.startsWith("filesystems=")) {
            return line.mid(line.indexOf('=') + 1).split(';');
        }
    }
    return {};
}

bool letsHomeThrough(const QString &sandboxFile)
{
    QFile file(sandboxFile);
    if (!file.open(QIODevice::ReadOnly)) {
        return !file.exists();
    }
    bool isThere = false;
    for (const QByteArray &entry : sharedFolders(file)) {
        const QByteArray folder = entry.split(':').first().trimmed();
        if (folder == "host" || folder == "home") {
            isThere = true;
        } else if (folder.startsWith("!~") || folder.startsWith("!xdg-") || folder == "!home" ||
                   folder == "!host") {
            return false; // the home folder, or a part of it, is excluded again
        }
    }
    return isThere;
}

} // namespace

bool hasFullDiskAccess(const QString &home)
{
    return hasFullDiskAccess(home, QStringLiteral("/.flatpak-info"));
}

bool hasFullDiskAccess(const QString &home, const QString &sandboxFile)
{
    return letsHomeThrough(sandboxFile) && canBeListed(home);
}
