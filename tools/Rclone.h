#pragma once

#include "tools/OneShotSecret.h"
#include "tools/ProcessRunner.h"

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

#include <memory>
#include <optional>
#include <utility>

/// rclone's configuration file, rclone.conf in the support folder, with the credentials of the two
/// remotes "vellomar" (Google Drive) and "vellomar-server" (private server).
///
/// The file is encrypted by rclone with a key of the secret store, and no secret goes into it by
/// way of an argument or an environment variable. Whoever starts rclone with it takes a
/// ConfigEnvironment for that one run. Failures are booleans and absents without words; the
/// operations that connect have those. All of this may wait for rclone: not for the window's
/// thread.
namespace Rclone {

/// Settings of each remote, by its name.
using Remotes = QMap<QString, QJsonObject>;

inline constexpr QLatin1String driveRemote("vellomar");
inline constexpr QLatin1String serverRemote("vellomar-server");

/// The remotes of the file, from a cache as long as the file doesn't change; empty on any failure.
Remotes remotes();

/// Whether Google Drive is connected: its remote is there and holds a token.
bool isConfigured();

/// Adds a remote with settings in the given order; false, with the file untouched, on any failure
/// or when a value holds a line break. A section of the same name must have been removed before.
bool store(const QString &name, const QList<std::pair<QString, QString>> &pairs);

/// A secret in the scrambled form that rclone's file wants for passwords; absent on failure.
std::optional<QString> obscure(const QString &text);

/// Removes the remote of Google Drive.
void disconnect();

/// The sentence worth showing out of rclone's standard error: its last line without date and level.
/// Absent when there is none.
std::optional<QString> lastError(const QString &standardError);

/// Key of the encrypted file, found or made once a process; absent when the secret store refuses.
const std::optional<QString> &configKey();

/// Sees to it, once a process, that the file is encrypted: one in plain, and none at all, become an
/// encrypted one. Called by everything that is about to start rclone with the file.
void encrypted();

/// What rclone needs to read the configuration, for one run; it must live until that run has ended.
class ConfigEnvironment
{
public:
    /// For the file at a path; for rclone.conf of the support folder if none is given.
    explicit ConfigEnvironment(const QString &configFile = {});

    /// RCLONE_CONFIG, and RCLONE_PASSWORD_COMMAND unless there is no key or no pipe for it.
    [[nodiscard]] const ChildProcess::Environment &variables() const { return m_variables; }

private:
    std::unique_ptr<OneShotSecret> m_key;
    ChildProcess::Environment m_variables;
};

} // namespace Rclone
