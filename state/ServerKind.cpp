#include "state/ServerKind.h"

#include "state/Texts.h"

QString ServerKinds::userLabel(ServerKind kind)
{
    return kind == ServerKind::S3 ? Texts::tr("Access key") : Texts::tr("Utente");
}

QString ServerKinds::secretLabel(ServerKind kind)
{
    return kind == ServerKind::S3 ? Texts::tr("Secret key") : Texts::tr("Password");
}

QString ServerKinds::pathLabel(ServerKind kind)
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

bool ServerKinds::hasPort(ServerKind kind)
{
    return kind == ServerKind::Sftp || kind == ServerKind::Smb;
}
