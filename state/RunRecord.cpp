#include "state/RunRecord.h"

#include "platform/Clock.h"
#include "state/JSONFile.h"
#include "state/JSONReader.h"

RunRecord RunRecord::starting(DestinationID destination)
{
    RunRecord record;
    record.id = QUuid::createUuid();
    record.date = Clock::now();
    record.destination = destination;
    return record;
}

QJsonObject RunRecord::toJSON() const
{
    QJsonObject object{
        {QStringLiteral("id"), id.toString(QUuid::WithoutBraces)},
        {QStringLiteral("date"), JSONFile::dateText(date)},
        {QStringLiteral("destination"), rawValue(destination)},
        {QStringLiteral("outcome"), rawValue(outcome)},
        {QStringLiteral("message"), message},
        {QStringLiteral("filesNew"), filesNew},
        {QStringLiteral("filesChanged"), filesChanged},
        {QStringLiteral("dataAdded"), dataAdded},
        {QStringLiteral("duration"), duration},
    };
    if (kind) {
        object.insert(QStringLiteral("kind"), *kind);
    }
    return object;
}

std::optional<RunRecord> RunRecord::fromJSON(const QJsonObject &object)
{
    JSONReader reader(object);
    RunRecord record;
    const QString id = reader.text("id");
    record.id = QUuid::fromString(id);
    record.date = reader.date("date");
    record.destination = reader.named("destination", destinationID);
    record.outcome = reader.named("outcome", ::outcome);
    record.message = reader.text("message");
    record.filesNew = reader.integer("filesNew");
    record.filesChanged = reader.integer("filesChanged");
    record.dataAdded = reader.integer("dataAdded");
    record.duration = reader.real("duration");
    record.kind = reader.optionalText("kind");
    // Qt passes over what follows a good beginning, and takes braces.
    const bool isPlainID =
        record.id.toString(QUuid::WithoutBraces).compare(id, Qt::CaseInsensitive) == 0;
    if (!reader.isGood() || !isPlainID) {
        return std::nullopt;
    }
    return record;
}
