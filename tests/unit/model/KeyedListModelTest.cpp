#include "model/KeyedListModel.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QMap>
#include <QPersistentModelIndex>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <utility>

namespace {

struct Row
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(int number MEMBER number)

public:
    QString name;
    int number = 0;

    bool operator==(const Row &) const = default;
};

Row row(int name, int number = 0)
{
    return {QString::number(name), number};
}

QList<Row> rows(std::initializer_list<int> names)
{
    QList<Row> list;
    for (const int name : names) {
        list.append(row(name));
    }
    return list;
}

/// Records every change of a list, in words.
class KeyedList : public testing::Test
{
protected:
    KeyedListModel list{QMetaType::fromType<Row>(), "name"};
    QAbstractItemModelTester tester{&list, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QStringList changes;

    KeyedList()
    {
        const auto note = [this](const char *word) {
            return [this, word](const QModelIndex &, int first, int last) {
                changes.append(
                    QStringLiteral("%1 %2-%3").arg(QLatin1String(word)).arg(first).arg(last));
            };
        };
        QObject::connect(&list, &KeyedListModel::rowsInserted, note("in"));
        QObject::connect(&list, &KeyedListModel::rowsRemoved, note("out"));
        QObject::connect(
            &list, &KeyedListModel::rowsMoved,
            [this](const QModelIndex &, int first, int last, const QModelIndex &, int to) {
                changes.append(QStringLiteral("move %1-%2 to %3").arg(first).arg(last).arg(to));
            });
        QObject::connect(&list, &KeyedListModel::dataChanged,
                         [this](const QModelIndex &first, const QModelIndex &last) {
                             changes.append(
                                 QStringLiteral("set %1-%2").arg(first.row()).arg(last.row()));
                         });
        QObject::connect(&list, &KeyedListModel::modelReset,
                         [this] { changes.append(QStringLiteral("reset")); });
        QObject::connect(&list, &KeyedListModel::countChanged,
                         [this] { changes.append(QStringLiteral("count")); });
    }

    [[nodiscard]] int role(const char *name) const { return list.roleNames().key(name); }

    [[nodiscard]] QList<Row> shown() const
    {
        QList<Row> result;
        for (int at = 0; at < list.count(); ++at) {
            result.append(list.data(list.index(at), role("value")).value<Row>());
        }
        return result;
    }

    /// The changes that lead from one list to the next.
    QStringList between(const QList<Row> &before, const QList<Row> &after)
    {
        list.assign(before);
        changes.clear();
        list.assign(after);
        EXPECT_EQ(shown(), after);
        return changes;
    }
};

TEST_F(KeyedList, aRowHasARoleForEachPropertyAndOneForAllOfIt)
{
    list.assign(QList{row(7, 3)});
    EXPECT_EQ(list.roleNames().size(), 3);
    EXPECT_EQ(list.data(list.index(0), role("name")), QStringLiteral("7"));
    EXPECT_EQ(list.data(list.index(0), role("number")), 3);
    EXPECT_EQ(list.data(list.index(0), role("value")).value<Row>(), row(7, 3));
    EXPECT_FALSE(list.data(list.index(0), Qt::DisplayRole).isValid());
    EXPECT_FALSE(list.data(list.index(0), role("number") + 1).isValid());
    EXPECT_FALSE(list.data(QModelIndex(), role("value")).isValid());
    EXPECT_EQ(list.rowCount(list.index(0)), 0);
}

TEST_F(KeyedList, changesAreAsFewAsTheyCanBe)
{
    const auto words = [](std::initializer_list<const char *> parts) {
        QStringList result;
        for (const char *word : parts) {
            result.append(QLatin1String(word));
        }
        return result;
    };
    EXPECT_EQ(between({}, rows({1, 2, 3})), words({"in 0-2", "count"}));
    EXPECT_EQ(between(rows({1, 2, 3}), {}), words({"out 0-2", "count"}));
    EXPECT_EQ(between(rows({1, 2, 3}), rows({1, 2, 3})), words({}));
    EXPECT_EQ(between(rows({1, 2, 3}), rows({0, 1, 2, 3})), words({"in 0-0", "count"}));
    EXPECT_EQ(between(rows({1, 2, 3}), rows({1, 4, 5, 2, 3, 6})),
              words({"in 1-2", "in 5-5", "count"}));
    EXPECT_EQ(between(rows({1, 2, 3, 4, 5}), rows({1, 4})), words({"out 4-4", "out 1-2", "count"}));
    EXPECT_EQ(between(rows({1, 2, 3, 4}), rows({2, 3, 4, 1})), words({"move 0-0 to 4"}));
    EXPECT_EQ(between(rows({1, 2, 3, 4}), rows({4, 1, 2, 3})), words({"move 3-3 to 0"}));
    EXPECT_EQ(between({row(1), row(2), row(3)}, {row(1, 9), row(2, 9), row(3)}),
              words({"set 0-1"}));
    EXPECT_EQ(between({row(1), row(2), row(3)}, {row(1, 9), row(2), row(3, 9)}),
              words({"set 0-0", "set 2-2"}));
    EXPECT_EQ(between(rows({1, 2}), rows({3})), words({"out 0-1", "in 0-0", "count"}));
}

TEST_F(KeyedList, aNewEntryAtTheHeadPushesOutTheOldest)
{
    EXPECT_EQ(between(rows({3, 2, 1}), rows({4, 3, 2})),
              (QStringList{QStringLiteral("out 2-2"), QStringLiteral("in 0-0")}));
}

TEST_F(KeyedList, aKeyThatComesASecondTimeIsARowOfItsOwn)
{
    const QPersistentModelIndex second = [this] {
        list.assign(rows({1, 1, 2}));
        return QPersistentModelIndex(list.index(1));
    }();
    EXPECT_EQ(shown(), rows({1, 1, 2}));
    list.assign(rows({2, 1, 0, 1}));
    EXPECT_EQ(shown(), rows({2, 1, 0, 1}));
    EXPECT_EQ(second.row(), 3);
}

TEST_F(KeyedList, aListThatDiffersEverywhereResetsTheModel)
{
    QList<Row> before;
    QList<Row> after;
    QList<Row> few;
    for (int name = 0; name < 1000; ++name) {
        before.append(row(name));
        if (name % 5 != 0) {
            after.append(row(name)); // two hundred gaps
        }
        if (name % 10 != 0) {
            few.append(row(name)); // a hundred
        }
    }
    EXPECT_EQ(between(before, after),
              (QStringList{QStringLiteral("reset"), QStringLiteral("count")}));
    EXPECT_EQ(between(before, few).filter(QStringLiteral("out")).size(), 100);
}

TEST_F(KeyedList, anyListTurnsIntoAnyOtherAndRowsStayThemselves)
{
    std::mt19937 random(20261121);
    const auto upTo = [&random](int most) {
        return std::uniform_int_distribution(0, most)(random);
    };
    // A few names are there more than once, identified by their order.
    const auto places = [](const QList<Row> &entries) {
        std::map<std::pair<QString, int>, int> result;
        QMap<QString, int> times;
        for (int at = 0; at < entries.size(); ++at) {
            result[{entries.at(at).name, times[entries.at(at).name]++}] = at;
        }
        return result;
    };
    for (int round = 0; round < 400; ++round) {
        std::map<std::pair<QString, int>, QPersistentModelIndex> indexes;
        for (const auto &[name, at] : places(shown())) {
            indexes[name] = list.index(at);
        }
        QList<int> names(40);
        std::generate(names.begin(), names.end(), [next = 0]() mutable { return next++ % 35; });
        if (upTo(2) > 0) {
            std::shuffle(names.begin() + upTo(39), names.end(), random);
        }
        QList<Row> next;
        for (const int name : names) {
            if (upTo(3) > 0) {
                next.append(row(name, upTo(1)));
            }
        }
        list.assign(next);
        ASSERT_EQ(shown(), next) << round;
        const auto now = places(next);
        for (const auto &[name, index] : indexes) {
            const auto found = now.find(name);
            ASSERT_EQ(index.isValid(), found != now.end()) << round;
            if (index.isValid()) {
                ASSERT_EQ(index.row(), found->second) << round;
            }
        }
    }
    EXPECT_FALSE(changes.contains(QStringLiteral("reset")));
}

TEST(KeyedListModel, aHundredThousandRowsBecomeOthersInAHundredChangesAtMost)
{
    KeyedListModel list(QMetaType::fromType<Row>(), "name");
    qsizetype changes = 0;
    const auto count = [&changes] { ++changes; };
    QObject::connect(&list, &KeyedListModel::rowsInserted, count);
    QObject::connect(&list, &KeyedListModel::rowsRemoved, count);
    QObject::connect(&list, &KeyedListModel::rowsMoved, count);
    QObject::connect(&list, &KeyedListModel::modelReset, count);
    QObject::connect(&list, &KeyedListModel::dataChanged, count);
    // Quadratic work would take minutes.
    static constexpr qint64 bound = 10000;
    const auto changesTo = [&](const QList<Row> &rows) {
        QElapsedTimer timer;
        timer.start();
        changes = 0;
        list.assign(rows);
        EXPECT_LT(timer.elapsed(), bound);
        EXPECT_EQ(list.count(), rows.size());
        return changes;
    };
    QList<Row> large;
    for (int name = 0; name < 100000; ++name) {
        large.append(row(name));
    }
    QList<Row> backwards = large;
    std::reverse(backwards.begin(), backwards.end());
    QList<Row> scattered = large;
    for (int change = 0; change < 30; ++change) {
        scattered.move(change, 99999 - 2000 * change);
        scattered.removeAt(2000 * change + 1000);
        scattered.insert(2000 * change + 1500, row(-1 - change));
    }
    EXPECT_EQ(changesTo(large), 1);
    EXPECT_EQ(changesTo(backwards), 1);
    EXPECT_EQ(changesTo(large), 1);
    EXPECT_EQ(changesTo(scattered), 90);
    for (int at = 0; at < scattered.size(); at += 2) {
        scattered[at].number = 1;
    }
    EXPECT_EQ(changesTo(scattered), 1);
}

} // namespace

#include "KeyedListModelTest.moc"
