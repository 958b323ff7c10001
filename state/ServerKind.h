#pragma once

#include "state/RawValue.h"

#include <QObject>
#include <QString>

#include <array>

namespace ServerKinds {
Q_NAMESPACE

/// How the private server is reached. Its raw values are "sftp", "webdav", "s3" and "smb", which
/// are rclone's names for them too.
enum class ServerKind { Sftp, Webdav, S3, Smb };
Q_ENUM_NS(ServerKind)

/// Labels of the three fields of the server's form.
QString userLabel(ServerKind kind);
QString secretLabel(ServerKind kind);
QString pathLabel(ServerKind kind);

/// Whether the form offers a field for the port.
bool hasPort(ServerKind kind);

} // namespace ServerKinds

using ServerKinds::ServerKind;

inline constexpr std::array allServerKinds = {ServerKind::Sftp, ServerKind::Webdav, ServerKind::S3,
                                              ServerKind::Smb};
