#pragma once

#include "state/AppConfig.h"
#include "state/RunRecord.h"
#include "tests/support/Files.h"
#include "tests/support/Installation.h"
#include "tests/support/KeyringSession.h"
#include "tests/support/ReadySettings.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

/// A home in which single cycles of the real program are tried out: a keyring with the key, a
/// source with two small files, an empty disk folder, and settings that back up the one to the
/// other. No destination is to be pruned or verified yet.
class CycleHome : public testing::Test
{
protected:
    CycleHome();

    /// Saves `config` as the settings that the program will read.
    void saveSettings() const;

    /// Puts a secret in the keyring, or takes it out again.
    static bool storeSecret(const QString &account, const QByteArray &value);
    static bool removeSecret(const QString &account);

    /// Connects "vellomar" and "vellomar-server", each of them a folder of this home, by a plain
    /// rclone.conf, which the program encrypts before it uses it; puts both in use.
    void connectRemotes();

    /// Makes an empty repository with the key, one that opens at once; the first backup to a place
    /// does it otherwise.
    static void makeRepository(const QString &target);
    /// Runs the real restic on the repository `target` with the key; gives its standard output, and
    /// fails the test when restic does.
    QByteArray restic(const QString &target, const QStringList &arguments) const;
    /// Whether a repository is whole, by `restic check`.
    [[nodiscard]] bool isWhole(const QString &target) const;
    /// How many snapshots a repository holds.
    static qsizetype snapshotCount(const QString &target);
    /// Whether a lock is left on a repository.
    static bool isLocked(const QString &target);

    /// The newest entry of the history, a default record when there is none.
    static RunRecord newestRecord();
    static qsizetype recordCount();
    /// The phase in status.json; empty when there is no status.
    static QString phase();

    static QString home() { return Paths::home(); }
    static QString folder(const QString &name);
    static bool isThere(const char *supportFileName);

    AppConfig config = readySettings();
    KeyringSession keyring;
    QString resticProgram = Installation::realTool(QStringLiteral("restic"));
    QString source = folder(QStringLiteral("source"));
    QString disk = folder(QStringLiteral("disk"));
    QString repository = disk + QLatin1String("/Vellomar.backup");
};
