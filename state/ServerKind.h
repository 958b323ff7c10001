#pragma once

#include <QString>

#include <array>
#include <optional>

/// How the private server is reached.
enum class ServerKind { Sftp, Webdav, S3, Smb };

inline constexpr std::array allServerKinds = {ServerKind::Sftp, ServerKind::Webdav, ServerKind::S3,
                                              ServerKind::Smb};

/// The text that stands for a kind in config.json: "sftp", "webdav", "s3" or "smb".
QString rawValue(ServerKind kind);

/// The kind of a raw value; absent for any other text.
std::optional<ServerKind> serverKind(const QString &rawValue);

/// Labels of the three fields of the server's form.
QString userLabel(ServerKind kind);
QString secretLabel(ServerKind kind);
QString pathLabel(ServerKind kind);

/// Whether the form offers a field for the port.
bool hasPort(ServerKind kind);
