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
    record.id = QUuid::fromString(reader.text("id"));
    record.date = reader.date("date");
    record.destination = reader.named("destination", destinationID);
    record.outcome = reader.named("outcome", ::outcome);
    record.message = reader.text("message");
    record.filesNew = reader.integer("filesNew");
    record.filesChanged = reader.integer("filesChanged");
    record.dataAdded = reader.integer("dataAdded");
    record.duration = reader.real("duration");
    record.kind = reader.optionalText("kind");
    if (!reader.isGood() || record.id.isNull()) {
        return std::nullopt;
    }
    return record;
}
