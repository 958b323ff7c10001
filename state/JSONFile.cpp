#include "state/JSONFile.h"

#include <QFile>
#include <QJsonParseError>
#include <QRegularExpression>

QByteArray JSONFile::encode(const QJsonDocument &document)
{
    // Objects of QJsonDocument keep their keys sorted.
    return document.toJson(QJsonDocument::Indented);
}

std::optional<QJsonDocument> JSONFile::decode(const QByteArray &bytes)
{
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        return std::nullopt;
    }
    return document;
}

QByteArray JSONFile::bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::optional<QJsonDocument> JSONFile::read(const QString &path)
{
    return decode(bytes(path));
}

QString JSONFile::dateText(const QDateTime &date)
{
    return date.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ"));
}

std::optional<QDateTime> JSONFile::date(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral(R"(\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d(Z|[+-]\d\d:?\d\d)\z)"));
    if (!form.match(text).hasMatch()) {
        return std::nullopt;
    }
    const QDateTime date = QDateTime::fromString(text, Qt::ISODate);
    if (!date.isValid()) {
        return std::nullopt;
    }
    return date.toUTC();
}
