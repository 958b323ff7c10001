#include "ui/summary/DestinationsTexts.h"
#include "state/Fmt.h"
#include "state/Texts.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

constexpr qint64 gigabyte = qint64{1000} * 1000 * 1000;
constexpr qint64 daySeconds = 86400;

/// A program of which nothing is set up, with two source folders.
class DestinationsTextsTest : public testing::Test
{
protected:
    DestinationsTextsTest()
    {
        Texts::load();
        situation.space.now = QDateTime(QDate(2026, 7, 15), QTime(12, 0)).toUTC();
        config.sources = QStringList{QStringLiteral("/a"), QStringLiteral("/b")};
    }

    void measure(qint64 one, qint64 other)
    {
        situation.space.sourceSizes = {{QStringLiteral("/a"), one}, {QStringLiteral("/b"), other}};
    }

    /// A repository of 10 GB on the disk that grows by 1 GB a day, for ten days by now.
    void grow()
    {
        situation.space.repos[DestinationID::Local].size = 10 * gigabyte;
        for (int day = 1; day <= 10; ++day) {
            RunRecord record;
            record.date = situation.space.now.addSecs(-day * daySeconds);
            record.outcome = Outcome::Ok;
            record.dataAdded = gigabyte;
            situation.space.history.append(record);
        }
    }

    [[nodiscard]] std::string firstBackup() const
    {
        return DestinationsTexts::firstBackup(situation).value.toStdString();
    }

    [[nodiscard]] std::string versions(qint64 keepDays)
    {
        config.keepDays = keepDays;
        const auto figure = DestinationsTexts::versions(situation);
        return figure ? figure->label.toStdString() + '|' + figure->value.toStdString() : "absent";
    }

    [[nodiscard]] DestinationsTexts::Place place(DestinationID destination) const
    {
        return DestinationsTexts::place(destination, situation);
    }

    [[nodiscard]] std::string subtitle(DestinationID destination) const
    {
        return place(destination).subtitle.toStdString();
    }

    [[nodiscard]] DestinationsTexts::ServerForm form(ServerKind kind)
    {
        config.serverKind = kind;
        return DestinationsTexts::serverForm(config);
    }

    [[nodiscard]] bool isUnencrypted(ServerKind kind, const char *host)
    {
        config.serverHost = QString::fromUtf8(host);
        return form(kind).unencrypted;
    }

    [[nodiscard]] bool isReady(ServerKind kind, const char *secret)
    {
        return form(kind).ready(QString::fromUtf8(secret));
    }

    TestApplication application;
    DestinationsSituation situation;
    AppConfig &config = situation.space.config;
};

TEST_F(DestinationsTextsTest, theFirstBackupIsToBeMeasured)
{
    const DestinationsTexts::Figure figure = DestinationsTexts::firstBackup(situation);
    EXPECT_EQ(figure.label, QStringLiteral("Primo backup"));
    EXPECT_EQ(figure.value, QStringLiteral("Da misurare"));
    EXPECT_EQ(figure.note, QStringLiteral("Peso delle cartelle, tolte le esclusioni. È compresso: "
                                          "di solito occupa meno."));
    EXPECT_TRUE(figure.promise);
    EXPECT_EQ(DestinationsTexts::measureLabel(situation), QStringLiteral("Misura le cartelle"));
}

TEST_F(DestinationsTextsTest, theFirstBackupWeighsAllFolders)
{
    measure(2 * gigabyte, gigabyte);
    EXPECT_EQ(firstBackup(), "3 GB");
    EXPECT_FALSE(DestinationsTexts::firstBackup(situation).promise);
    EXPECT_EQ(DestinationsTexts::measureLabel(situation), QStringLiteral("Misura di nuovo"));
}

TEST_F(DestinationsTextsTest, oneFolderThatIsNotMeasuredLeavesTheFirstBackupUnknown)
{
    situation.space.sourceSizes = {{QStringLiteral("/a"), gigabyte}};
    EXPECT_EQ(firstBackup(), "Da misurare");
    EXPECT_EQ(versions(730), "absent");
    EXPECT_EQ(DestinationsTexts::measureLabel(situation), QStringLiteral("Misura le cartelle"));
}

TEST_F(DestinationsTextsTest, aMeasurementShowsItsSumSoFarWhateverWasKnown)
{
    measure(2 * gigabyte, gigabyte);
    situation.measuring = true;
    situation.soFar = 500 * 1000 * 1000;
    const DestinationsTexts::Figure figure = DestinationsTexts::firstBackup(situation);
    EXPECT_EQ(figure.value, QStringLiteral("fino a 500 MB"));
    EXPECT_EQ(figure.note, QStringLiteral("Misura in corso..."));
    EXPECT_TRUE(figure.promise);
}

TEST_F(DestinationsTextsTest, allVersionsFollowARuleOfThumbByHowLongTheyAreKept)
{
    measure(600 * 1000 * 1000, 400 * 1000 * 1000);
    EXPECT_EQ(versions(1), "Con 1 giorni di versioni|circa 1,2 GB");
    EXPECT_EQ(versions(30), "Con 1 mese di versioni|circa 1,2 GB");
    EXPECT_EQ(versions(31), "Con 31 giorni di versioni|circa 1,5 GB");
    EXPECT_EQ(versions(365), "Con 1 anno di versioni|circa 1,5 GB");
    EXPECT_EQ(versions(366), "Con 366 giorni di versioni|circa 2 GB");
    EXPECT_EQ(versions(730), "Con 2 anni di versioni|circa 2 GB");
    EXPECT_EQ(versions(1825), "Con 5 anni di versioni|circa 2 GB");
    const auto figure = DestinationsTexts::versions(situation);
    EXPECT_EQ(figure->note, QStringLiteral("Regola pratica. Dopo qualche giorno di backup diventa "
                                           "una stima sui tuoi file."));
    EXPECT_TRUE(figure->promise);
}

TEST_F(DestinationsTextsTest, versionsKeptForEverCountAsFiveYears)
{
    measure(600 * 1000 * 1000, 400 * 1000 * 1000);
    EXPECT_EQ(versions(0), "Con 5 anni di versioni|circa 2 GB");
}

TEST_F(DestinationsTextsTest, whereOnlyTheLastVersionIsKeptThereIsNoFigureOfAll)
{
    measure(gigabyte, gigabyte);
    grow();
    EXPECT_EQ(versions(-1), "absent");
    EXPECT_EQ(firstBackup(), "2 GB");
}

TEST_F(DestinationsTextsTest, theRuleOfThumbIsCutToWholeBytes)
{
    measure(4, 0); // times 1.2 it is 4.8
    EXPECT_EQ(versions(30), "Con 1 mese di versioni|circa 4 byte");
}

TEST_F(DestinationsTextsTest, theRuleOfThumbNeverGoesBeyondTheLargestNumber)
{
    measure(std::numeric_limits<qint64>::max() - 1, 1);
    EXPECT_EQ(versions(0), "Con 5 anni di versioni|circa " +
                               Fmt::byteCount(std::numeric_limits<qint64>::max()).toStdString());
}

TEST_F(DestinationsTextsTest, measuredGrowthTakesTheRulesPlace)
{
    measure(gigabyte, gigabyte);
    grow();
    EXPECT_EQ(versions(30), "Con 1 mese di versioni|circa 40 GB");
    const auto figure = DestinationsTexts::versions(situation);
    EXPECT_EQ(figure->note, QStringLiteral("Stima dalla crescita misurata nei backup recenti."));
    EXPECT_FALSE(figure->promise);
}

TEST_F(DestinationsTextsTest, measuredGrowthNeedsNoMeasuredFolders)
{
    grow();
    EXPECT_EQ(versions(0), "Con 5 anni di versioni|circa 1,84 TB");
    EXPECT_EQ(firstBackup(), "Da misurare");
}

TEST_F(DestinationsTextsTest, eachDestinationHasItsTitle)
{
    EXPECT_EQ(place(DestinationID::Local).title, QStringLiteral("Disco esterno"));
    EXPECT_EQ(place(DestinationID::Drive).title, QStringLiteral("Google Drive"));
    EXPECT_EQ(place(DestinationID::Server).title, QStringLiteral("Server privato"));
}

TEST_F(DestinationsTextsTest, withNothingSetUpNoDestinationCanBeInUse)
{
    EXPECT_EQ(subtitle(DestinationID::Local), "Nessun disco scelto");
    EXPECT_EQ(subtitle(DestinationID::Drive), "Account non collegato");
    EXPECT_EQ(subtitle(DestinationID::Server), "Non collegato");
    for (const DestinationID destination : allDestinations) {
        EXPECT_FALSE(place(destination).canEnable);
        EXPECT_FALSE(place(destination).enabled);
        EXPECT_FALSE(place(destination).hasUsage);
        EXPECT_EQ(place(destination).versions, QString());
        EXPECT_EQ(place(destination).forecast, Notice());
    }
    EXPECT_FALSE(DestinationsTexts::isDiskAway(situation));
}

TEST_F(DestinationsTextsTest, aChosenFolderIsTheSubtitle)
{
    config.localFolder = QStringLiteral("/Volumes/Archivio %1");
    EXPECT_EQ(subtitle(DestinationID::Local), "/Volumes/Archivio %1");
    EXPECT_TRUE(place(DestinationID::Local).canEnable);
}

TEST_F(DestinationsTextsTest, aConnectedServerIsNamedByItsKindAndHost)
{
    situation.server.connected = true;
    config.serverHost = QStringLiteral("nas.example.org");
    const std::array names = {"SFTP", "WebDAV", "S3", "SMB"};
    for (const ServerKind kind : allServerKinds) {
        config.serverKind = kind;
        EXPECT_EQ(subtitle(DestinationID::Server),
                  std::string(names.at(static_cast<std::size_t>(kind))) + " · nas.example.org");
    }
    EXPECT_TRUE(place(DestinationID::Server).canEnable);
    situation.drive.connected = true;
    EXPECT_EQ(subtitle(DestinationID::Drive), "Account collegato");
    EXPECT_TRUE(place(DestinationID::Drive).canEnable);
}

TEST_F(DestinationsTextsTest, aHostWithPlaceholdersStaysAsItIs)
{
    situation.server.connected = true;
    config.serverHost = QStringLiteral("%1 %2");
    EXPECT_EQ(subtitle(DestinationID::Server), "SFTP · %1 %2");
}

TEST_F(DestinationsTextsTest, aDiskIsUsedInPart)
{
    config.localFolder = QStringLiteral("/Volumes/Archivio");
    situation.localKnown = true;
    situation.localVolume = Rclone::Quota{400 * gigabyte, 1000 * gigabyte};
    const DestinationsTexts::Place local = place(DestinationID::Local);
    EXPECT_TRUE(local.hasUsage);
    EXPECT_EQ(local.used, 4e11);
    EXPECT_EQ(local.total, 1e12);
    EXPECT_EQ(local.usageText, QStringLiteral("400 GB usati di 1 TB"));
    EXPECT_EQ(local.free, QStringLiteral("600 GB"));
    EXPECT_FALSE(DestinationsTexts::isDiskAway(situation));
}

TEST_F(DestinationsTextsTest, aDiskThatIsPulledIsAwayAndHasNoFigures)
{
    config.localFolder = QStringLiteral("/Volumes/Archivio");
    situation.localKnown = true;
    EXPECT_TRUE(DestinationsTexts::isDiskAway(situation));
    EXPECT_FALSE(place(DestinationID::Local).hasUsage);
    EXPECT_EQ(place(DestinationID::Local).free, QString());
    EXPECT_TRUE(place(DestinationID::Local).canEnable);
}

TEST_F(DestinationsTextsTest, aDiskThatWasNeverLookedAtIsNotCalledAway)
{
    config.localFolder = QStringLiteral("/Volumes/Archivio");
    EXPECT_FALSE(DestinationsTexts::isDiskAway(situation));
}

TEST_F(DestinationsTextsTest, remotePlacesShowTheirQuotaAndNoRoomBesideIt)
{
    situation.drive.connected = true;
    situation.drive.quota = Rclone::Quota{5 * gigabyte, 15 * gigabyte};
    situation.server.connected = true;
    EXPECT_EQ(place(DestinationID::Drive).usageText, QStringLiteral("5 GB usati di 15 GB"));
    EXPECT_EQ(place(DestinationID::Drive).free, QString());
    EXPECT_FALSE(place(DestinationID::Server).hasUsage);
    situation.server.quota = Rclone::Quota{0, 0};
    EXPECT_EQ(place(DestinationID::Server).usageText, QStringLiteral("Zero kB usati di Zero kB"));
}

TEST_F(DestinationsTextsTest, anEntryOfARepositoryHasItsVersionsAndSize)
{
    RepoInfo &repo = situation.space.repos[DestinationID::Local];
    EXPECT_EQ(place(DestinationID::Local).versions, QStringLiteral("0"));
    EXPECT_EQ(place(DestinationID::Local).stored, QString());
    repo.snapshots.resize(1234);
    repo.size = 214 * gigabyte;
    EXPECT_EQ(place(DestinationID::Local).versions, QStringLiteral("1.234"));
    EXPECT_EQ(place(DestinationID::Local).stored, QStringLiteral("214 GB"));
}

TEST_F(DestinationsTextsTest, versionsOfARepositoryThatWasNotReadAreNotCounted)
{
    RepoInfo &repo = situation.space.repos[DestinationID::Drive];
    repo.loading = true;
    EXPECT_EQ(place(DestinationID::Drive).versions, QString());
    repo.loading = false;
    repo.error = QStringLiteral("connection refused");
    EXPECT_EQ(place(DestinationID::Drive).versions, QString());
    repo.loading = true;
    repo.snapshots.resize(2);
    EXPECT_EQ(place(DestinationID::Drive).versions, QStringLiteral("2"));
}

TEST_F(DestinationsTextsTest, eachDestinationHasItsForecast)
{
    measure(gigabyte, gigabyte);
    situation.space.localFree = 5 * gigabyte;
    situation.space.driveQuota = Rclone::Quota{0, gigabyte};
    EXPECT_EQ(place(DestinationID::Local).forecast,
              (Notice{QStringLiteral(
                          "Spazio sufficiente: dopo il primo backup restano circa 3 GB liberi."),
                      false}));
    EXPECT_EQ(place(DestinationID::Drive).forecast,
              (Notice{QStringLiteral("Spazio insufficiente: mancano 1 GB."), true}));
    EXPECT_EQ(place(DestinationID::Server).forecast, Notice());
}

TEST_F(DestinationsTextsTest, theVersioningOfABucketIsGoodOrAWarning)
{
    situation.server.connected = true;
    config.serverKind = ServerKind::S3;
    EXPECT_EQ(DestinationsTexts::bucketVersioning(situation), std::nullopt);
    situation.server.versioning = QStringLiteral("Enabled");
    EXPECT_EQ(DestinationsTexts::bucketVersioning(situation),
              (Notice{QStringLiteral("Versioning attivo sul bucket: un backup cancellato resta "
                                     "recuperabile dal server."),
                      false}));
    for (const char *other : {"Suspended", "Unversioned", "enabled"}) {
        situation.server.versioning = QString::fromUtf8(other);
        EXPECT_EQ(DestinationsTexts::bucketVersioning(situation),
                  (Notice{QStringLiteral(
                              "Versioning non attivo sul bucket. Con versioning e Object Lock i "
                              "backup non si possono eliminare nemmeno con le credenziali di "
                              "questo Mac."),
                          true}))
            << other;
    }
}

TEST_F(DestinationsTextsTest, onlyAConnectedBucketHasAVersioning)
{
    config.serverKind = ServerKind::S3;
    situation.server.versioning = QStringLiteral("Enabled");
    EXPECT_EQ(DestinationsTexts::bucketVersioning(situation), std::nullopt);
    situation.server.connected = true;
    for (const ServerKind kind : {ServerKind::Sftp, ServerKind::Webdav, ServerKind::Smb}) {
        config.serverKind = kind;
        EXPECT_EQ(DestinationsTexts::bucketVersioning(situation), std::nullopt);
    }
}

TEST_F(DestinationsTextsTest, theFormOfEachKind)
{
    struct Row
    {
        ServerKind kind;
        const char *labels; ///< host, user, secret, path
        const char *hostSample;
        const char *portSample; ///< nullptr: no port
    };
    const std::array rows = {
        Row{ServerKind::Sftp, "Indirizzo|Utente|Password|Cartella", "nas.example.org", "22"},
        Row{ServerKind::Webdav, "URL|Utente|Password|Cartella",
            "https://nas.example.org/remote.php/dav/files/utente", nullptr},
        Row{ServerKind::S3, "Endpoint|Access key|Secret key|Bucket e cartella",
            "https://s3.example.org", nullptr},
        Row{ServerKind::Smb, "Indirizzo|Utente|Password|Condivisione e cartella", "nas.example.org",
            "445"},
    };
    for (const Row &row : rows) {
        const DestinationsTexts::ServerForm made = form(row.kind);
        const QStringList labels = {made.hostLabel, made.userLabel, made.secretLabel,
                                    made.pathLabel};
        EXPECT_EQ(labels.join(u'|').toStdString(), row.labels);
        EXPECT_EQ(made.hostSample.toStdString(), row.hostSample);
        EXPECT_EQ(made.hasPort, row.portSample != nullptr) << row.labels;
        EXPECT_EQ(made.portSample, QString::fromUtf8(row.portSample));
        EXPECT_EQ(made.hasKeyFile, row.kind == ServerKind::Sftp);
    }
}

TEST_F(DestinationsTextsTest, anAddressWithoutEncryptionIsFoundInAnySpelling)
{
    for (const ServerKind kind : {ServerKind::Webdav, ServerKind::S3}) {
        EXPECT_TRUE(isUnencrypted(kind, "http://nas"));
        EXPECT_TRUE(isUnencrypted(kind, "HTTP://NAS"));
        EXPECT_TRUE(isUnencrypted(kind, " \tHttp://nas"));
        EXPECT_FALSE(isUnencrypted(kind, "https://nas"));
        EXPECT_FALSE(isUnencrypted(kind, "nas/http://"));
        EXPECT_FALSE(isUnencrypted(kind, "http:/nas"));
        EXPECT_FALSE(isUnencrypted(kind, ""));
    }
}

TEST_F(DestinationsTextsTest, aKindWithATransportOfItsOwnIsNeverUnencrypted)
{
    EXPECT_FALSE(isUnencrypted(ServerKind::Sftp, "http://nas"));
    EXPECT_FALSE(isUnencrypted(ServerKind::Smb, "http://nas"));
}

TEST_F(DestinationsTextsTest, noServerIsConnectedWithoutAnAddress)
{
    config.serverUser = QStringLiteral("anna");
    config.serverKeyFile = QStringLiteral("~/.ssh/id");
    for (const char *host : {"", " ", " \t "}) {
        config.serverHost = QString::fromUtf8(host);
        for (const ServerKind kind : allServerKinds) {
            EXPECT_FALSE(isReady(kind, "secret")) << host;
        }
    }
}

TEST_F(DestinationsTextsTest, allKindsButSFTPNeedUserAndSecret)
{
    config.serverHost = QStringLiteral("nas");
    config.serverKeyFile = QStringLiteral("~/.ssh/id");
    for (const ServerKind kind : {ServerKind::Webdav, ServerKind::S3, ServerKind::Smb}) {
        config.serverUser.clear();
        EXPECT_FALSE(isReady(kind, ""));
        EXPECT_FALSE(isReady(kind, "secret"));
        config.serverUser = QStringLiteral("anna");
        EXPECT_FALSE(isReady(kind, ""));
        EXPECT_TRUE(isReady(kind, "secret"));
        EXPECT_TRUE(isReady(kind, " "));
    }
}

TEST_F(DestinationsTextsTest, sftpNeedsAPasswordOrAKeyAndNoUser)
{
    config.serverHost = QStringLiteral("nas");
    EXPECT_FALSE(isReady(ServerKind::Sftp, ""));
    EXPECT_TRUE(isReady(ServerKind::Sftp, "secret"));
    config.serverKeyFile = QStringLiteral("~/.ssh/id");
    EXPECT_TRUE(isReady(ServerKind::Sftp, ""));
    EXPECT_TRUE(isReady(ServerKind::Sftp, "secret"));
}

} // namespace
