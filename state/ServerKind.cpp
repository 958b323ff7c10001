#include "state/ServerKind.h"

#include "state/Localized.h"

QString rawValue(ServerKind kind)
{
    switch (kind) {
    case ServerKind::sftp:
        return QStringLiteral("sftp");
    case ServerKind::webdav:
        return QStringLiteral("webdav");
    case ServerKind::s3:
        return QStringLiteral("s3");
    case ServerKind::smb:
        return QStringLiteral("smb");
    }
    Q_UNREACHABLE();
}

std::optional<ServerKind> serverKind(const QString &raw)
{
    for (const ServerKind kind : allServerKinds) {
        if (rawValue(kind) == raw) {
            return kind;
        }
    }
    return std::nullopt;
}

QString userLabel(ServerKind kind)
{
    return kind == ServerKind::s3 ? localized("Access key") : localized("Utente");
}

QString secretLabel(ServerKind kind)
{
    return kind == ServerKind::s3 ? localized("Secret key") : localized("Password");
}

QString pathLabel(ServerKind kind)
{
    switch (kind) {
    case ServerKind::sftp:
    case ServerKind::webdav:
        return localized("Cartella");
    case ServerKind::s3:
        return localized("Bucket e cartella");
    case ServerKind::smb:
        return localized("Condivisione e cartella");
    }
    Q_UNREACHABLE();
}

bool hasPort(ServerKind kind)
{
    return kind == ServerKind::sftp || kind == ServerKind::smb;
}
