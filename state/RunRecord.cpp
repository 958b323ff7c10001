#include "state/RunRecord.h"

#include "platform/Clock.h"
#include "state/FieldsJSON.h"

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
    return FieldsJSON::encoded(*this);
}

std::optional<RunRecord> RunRecord::fromJSON(const QJsonObject &object)
{
    return FieldsJSON::decoded<RunRecord>(object);
}
