#include "state/RunRecord.h"

#include "state/JSONFile.h"
#include "tests/support/ManualClock.h"

#include <QJsonArray>

#include <gtest/gtest.h>

#include <limits>

namespace {

RunRecord record()
{
    RunRecord record;
    record.id = QUuid::fromString(QStringLiteral("0e5f4c3a-9f5e-4b6d-8d0a-1c2b3a4f5e6d"));
    record.date = QDateTime(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);
    record.destination = DestinationID::Server;
    record.outcome = Outcome::Warning;
    record.message = QStringLiteral("due file\n«non letti»");
    record.filesNew = 3;
    record.filesChanged = 4;
    record.dataAdded = std::numeric_limits<qint64>::max();
    record.duration = 12.25;
    return record;
}

} // namespace

TEST(RunRecord, startsNowWithAnIDOfItsOwn)
{
    const ManualClock clock;
    const ScopedClock inForce(clock);
    const RunRecord one = RunRecord::starting(DestinationID::Drive);
    const RunRecord two = RunRecord::starting(DestinationID::Drive);
    EXPECT_EQ(one.date, clock.moment());
    EXPECT_EQ(one.destination, DestinationID::Drive);
    EXPECT_FALSE(one.id.isNull());
    EXPECT_NE(one.id, two.id);
    EXPECT_FALSE(one.kind);
}

TEST(RunRecord, standsUnderTheNamesOfItsFields)
{
    const QJsonObject expected{
        {QStringLiteral("id"), QStringLiteral("0e5f4c3a-9f5e-4b6d-8d0a-1c2b3a4f5e6d")},
        {QStringLiteral("date"), QStringLiteral("2026-03-01T10:00:00Z")},
        {QStringLiteral("destination"), QStringLiteral("server")},
        {QStringLiteral("outcome"), QStringLiteral("warning")},
        {QStringLiteral("message"), QStringLiteral("due file\n«non letti»")},
        {QStringLiteral("filesNew"), 3},
        {QStringLiteral("filesChanged"), 4},
        {QStringLiteral("dataAdded"), std::numeric_limits<qint64>::max()},
        {QStringLiteral("duration"), 12.25},
    };
    EXPECT_EQ(record().toJSON(), expected);
    RunRecord check = record();
    check.kind = QStringLiteral("check");
    QJsonObject withKind = expected;
    withKind[QStringLiteral("kind")] = QStringLiteral("check");
    EXPECT_EQ(check.toJSON(), withKind);
}

TEST(RunRecord, comesBackAsItWas)
{
    EXPECT_EQ(RunRecord::fromJSON(record().toJSON()), record());
    RunRecord check = record();
    check.kind = QStringLiteral("check");
    EXPECT_EQ(RunRecord::fromJSON(check.toJSON()), check);
}

TEST(RunRecord, onlyTheKindMayBeMissingOrNull)
{
    const QJsonObject whole = record().toJSON();
    for (const QString &key : whole.keys()) {
        QJsonObject changed = whole;
        changed.remove(key);
        EXPECT_FALSE(RunRecord::fromJSON(changed)) << key.toStdString();
        changed[key] = QJsonValue();
        EXPECT_FALSE(RunRecord::fromJSON(changed)) << key.toStdString();
    }
    QJsonObject changed = whole;
    changed[QStringLiteral("kind")] = QJsonValue();
    EXPECT_EQ(RunRecord::fromJSON(changed), record());
}

TEST(RunRecord, aWrongValueIsAbsent)
{
    struct Row
    {
        const char *key;
        QJsonValue value;
    };
    for (const Row &row : {
             Row{"id", QStringLiteral("")},
             Row{"id", QStringLiteral("x")},
             Row{"id", QStringLiteral("0e5f4c3a-9f5e-4b6d-8d0a-1c2b3a4f5e6")},
             Row{"id", QStringLiteral("0e5f4c3a-9f5e-4b6d-8d0a-1c2b3a4f5e6d and more")},
             Row{"id", QStringLiteral("{0e5f4c3a-9f5e-4b6d-8d0a-1c2b3a4f5e6d}")},
             Row{"id", 7},
             Row{"date", QStringLiteral("2026-03-01")},
             Row{"date", 1234567},
             Row{"destination", QStringLiteral("disk")},
             Row{"destination", 0},
             Row{"outcome", QStringLiteral("unknown")},
             Row{"outcome", true},
             Row{"message", 7},
             Row{"message", QJsonArray()},
             Row{"filesNew", QStringLiteral("3")},
             Row{"filesNew", 1.5},
             Row{"filesChanged", true},
             Row{"dataAdded", 1e19},
             Row{"dataAdded", QStringLiteral("")},
             Row{"duration", QStringLiteral("1.5")},
             Row{"duration", false},
             Row{"kind", 7},
             Row{"kind", QJsonObject()},
         }) {
        QJsonObject changed = record().toJSON();
        changed[QLatin1String(row.key)] = row.value;
        EXPECT_FALSE(RunRecord::fromJSON(changed))
            << row.key << " " << row.value.toVariant().toString().toStdString();
    }
}

TEST(RunRecord, anIDInCapitalsAndUnknownKeysAreTaken)
{
    QJsonObject object = record().toJSON();
    object[QStringLiteral("id")] = record().id.toString(QUuid::WithoutBraces).toUpper();
    object[QStringLiteral("later")] = 1;
    EXPECT_EQ(RunRecord::fromJSON(object), record());
}
