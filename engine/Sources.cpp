#include "engine/Sources.h"

#include "platform/MountPoint.h"
#include "state/Paths.h"

#include <QFileInfo>

namespace {

// How many links in a row the system follows.
constexpr int longestWay = 40;

/// A source, the links that it leads through, and their target.
QStringList wayOf(const QString &source)
{
    QStringList way;
    QString step = source;
    while (QFileInfo(step).isSymLink() && way.size() < longestWay) {
        way.append(step);
        step = QFileInfo(step).symLinkTarget();
    }
    way.append(way.isEmpty() ? source : QFileInfo(source).canonicalFilePath());
    return way;
}

QString withSlash(const QString &folder)
{
    return folder.endsWith(u'/') ? folder : QString(folder + u'/');
}

} // namespace

QStringList Sources::existing(const AppConfig &config)
{
    QStringList sources;
    for (const QString &setting : config.sources) {
        const QString source = Paths::inFull(setting);
        if (QFileInfo::exists(source)) {
            sources += wayOf(source);
        }
    }
    sources.removeDuplicates();
    return sources;
}

QList<Sources::Link> Sources::links(const QStringList &sources)
{
    QList<Link> links;
    for (const QString &source : sources) {
        const QFileInfo info(source);
        if (info.isSymLink()) {
            links.append({source, info.canonicalFilePath()});
        }
    }
    return links;
}

QStringList Sources::waysTo(const QString &folder, const QStringList &sources)
{
    QStringList ways{folder};
    const QString real = QFileInfo(folder).canonicalFilePath();
    if (real.isEmpty()) {
        return ways;
    }
    for (const QString &place : QStringList{real} + otherMountsOf(real)) {
        ways.append(place);
        for (const QString &source : sources) {
            const QString beginning = withSlash(QFileInfo(source).canonicalFilePath());
            if (place.startsWith(beginning)) {
                ways.append(withSlash(source) + place.sliced(beginning.size()));
            }
        }
    }
    ways.removeDuplicates();
    return ways;
}
