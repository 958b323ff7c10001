#include "state/PrivateFile.h"

#include <QSaveFile>

std::optional<QString> PrivateFile::write(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return file.errorString();
    }
    file.setPermissions(ownerOnly); // may fail: not every file system has owners
    file.write(content);
    // commit() ignores a failure of its own flush, and would put an empty file in place.
    if (!file.flush()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        return reason;
    }
    return file.commit() ? std::nullopt : std::optional(file.errorString());
}
