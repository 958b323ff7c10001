#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QList>
#include <QMetaType>
#include <QStringList>
#include <QVariantList>

/// A list of gadgets for QML, identified by the value of one of their properties, the key.
///
/// A new list replaces the old one by insertions, removals, moves and changes of rows, so that a
/// view keeps the delegate of a row for as long as its key is there. A list that would take more
/// than `mostChanges` insertions, removals and moves resets the model instead, as each of them
/// costs as much as the list is long; changed rows in more places than that are reported as one
/// range.
///
/// A row has a role for each of its properties, and the role `value` for the whole gadget.
class KeyedListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    static constexpr qsizetype mostChanges = 100;

    /// `rowType` is the type of a gadget, `key` the name of one of its properties. Rows with the
    /// same key are identified by their order: the second one of the old list is the second one of
    /// the new list.
    KeyedListModel(QMetaType rowType, const char *key, QObject *parent = nullptr);

    /// Replaces the list. `Row` is the type of the rows; it can be compared with `==`.
    template <typename Row>
    void assign(const QList<Row> &rows)
    {
        Q_ASSERT(QMetaType::fromType<Row>() == m_rowType);
        QVariantList values;
        values.reserve(rows.size());
        for (const Row &row : rows) {
            values.append(QVariant::fromValue(row));
        }
        assignValues(values);
    }

    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    void assignValues(const QVariantList &rows);
    void beginAnew(const QVariantList &rows);
    void removeGone(QList<int> &order);
    void moveRows(QList<int> &order, const QList<int> &moved);
    void insertNew(const QList<int> &order, const QVariantList &rows);
    void changeRows(const QVariantList &rows);
    [[nodiscard]] QStringList keys(const QVariantList &rows) const;

    const QMetaType m_rowType;
    const int m_key; ///< index of the property
    QVariantList m_rows;
    QStringList m_keys;
};
