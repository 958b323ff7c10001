#include "tests/support/ServerStory.h"

#include "tests/support/Cycle.h"
#include "tools/Rclone.h"
#include "tools/Restic.h"

#include "state/Keychain.h"
#include "state/StatusStore.h"

#include <QDir>
#include <QDirIterator>

namespace {

QStringList oddNames()
{
    return {QStringLiteral("a*b [x] {y}?"),  QStringLiteral("quo\"te's \\ $x `y`"),
            QStringLiteral(" blanks "),      QStringLiteral("-hyphen"),
            QStringLiteral("line\nfeed"),    QStringLiteral("caff\u00e8, \u65e5\u672c"),
            QStringLiteral("100% #1; c:=d"), QStringLiteral("tab\there")};
}

// More than one of restic's blocks of data, and no two of them alike.
QByteArray longContent()
{
    QByteArray content;
    for (int i = 0; i < 300000; ++i) {
        content += QByteArray::number(i * 7) + '\n';
    }
    return content;
}

Restic driver(const AppConfig &config)
{
    Restic restic;
    restic.dest = DestinationID::Server;
    restic.config = config;
    const auto key = Keychain::read(Keychain::repositoryKey);
    EXPECT_TRUE(key.has_value() && key->has_value());
    restic.password = key.has_value() ? key->value_or(QString()) : QString();
    return restic;
}

} // namespace

ServerStory::ServerStory()
{
    config.localEnabled = false;
    config.serverEnabled = true;
    config.serverPath = QStringLiteral("backups/a mac");
    saveSettings();
}

std::optional<QString> ServerStory::connect(const QString &secret)
{
    m_secret = secret;
    return Rclone::connectServer(config, secret);
}

std::string ServerStory::refusal(const QString &secret)
{
    const auto message = connect(secret);
    expectNothingLeft();
    return message.value_or(QString()).toStdString();
}

QJsonObject ServerStory::section()
{
    return Rclone::remotes().value(Rclone::serverRemote);
}

void ServerStory::expectWholeLife(const QString &secret)
{
    for (const QString &name : oddNames()) {
        writeFile(source + u'/' + name, name.toUtf8());
    }
    writeFile(folder(QStringLiteral("source/folder [x]/inner")) + QLatin1String("/long"),
              longContent());
    writeFile(source + QLatin1String("/empty"), {});

    ASSERT_EQ(connect(secret), std::nullopt);
    expectSecretKept();
    saveSettings();
    expectBackup();
    expectRestore();
    Rclone::disconnectServer();
    expectNothingLeft();
}

void ServerStory::expectNothingLeft()
{
    EXPECT_FALSE(Rclone::remotes().contains(Rclone::serverRemote));
    EXPECT_FALSE(isThere("known_hosts"));
    expectSecretKept();
}

QMap<QString, QByteArray> ServerStory::contents(const QString &folder)
{
    QMap<QString, QByteArray> result;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        result.insert(path.sliced(folder.size() + 1), readFile(path));
    }
    return result;
}

void ServerStory::expectSecretKept() const
{
    const QStringList left = QDir(Paths::support())
                                 .entryList({QStringLiteral("k-*"), QStringLiteral("rclone-*")},
                                            QDir::AllEntries | QDir::System | QDir::Hidden);
    EXPECT_EQ(left, QStringList());
    EXPECT_TRUE(
        readFile(Paths::supportFile(QStringLiteral("rclone.conf"))).startsWith("# Encrypted"));
    if (m_secret.isEmpty()) {
        return;
    }
    const QMap<QString, QByteArray> files = contents(Paths::support());
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        EXPECT_FALSE(file.value().contains(m_secret.toUtf8())) << qPrintable(file.key());
    }
}

void ServerStory::expectBackup() const
{
    Cycle cycle;
    EXPECT_EQ(cycle.run(), 0) << cycle.errors().constData();
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 1);
    EXPECT_EQ(history.first().destination, DestinationID::Server);
    EXPECT_EQ(history.first().outcome, Outcome::Ok);
    EXPECT_EQ(history.first().message, QStringLiteral("Completato"));
    EXPECT_EQ(history.first().filesNew, contents(source).size());
}

void ServerStory::expectRestore() const
{
    const Restic restic = driver(config);
    const auto snapshots = restic.snapshots();
    ASSERT_TRUE(snapshots.has_value()) << qPrintable(snapshots.error().message);
    ASSERT_EQ(snapshots->size(), 1);
    const Snap snapshot = snapshots->first();
    EXPECT_EQ(snapshot.paths, QStringList{source});

    const Node node{source, QStringLiteral("source"), true, 0, std::nullopt};
    const QString target = folder(QStringLiteral("restored"));
    const ProcessResult restored = restic.run(restic.restoreArguments(snapshot.id, node, target));
    EXPECT_EQ(restored.status, 0) << qPrintable(restored.standardError);
    const QMap<QString, QByteArray> given = contents(source);
    const QMap<QString, QByteArray> back = contents(target + QLatin1String("/source"));
    EXPECT_EQ(back.keys(), given.keys());
    for (auto file = given.cbegin(); file != given.cend(); ++file) {
        EXPECT_TRUE(back.value(file.key()) == file.value()) << qPrintable(file.key());
    }
}
