#include "engine/ExcludeFile.h"

#include "engine/Sources.h"
#include "platform/AtomicFile.h"
#include "state/Paths.h"
#include "tools/ResticPattern.h"

#include <QStringList>

QString ExcludeFile::path()
{
    return Paths::supportFile(QStringLiteral("excludes.txt"));
}

QString ExcludeFile::content(const AppConfig &config)
{
    const QStringList sources = Sources::existing(config);
    const QList<Sources::Link> links = Sources::links(sources);
    QStringList patterns;
    for (const QString &setting : config.excludes) {
        const QString pattern = Paths::expandedHome(setting);
        patterns.append(pattern);
        for (const Sources::Link &link : links) {
            if (pattern.startsWith(link.path + u'/')) {
                patterns.append(excludeLine(link.target) + pattern.sliced(link.path.size()));
            }
        }
    }
    if (config.localEnabled) {
        for (const QString &way :
             Sources::waysTo(config.repository(DestinationID::Local), sources)) {
            patterns.append(excludeLine(way));
        }
    }
    return patterns.join(u'\n');
}

void ExcludeFile::write(const AppConfig &config)
{
    AtomicFile::write(path(), content(config).toUtf8());
}
