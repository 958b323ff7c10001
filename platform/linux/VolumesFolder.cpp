#include "platform/VolumesFolder.h"

#include <QFileInfo>
#include <QStringList>

#include <pwd.h>
#include <unistd.h>

QString volumesFolder()
{
    const passwd *const user = ::getpwuid(::getuid());
    return volumesFolder(user != nullptr ? QString::fromLocal8Bit(user->pw_name) : QString(),
                         QStringLiteral("/"));
}

QString volumesFolder(const QString &user, const QString &root)
{
    // Newer udisks, and Debian's; the user's own folder is there once a disk was.
    const QStringList own{root + QLatin1String("run/media/") + user,
                          root + QLatin1String("media/") + user};
    for (const QString &folder : own) {
        if (!user.isEmpty() && QFileInfo(folder).isDir()) {
            return folder;
        }
    }
    const QString all = root + QLatin1String("media");
    return QFileInfo(all).isDir() ? all : root;
}
