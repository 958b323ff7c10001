#include "state/ServerKind.h"

#include "state/Texts.h"

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
    return kind == ServerKind::S3 ? Texts::tr("Access key") : Texts::tr("Utente");
}

QString secretLabel(ServerKind kind)
{
    return kind == ServerKind::S3 ? Texts::tr("Secret key") : Texts::tr("Password");
}

QString pathLabel(ServerKind kind)
{
    switch (kind) {
    case ServerKind::Sftp:
    case ServerKind::Webdav:
        return Texts::tr("Cartella");
    case ServerKind::S3:
        return Texts::tr("Bucket e cartella");
    case ServerKind::Smb:
        return Texts::tr("Condivisione e cartella");
    }
    Q_UNREACHABLE();
}

bool hasPort(ServerKind kind)
{
    return kind == ServerKind::Sftp || kind == ServerKind::Smb;
}
