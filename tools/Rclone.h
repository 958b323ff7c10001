#pragma once

#include "state/AppConfig.h"
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
/// ConfigEnvironment for that one run. Failures are booleans and absents without words, but for the
/// two operations that connect: these give the sentence to show. All of this may wait for rclone
/// and for the network: not for the window's thread.
namespace Rclone {

/// Settings of each remote, by its name.
using Remotes = QMap<QString, QJsonObject>;

inline constexpr QLatin1String driveRemote("vellomar");
inline constexpr QLatin1String serverRemote("vellomar-server");

/// The remotes of the file, from a cache as long as the file doesn't change; empty on any failure.
Remotes remotes();

/// Whether Google Drive is connected: its remote is there and holds a token.
bool isConfigured();

/// Connects Google Drive by the person's signing in with a browser, which rclone opens. Waits for
/// them until the handle is told to stop. Absent on success, otherwise the message to show.
///
/// An earlier connection goes first, and a failed one leaves none behind. With an empty `clientID`
/// rclone's own client is used and the other text doesn't count.
std::optional<QString> connect(const QString &clientID, const QString &clientSecret,
                               ProcessHandle &handle);

/// Removes the remote of Google Drive.
void disconnect();

/// Room on a remote, in bytes.
struct Quota
{
    qint64 used = 0;
    qint64 total = 0;

    bool operator==(const Quota &) const = default;
};

/// The room on a remote; absent when it doesn't tell, and on any failure.
std::optional<Quota> quota(const QString &remote);

/// Names of the folders in a folder of a remote, in rclone's order; empty on any failure.
QStringList folders(const QString &path, const QString &remote);

/// Connects the private server of the settings and tries the connection. Absent on success,
/// otherwise the message to show; then nothing of the attempt is left behind, nor of an earlier
/// connection. The host key of an SFTP server is taken on trust and holds from then on.
std::optional<QString> connectServer(const AppConfig &config, const QString &secret);

/// Removes the remote of the private server, and the host key that was accepted for it.
void disconnectServer();

/// Takes the host key of an SFTP server that was connected before host keys were kept. Tried again
/// at the next start when the server doesn't answer.
void pinServerIfNeeded();

/// rclone's word for the versioning of an S3 bucket on the private server; absent on any failure.
std::optional<QString> versioning(const QString &bucket);

/// Adds a remote with settings in the given order; false, with the file untouched, on any failure,
/// that of encrypting it too, or when a value holds a line break or anything that rclone's file
/// would change: a backtick, three quotes in front, a `%(reference)s`. A section of the same name
/// must have been removed before.
bool store(const QString &name, const QList<std::pair<QString, QString>> &pairs);

/// A secret in the scrambled form that rclone's file wants for passwords; absent on failure
/// and for a text of more than one line.
std::optional<QString> obscure(const QString &text);

/// The sentence worth showing out of rclone's standard error: its last line without date and level.
/// Absent when there is none.
std::optional<QString> lastError(const QString &standardError);

/// What to show for a connection to a server that failed, from rclone's standard error. What
/// stands in the name of the server itself says nothing.
QString serverError(const QString &standardError, const QString &host = {});

/// Writes the host keys that a server shows now to known_hosts in the support folder, in place of
/// those there. False when none was shown or the file can't be written. An empty port is SSH's own.
bool trustHost(const QString &host, const QString &port);

/// Deletes temporary files that a killed process left beside known_hosts. Only before anything
/// here connects.
void removeAbandonedHostKeys();

/// Runs rclone with the configuration, encrypted before; absent when there is no rclone.
std::optional<ProcessResult> run(const QStringList &arguments, ProcessHandle *handle = nullptr);

/// Runs rclone for somebody who waits for a short answer about a remote: it tries once, with 10
/// seconds to connect and 20 in which nothing comes. Absent when there is no rclone.
std::optional<ProcessResult> query(const QStringList &arguments);

/// Key of the encrypted file, found or made once a process; absent when the secret store refuses.
const std::optional<QString> &configKey();

/// Whether a configuration file is in rclone's encrypted envelope.
bool isEncrypted(const QString &file);

/// Sees to it that the configuration is encrypted: a file in plain, and none at all, become an
/// encrypted one. Called by everything that is about to start rclone with the file. False when that
/// failed, and then no credentials may be written to it; the next call tries again. Without a key
/// the file stays as it is, and that is no failure.
bool encrypted();

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
