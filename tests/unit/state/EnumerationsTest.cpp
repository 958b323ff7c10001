#include "state/DestinationID.h"
#include "state/Outcome.h"
#include "state/ServerKind.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

TEST(DestinationID, standsInTheOrderOfEveryRun)
{
    EXPECT_THAT(allDestinations,
                ElementsAre(DestinationID::local, DestinationID::drive, DestinationID::server));
}

TEST(DestinationID, hasItsRawValueAndItsTitle)
{
    EXPECT_EQ(rawValue(DestinationID::local), QStringLiteral("local"));
    EXPECT_EQ(rawValue(DestinationID::drive), QStringLiteral("drive"));
    EXPECT_EQ(rawValue(DestinationID::server), QStringLiteral("server"));
    EXPECT_EQ(title(DestinationID::local), QStringLiteral("Disco esterno"));
    EXPECT_EQ(title(DestinationID::drive), QStringLiteral("Google Drive"));
    EXPECT_EQ(title(DestinationID::server), QStringLiteral("Server privato"));
}

TEST(DestinationID, isFoundByItsRawValueAlone)
{
    for (const DestinationID destination : allDestinations) {
        EXPECT_EQ(destinationID(rawValue(destination)), destination);
    }
    for (const char *text : {"", "Local", "disk", " local", "local "}) {
        EXPECT_FALSE(destinationID(QLatin1String(text))) << text;
    }
}

TEST(ServerKind, standsInTheOrderOfTheForm)
{
    EXPECT_THAT(allServerKinds,
                ElementsAre(ServerKind::sftp, ServerKind::webdav, ServerKind::s3, ServerKind::smb));
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
             Row{ServerKind::sftp, "sftp", "Utente", "Password", "Cartella", true},
             Row{ServerKind::webdav, "webdav", "Utente", "Password", "Cartella", false},
             Row{ServerKind::s3, "s3", "Access key", "Secret key", "Bucket e cartella", false},
             Row{ServerKind::smb, "smb", "Utente", "Password", "Condivisione e cartella", true},
         }) {
        EXPECT_EQ(rawValue(row.kind), QLatin1String(row.raw));
        EXPECT_EQ(serverKind(QLatin1String(row.raw)), row.kind);
        EXPECT_EQ(userLabel(row.kind), QLatin1String(row.user));
        EXPECT_EQ(secretLabel(row.kind), QLatin1String(row.secret));
        EXPECT_EQ(pathLabel(row.kind), QLatin1String(row.path));
        EXPECT_EQ(hasPort(row.kind), row.port) << row.raw;
    }
    for (const char *text : {"", "ftp", "SFTP", "s3 "}) {
        EXPECT_FALSE(serverKind(QLatin1String(text))) << text;
    }
}

TEST(Outcome, hasItsRawValue)
{
    EXPECT_EQ(rawValue(Outcome::ok), QStringLiteral("ok"));
    EXPECT_EQ(rawValue(Outcome::warning), QStringLiteral("warning"));
    EXPECT_EQ(rawValue(Outcome::failed), QStringLiteral("failed"));
    EXPECT_EQ(rawValue(Outcome::skipped), QStringLiteral("skipped"));
    EXPECT_EQ(rawValue(Outcome::cancelled), QStringLiteral("cancelled"));
}

TEST(Outcome, isFoundByItsRawValueAlone)
{
    for (const Outcome value : allOutcomes) {
        EXPECT_EQ(outcome(rawValue(value)), value);
    }
    for (const char *text : {"", "unknown", "OK", "ok\n"}) {
        EXPECT_FALSE(outcome(QLatin1String(text))) << text;
    }
}

TEST(Outcome, hasItsLabel)
{
    EXPECT_EQ(label(Outcome::ok), QStringLiteral("Completato"));
    EXPECT_EQ(label(Outcome::warning), QStringLiteral("Con avvisi"));
    EXPECT_EQ(label(Outcome::failed), QStringLiteral("Non riuscito"));
    EXPECT_EQ(label(Outcome::skipped), QStringLiteral("Saltato"));
    EXPECT_EQ(label(Outcome::cancelled), QStringLiteral("Interrotto"));
}
