#include "platform/MountPoint.h"

#include <QFile>
#include <QList>
#include <QStorageInfo>

#include <algorithm>

#include <sys/stat.h>

namespace {

/// One line of the system's list of mounts.
struct Mount
{
    QByteArray device; ///< "8:1"
    QByteArray root;   ///< which folder of the device is mounted
    QByteArray point;
};

// The list has blanks, line feeds, backslashes and number signs as octal numbers.
QByteArray unescaped(const QByteArray &text)
{
    QByteArray result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == '\\' && i + 3 < text.size()) {
            result.append(static_cast<char>(text.sliced(i + 1, 3).toInt(nullptr, 8)));
            i += 3;
        } else {
            result.append(text.at(i));
        }
    }
    return result;
}

QList<Mount> mounts()
{
    QList<Mount> list;
    QFile file(QStringLiteral("/proc/self/mountinfo"));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : file.readAll().split('\n')) {
            const QList<QByteArray> fields = line.split(' ');
            if (fields.size() > 4) {
                list.append({fields.at(2), unescaped(fields.at(3)), unescaped(fields.at(4))});
            }
        }
    }
    return list;
}

bool holds(const QByteArray &folder, const QByteArray &path)
{
    return path == folder || folder == "/" || path.startsWith(QByteArray(folder + '/'));
}

/// The path of something inside `from` after `from` is replaced by `to`.
QByteArray moved(const QByteArray &path, const QByteArray &from, const QByteArray &to)
{
    const QByteArray rest =
        path == from ? QByteArray() : path.sliced(from == "/" ? 0 : from.size());
    const QByteArray result = to == "/" ? rest : to + rest;
    return result.isEmpty() ? QByteArray("/") : result;
}

bool isSameFolder(const QByteArray &one, const QByteArray &two)
{
    struct stat first = {};
    struct stat second = {};
    return ::stat(one.constData(), &first) == 0 && ::stat(two.constData(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

} // namespace

std::optional<QString> mountPoint(const QString &path)
{
    const QStorageInfo storage(path);
    if (!storage.isValid()) {
        return std::nullopt;
    }
    return storage.rootPath();
}

QStringList otherMountsOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(path);
    const QList<Mount> all = mounts();
    const Mount *own = nullptr;
    for (const Mount &mount : all) {
        // Of two mounts at one point the later one is visible.
        if (holds(mount.point, folder) && (!own || mount.point.size() >= own->point.size())) {
            own = &mount;
        }
    }
    QStringList others;
    if (!own) {
        return others;
    }
    const QByteArray onDevice = moved(folder, own->point, own->root);
    for (const Mount &mount : all) {
        if (mount.device != own->device || !holds(mount.root, onDevice)) {
            continue;
        }
        const QByteArray other = moved(onDevice, mount.root, mount.point);
        // A different mount may hide it.
        if (other != folder && isSameFolder(other, folder)) {
            others.append(QFile::decodeName(other));
        }
    }
    others.removeDuplicates();
    return others;
}
