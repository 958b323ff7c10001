#include "ui/design/Formats.h"

#include "state/Fmt.h"

QString Formats::relative(const QDateTime &date)
{
    return Fmt::relative(date);
}

QString Formats::since(const QDateTime &date)
{
    return Fmt::since(date);
}

QString Formats::duration(double seconds)
{
    return Fmt::duration(seconds);
}

QString Formats::dateTime(const QDateTime &date)
{
    return Fmt::dateTime(date);
}

QString Formats::date(const QDateTime &date)
{
    return Fmt::date(date);
}

QString Formats::time(const QDateTime &date)
{
    return Fmt::time(date);
}

QString Formats::day(const QDateTime &date)
{
    return Fmt::day(date);
}

QString Formats::byteCount(qint64 bytes)
{
    return Fmt::byteCount(bytes);
}

QString Formats::number(qint64 count)
{
    return Fmt::number(count);
}
