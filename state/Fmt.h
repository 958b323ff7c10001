#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

/// The texts of dates, durations, sizes and counts, for every place that shows one.
///
/// Words come from ICU in the language of the program's own texts, so that "2 ore fa" never stands
/// among sentences of a different language; only region and conventions (order, separators, hours)
/// are the user's. "Now" is that of Clock, days are those of the user's time zone. An invalid date
/// gives an empty text. May be called from any thread.
namespace Fmt {

/// Sets the languages of the program's texts, best first: Italian alone until a translation has
/// been loaded.
void setLocalisations(const QStringList &localisations);

/// The locale of all texts below, as ICU names it ("it_IT").
QString locale();

/// The user's own locale if its language is that of the first localisation ("en" if there are
/// none), otherwise the locale of that localisation. `current` may be in the environment's form
/// ("it_IT.UTF-8", "C", empty).
QString localeFor(const QStringList &localisations, const QString &current);

/// "adesso" within a minute, otherwise the largest whole unit: "2 ore fa", "tra 3 giorni".
QString relative(const QDateTime &date);

/// The age in its largest useful unit: "<1 min", "5 min", "47 h", "2 g".
QString since(const QDateTime &date);

/// A duration in seconds: "42 s", "5 min", "1 h 0 min".
QString duration(double seconds);

/// "16 mag 2026, 14:30".
QString dateTime(const QDateTime &date);
/// "16 maggio 2026".
QString date(const QDateTime &date);
/// "14:30".
QString time(const QDateTime &date);
/// "Oggi", "Ieri", otherwise "sabato 16 maggio".
QString day(const QDateTime &date);

/// A size in decimal units, rounded to the usual digits of its unit: "Zero kB", "512 byte",
/// "84 kB", "1,2 MB", "3,07 GB".
QString byteCount(qint64 bytes);

/// A count with its digits grouped: "1.234.567".
QString number(qint64 count);

} // namespace Fmt
