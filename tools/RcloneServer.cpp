#include "platform/AtomicFile.h"
#include "state/Paths.h"
#include "state/Texts.h"
#include "tools/Rclone.h"
#include "tools/RcloneLimits.h"
#include "tools/Tools.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace {

using Pairs = QList<std::pair<QString, QString>>;

QString knownHosts()
{
    return Paths::supportFile(QStringLiteral("known_hosts"));
}

QString unreachable()
{
    return Texts::tr("Server non raggiungibile: controlla indirizzo e porta.");
}

QString notConfigured()
{
    return Texts::tr("Configurazione non riuscita");
}

/// The settings without blanks around what the user has typed.
AppConfig trimmed(AppConfig config)
{
    config.serverHost = config.serverHost.trimmed();
    config.serverUser = config.serverUser.trimmed();
    config.serverPort = config.serverPort.trimmed();
    return config;
}

Pairs s3Section(const AppConfig &config, const QString &secret)
{
    return {{QStringLiteral("provider"), QStringLiteral("Other")},
            {QStringLiteral("endpoint"), config.serverHost},
            {QStringLiteral("access_key_id"), config.serverUser},
            {QStringLiteral("secret_access_key"), secret}};
}

/// `password` is obscured, and empty where no secret was given.
Pairs webdavSection(const AppConfig &config, const QString &password)
{
    return {{QStringLiteral("url"), config.serverHost},
            {QStringLiteral("vendor"), QStringLiteral("other")},
            {QStringLiteral("user"), config.serverUser},
            {QStringLiteral("pass"), password}};
}

/// A host without the brackets that an IPv6 address may have around it: ssh-keyscan takes none.
QString withoutBrackets(const QString &host)
{
    return host.startsWith(u'[') && host.endsWith(u']') ? host.sliced(1).chopped(1) : host;
}

/// An IPv6 address in brackets, as rclone puts a colon and the port behind it; any other host as it
/// is.
QString inBrackets(const QString &host)
{
    const QString bare = withoutBrackets(host);
    return bare.count(u':') > 1 ? u'[' + bare + u']' : host;
}

/// What SFTP and SMB share; `password` is obscured, and empty where no secret was given.
Pairs hostSection(const AppConfig &config, const QString &password)
{
    Pairs pairs = {{QStringLiteral("host"), inBrackets(config.serverHost)},
                   {QStringLiteral("user"), config.serverUser}};
    if (!config.serverPort.isEmpty()) {
        pairs.append({QStringLiteral("port"), config.serverPort});
    }
    if (!password.isEmpty()) {
        pairs.append({QStringLiteral("pass"), password});
    }
    return pairs;
}

Pairs sftpSection(const AppConfig &config, const QString &password)
{
    Pairs pairs = hostSection(config, password);
    if (!config.serverKeyFile.isEmpty()) {
        pairs.append({QStringLiteral("key_file"), Paths::expandedHome(config.serverKeyFile)});
    }
    pairs.append({QStringLiteral("known_hosts_file"), knownHosts()});
    return pairs;
}

/// The settings of the section, in rclone's names; absent when the secret can't be obscured.
std::optional<Pairs> section(const AppConfig &config, const QString &secret)
{
    Pairs pairs = {{QStringLiteral("type"), rawValue(config.serverKind)}};
    if (config.serverKind == ServerKind::S3) {
        return pairs + s3Section(config, secret);
    }
    const std::optional<QString> password =
        secret.isEmpty() ? std::optional(QString()) : Rclone::obscure(secret);
    if (!password) {
        return std::nullopt;
    }
    switch (config.serverKind) {
    case ServerKind::Webdav:
        return pairs + webdavSection(config, *password);
    case ServerKind::Smb:
        return pairs + hostSection(config, *password);
    case ServerKind::Sftp:
        return pairs + sftpSection(config, *password);
    case ServerKind::S3:
        break;
    }
    return std::nullopt;
}

/// rclone's words without the addresses in them: a 401 in an address is no refusal.
QString withoutPlaces(QString words, const QString &host)
{
    static const QRegularExpression addresses(
        QStringLiteral(R"(https?://[^\s"]*|(\d+(\.\d+){3}|\[[\da-f:]+\])(:\d+)?)"));
    if (!host.isEmpty()) {
        const QString named =
            QStringLiteral(R"((?<![\w.])%1(:\d+)?(?![\w.]))").arg(QRegularExpression::escape(host));
        words.remove(QRegularExpression(named, QRegularExpression::CaseInsensitiveOption));
    }
    return words.remove(addresses);
}

/// Whether a text holds one of the words.
template <std::size_t count>
bool holdsAny(const QString &text, const std::array<QLatin1String, count> &words)
{
    return std::any_of(words.cbegin(), words.cend(),
                       [&text](QLatin1String word) { return text.contains(word); });
}

} // namespace

std::optional<QString> Rclone::connectServer(const AppConfig &config, const QString &secret)
{
    if (!Tools::find(QStringLiteral("rclone"))) {
        return Texts::tr("rclone non trovato");
    }
    disconnectServer();
    const AppConfig server = trimmed(config);
    const std::optional<Pairs> pairs = section(server, secret);
    if (!pairs) {
        return notConfigured();
    }
    if (server.serverKind == ServerKind::Sftp && !trustHost(server.serverHost, server.serverPort)) {
        return unreachable();
    }
    if (!store(serverRemote, *pairs)) {
        disconnectServer();
        return notConfigured();
    }
    const auto test =
        run(QStringList{QStringLiteral("lsd"), serverRemote + u':'} + RcloneLimits::shortQuery() +
            QStringList{QStringLiteral("--low-level-retries"), QStringLiteral("1")});
    if (test && test->status == 0) {
        return std::nullopt;
    }
    disconnectServer();
    return serverError(test ? test->standardError : QString(), server.serverHost);
}

void Rclone::disconnectServer()
{
    if (run({QStringLiteral("config"), QStringLiteral("delete"), serverRemote})) {
        QFile::remove(knownHosts());
    }
}

void Rclone::pinServerIfNeeded()
{
    if (!Tools::find(QStringLiteral("rclone"))) {
        return;
    }
    const QJsonObject server = remotes().value(serverRemote);
    const QJsonValue host = server.value(QLatin1String("host"));
    const bool isPinned = !server.value(QLatin1String("known_hosts_file")).toString().isEmpty();
    if (server.value(QLatin1String("type")) != QLatin1String("sftp") || isPinned ||
        !host.isString() || !encrypted() ||
        !trustHost(host.toString(), server.value(QLatin1String("port")).toString())) {
        return;
    }
    run({QStringLiteral("config"), QStringLiteral("update"), serverRemote,
         QLatin1String("known_hosts_file=") + knownHosts()});
}

std::optional<QString> Rclone::versioning(const QString &bucket)
{
    if (bucket.isEmpty()) {
        return std::nullopt;
    }
    const auto result = query(
        {QStringLiteral("backend"), QStringLiteral("versioning"), serverRemote + u':' + bucket});
    if (!result || result->status != 0) {
        return std::nullopt;
    }
    // Some versions of rclone print the word as JSON.
    return result->standardOutput.trimmed().remove(u'"');
}

QString Rclone::serverError(const QString &standardError, const QString &host)
{
    static constexpr std::array accessWords = {
        QLatin1String("401"),
        QLatin1String("403"),
        QLatin1String("unable to authenticate"),
        QLatin1String("permission denied"),
        QLatin1String("logon failure"),
        QLatin1String("logon is invalid"), // rclone's words for a logon failure of Windows
        QLatin1String("invalidaccesskeyid"),
        QLatin1String("signaturedoesnotmatch"),
    };
    static constexpr std::array networkWords = {
        QLatin1String("no such host"),     QLatin1String("connection refused"),
        QLatin1String("timeout"),          QLatin1String("timed out"),
        QLatin1String("no route to host"), QLatin1String("network is unreachable"),
    };
    const QString text = withoutPlaces(standardError, host).toLower();
    if (text.contains(QLatin1String("knownhosts"))) {
        return Texts::tr("Il server si presenta con una chiave diversa da quella registrata. Se "
                         "non l'hai cambiato tu, non collegarti da questa rete; altrimenti "
                         "scollega e ricollega il server.");
    }
    if (holdsAny(text, accessWords)) {
        return Texts::tr("Accesso rifiutato: controlla utente e password.");
    }
    if (holdsAny(text, networkWords)) {
        return unreachable();
    }
    return lastError(standardError).value_or(Texts::tr("Server non raggiungibile"));
}

bool Rclone::trustHost(const QString &host, const QString &port)
{
    QStringList arguments = {QStringLiteral("-T"), QStringLiteral("10")};
    if (!port.isEmpty()) {
        arguments << QStringLiteral("-p") << port;
    }
    // So that a host name that begins with a hyphen isn't taken for an option.
    arguments << QStringLiteral("--") << withoutBrackets(host);
    const ProcessResult scan = runProcess(QStringLiteral("/usr/bin/ssh-keyscan"), arguments);
    QStringList keys = scan.standardOutput.split(u'\n', Qt::SkipEmptyParts);
    keys.removeIf([](const QString &line) { return line.startsWith(u'#'); });
    return !keys.isEmpty() && AtomicFile::write(knownHosts(), (keys.join(u'\n') + u'\n').toUtf8());
}

void Rclone::removeAbandonedHostKeys()
{
    AtomicFile::removeAbandoned(knownHosts());
}
