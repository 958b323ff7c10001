#include "model/KeyedListModel.h"

#include <QHash>
#include <QMetaProperty>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

// While the list is being replaced, a row is identified by its target: its place in the new list.
// The target of a row that is removed is `gone`.

namespace {

constexpr int valueRole = Qt::UserRole;
constexpr int firstPropertyRole = valueRole + 1;
constexpr int gone = -1;

/// The targets of the rows that aren't moved: the longest increasing subsequence.
QSet<int> staying(const QList<int> &order)
{
    QList<qsizetype> ends; // for each length, the place of the lowest end of such a subsequence
    QList<qsizetype> before(order.size(), -1);
    for (qsizetype at = 0; at < order.size(); ++at) {
        if (order.at(at) == gone) {
            continue;
        }
        const auto end = std::lower_bound(
            ends.begin(), ends.end(), order.at(at),
            [&order](qsizetype place, int target) { return order.at(place) < target; });
        if (end != ends.begin()) {
            before[at] = *std::prev(end);
        }
        if (end == ends.end()) {
            ends.append(at);
        } else {
            *end = at;
        }
    }
    QSet<int> targets;
    for (qsizetype at = ends.isEmpty() ? -1 : ends.last(); at >= 0; at = before.at(at)) {
        targets.insert(order.at(at));
    }
    return targets;
}

/// The rows that have to move, in the order of their targets.
QList<int> moving(const QList<int> &order)
{
    const QSet<int> stay = staying(order);
    QList<int> targets;
    std::copy_if(order.cbegin(), order.cend(), std::back_inserter(targets),
                 [&stay](int target) { return target != gone && !stay.contains(target); });
    std::sort(targets.begin(), targets.end());
    return targets;
}

/// The number of contiguous ranges of places that fulfil a condition, in a list of `size` places.
template <typename Condition>
qsizetype stretches(qsizetype size, Condition condition)
{
    qsizetype count = 0;
    bool isWithin = false;
    for (qsizetype at = 0; at < size; ++at) {
        const bool holds = condition(at);
        count += holds && !isWithin ? 1 : 0;
        isWithin = holds;
    }
    return count;
}

} // namespace

KeyedListModel::KeyedListModel(QMetaType rowType, const char *key, QObject *parent)
    : QAbstractListModel(parent)
    , m_rowType(rowType)
    , m_key(rowType.metaObject()->indexOfProperty(key))
{
    Q_ASSERT(m_key >= 0);
}

int KeyedListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant KeyedListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const QVariant &row = m_rows.at(index.row());
    if (role == valueRole) {
        return row;
    }
    const int property = role - firstPropertyRole;
    const QMetaObject *const type = m_rowType.metaObject();
    return property >= 0 && property < type->propertyCount()
               ? type->property(property).readOnGadget(row.constData())
               : QVariant();
}

QHash<int, QByteArray> KeyedListModel::roleNames() const
{
    QHash<int, QByteArray> names = {{valueRole, "value"}};
    const QMetaObject *const type = m_rowType.metaObject();
    for (int index = 0; index < type->propertyCount(); ++index) {
        names.insert(firstPropertyRole + index, type->property(index).name());
    }
    return names;
}

void KeyedListModel::assignValues(const QVariantList &rows)
{
    if (rows == m_rows) {
        return;
    }
    const qsizetype before = m_rows.size();
    const QStringList newKeys = keys(rows);
    QHash<QString, int> targets;
    targets.reserve(newKeys.size());
    for (const QString &key : newKeys) {
        targets.insert(key, static_cast<int>(targets.size()));
    }
    QList<int> order;
    order.reserve(m_keys.size());
    for (const QString &key : m_keys) {
        order.append(targets.value(key, gone));
    }
    const QSet<int> kept(order.cbegin(), order.cend());
    const QList<int> moved = moving(order);
    const qsizetype changes =
        moved.size() +
        stretches(order.size(), [&order](qsizetype at) { return order.at(at) == gone; }) +
        stretches(rows.size(),
                  [&kept](qsizetype at) { return !kept.contains(static_cast<int>(at)); });
    m_keys = newKeys;
    if (changes > mostChanges) {
        beginAnew(rows);
    } else {
        removeGone(order);
        moveRows(order, moved);
        insertNew(order, rows);
        changeRows(rows);
    }
    if (m_rows.size() != before) {
        Q_EMIT countChanged();
    }
}

void KeyedListModel::beginAnew(const QVariantList &rows)
{
    beginResetModel();
    m_rows = rows;
    endResetModel();
}

void KeyedListModel::removeGone(QList<int> &order)
{
    for (qsizetype end = order.size(); end > 0; --end) {
        qsizetype first = end;
        while (first > 0 && order.at(first - 1) == gone) {
            --first;
        }
        if (first < end) {
            beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
            m_rows.remove(first, end - first);
            order.remove(first, end - first);
            endRemoveRows();
            end = first;
        }
    }
}

void KeyedListModel::moveRows(QList<int> &order, const QList<int> &moved)
{
    QList<int> sorted = order;
    std::sort(sorted.begin(), sorted.end());
    for (const int target : moved) {
        // All rows with lower targets are in their final order by now, so this one's place is
        // behind the one with the next lower target.
        const auto found = std::lower_bound(sorted.cbegin(), sorted.cend(), target);
        const qsizetype to = found == sorted.cbegin() ? 0 : order.indexOf(*std::prev(found)) + 1;
        const qsizetype from = order.indexOf(target);
        if (beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {},
                          static_cast<int>(to))) {
            const qsizetype place = to > from ? to - 1 : to;
            m_rows.move(from, place);
            order.move(from, place);
            endMoveRows();
        }
    }
}

void KeyedListModel::insertNew(const QList<int> &order, const QVariantList &rows)
{
    qsizetype at = 0; // index in `order` of the next row that isn't new
    for (qsizetype first = 0; first < rows.size(); ++first) {
        if (at < order.size() && order.at(at) == first) {
            ++at;
            continue;
        }
        const qsizetype end = at < order.size() ? order.at(at) : rows.size();
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
        m_rows.insert(first, end - first, QVariant());
        std::copy(rows.cbegin() + first, rows.cbegin() + end, m_rows.begin() + first);
        endInsertRows();
        first = end - 1;
    }
}

void KeyedListModel::changeRows(const QVariantList &rows)
{
    QList<std::pair<int, int>> changed; // first and last
    for (int at = 0; at < count(); ++at) {
        if (m_rows.at(at) == rows.at(at)) {
            continue;
        }
        m_rows[at] = rows.at(at);
        if (changed.isEmpty() || changed.last().second != at - 1) {
            changed.append({at, at});
        } else {
            changed.last().second = at;
        }
    }
    if (changed.size() > mostChanges) {
        changed = {{changed.first().first, changed.last().second}};
    }
    for (const auto &[first, last] : std::as_const(changed)) {
        Q_EMIT dataChanged(index(first), index(last));
    }
}

QStringList KeyedListModel::keys(const QVariantList &rows) const
{
    const QMetaProperty property = m_rowType.metaObject()->property(m_key);
    QStringList result;
    result.reserve(rows.size());
    QHash<QString, int> times;
    times.reserve(rows.size());
    for (const QVariant &row : rows) {
        const QString key = property.readOnGadget(row.constData()).toString();
        const int before = times[key]++;
        // A NUL, as no key contains one: a numbered key can't equal the key of a different row.
        result.append(before == 0 ? key : key + QChar::Null + QString::number(before));
    }
    return result;
}
