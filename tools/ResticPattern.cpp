#include "tools/ResticPattern.h"

#include <QList>
#include <QRegularExpression>
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

} // namespace

bool isResticPattern(const QString &pattern)
{
    const QList<QStringView> names = QStringView(pattern).split(u'/');
    return std::all_of(names.cbegin(), names.cend(), isComplete);
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
