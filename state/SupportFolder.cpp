#include "state/SupportFolder.h"

#include "state/Paths.h"
#include "state/Texts.h"

#include <QFile>
#include <QUuid>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

std::optional<QString> SupportFolder::fault()
{
    const QByteArray path = QFile::encodeName(Paths::supportFile(
        QLatin1String("trial-") + QUuid::createUuid().toString(QUuid::WithoutBraces)));
    const int descriptor =
        ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        return words(errno);
    }
    ::close(descriptor);
    ::unlink(path.constData());
    return std::nullopt;
}

QString SupportFolder::words(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
        return Texts::tr("permesso negato");
    case EROFS:
        return Texts::tr("il disco è in sola lettura");
    case ENOTDIR:
        return Texts::tr("non è una cartella");
    case ENOENT:
        return Texts::tr("non si può creare");
    case ENOSPC:
    case EDQUOT:
        return Texts::tr("il disco è pieno");
    default:
        return qt_error_string(error);
    }
}
