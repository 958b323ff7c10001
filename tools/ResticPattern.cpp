#include "tools/ResticPattern.h"

#include <QRegularExpression>

QString escapedPattern(QString text)
{
    static const QRegularExpression wildcard(QStringLiteral(R"(([\\*?\[]))"));
    text.replace(wildcard, QStringLiteral(R"(\\1)"));
    // In restic's JSON this stands for a byte that isn't UTF-8. It matches such a byte only within
    // brackets.
    return text.replace(QChar(QChar::ReplacementCharacter), QStringLiteral("[\uFFFD]"));
}

QString excludeLine(const QString &path)
{
    // In such a file $ begins an environment variable, two of them stand for one, and a line feed
    // ends the pattern.
    return escapedPattern(path).replace(u'$', QLatin1String("$$")).replace(u'\n', u'?');
}
