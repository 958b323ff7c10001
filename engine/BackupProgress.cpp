#include "engine/BackupProgress.h"

#include "platform/Clock.h"
#include "state/JSONFile.h"
#include "state/StatusStore.h"
#include "state/Texts.h"
#include "tools/JSONValues.h"

#include <QJsonArray>

#include <unistd.h>

namespace {

/// The object of one line of restic's and the text of its `message_type`.
struct Message
{
    QString type;
    QJsonObject object;
};

std::optional<Message> parsed(const QString &line)
{
    auto document = JSONFile::decode(line.toUtf8());
    if (!document || !document->isObject()) {
        return std::nullopt;
    }
    QJsonObject object = document->object();
    const QJsonValue type = object.value(QLatin1String("message_type"));
    if (!type.isString()) {
        return std::nullopt;
    }
    return Message{type.toString(), std::move(object)};
}

bool isError(const Message &message)
{
    return message.type == QLatin1String("error");
}

std::optional<QString> firstFile(const QJsonObject &message)
{
    const QJsonValue files = message.value(QLatin1String("current_files"));
    const QJsonArray list = files.toArray();
    for (const auto file : list) {
        if (!file.isString()) {
            return std::nullopt;
        }
    }
    return list.isEmpty() ? std::nullopt : std::optional(list.first().toString());
}

} // namespace

BackupProgress::BackupProgress(DestinationID destination, const QDateTime &startedAt,
                               WriteTime &lastWrite)
    : m_lastWrite(lastWrite)
{
    m_status.pid = ::getpid();
    m_status.startedAt = startedAt;
    m_status.destination = destination;
}

void BackupProgress::enter(const QString &phase)
{
    m_status.phase = phase;
    StatusStore::write(m_status);
}

void BackupProgress::enterWhole(const QString &phase)
{
    m_status.percent = 1.0;
    m_status.currentFile.reset();
    enter(phase);
}

void BackupProgress::handleLine(const QString &line)
{
    const std::optional<Message> message = parsed(line);
    if (!message) {
        return;
    }
    if (message->type == QLatin1String("summary")) {
        m_summary = message->object;
    } else if (isError(*message)) {
        ++m_errorCount;
    } else if (message->type == QLatin1String("status")) {
        takeStatus(message->object);
        writeThrottled();
    }
}

void BackupProgress::countErrors(const QString &standardError)
{
    const QStringList lines = standardError.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const std::optional<Message> message = parsed(line);
        if (message && isError(*message)) {
            ++m_errorCount;
        }
    }
}

void BackupProgress::summarise(RunRecord &record) const
{
    record.filesNew = int64(m_summary, QLatin1String("files_new"));
    record.filesChanged = int64(m_summary, QLatin1String("files_changed"));
    record.dataAdded = int64(m_summary, QLatin1String("data_added_packed"));
}

QString BackupProgress::version() const
{
    return m_summary.value(QLatin1String("snapshot_id")).toString();
}

void BackupProgress::takeStatus(const QJsonObject &message)
{
    m_status.phase = Texts::tr("Copia dei file");
    m_status.percent = number(message, QLatin1String("percent_done"));
    m_status.filesDone = int64(message, QLatin1String("files_done"));
    m_status.totalFiles = int64(message, QLatin1String("total_files"));
    m_status.bytesDone = int64(message, QLatin1String("bytes_done"));
    m_status.totalBytes = int64(message, QLatin1String("total_bytes"));
    static constexpr QLatin1String remaining("seconds_remaining");
    m_status.secondsRemaining =
        message.contains(remaining) ? std::optional(int64(message, remaining)) : std::nullopt;
    m_status.currentFile = firstFile(message);
}

void BackupProgress::writeThrottled()
{
    static constexpr auto pause = std::chrono::milliseconds(700);
    const auto now = Clock::steady();
    if (!m_lastWrite || now - *m_lastWrite > pause) {
        m_lastWrite = now;
        StatusStore::write(m_status);
    }
}
