#include "state/ServerKind.h"

#include "state/Localized.h"

QString rawValue(ServerKind kind)
{
    switch (kind) {
    case ServerKind::Sftp:
        return QStringLiteral("sftp");
    case ServerKind::Webdav:
        return QStringLiteral("webdav");
    case ServerKind::S3:
        return QStringLiteral("s3");
    case ServerKind::Smb:
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
    return kind == ServerKind::S3 ? localized("Access key") : localized("Utente");
}

QString secretLabel(ServerKind kind)
{
    return kind == ServerKind::S3 ? localized("Secret key") : localized("Password");
}

QString pathLabel(ServerKind kind)
{
    switch (kind) {
    case ServerKind::Sftp:
    case ServerKind::Webdav:
        return localized("Cartella");
    case ServerKind::S3:
        return localized("Bucket e cartella");
    case ServerKind::Smb:
        return localized("Condivisione e cartella");
    }
    Q_UNREACHABLE();
}

bool hasPort(ServerKind kind)
{
    return kind == ServerKind::Sftp || kind == ServerKind::Smb;
}
