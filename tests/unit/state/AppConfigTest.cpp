#include "state/AppConfig.h"

#include <QJsonArray>

#include <gtest/gtest.h>

TEST(AppConfig, aNewOneHoldsTheDefaults)
{
    const AppConfig config;
    EXPECT_EQ(config.sources, QStringList({Paths::home(), QStringLiteral("/Applications")}));
    EXPECT_EQ(config.excludes, QStringList({
                                   QStringLiteral("~/.Trash"),
                                   QStringLiteral("~/Library/Caches"),
                                   QStringLiteral("~/Library/Logs"),
                                   QStringLiteral("~/Library/Mobile Documents"),
                                   QStringLiteral("~/Library/CloudStorage"),
                                   QStringLiteral("~/Library/Developer/Xcode/DerivedData"),
                                   QStringLiteral("~/Library/Developer/CoreSimulator"),
                                   QStringLiteral("~/Library/Containers/com.docker.docker"),
                                   QStringLiteral("node_modules"),
                                   QStringLiteral(".pnpm-store"),
                               }));
    EXPECT_TRUE(config.excludeCaches);
    EXPECT_FALSE(config.localEnabled);
    EXPECT_EQ(config.localFolder, QString());
    EXPECT_FALSE(config.serverEnabled);
    EXPECT_EQ(config.serverKind, ServerKind::Sftp);
    EXPECT_EQ(config.serverHost, QString());
    EXPECT_EQ(config.serverPort, QString());
    EXPECT_EQ(config.serverUser, QString());
    EXPECT_EQ(config.serverKeyFile, QString());
    EXPECT_EQ(config.serverPath, QString(QLatin1String("Vellomar/") + Paths::hostname()));
    EXPECT_FALSE(config.driveEnabled);
    EXPECT_EQ(config.driveFolder, QString(QLatin1String("Vellomar/") + Paths::hostname()));
    EXPECT_EQ(config.driveClientID, QString());
    EXPECT_EQ(config.driveClientSecret, QString());
    EXPECT_TRUE(config.autoBackup);
    EXPECT_EQ(config.intervalHours, 1);
    EXPECT_FALSE(config.skipOnBattery);
    EXPECT_EQ(config.alertAfterHours, 24);
    EXPECT_FALSE(config.keySaved);
    EXPECT_EQ(config.keepDays, 730);
}

TEST(AppConfig, itsJSONHasThe22KeysOfItsFields)
{
    EXPECT_EQ(AppConfig().toJSON().keys(),
              QStringList({
                  QStringLiteral("alertAfterHours"), QStringLiteral("autoBackup"),
                  QStringLiteral("driveClientID"),   QStringLiteral("driveClientSecret"),
                  QStringLiteral("driveEnabled"),    QStringLiteral("driveFolder"),
                  QStringLiteral("excludeCaches"),   QStringLiteral("excludes"),
                  QStringLiteral("intervalHours"),   QStringLiteral("keepDays"),
                  QStringLiteral("keySaved"),        QStringLiteral("localEnabled"),
                  QStringLiteral("localFolder"),     QStringLiteral("serverEnabled"),
                  QStringLiteral("serverHost"),      QStringLiteral("serverKeyFile"),
                  QStringLiteral("serverKind"),      QStringLiteral("serverPath"),
                  QStringLiteral("serverPort"),      QStringLiteral("serverUser"),
                  QStringLiteral("skipOnBattery"),   QStringLiteral("sources"),
              }));
}

TEST(AppConfig, decodingWantsEveryKey)
{
    const QJsonObject whole = AppConfig().toJSON();
    ASSERT_EQ(AppConfig::fromJSON(whole), AppConfig());
    for (const QString &key : whole.keys()) {
        QJsonObject without = whole;
        without.remove(key);
        EXPECT_FALSE(AppConfig::fromJSON(without)) << key.toStdString();
    }
}

TEST(AppConfig, eachFieldCountsForEquality)
{
    const QJsonObject plain = AppConfig().toJSON();
    for (const QString &key : plain.keys()) {
        QJsonObject changed = plain;
        const QJsonValue old = plain.value(key);
        if (old.isBool()) {
            changed[key] = !old.toBool();
        } else if (old.isDouble()) {
            changed[key] = old.toInteger() + 1;
        } else if (old.isArray()) {
            changed[key] = QJsonArray();
        } else {
            changed[key] = QStringLiteral("smb");
        }
        const auto config = AppConfig::fromJSON(changed);
        ASSERT_TRUE(config) << key.toStdString();
        EXPECT_NE(*config, AppConfig()) << key.toStdString();
        EXPECT_EQ(config->toJSON(), changed) << key.toStdString();
    }
}

TEST(AppConfig, theRepositoryIsTheFolderWithAFixedNameOrARemote)
{
    AppConfig config;
    config.localFolder = QStringLiteral("/media/Disco");
    config.driveFolder = QStringLiteral("a folder/b");
    config.serverPath = QStringLiteral("/srv/c");
    EXPECT_EQ(config.repository(DestinationID::Local),
              QStringLiteral("/media/Disco/Vellomar.backup"));
    EXPECT_EQ(config.repository(DestinationID::Drive),
              QStringLiteral("rclone:vellomar:a folder/b"));
    EXPECT_EQ(config.repository(DestinationID::Server),
              QStringLiteral("rclone:vellomar-server:/srv/c"));
}

TEST(AppConfig, theRepositoryIsNotNormalised)
{
    AppConfig config;
    config.localFolder = QString();
    config.driveFolder = QString();
    config.serverPath = QStringLiteral("a//b/../");
    EXPECT_EQ(config.repository(DestinationID::Local), QStringLiteral("/Vellomar.backup"));
    EXPECT_EQ(config.repository(DestinationID::Drive), QStringLiteral("rclone:vellomar:"));
    EXPECT_EQ(config.repository(DestinationID::Server),
              QStringLiteral("rclone:vellomar-server:a//b/../"));
    config.localFolder = QStringLiteral("/media/Disco/");
    EXPECT_EQ(config.repository(DestinationID::Local),
              QStringLiteral("/media/Disco//Vellomar.backup"));
}

TEST(AppConfig, eachDestinationHasItsOwnSwitch)
{
    for (const DestinationID enabled : allDestinations) {
        AppConfig config;
        config.localEnabled = enabled == DestinationID::Local;
        config.driveEnabled = enabled == DestinationID::Drive;
        config.serverEnabled = enabled == DestinationID::Server;
        for (const DestinationID asked : allDestinations) {
            EXPECT_EQ(config.isEnabled(asked), asked == enabled);
        }
    }
}
