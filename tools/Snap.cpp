#include "tools/Snap.h"

#include "tools/JSONValues.h"

#include <QJsonArray>

#include <algorithm>

namespace {

std::optional<Snap> snapFrom(const QJsonObject &object)
{
    const auto id = text(object, QLatin1String("id"));
    const auto time = text(object, QLatin1String("time"));
    const auto date = time ? parseResticDate(*time) : std::nullopt;
    if (!id || !date) {
        return std::nullopt;
    }
    QStringList paths;
    const QJsonArray folders = object.value(QLatin1String("paths")).toArray();
    for (const auto folder : folders) {
        if (!folder.isString()) {
            paths.clear();
            break;
        }
        paths.append(folder.toString());
    }
    return Snap{*id, text(object, QLatin1String("short_id")).value_or(id->left(8)), *date, paths,
                text(object, QLatin1String("hostname")).value_or(QString())};
}

} // namespace

std::optional<QList<Snap>> Snap::listFrom(const QString &json)
{
    const auto entries = objectsOfDocument(json);
    if (!entries) {
        return std::nullopt;
    }
    QList<Snap> snaps;
    for (const QJsonObject &entry : *entries) {
        if (const auto snap = snapFrom(entry)) {
            snaps.append(*snap);
        }
    }
    std::stable_sort(snaps.begin(), snaps.end(),
                     [](const Snap &a, const Snap &b) { return a.date > b.date; });
    return snaps;
}
