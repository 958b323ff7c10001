#include "tools/Node.h"

#include "tools/JSONValues.h"
#include "tools/ResticMessage.h"

#include <QCollator>
#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace {

// Numbers in names are compared by their value, as in a file manager. The C locale can't do that.
QCollator naturalOrder()
{
    QLocale locale;
    if (locale.language() == QLocale::C) {
        locale = QLocale(QLocale::Italian);
    }
    QCollator collator(locale);
    collator.setNumericMode(true);
    return collator;
}

enum class Folders { first, among };

QList<Node> sorted(const QList<Node> &nodes, Folders folders)
{
    struct Entry
    {
        bool isBehind;
        QCollatorSortKey key;
        qsizetype index;
    };
    const QCollator collator = naturalOrder();
    std::vector<Entry> entries;
    entries.reserve(static_cast<size_t>(nodes.size()));
    for (qsizetype i = 0; i < nodes.size(); ++i) {
        entries.push_back({folders == Folders::first && !nodes.at(i).isDir,
                           collator.sortKey(nodes.at(i).name), i});
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) {
        return a.isBehind != b.isBehind ? b.isBehind : a.key.compare(b.key) < 0;
    });
    QList<Node> result;
    result.reserve(nodes.size());
    for (const Entry &entry : entries) {
        result.append(nodes.at(entry.index));
    }
    return result;
}

Node nodeFrom(const QJsonObject &object, const QString &path, const QString &name)
{
    const auto modified = text(object, QLatin1String("mtime"));
    return {path, name, object.value(QLatin1String("type")) == QLatin1String("dir"),
            int64(object, QLatin1String("size")),
            modified ? parseResticDate(*modified) : std::nullopt};
}

} // namespace

QList<Node> Node::listedIn(const QString &folder, const QString &lines)
{
    QList<Node> nodes;
    for (const QStringView line : QStringView(lines).split(u'\n', Qt::SkipEmptyParts)) {
        const std::optional<ResticMessage> message = ResticMessage::parse(line);
        if (!message || message->type != QLatin1String("node")) {
            continue;
        }
        const auto nodePath = text(message->fields, QLatin1String("path"));
        const auto name = text(message->fields, QLatin1String("name"));
        // restic lists the folder itself too, and it isn't its own child.
        if (nodePath && name && *nodePath != folder) {
            nodes.append(nodeFrom(message->fields, *nodePath, *name));
        }
    }
    return sorted(nodes, Folders::first);
}

std::optional<QList<Node>> Node::foundIn(const QString &json)
{
    const auto entries = objectsOfDocument(json);
    if (!entries) {
        return std::nullopt;
    }
    QList<Node> nodes;
    for (const QJsonObject &entry : *entries) {
        const auto matches = objects(entry.value(QLatin1String("matches")));
        for (const QJsonObject &match : matches.value_or(QList<QJsonObject>())) {
            if (const auto path = text(match, QLatin1String("path"))) {
                nodes.append(nodeFrom(match, *path, QFileInfo(*path).fileName()));
            }
        }
    }
    return sorted(nodes, Folders::among);
}
