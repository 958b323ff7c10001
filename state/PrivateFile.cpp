#include "state/PrivateFile.h"

#include <QSaveFile>

std::optional<QString> PrivateFile::write(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return file.errorString();
    }
    file.setPermissions(ownerOnly); // not every disk knows of owners
    file.write(content);
    // Qt doesn't look at what the last flush of a commit says, and would put an empty file in
    // place.
    if (!file.flush()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        return reason;
    }
    return file.commit() ? std::nullopt : std::optional(file.errorString());
}
