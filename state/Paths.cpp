#include "state/Paths.h"

#include "platform/ExecutablePath.h"
#include "platform/MountPoint.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QSysInfo>

namespace {

QString madeSupportFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                     QLatin1String("/Vellomar");
    QDir().mkpath(folder);
    QFile::setPermissions(folder,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return folder;
}

} // namespace

const QString &Paths::home()
{
    static const QString path = QDir::homePath();
    return path;
}

const QString &Paths::hostname()
{
    static const QString name = withoutLocalDomain(QSysInfo::machineHostName());
    return name;
}

const QString &Paths::support()
{
    static const QString folder = madeSupportFolder();
    return folder;
}

QString Paths::supportFile(const QString &name)
{
    return support() + u'/' + name;
}

std::optional<QString> Paths::resources()
{
    const std::optional<QString> executable = ownExecutablePath();
    if (!executable) {
        return std::nullopt;
    }
    const QString folder =
        QDir::cleanPath(QFileInfo(*executable).path() + QLatin1String("/../share/vellomar"));
    if (!QFileInfo(folder).isDir()) {
        return std::nullopt;
    }
    return folder;
}

QString Paths::expandedHome(const QString &path)
{
    return path.startsWith(u'~') ? QString(home() + path.sliced(1)) : path;
}

QString Paths::inFull(const QString &path)
{
    return path.isEmpty() ? path
                          : QDir::cleanPath(QDir(home()).absoluteFilePath(expandedHome(path)));
}

QString Paths::abbreviatedHome(const QString &path)
{
    const QString inHome = home().endsWith(u'/') ? home() : QString(home() + u'/');
    return path == home() || path.startsWith(inHome) ? QString(u'~' + path.sliced(home().size()))
                                                     : path;
}

std::optional<QString> Paths::volume(const QString &path)
{
    // An empty path means the current folder, as in a file URL.
    QString existing = QDir::cleanPath(QDir::current().absoluteFilePath(path));
    while (!QFileInfo::exists(existing)) {
        const QString parent = QFileInfo(existing).path();
        if (parent == existing) {
            break;
        }
        existing = parent;
    }
    return mountPoint(existing);
}

QString Paths::withoutLocalDomain(QString hostname)
{
    return hostname.remove(QLatin1String(".local"));
}
