#include "platform/MountPoint.h"

#include <QStorageInfo>

std::optional<QString> mountPoint(const QString &path)
{
    const QStorageInfo storage(path);
    if (!storage.isValid()) {
        return std::nullopt;
    }
    return storage.rootPath();
}
