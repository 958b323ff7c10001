#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonDocument>
#include <QString>

#include <optional>

/// The form of all our JSON files: UTF-8, pretty-printed, keys sorted, dates as ISO 8601 text in
/// UTC with whole seconds and a "Z" at the end. Equal values give equal bytes.
namespace JSONFile {

QByteArray encode(const QJsonDocument &document);

/// Absent for bytes that aren't JSON.
std::optional<QJsonDocument> decode(const QByteArray &bytes);

/// All bytes of a file; empty when it can't be read.
QByteArray bytes(const QString &path);

/// Reads and decodes a file; absent on any failure.
std::optional<QJsonDocument> read(const QString &path);

/// A date as it stands in our files.
QString dateText(const QDateTime &date);

/// Reads "2024-03-01T10:00:00Z", or an offset such as +01:00 in place of the Z. Absent for anything
/// else, a fraction of a second included.
std::optional<QDateTime> date(const QString &text);

} // namespace JSONFile
