#include "tools/JSONValues.h"
#include "tools/Restic.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

#include <limits>

namespace {

Node node(const char *path, const char *name, bool isDir)
{
    return {QString::fromUtf8(path), QString::fromUtf8(name), isDir, 0, {}};
}

QStringList arguments(const Node &what, const std::optional<QString> &target)
{
    return Restic().restoreArguments(QStringLiteral("id"), what, target);
}

QStringList words(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts) {
        list.append(QString::fromUtf8(text));
    }
    return list;
}

TEST(RestoreArguments, aFolderGoesIntoTheTargetUnderItsName)
{
    EXPECT_EQ(arguments(node("/a/b c", "b c", true), QStringLiteral("/target")),
              words({"restore", "id:/a/b c", "--target", "/target/b c", "--json"}));
    EXPECT_EQ(arguments(node("/a/b", "b", true), QStringLiteral("/target/")),
              words({"restore", "id:/a/b", "--target", "/target/b", "--json"}));
    EXPECT_EQ(arguments(node("/a/b", "b", true), QStringLiteral("/")),
              words({"restore", "id:/a/b", "--target", "/b", "--json"}));
}

TEST(RestoreArguments, aFolderGoesBackWhereItWas)
{
    EXPECT_EQ(arguments(node("/a/b", "b", true), std::nullopt),
              words({"restore", "id:/a/b", "--target", "/a/b", "--json"}));
}

TEST(RestoreArguments, aFileGoesIntoTheTarget)
{
    EXPECT_EQ(
        arguments(node("/a/b/f.txt", "f.txt", false), QStringLiteral("/target")),
        words({"restore", "id:/a/b", "--include", "/f.txt", "--target", "/target", "--json"}));
}

TEST(RestoreArguments, aFileGoesBackWhereItWas)
{
    EXPECT_EQ(arguments(node("/a/b/f.txt", "f.txt", false), std::nullopt),
              words({"restore", "id:/a/b", "--include", "/f.txt", "--target", "/a/b", "--json"}));
    EXPECT_EQ(arguments(node("/f.txt", "f.txt", false), std::nullopt),
              words({"restore", "id:/", "--include", "/f.txt", "--target", "/", "--json"}));
}

TEST(RestoreArguments, aFilesNameIsNoPattern)
{
    EXPECT_EQ(arguments(node("/a/a?b.txt", "a?b.txt", false), QStringLiteral("/t")).at(3),
              QStringLiteral("/a\\?b.txt"));
    EXPECT_EQ(arguments(node("/a/x*[1]\\.txt", "x*[1]\\.txt", false), QStringLiteral("/t")).at(3),
              QStringLiteral("/x\\*\\[1]\\\\.txt"));
    // A folder isn't named by a pattern.
    EXPECT_EQ(arguments(node("/a/x*", "x*", true), std::nullopt).at(1), QStringLiteral("id:/a/x*"));
}

std::optional<QDateTime> parsed(const char *text)
{
    return parseResticDate(QString::fromUtf8(text));
}

QDateTime utc(const char *text)
{
    return QDateTime::fromString(QString::fromUtf8(text), Qt::ISODate);
}

TEST(ParseResticDate, readsResticsDates)
{
    EXPECT_EQ(parsed("2024-03-01T10:00:00.123456789+01:00"), utc("2024-03-01T09:00:00Z"));
    EXPECT_EQ(parsed("2024-03-01T10:00:00Z"), utc("2024-03-01T10:00:00Z"));
    EXPECT_EQ(parsed("2024-03-01T10:00:00.9Z"), utc("2024-03-01T10:00:00Z"));
    EXPECT_EQ(parsed("2024-02-29T23:30:00-05:30"), utc("2024-03-01T05:00:00Z"));
    EXPECT_EQ(parsed("1969-12-31T23:59:59.999999999Z"), utc("1969-12-31T23:59:59Z"));
}

TEST(ParseResticDate, nothingElseIsADate)
{
    for (const char *text :
         {"", "yesterday", "2024-03-01", "2024-03-01T10:00", "2024-03-01 10:00:00Z",
          "2024-03-01T10:00:00", "2024-13-01T10:00:00Z", "2024-02-30T10:00:00Z",
          "2024-03-01T10:00:00.Z", "2024-03-01T25:00:00Z", "2024-03-01T10:00:00Zx",
          " 2024-03-01T10:00:00Z"}) {
        EXPECT_EQ(parsed(text), std::nullopt) << text;
    }
}

QJsonObject object(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

TEST(JSONValues, numbersAreReadAndEverythingElseIsNought)
{
    const QJsonObject values =
        object(R"({"i":5,"d":2.75,"n":-2.75,"t":"5","b":true,"z":null,"l":[5],"o":{"x":5}})");
    EXPECT_EQ(number(values, QLatin1String("i")), 5.0);
    EXPECT_EQ(number(values, QLatin1String("d")), 2.75);
    EXPECT_EQ(int64(values, QLatin1String("i")), 5);
    EXPECT_EQ(int64(values, QLatin1String("d")), 2);
    EXPECT_EQ(int64(values, QLatin1String("n")), -2);
    for (const char *key : {"t", "b", "z", "l", "o", "absent", ""}) {
        EXPECT_EQ(number(values, QLatin1String(key)), 0.0) << key;
        EXPECT_EQ(int64(values, QLatin1String(key)), 0) << key;
    }
}

TEST(JSONValues, largeNumbersKeepTheirValue)
{
    const QJsonObject values = object(
        R"({"m":9223372036854775807,"l":-9223372036854775808,"e":9007199254740993,"b":1e30,"s":-1e30,"h":18446744073709551615})");
    using Limits = std::numeric_limits<qint64>;
    EXPECT_EQ(int64(values, QLatin1String("m")), Limits::max());
    EXPECT_EQ(int64(values, QLatin1String("l")), Limits::min());
    EXPECT_EQ(int64(values, QLatin1String("e")), 9007199254740993);
    EXPECT_EQ(int64(values, QLatin1String("b")), Limits::max());
    EXPECT_EQ(int64(values, QLatin1String("s")), Limits::min());
    EXPECT_EQ(int64(values, QLatin1String("h")), Limits::max());
    EXPECT_EQ(number(values, QLatin1String("b")), 1e30);
}

} // namespace
