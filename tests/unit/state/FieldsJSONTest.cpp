#include "state/FieldsJSON.h"

#include "state/Outcome.h"

#include <QDateTime>
#include <QJsonArray>
#include <QStringList>
#include <QUuid>

#include <gtest/gtest.h>

namespace {

/// A value with a field of each type.
struct Everything
{
    Q_GADGET
    Q_PROPERTY(bool truth MEMBER truth)
    Q_PROPERTY(int small MEMBER small)
    Q_PROPERTY(qint64 large MEMBER large)
    Q_PROPERTY(double real MEMBER real)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QStringList texts MEMBER texts)
    Q_PROPERTY(QDateTime date MEMBER date)
    Q_PROPERTY(QUuid id MEMBER id)
    Q_PROPERTY(Outcomes::Outcome outcome MEMBER outcome)
    Q_PROPERTY(std::optional<QString> word MEMBER word)
    Q_PROPERTY(std::optional<qint64> number MEMBER number)
    Q_PROPERTY(QString shouted READ shouted STORED false)

public:
    bool truth = true;
    int small = -7;
    qint64 large = Q_INT64_C(9007199254740993);
    double real = 0.25;
    QString text = QStringLiteral("testo");
    QStringList texts = {QStringLiteral("a"), QStringLiteral("b")};
    QDateTime date = QDateTime(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);
    QUuid id = QUuid::fromString(QLatin1String("{0b5c2d3e-0000-4000-8000-000000000001}"));
    Outcome outcome = Outcome::Skipped;
    std::optional<QString> word;
    std::optional<qint64> number;

    [[nodiscard]] QString shouted() const { return text.toUpper(); }

    bool operator==(const Everything &) const = default;
};

TEST(FieldsJSON, everyTypeHasItsForm)
{
    EXPECT_EQ(FieldsJSON::encoded(Everything()),
              QJsonObject({
                  {QStringLiteral("truth"), true},
                  {QStringLiteral("small"), -7},
                  {QStringLiteral("large"), Q_INT64_C(9007199254740993)},
                  {QStringLiteral("real"), 0.25},
                  {QStringLiteral("text"), QStringLiteral("testo")},
                  {QStringLiteral("texts"), QJsonArray({QStringLiteral("a"), QStringLiteral("b")})},
                  {QStringLiteral("date"), QStringLiteral("2026-03-01T10:00:00Z")},
                  {QStringLiteral("id"), QStringLiteral("0b5c2d3e-0000-4000-8000-000000000001")},
                  {QStringLiteral("outcome"), QStringLiteral("skipped")},
              }));
}

TEST(FieldsJSON, anOptionalFieldHasAKeyOnlyWhileItIsThere)
{
    Everything value;
    value.word = QString();
    value.number = 0;
    const QJsonObject object = FieldsJSON::encoded(value);
    EXPECT_EQ(object.value(QLatin1String("word")), QJsonValue(QString()));
    EXPECT_EQ(object.value(QLatin1String("number")), QJsonValue(0));
    EXPECT_EQ(FieldsJSON::decoded<Everything>(object), value);
    QJsonObject null = object;
    null[QLatin1String("word")] = QJsonValue::Null;
    null.remove(QLatin1String("number"));
    EXPECT_EQ(FieldsJSON::decoded<Everything>(null), Everything());
}

TEST(FieldsJSON, aValueComesBackAsItWas)
{
    Everything value;
    value.small = 3;
    value.text = QStringLiteral("altro");
    value.outcome = Outcome::Ok;
    value.date = value.date.addDays(1);
    EXPECT_EQ(FieldsJSON::decoded<Everything>(FieldsJSON::encoded(value)), value);
}

TEST(FieldsJSON, everyOtherKeyMustBeThereWithItsType)
{
    const QJsonObject whole = FieldsJSON::encoded(Everything());
    for (const QString &key : whole.keys()) {
        QJsonObject without = whole;
        without.remove(key);
        EXPECT_FALSE(FieldsJSON::decoded<Everything>(without)) << key.toStdString();
        QJsonObject wrong = whole;
        wrong[key] = QJsonObject();
        EXPECT_FALSE(FieldsJSON::decoded<Everything>(wrong)) << key.toStdString();
        wrong[key] = QJsonValue::Null;
        EXPECT_FALSE(FieldsJSON::decoded<Everything>(wrong)) << key.toStdString();
    }
    for (const auto &[key, value] : {
             std::pair("small", QJsonValue(Q_INT64_C(3000000000))),
             std::pair("large", QJsonValue(0.5)),
             std::pair("outcome", QJsonValue(QStringLiteral("Skipped"))),
             std::pair("outcome", QJsonValue(3)),
             std::pair("id", QJsonValue(QStringLiteral("{0b5c2d3e-0000-4000-8000-000000000001}"))),
             std::pair("word", QJsonValue(1)),
             std::pair("number", QJsonValue(QStringLiteral("1"))),
         }) {
        QJsonObject wrong = whole;
        wrong[QLatin1String(key)] = value;
        EXPECT_FALSE(FieldsJSON::decoded<Everything>(wrong)) << key;
    }
}

TEST(FieldsJSON, otherKeysArePassedOver)
{
    QJsonObject object = FieldsJSON::encoded(Everything());
    object[QLatin1String("shouted")] = 1;
    object[QLatin1String("unknown")] = 1;
    EXPECT_EQ(FieldsJSON::decoded<Everything>(object), Everything());
}

} // namespace

#include "FieldsJSONTest.moc"
