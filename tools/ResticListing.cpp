#include "state/JSONFile.h"
#include "tools/JSONValues.h"
#include "tools/Restic.h"
#include "tools/ResticMessage.h"

#include <QCollator>
#include <QFileInfo>
#include <QJsonArray>
#include <QRegularExpression>

#include <algorithm>
#include <utility>
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

std::optional<QString> textOf(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QDateTime> dateOf(const QJsonObject &object, QLatin1String key)
{
    const auto text = textOf(object, key);
    return text ? parseResticDate(*text) : std::nullopt;
}

Node nodeFrom(const QJsonObject &object, const QString &path, const QString &name)
{
    return {path, name, object.value(QLatin1String("type")) == QLatin1String("dir"),
            int64(object, QLatin1String("size")), dateOf(object, QLatin1String("mtime"))};
}

/// A list whose elements are all objects; absent for anything else.
std::optional<QList<QJsonObject>> objects(const QJsonValue &value)
{
    if (!value.isArray()) {
        return std::nullopt;
    }
    QList<QJsonObject> result;
    const QJsonArray elements = value.toArray();
    for (const auto element : elements) {
        if (!element.isObject()) {
            return std::nullopt;
        }
        result.append(element.toObject());
    }
    return result;
}

std::optional<QList<QJsonObject>> parsedList(const QString &text)
{
    const auto document = JSONFile::decode(text.toUtf8());
    return document && document->isArray() ? objects(document->array()) : std::nullopt;
}

std::optional<Snap> snapFrom(const QJsonObject &object)
{
    const auto id = textOf(object, QLatin1String("id"));
    const auto date = dateOf(object, QLatin1String("time"));
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
    return Snap{*id, textOf(object, QLatin1String("short_id")).value_or(id->left(8)), *date, paths,
                textOf(object, QLatin1String("hostname")).value_or(QString())};
}

QString insideOf(const QString &folder, const QString &name)
{
    return folder.endsWith(u'/') ? folder + name : QString(folder + u'/' + name);
}

} // namespace

tl::expected<QList<Snap>, ResticError> Restic::snapshots() const
{
    const ProcessResult result = run({QStringLiteral("snapshots"), QStringLiteral("--json")});
    if (result.status == ResticExit::noRepository) {
        return QList<Snap>();
    }
    const auto entries = parsedList(result.standardOutput);
    if (result.status != 0 || !entries) {
        return tl::unexpected(describe(result));
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

std::optional<qint64> Restic::repositorySize() const
{
    const ProcessResult result = run({QStringLiteral("stats"), QStringLiteral("--json"),
                                      QStringLiteral("--mode"), QStringLiteral("raw-data")});
    const auto document = JSONFile::decode(result.standardOutput.toUtf8());
    if (result.status != 0 || !document || !document->isObject()) {
        return std::nullopt;
    }
    return int64(document->object(), QLatin1String("total_size"));
}

tl::expected<QList<Node>, ResticError> Restic::list(const QString &snapshot,
                                                    const QString &path) const
{
    const ProcessResult result =
        run({QStringLiteral("ls"), QStringLiteral("--json"), snapshot, path});
    if (result.status != 0) {
        return tl::unexpected(describe(result));
    }
    QList<Node> nodes;
    const auto lines = QStringView(result.standardOutput).split(u'\n', Qt::SkipEmptyParts);
    for (const QStringView line : lines) {
        const std::optional<ResticMessage> message = ResticMessage::parse(line);
        if (!message || message->type != QLatin1String("node")) {
            continue;
        }
        const auto nodePath = textOf(message->fields, QLatin1String("path"));
        const auto name = textOf(message->fields, QLatin1String("name"));
        // restic lists the folder itself too, and it isn't its own child.
        if (nodePath && name && *nodePath != path) {
            nodes.append(nodeFrom(message->fields, *nodePath, *name));
        }
    }
    return sorted(nodes, Folders::first);
}

tl::expected<QList<Node>, ResticError> Restic::find(const QString &snapshot,
                                                    const QString &term) const
{
    const ProcessResult result =
        run({QStringLiteral("find"), QStringLiteral("--json"), QStringLiteral("-i"),
             QStringLiteral("--snapshot"), snapshot, QString(u'*' + escapedPattern(term) + u'*')});
    const auto entries = parsedList(result.standardOutput);
    if (result.status != 0 || !entries) {
        return tl::unexpected(describe(result));
    }
    QList<Node> nodes;
    for (const QJsonObject &entry : *entries) {
        const auto matches = objects(entry.value(QLatin1String("matches")));
        for (const QJsonObject &match : matches.value_or(QList<QJsonObject>())) {
            if (const auto path = textOf(match, QLatin1String("path"))) {
                nodes.append(nodeFrom(match, *path, QFileInfo(*path).fileName()));
            }
        }
    }
    return sorted(nodes, Folders::among);
}

QStringList Restic::restoreArguments(const QString &snapshot, const Node &node,
                                     const std::optional<QString> &target) const
{
    const QString restore = QStringLiteral("restore");
    const QString json = QStringLiteral("--json");
    const QString into = QStringLiteral("--target");
    if (node.isDir) {
        return {restore, snapshot + u':' + node.path, into,
                target ? insideOf(*target, node.name) : node.path, json};
    }
    const QString parent = QFileInfo(node.path).path();
    return {restore,
            snapshot + u':' + parent,
            QStringLiteral("--include"),
            QString(u'/' + escapedPattern(node.name)),
            into,
            target.value_or(parent),
            json};
}

std::optional<QDateTime> parseResticDate(QString text)
{
    static const QRegularExpression fraction(QStringLiteral(R"(\.\d+)"));
    return JSONFile::date(text.remove(fraction));
}

QString escapedPattern(QString text)
{
    static const QRegularExpression wildcard(QStringLiteral(R"(([\\*?\[]))"));
    text.replace(wildcard, QStringLiteral(R"(\\1)"));
    // In restic's JSON this stands for a byte that isn't UTF-8. It matches such a byte only within
    // brackets.
    return text.replace(QChar(QChar::ReplacementCharacter), QStringLiteral("[\uFFFD]"));
}
