#include "state/StatusStore.h"

#include "platform/AtomicFile.h"
#include "state/JSONFile.h"
#include "state/Paths.h"

#include <QFile>
#include <QJsonArray>

#include <algorithm>

namespace {

QString statusFile()
{
    return Paths::supportFile(QStringLiteral("status.json"));
}

QString historyFile()
{
    return Paths::supportFile(QStringLiteral("history.json"));
}

QString stateFile()
{
    return Paths::supportFile(QStringLiteral("state.json"));
}

template <typename Record>
std::optional<Record> decodedObject(const QByteArray &bytes)
{
    const std::optional<QJsonDocument> document = JSONFile::decode(bytes);
    if (!document || !document->isObject()) {
        return std::nullopt;
    }
    return Record::fromJSON(document->object());
}

void collapseRepeatedSkip(QList<RunRecord> &history, const RunRecord &record)
{
    if (record.outcome != Outcome::Skipped) {
        return;
    }
    const auto newest =
        std::find_if(history.cbegin(), history.cend(), [&record](const RunRecord &entry) {
            return entry.destination == record.destination;
        });
    if (newest != history.cend() && newest->outcome == Outcome::Skipped &&
        newest->message == record.message) {
        history.erase(newest);
    }
}

void saveHistory(const QList<RunRecord> &history)
{
    QJsonArray list;
    for (const RunRecord &record : history) {
        list.append(record.toJSON());
    }
    AtomicFile::write(historyFile(), JSONFile::encode(QJsonDocument(list)));
}

QString logLine(const RunRecord &record)
{
    // A record is one line, whatever a tool's message holds.
    QString message = record.message;
    message.replace(u'\n', u' ');
    return JSONFile::dateText(record.date) + QLatin1String(" [") + rawValue(record.destination) +
           QLatin1String("] ") + rawValue(record.outcome) + QLatin1String(": ") + message + u'\n';
}

} // namespace

void StatusStore::write(const RunStatus &status)
{
    // Without fsync: a status means nothing after a power cut, and a busy disk must not delay the
    // thread that reads the tool's output.
    AtomicFile::write(statusFile(), JSONFile::encode(QJsonDocument(status.toJSON())),
                      AtomicFile::Lasting::whileRunning);
}

void StatusStore::clear()
{
    QFile::remove(statusFile());
}

void StatusStore::append(const RunRecord &record)
{
    QList<RunRecord> history = loadHistory();
    collapseRepeatedSkip(history, record);
    history.prepend(record);
    if (history.size() > historyLimit) {
        history.resize(historyLimit);
    }
    saveHistory(history);

    QFile log(Paths::supportFile(QStringLiteral("backup.log")));
    if (log.open(QIODevice::WriteOnly | QIODevice::Append)) {
        log.write(logLine(record).toUtf8());
    }
}

void StatusStore::save(const EngineState &state)
{
    AtomicFile::write(stateFile(), JSONFile::encode(QJsonDocument(state.toJSON())));
}

std::optional<RunStatus> StatusStore::loadStatus()
{
    return decodedStatus(statusBytes());
}

QByteArray StatusStore::statusBytes()
{
    return JSONFile::bytes(statusFile());
}

std::optional<RunStatus> StatusStore::decodedStatus(const QByteArray &bytes)
{
    return decodedObject<RunStatus>(bytes);
}

QList<RunRecord> StatusStore::loadHistory()
{
    return decodedHistory(historyBytes());
}

QByteArray StatusStore::historyBytes()
{
    return JSONFile::bytes(historyFile());
}

QList<RunRecord> StatusStore::decodedHistory(const QByteArray &bytes)
{
    const std::optional<QJsonDocument> document = JSONFile::decode(bytes);
    if (!document || !document->isArray()) {
        return {};
    }
    QList<RunRecord> history;
    const QJsonArray entries = document->array();
    for (const auto entry : entries) {
        const std::optional<RunRecord> record = RunRecord::fromJSON(entry.toObject());
        if (!record) {
            return {};
        }
        history.append(*record);
    }
    return history;
}

EngineState StatusStore::loadState()
{
    return decodedObject<EngineState>(JSONFile::bytes(stateFile())).value_or(EngineState());
}

void StatusStore::removeAbandoned()
{
    for (const QString &file : {statusFile(), historyFile(), stateFile()}) {
        AtomicFile::removeAbandoned(file);
    }
}
