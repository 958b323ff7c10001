#include "tools/Rclone.h"

#include "state/JSONFile.h"
#include "state/Keychain.h"
#include "state/Paths.h"
#include "tools/RcloneLimits.h"
#include "tools/TemporaryName.h"
#include "tools/Tools.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <filesystem>
#include <mutex>

#include <unistd.h>

namespace {

using Stamp = std::filesystem::file_time_type;

struct Cache
{
    Stamp stamp;
    Rclone::Remotes remotes;
};

QString configFile()
{
    return Paths::supportFile(QStringLiteral("rclone.conf"));
}

/// Date of the file's last change; the distant past when there is no file.
Stamp currentStamp()
{
    std::error_code failure;
    const Stamp stamp = std::filesystem::last_write_time(
        std::filesystem::path(QFile::encodeName(configFile()).toStdString()), failure);
    return failure ? Stamp::min() : stamp;
}

// rclone replaces its file in two steps: it renames the old file, then the new one. If it was
// killed between them, only the renamed old one is left.
void bringBackSetAside()
{
    const QFileInfo file(configFile());
    if (file.exists()) {
        return;
    }
    const QFileInfoList setAside =
        file.dir().entryInfoList({file.fileName() + QLatin1String(".old*")},
                                 QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Time);
    for (const QFileInfo &old : setAside) {
        if (withoutTemporaryNumber(old.fileName()) != QLatin1String("rclone.conf.old")) {
            continue; // a copy of the user's own
        }
        const QByteArray path = QFile::encodeName(old.filePath());
        // link() fails where the new file has come meanwhile, and replaces nothing.
        if (old.size() > 0 &&
            ::link(path.constData(), QFile::encodeName(configFile()).constData()) == 0) {
            ::unlink(path.constData());
            return;
        }
    }
}

Rclone::Remotes dumpedRemotes()
{
    const auto result = Rclone::run({QStringLiteral("config"), QStringLiteral("dump")});
    if (!result) {
        return {};
    }
    const auto document = JSONFile::decode(result->standardOutput.toUtf8());
    if (!document || !document->isObject()) {
        return {};
    }
    Rclone::Remotes remotes;
    const QJsonObject sections = document->object();
    for (auto section = sections.constBegin(); section != sections.constEnd(); ++section) {
        if (!section.value().isObject()) {
            return {};
        }
        remotes.insert(section.key(), section.value().toObject());
    }
    return remotes;
}

std::optional<ProcessResult> runWith(const ChildProcess::Environment &more,
                                     const QStringList &arguments, ProcessHandle *handle)
{
    const std::optional<QString> rclone = Tools::find(QStringLiteral("rclone"));
    if (!rclone) {
        return std::nullopt;
    }
    static_cast<void>(Rclone::encrypted());
    const Rclone::ConfigEnvironment environment;
    ChildProcess::Environment variables = environment.variables();
    variables.insert(more);
    return runProcess(*rclone, arguments, {.env = variables, .handle = handle});
}

} // namespace

Rclone::Remotes Rclone::remotes()
{
    // Held while rclone runs: a second thread waits for the cache and starts no rclone of its own.
    static std::mutex cacheLock;
    static std::optional<Cache> cache;

    const std::lock_guard lock(cacheLock);
    const Stamp stamp = currentStamp();
    if (!cache || cache->stamp != stamp) {
        cache = Cache{stamp, dumpedRemotes()};
    }
    return cache->remotes;
}

bool Rclone::isConfigured()
{
    return remotes().value(driveRemote).contains(QLatin1String("token"));
}

std::optional<QString> Rclone::obscure(const QString &text)
{
    const std::optional<QString> rclone = Tools::find(QStringLiteral("rclone"));
    // rclone reads a single line, without the characters that end it.
    if (!rclone || text.contains(u'\n') || text.endsWith(u'\r')) {
        return std::nullopt;
    }
    const ProcessResult result =
        runProcess(*rclone, {QStringLiteral("obscure"), QStringLiteral("-")}, {.input = text});
    const QString obscured = result.standardOutput.trimmed();
    if (result.status != 0 || obscured.isEmpty()) {
        return std::nullopt;
    }
    return obscured;
}

std::optional<QString> Rclone::lastError(const QString &standardError)
{
    static const QRegularExpression dateAndLevel(
        QStringLiteral(R"(^[\d/]+ [\d:]+ \w+\s*: (Fatal error: )?)"));
    const QStringList lines = standardError.split(u'\n', Qt::SkipEmptyParts);
    if (lines.isEmpty()) {
        return std::nullopt;
    }
    QString sentence = lines.last();
    return sentence.remove(dateAndLevel);
}

std::optional<ProcessResult> Rclone::run(const QStringList &arguments, ProcessHandle *handle)
{
    return runWith({}, arguments, handle);
}

std::optional<ProcessResult> Rclone::query(const QStringList &arguments)
{
    // Otherwise rclone's lower layers make ten tries of each one, which takes minutes when a server
    // is down.
    return runWith({{QStringLiteral("RCLONE_LOW_LEVEL_RETRIES"), QStringLiteral("1")}},
                   arguments + RcloneLimits::shortQuery(), nullptr);
}

const std::optional<QString> &Rclone::configKey()
{
    static const std::optional<QString> key = []() -> std::optional<QString> {
        const auto stored = Keychain::loadOrCreate(Keychain::rcloneConfigKey);
        return stored ? std::optional(*stored) : std::nullopt;
    }();
    return key;
}

bool Rclone::isEncrypted(const QString &path)
{
    QFile file(path);
    // Every file that rclone has encrypted begins like this.
    return file.open(QIODevice::ReadOnly) && file.read(40).startsWith("# Encrypted");
}

bool Rclone::encrypted()
{
    static std::mutex oneAtATime;
    const std::lock_guard lock(oneAtATime);
    const std::optional<QString> rclone = Tools::find(QStringLiteral("rclone"));
    if (!rclone) {
        return false;
    }
    if (!configKey()) {
        return true;
    }
    bringBackSetAside();
    if (!isEncrypted(configFile())) {
        const ConfigEnvironment environment;
        // rclone ends with 0 even when it couldn't save the file or got no key, so only the file
        // itself says whether it worked.
        runProcess(*rclone,
                   {QStringLiteral("config"), QStringLiteral("encryption"), QStringLiteral("set")},
                   {.env = environment.variables()});
    }
    return isEncrypted(configFile());
}

Rclone::ConfigEnvironment::ConfigEnvironment(const QString &file)
{
    m_variables.insert(QStringLiteral("RCLONE_CONFIG"), file.isEmpty() ? configFile() : file);
    if (!configKey()) {
        return;
    }
    m_key = OneShotSecret::create(*configKey());
    const std::optional<QString> command = m_key ? m_key->command() : std::nullopt;
    if (command) {
        m_variables.insert(QStringLiteral("RCLONE_PASSWORD_COMMAND"), *command);
    }
}
