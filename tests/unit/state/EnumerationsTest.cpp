#include "state/DestinationID.h"
#include "state/Outcome.h"
#include "state/ServerKind.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

TEST(DestinationID, standsInTheOrderOfEveryRun)
{
    EXPECT_THAT(allDestinations,
                ElementsAre(DestinationID::Local, DestinationID::Drive, DestinationID::Server));
}

TEST(DestinationID, hasItsRawValueAndItsTitle)
{
    EXPECT_EQ(rawValue(DestinationID::Local), QStringLiteral("local"));
    EXPECT_EQ(rawValue(DestinationID::Drive), QStringLiteral("drive"));
    EXPECT_EQ(rawValue(DestinationID::Server), QStringLiteral("server"));
    EXPECT_EQ(title(DestinationID::Local), QStringLiteral("Disco esterno"));
    EXPECT_EQ(title(DestinationID::Drive), QStringLiteral("Google Drive"));
    EXPECT_EQ(title(DestinationID::Server), QStringLiteral("Server privato"));
}

TEST(DestinationID, isFoundByItsRawValueAlone)
{
    for (const DestinationID destination : allDestinations) {
        EXPECT_EQ(fromRawValue<DestinationID>(rawValue(destination)), destination);
    }
    for (const char *text : {"", "Local", "disk", " local", "local "}) {
        EXPECT_FALSE(fromRawValue<DestinationID>(QLatin1String(text))) << text;
    }
}

TEST(ServerKind, standsInTheOrderOfTheForm)
{
    EXPECT_THAT(allServerKinds,
                ElementsAre(ServerKind::Sftp, ServerKind::Webdav, ServerKind::S3, ServerKind::Smb));
}

TEST(ServerKind, hasItsTextsAndItsPort)
{
    struct Row
    {
        ServerKind kind;
        const char *raw;
        const char *user;
        const char *secret;
        const char *path;
        bool port;
    };
    for (const Row &row : {
             Row{ServerKind::Sftp, "sftp", "Utente", "Password", "Cartella", true},
             Row{ServerKind::Webdav, "webdav", "Utente", "Password", "Cartella", false},
             Row{ServerKind::S3, "s3", "Access key", "Secret key", "Bucket e cartella", false},
             Row{ServerKind::Smb, "smb", "Utente", "Password", "Condivisione e cartella", true},
         }) {
        EXPECT_EQ(rawValue(row.kind), QLatin1String(row.raw));
        EXPECT_EQ(fromRawValue<ServerKind>(QLatin1String(row.raw)), row.kind);
        EXPECT_EQ(userLabel(row.kind), QLatin1String(row.user));
        EXPECT_EQ(secretLabel(row.kind), QLatin1String(row.secret));
        EXPECT_EQ(pathLabel(row.kind), QLatin1String(row.path));
        EXPECT_EQ(hasPort(row.kind), row.port) << row.raw;
    }
    for (const char *text : {"", "ftp", "SFTP", "s3 "}) {
        EXPECT_FALSE(fromRawValue<ServerKind>(QLatin1String(text))) << text;
    }
}

TEST(Outcome, hasItsRawValue)
{
    EXPECT_EQ(rawValue(Outcome::Ok), QStringLiteral("ok"));
    EXPECT_EQ(rawValue(Outcome::Warning), QStringLiteral("warning"));
    EXPECT_EQ(rawValue(Outcome::Failed), QStringLiteral("failed"));
    EXPECT_EQ(rawValue(Outcome::Skipped), QStringLiteral("skipped"));
    EXPECT_EQ(rawValue(Outcome::Cancelled), QStringLiteral("cancelled"));
}

TEST(Outcome, isFoundByItsRawValueAlone)
{
    for (const Outcome value : allOutcomes) {
        EXPECT_EQ(fromRawValue<Outcome>(rawValue(value)), value);
    }
    for (const char *text : {"", "unknown", "OK", "ok\n"}) {
        EXPECT_FALSE(fromRawValue<Outcome>(QLatin1String(text))) << text;
    }
}

TEST(Outcome, hasItsLabel)
{
    EXPECT_EQ(label(Outcome::Ok), QStringLiteral("Completato"));
    EXPECT_EQ(label(Outcome::Warning), QStringLiteral("Con avvisi"));
    EXPECT_EQ(label(Outcome::Failed), QStringLiteral("Non riuscito"));
    EXPECT_EQ(label(Outcome::Skipped), QStringLiteral("Saltato"));
    EXPECT_EQ(label(Outcome::Cancelled), QStringLiteral("Interrotto"));
}
