#pragma once

#include "state/AppConfig.h"
#include "tools/OneShotSecret.h"
#include "tools/ProcessRunner.h"

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <utility>

/// rclone's configuration file, rclone.conf in the support folder, with the credentials of the two
/// remotes "vellomar" (Google Drive) and "vellomar-server" (private server).
///
/// rclone encrypts the file with a key from the secret store, and no secret goes into it through an
/// argument or an environment variable. Whoever starts rclone with the file takes a
/// ConfigEnvironment for that one run. The two operations that connect give the sentence to show
/// when they fail; all others report a failure without its reason. All of them may wait for rclone
/// and for the network, so none is for the window's thread.
namespace Rclone {

/// Settings of each remote, by its name.
using Remotes = QMap<QString, QJsonObject>;

inline constexpr QLatin1String driveRemote("vellomar");
inline constexpr QLatin1String serverRemote("vellomar-server");

/// The remotes in the file, cached until the file changes; empty on any failure.
Remotes remotes();

/// Whether Google Drive is connected: its remote is there and holds a token.
bool isConfigured();

/// Connects Google Drive: rclone opens a browser, in which the user signs in. Waits for that until
/// the handle is cancelled. Absent on success, otherwise the message to show.
///
/// An earlier connection is removed first, and a failed attempt leaves none. With an empty
/// `clientID` rclone's own client is used and `clientSecret` is ignored.
std::optional<QString> connect(const QString &clientID, const QString &clientSecret,
                               ProcessHandle &handle);

/// Removes the remote of Google Drive.
void disconnect();

/// Space on a remote, in bytes.
struct Quota
{
    Q_GADGET
    Q_PROPERTY(qint64 used MEMBER used FINAL)
    Q_PROPERTY(qint64 total MEMBER total FINAL)

public:
    qint64 used = 0;
    qint64 total = 0;

    bool operator==(const Quota &) const = default;
};

/// The space on a remote; absent when it doesn't report it, and on any failure.
std::optional<Quota> quota(const QString &remote);

/// Names of the folders in a folder of a remote, in rclone's order; empty on any failure.
QStringList folders(const QString &path, const QString &remote);

/// Connects the private server of the settings and tests the connection. Absent on success,
/// otherwise the message to show; then neither this connection nor an earlier one is left. The host
/// key that an SFTP server shows now is trusted, and is the only one accepted from then on.
std::optional<QString> connectServer(const AppConfig &config, const QString &secret);

/// Removes the remote of the private server, and the host key that was accepted for it.
void disconnectServer();

/// Stores the host key of an SFTP server that was connected before host keys were stored. When the
/// server doesn't answer, the next start tries again.
void pinServerIfNeeded();

/// rclone's word for whether an S3 bucket on the private server has versioning, such as "Enabled";
/// absent on any failure.
std::optional<QString> versioning(const QString &bucket);

/// Adds a remote with settings in the given order. False, with the file untouched, on any failure,
/// also when it can't be encrypted, or when a value holds what rclone's file can't keep: a line
/// break, a backtick, three quotes in front, a `%(reference)s`. A section of the same name must
/// have been removed before.
bool store(const QString &name, const QList<std::pair<QString, QString>> &pairs);

/// A secret in the scrambled form that rclone's file has for passwords; absent on failure and for a
/// text of more than one line.
std::optional<QString> obscure(const QString &text);

/// The sentence to show from rclone's standard error: its last line without date and level. Absent
/// when there is none.
std::optional<QString> lastError(const QString &standardError);

/// What to show for a failed connection to a server, from rclone's standard error. `host` is left
/// out of the search, as its name may hold anything.
QString serverError(const QString &standardError, const QString &host = {});

/// Replaces known_hosts in the support folder by the host keys that a server shows now. False when
/// it shows none or the file can't be written. An empty port means SSH's own.
bool trustHost(const QString &host, const QString &port);

/// Deletes temporary files that a killed process left beside known_hosts. To be called before
/// anything here connects.
void removeAbandonedHostKeys();

/// Runs rclone with the configuration, which is encrypted first; absent when there is no rclone.
std::optional<ProcessResult> run(const QStringList &arguments, ProcessHandle *handle = nullptr);

/// Runs rclone for a short answer about a remote: one try, at most 10 seconds to connect and 20
/// without any data. Absent when there is no rclone.
std::optional<ProcessResult> query(const QStringList &arguments);

/// Key of the encrypted file, read or made once in a process; absent when the secret store fails.
const std::optional<QString> &configKey();

/// Whether a configuration file is in rclone's encrypted envelope.
bool isEncrypted(const QString &file);

/// Makes sure that the configuration is encrypted: an unencrypted or missing file becomes an
/// encrypted one. Called by everything that is about to start rclone with the file. False when that
/// failed; then no credentials may be written to it, and the next call tries again. Without a key
/// the file stays as it is, and the answer is true.
bool encrypted();

/// What rclone needs to read the configuration, for one run; it must live until that run has ended.
class ConfigEnvironment
{
public:
    /// For the file at a path; for rclone.conf of the support folder if none is given.
    explicit ConfigEnvironment(const QString &configFile = {});

    /// RCLONE_CONFIG, and RCLONE_PASSWORD_COMMAND if there is a key and a pipe for it.
    [[nodiscard]] const ChildProcess::Environment &variables() const { return m_variables; }

private:
    std::unique_ptr<OneShotSecret> m_key;
    ChildProcess::Environment m_variables;
};

} // namespace Rclone
