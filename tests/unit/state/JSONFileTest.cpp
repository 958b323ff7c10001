#include "state/JSONFile.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <limits>

TEST(JSONFile, isPrettyPrintedWithSortedKeys)
{
    const QJsonObject object{{QStringLiteral("b"), QJsonArray{1, QStringLiteral("è")}},
                             {QStringLiteral("a"), true}};
    EXPECT_EQ(JSONFile::encode(QJsonDocument(object)), R"({
    "a": true,
    "b": [
        1,
        "è"
    ]
}
)");
}

TEST(JSONFile, numbersOf64BitsStayExact)
{
    for (const qint64 number : {std::numeric_limits<qint64>::max(),
                                std::numeric_limits<qint64>::min(), (qint64{1} << 53) + 1}) {
        const QJsonObject object{{QStringLiteral("n"), number}};
        const auto decoded = JSONFile::decode(JSONFile::encode(QJsonDocument(object)));
        ASSERT_TRUE(decoded);
        EXPECT_EQ(decoded->object().value(QLatin1String("n")).toInteger(), number);
    }
}

TEST(JSONFile, bytesThatAreNotJSONAreAbsent)
{
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("{"), QByteArray("{} x"), QByteArray("{\"a\": \"\xff\"}"),
          QByteArray("{'a': 1}"), QByteArray("{\"a\": 1e400}"), QByteArray("\0\0", 2)}) {
        EXPECT_FALSE(JSONFile::decode(bytes)) << bytes.toStdString();
    }
    EXPECT_FALSE(JSONFile::read(QStringLiteral("/nonexistent/file")));
    EXPECT_FALSE(JSONFile::read(QStringLiteral("/")));
}

TEST(JSONFile, datesAreWrittenInUTCWithWholeSeconds)
{
    const QDateTime date(QDate(2024, 3, 1), QTime(10, 0, 7, 999), QTimeZone(3600));
    EXPECT_EQ(JSONFile::dateText(date), QStringLiteral("2024-03-01T09:00:07Z"));
}

TEST(JSONFile, datesAreReadWithAnyOffset)
{
    const QDateTime moment(QDate(2024, 3, 1), QTime(10, 0, 0), Qt::UTC);
    for (const char *text :
         {"2024-03-01T10:00:00Z", "2024-03-01T11:00:00+01:00", "2024-03-01T04:30:00-05:30",
          "2024-03-01T11:00:00+0100", "2024-03-01T10:00:00+00:00"}) {
        const auto date = JSONFile::date(QLatin1String(text));
        ASSERT_TRUE(date) << text;
        EXPECT_EQ(*date, moment) << text;
        EXPECT_EQ(JSONFile::dateText(*date), QStringLiteral("2024-03-01T10:00:00Z")) << text;
    }
}

TEST(JSONFile, otherFormsOfDatesAreRefused)
{
    for (const char *text :
         {"", "2024-03-01", "2024-03-01T10:00:00", "2024-03-01 10:00:00Z", "2024-03-01T10:00Z",
          "2024-03-01T10:00:00.5Z", "2024-03-01T10:00:00Z\n", " 2024-03-01T10:00:00Z",
          "2024-02-30T10:00:00Z", "2024-13-01T10:00:00Z", "2024-03-01T25:00:00Z",
          "2024-03-01T10:61:00Z", "1709287200", "Fri, 01 Mar 2024 10:00:00 GMT",
          "2024-03-01T10:00:00+1", "2024-03-01T10:00:00CET"}) {
        EXPECT_FALSE(JSONFile::date(QLatin1String(text))) << text;
    }
}
