#include "engine/ExcludeFile.h"

#include "platform/AtomicFile.h"
#include "state/Paths.h"
#include "tools/Restic.h"

#include <QStringList>

namespace {

// A path as a pattern that means just this path: restic takes wildcards, puts in environment
// variables at each $ (two of them stand for one) and ends a pattern at the line's end.
QString asPattern(const QString &path)
{
    return escapedPattern(path).replace(u'$', QLatin1String("$$")).replace(u'\n', u'?');
}

} // namespace

QString ExcludeFile::path()
{
    return Paths::supportFile(QStringLiteral("excludes.txt"));
}

QString ExcludeFile::content(const AppConfig &config)
{
    QStringList patterns;
    for (const QString &pattern : config.excludes) {
        patterns.append(Paths::expandedHome(pattern));
    }
    if (config.localEnabled) {
        patterns.append(asPattern(config.repository(DestinationID::local)));
    }
    return patterns.join(u'\n');
}

void ExcludeFile::write(const AppConfig &config)
{
    AtomicFile::write(path(), content(config).toUtf8());
}
