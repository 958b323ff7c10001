#include "tools/ResticBackup.h"

#include "state/Paths.h"
#include "tools/JSONValues.h"
#include "tools/ResticMessage.h"

#include <QJsonArray>

#include <algorithm>
#include <utility>

namespace {

QStringList backupArguments(const Restic &restic, const QStringList &sources,
                            const QString &excludeFile)
{
    QStringList arguments{QStringLiteral("backup"),         QStringLiteral("--json"),
                          QStringLiteral("--tag"),          QStringLiteral("vellomar"),
                          QStringLiteral("--host"),         Paths::hostname(),
                          QStringLiteral("--exclude-file"), excludeFile};
    if (restic.config.excludeCaches) {
        arguments.append(QStringLiteral("--exclude-caches"));
    }
    // MiB; bigger packs mean fewer requests over a network.
    if (restic.dest != DestinationID::Local) {
        arguments << QStringLiteral("--pack-size") << QStringLiteral("64");
    }
    return arguments + QStringList{QStringLiteral("--")} + sources;
}

bool isError(const ResticMessage &message)
{
    return message.type == QLatin1String("error");
}

std::optional<QString> firstFile(const QJsonObject &fields)
{
    const QJsonArray files = fields.value(QLatin1String("current_files")).toArray();
    const bool allTexts = std::all_of(files.cbegin(), files.cend(),
                                      [](const QJsonValue &file) { return file.isString(); });
    return files.isEmpty() || !allTexts ? std::nullopt : std::optional(files.first().toString());
}

ResticBackup::Status statusOf(const QJsonObject &fields)
{
    static constexpr QLatin1String remaining("seconds_remaining");
    return {.fractionDone = number(fields, QLatin1String("percent_done")),
            .filesDone = int64(fields, QLatin1String("files_done")),
            .totalFiles = int64(fields, QLatin1String("total_files")),
            .bytesDone = int64(fields, QLatin1String("bytes_done")),
            .totalBytes = int64(fields, QLatin1String("total_bytes")),
            .secondsRemaining =
                fields.contains(remaining) ? std::optional(int64(fields, remaining)) : std::nullopt,
            .currentFile = firstFile(fields)};
}

} // namespace

ResticBackup::ResticBackup(StatusReceiver onStatus)
    : m_onStatus(std::move(onStatus))
{
}

tl::expected<ResticBackup::Result, ResticError> ResticBackup::run(const Restic &restic,
                                                                  const QStringList &sources,
                                                                  const QString &excludeFile,
                                                                  ProcessHandle *handle)
{
    const ProcessResult ended = restic.run(backupArguments(restic, sources, excludeFile), handle,
                                           [this](const QString &line) { handleLine(line); });
    handleErrors(ended.standardError);
    const bool someUnreadable = ended.status == ResticExit::someFilesUnreadable;
    if (ended.status != 0 && !someUnreadable) {
        return tl::unexpected(Restic::describe(ended));
    }
    // Only the exit code says whether the version lacks files.
    m_result.unreadable = someUnreadable ? std::max(m_result.unreadable, 1) : 0;
    return m_result;
}

void ResticBackup::handleLine(const QString &line)
{
    const std::optional<ResticMessage> message = ResticMessage::parse(line);
    if (!message) {
        return;
    }
    const QJsonObject &fields = message->fields;
    if (message->type == QLatin1String("summary")) {
        m_result.version = fields.value(QLatin1String("snapshot_id")).toString();
        m_result.filesNew = int64(fields, QLatin1String("files_new"));
        m_result.filesChanged = int64(fields, QLatin1String("files_changed"));
        m_result.dataAdded = int64(fields, QLatin1String("data_added_packed"));
    } else if (isError(*message)) {
        ++m_result.unreadable;
    } else if (message->type == QLatin1String("status")) {
        m_onStatus(statusOf(fields));
    }
}

void ResticBackup::handleErrors(const QString &standardError)
{
    const auto lines = QStringView(standardError).split(u'\n', Qt::SkipEmptyParts);
    for (const QStringView line : lines) {
        const std::optional<ResticMessage> message = ResticMessage::parse(line);
        if (message && isError(*message)) {
            ++m_result.unreadable;
        }
    }
}
