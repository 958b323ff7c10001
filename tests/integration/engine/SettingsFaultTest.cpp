#include "tests/support/ScriptedRestic.h"

#include "state/StatusStore.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

class SettingsFault : public ScriptedRestic
{
protected:
    SettingsFault() { writeSupportFile("history.json", oneRecord); }

    static QByteArray settings()
    {
        return readFile(Paths::supportFile(QStringLiteral("config.json")));
    }

    /// The settings with one key's value replaced by this JSON text.
    [[nodiscard]] QByteArray with(const char *key, const QByteArray &value) const
    {
        QJsonObject object = config.toJSON();
        object.insert(QLatin1String(key), QStringLiteral("@"));
        return QJsonDocument(object).toJson().replace("\"@\"", value);
    }

    /// Nothing is in use by default, so settings that can't be read start nothing and lose nothing.
    void expectDefaults(const QByteArray &bytes)
    {
        writeSupportFile("config.json", bytes);
        EXPECT_EQ(runCycle(), 0);
        EXPECT_EQ(settings(), bytes);
        EXPECT_EQ(commands(), "");
        EXPECT_EQ(readFile(Paths::supportFile(QStringLiteral("history.json"))), oneRecord);
        EXPECT_FALSE(isThere("status.json"));
        EXPECT_FALSE(isThere("backup.log"));
    }

    const QByteArray oneRecord =
        R"([{"id":"6ba7b810-9dad-11d1-80b4-00c04fd430c8","date":"2026-01-01T00:00:00Z",)"
        R"("destination":"local","outcome":"ok","message":"Completato","filesNew":1,)"
        R"("filesChanged":0,"dataAdded":9,"duration":1.5}])";
};

TEST_F(SettingsFault, missingSettingsStartNothing)
{
    ASSERT_TRUE(QFile::remove(Paths::supportFile(QStringLiteral("config.json"))));
    EXPECT_EQ(runCycle(), 0);
    EXPECT_FALSE(isThere("config.json"));
    EXPECT_EQ(commands(), "");
    EXPECT_EQ(recordCount(), 1);
}

TEST_F(SettingsFault, settingsThatAreNoObjectStartNothing)
{
    for (const char *bytes : {"", " ", "[]", "null", "7", "\"x\"", "\xff\xfe", "{"}) {
        expectDefaults(bytes);
    }
}

TEST_F(SettingsFault, settingsCutInHalfStartNothing)
{
    const QByteArray whole = settings();
    expectDefaults(whole.first(whole.size() / 2));
    expectDefaults(whole.first(whole.size() - 3));
}

TEST_F(SettingsFault, aWrongTypeAnywhereStartsNothing)
{
    expectDefaults(with("sources", "\"/home\""));
    expectDefaults(with("sources", "[7]"));
    expectDefaults(with("localEnabled", "1"));
    expectDefaults(with("localEnabled", "\"true\""));
    expectDefaults(with("keepDays", "1.5"));
    expectDefaults(with("serverKind", "\"ftp\""));
    expectDefaults(with("driveFolder", "null"));
}

TEST_F(SettingsFault, tenMegabytesOfRubbishStartNothing)
{
    expectDefaults(QByteArray(10'000'000, 'x'));
    expectDefaults(QByteArray(10'000'000, '['));
}

TEST_F(SettingsFault, unknownKeysArePassedOver)
{
    QJsonObject object = config.toJSON();
    object.insert(QStringLiteral("ofANewerVersion"), QJsonObject{{QStringLiteral("a"), 1}});
    object.insert(QStringLiteral("big"), QString(10'000'000, u'x'));
    const QByteArray bytes = QJsonDocument(object).toJson();
    writeSupportFile("config.json", bytes);
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(settings(), bytes);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_EQ(recordCount(), 2);
}

TEST_F(SettingsFault, missingKeysTakeTheirDefaults)
{
    QJsonObject object = config.toJSON();
    object.remove(QStringLiteral("keepDays"));
    object.remove(QStringLiteral("excludes"));
    writeSupportFile("config.json", QJsonDocument(object).toJson());
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_TRUE(
        readFile(Paths::supportFile(QStringLiteral("excludes.txt"))).contains("node_modules\n"));
}

TEST_F(SettingsFault, aLaterChangeDoesNotReachARunUnderWay)
{
    script("await");
    Cycle cycle(installation.program());
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    config.localEnabled = false;
    config.driveEnabled = true;
    saveSettings();
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(recordCount(), 2);
    EXPECT_EQ(newestRecord().destination, DestinationID::Local);
}

TEST_F(SettingsFault, aDamagedHistoryBeginsAnew)
{
    for (const char *bytes : {"", "{}", "[", "[{}]", "[7]", "\xff"}) {
        writeSupportFile("history.json", bytes);
        EXPECT_EQ(runCycle(), 0);
        EXPECT_EQ(recordCount(), 1) << bytes;
        EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    }
}

} // namespace
