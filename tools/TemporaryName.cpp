#include "tools/TemporaryName.h"

#include <QRegularExpression>

#include <limits>

std::optional<QString> withoutTemporaryNumber(const QString &name)
{
    static const QRegularExpression form(QStringLiteral(R"(\A(.*[^0-9])([1-9][0-9]{6,9})\z)"),
                                         QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression date(
        QStringLiteral(R"(\A(19|20)[0-9]{2}(0[1-9]|1[0-2])(0[1-9]|[12][0-9]|3[01])\z)"));
    const QRegularExpressionMatch match = form.match(name);
    const QString number = match.captured(2);
    if (!match.hasMatch() || number.toULongLong() > std::numeric_limits<quint32>::max() ||
        date.match(number).hasMatch()) {
        return std::nullopt;
    }
    return match.captured(1);
}
