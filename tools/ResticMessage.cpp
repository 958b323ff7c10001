#include "tools/ResticMessage.h"

#include "state/JSONFile.h"

#include <QJsonDocument>

#include <utility>

std::optional<ResticMessage> ResticMessage::parse(QStringView line)
{
    const auto document = JSONFile::decode(line.toUtf8());
    if (!document || !document->isObject()) {
        return std::nullopt;
    }
    QJsonObject fields = document->object();
    const QJsonValue type = fields.value(QLatin1String("message_type"));
    if (!type.isString()) {
        return std::nullopt;
    }
    return ResticMessage{type.toString(), std::move(fields)};
}
