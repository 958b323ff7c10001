#include "state/ConfigStore.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <limits>

namespace {

QString file()
{
    return Paths::supportFile(QStringLiteral("config.json"));
}

void put(const QByteArray &content)
{
    ASSERT_TRUE(writeFile(file(), content));
}

void put(const QJsonObject &object)
{
    put(QJsonDocument(object).toJson());
}

QByteArray content()
{
    return readFile(file());
}

AppConfig unusual()
{
    AppConfig config;
    config.sources = QStringList{QStringLiteral("/a \"b\"\n\\c"), QStringLiteral("/è/日本")};
    config.excludes.clear();
    config.serverPort = QStringLiteral("0022");
    config.serverKind = ServerKind::Smb;
    config.localEnabled = true;
    config.keepDays = std::numeric_limits<qint64>::max();
    config.alertAfterHours = -1;
    config.driveClientSecret = QStringLiteral("a secret");
    return config;
}

// A good file except for one key.
QJsonObject unusualWith(const QString &key, const QJsonValue &value)
{
    QJsonObject object = unusual().toJSON();
    object[key] = value;
    return object;
}

} // namespace

TEST(ConfigStore, withoutAFileThereAreTheDefaults)
{
    EXPECT_EQ(ConfigStore::load(), AppConfig());
    EXPECT_FALSE(QFile::exists(file()));
}

TEST(ConfigStore, whatIsSavedIsLoaded)
{
    ConfigStore::save(unusual());
    EXPECT_EQ(ConfigStore::load(), unusual());
}

TEST(ConfigStore, theFileIsPrettyPrintedWithSortedKeysAndThePortAsText)
{
    AppConfig config;
    config.sources = QStringList{QStringLiteral("/home/è")};
    config.excludes = QStringList{QStringLiteral("~/x")};
    config.serverPort = QStringLiteral("2222");
    config.serverPath = QStringLiteral("p");
    config.driveFolder = QStringLiteral("d");
    ConfigStore::save(config);
    EXPECT_EQ(content(), R"({
    "alertAfterHours": 24,
    "autoBackup": true,
    "driveClientID": "",
    "driveClientSecret": "",
    "driveEnabled": false,
    "driveFolder": "d",
    "excludeCaches": true,
    "excludes": [
        "~/x"
    ],
    "intervalHours": 1,
    "keepDays": 730,
    "keySaved": false,
    "localEnabled": false,
    "localFolder": "",
    "serverEnabled": false,
    "serverHost": "",
    "serverKeyFile": "",
    "serverKind": "sftp",
    "serverPath": "p",
    "serverPort": "2222",
    "serverUser": "",
    "skipOnBattery": false,
    "sources": [
        "/home/è"
    ]
}
)");
}

TEST(ConfigStore, equalSettingsGiveEqualBytes)
{
    ConfigStore::save(unusual());
    const QByteArray first = content();
    ConfigStore::save(AppConfig());
    ConfigStore::save(ConfigStore::load());
    ConfigStore::save(unusual());
    EXPECT_EQ(content(), first);
}

TEST(ConfigStore, aMissingKeyTakesItsDefault)
{
    put("{}");
    EXPECT_EQ(ConfigStore::load(), AppConfig());
    put(R"({"keepDays": 30})");
    AppConfig expected;
    expected.keepDays = 30;
    EXPECT_EQ(ConfigStore::load(), expected);

    const QJsonObject whole = unusual().toJSON();
    for (const QString &key : whole.keys()) {
        QJsonObject without = whole;
        without.remove(key);
        put(without);
        QJsonObject merged = whole;
        merged[key] = AppConfig().toJSON().value(key);
        EXPECT_EQ(ConfigStore::load().toJSON(), merged) << key.toStdString();
    }
}

TEST(ConfigStore, aListInTheFileReplacesTheDefaultListWhole)
{
    put(R"({"sources": ["/one"], "excludes": []})");
    EXPECT_EQ(ConfigStore::load().sources, QStringList{QStringLiteral("/one")});
    EXPECT_EQ(ConfigStore::load().excludes, QStringList());
}

TEST(ConfigStore, aValueOfAWrongTypeLosesEverySetting)
{
    const QJsonObject whole = unusual().toJSON();
    const QList<QJsonValue> values = {QJsonValue(QJsonValue::Null),
                                      true,
                                      7,
                                      1.5,
                                      QStringLiteral("text"),
                                      QJsonArray{QStringLiteral("text")},
                                      QJsonArray{1},
                                      QJsonArray{QJsonValue(QJsonValue::Null)},
                                      QJsonObject{{QStringLiteral("a"), 1}}};
    for (const QString &key : whole.keys()) {
        const QJsonValue right = whole.value(key);
        for (const QJsonValue &value : values) {
            const bool fits = right.isArray()
                                  ? value.isArray() && value.toArray().first().isString()
                                  : value.type() == right.type() && value != QJsonValue(1.5) &&
                                        key != QLatin1String("serverKind");
            put(unusualWith(key, value));
            EXPECT_EQ(ConfigStore::load() == AppConfig(), !fits)
                << key.toStdString() << ": " << content().toStdString();
        }
    }
}

TEST(ConfigStore, aServerKindThatIsNotKnownLosesEverySetting)
{
    put(unusualWith(QStringLiteral("serverKind"), QStringLiteral("ftp")));
    EXPECT_EQ(ConfigStore::load(), AppConfig());
}

TEST(ConfigStore, numbersMustBeWholeAndFit64Bits)
{
    for (const char *number : {"1.5", "1e400", "-1e400", "9223372036854775808", "-1e19", "1e19",
                               "\"30\"", "null", "NaN", "0x10"}) {
        put(QByteArray("{\"skipOnBattery\": true, \"keepDays\": ") + number + "}");
        EXPECT_EQ(ConfigStore::load(), AppConfig()) << number;
    }
    for (const auto &[text, value] :
         {std::pair("30", qint64{30}), std::pair("30.0", qint64{30}), std::pair("-1", qint64{-1}),
          std::pair("3e2", qint64{300}),
          std::pair("9223372036854775807", std::numeric_limits<qint64>::max())}) {
        put(QByteArray("{\"keepDays\": ") + text + "}");
        EXPECT_EQ(ConfigStore::load().keepDays, value) << text;
    }
}

TEST(ConfigStore, aRootThatIsNotAnObjectGivesTheDefaults)
{
    for (const char *text :
         {"", " ", "[]", "[{\"keepDays\": 30}]", "null", "true", "\"text\"", "7"}) {
        put(QByteArray(text));
        EXPECT_EQ(ConfigStore::load(), AppConfig()) << text;
        EXPECT_EQ(content(), text);
    }
}

TEST(ConfigStore, aFileCutAnywhereGivesTheDefaultsAndStays)
{
    ConfigStore::save(unusual());
    const QByteArray whole = content();
    for (qsizetype length = 0; length < whole.size() - 2; length += 7) {
        put(whole.left(length));
        EXPECT_EQ(ConfigStore::load(), AppConfig()) << length;
        EXPECT_EQ(content(), whole.left(length));
    }
}

TEST(ConfigStore, unknownKeysArePassedOverAndGoneAfterTheNextSave)
{
    QJsonObject object = unusual().toJSON();
    object[QStringLiteral("later")] = QJsonObject{{QStringLiteral("keepDays"), 1}};
    put(object);
    const AppConfig config = ConfigStore::load();
    EXPECT_EQ(config, unusual());
    ConfigStore::save(config);
    EXPECT_FALSE(content().contains("later"));
    EXPECT_EQ(ConfigStore::load(), unusual());
}

TEST(ConfigStore, tenMegabytesAreReadLikeAnyOtherFile)
{
    put(unusualWith(QStringLiteral("later"), QString(10 << 20, u'x')));
    EXPECT_EQ(ConfigStore::load(), unusual());
    put(QByteArray(10 << 20, 'x'));
    EXPECT_EQ(ConfigStore::load(), AppConfig());
}

TEST(ConfigStore, invalidUTF8GivesTheDefaults)
{
    put("{\"keepDays\": 30, \"localFolder\": \"/a\xff\"}");
    EXPECT_EQ(ConfigStore::load(), AppConfig());
}

TEST(ConfigStore, nestingOfAnyDepthDoesNoHarm)
{
    static constexpr int depth = 200000;
    put("{\"keepDays\": 30, \"later\": " + QByteArray(depth, '[') + QByteArray(depth, ']') + "}");
    EXPECT_EQ(ConfigStore::load(), AppConfig());
}

TEST(ConfigStore, aByteOrderMarkDoesNoHarm)
{
    put("\xef\xbb\xbf{\"keepDays\": 30}");
    EXPECT_EQ(ConfigStore::load().keepDays, 30);
}

TEST(ConfigStore, aFolderOfTheFilesNameGivesTheDefaultsAndDropsTheSave)
{
    ASSERT_TRUE(QDir().mkpath(file() + QLatin1String("/inside")));
    EXPECT_EQ(ConfigStore::load(), AppConfig());
    ConfigStore::save(unusual());
    EXPECT_EQ(ConfigStore::load(), AppConfig());
    EXPECT_TRUE(QFile::exists(file() + QLatin1String("/inside")));
}
