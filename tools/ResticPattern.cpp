#include "tools/ResticPattern.h"

#include <QDir>
#include <QList>
#include <QRegularExpression>
#include <QStringList>
#include <QStringView>

#include <algorithm>

namespace {

/// Passes over one character of a range in brackets, with the backslash before it; false when there
/// is none.
bool passCharacter(QStringView &rest)
{
    if (rest.startsWith(u'\\')) {
        rest = rest.mid(1);
    } else if (rest.startsWith(u'-') || rest.startsWith(u']')) {
        return false;
    }
    if (rest.isEmpty()) {
        return false;
    }
    rest = rest.mid(rest.at(0).isHighSurrogate() ? 2 : 1);
    return !rest.isEmpty(); // the closing bracket is still to come
}

/// Passes over what stands behind an opening bracket, the closing one included; false when that is
/// wrong.
bool passBrackets(QStringView &rest)
{
    if (rest.startsWith(u'^')) {
        rest = rest.mid(1);
    }
    for (bool isFirst = true; isFirst || !rest.startsWith(u']'); isFirst = false) {
        if (!passCharacter(rest)) {
            return false;
        }
        if (rest.startsWith(u'-')) {
            rest = rest.mid(1);
            if (!passCharacter(rest)) {
                return false;
            }
        }
    }
    rest = rest.mid(1);
    return true;
}

/// Whether brackets and backslashes of a pattern for one name are complete.
bool isComplete(QStringView name)
{
    while (!name.isEmpty()) {
        const QChar character = name.at(0);
        name = name.mid(1);
        if (character == u'[' && !passBrackets(name)) {
            return false;
        }
        if (character == u'\\') {
            if (name.isEmpty()) {
                return false;
            }
            name = name.mid(1);
        }
    }
    return true;
}

/// A line with its environment variables replaced by what restic finds for them.
QString withVariables(const QString &line)
{
    static const QRegularExpression variable(
        QStringLiteral(R"(\$(?:\{([^}]*)\}|(\{)|([*#$@!?\-0-9])|(\w+)))"));
    QString made;
    qsizetype end = 0;
    QRegularExpressionMatchIterator matches = variable.globalMatch(line);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString name = match.captured(1) + match.captured(3) + match.captured(4);
        made += QStringView(line).mid(end, match.capturedStart() - end);
        made += name == QLatin1String("$") ? name : qEnvironmentVariable(qUtf8Printable(name));
        end = match.capturedEnd();
    }
    return made + QStringView(line).mid(end);
}

} // namespace

bool isResticPattern(const QString &pattern)
{
    const QStringList lines = pattern.split(u'\n');
    return std::all_of(lines.cbegin(), lines.cend(), [](const QString &line) {
        const QString text = line.trimmed();
        if (text.startsWith(u'#')) {
            return true; // a comment
        }
        QString path = withVariables(text);
        if (path.startsWith(u'!')) {
            path.remove(0, 1);
        }
        path = QDir::cleanPath(path);
        const QList<QStringView> names = QStringView(path).split(u'/');
        return std::all_of(names.cbegin(), names.cend(), isComplete);
    });
}

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
