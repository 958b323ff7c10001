#pragma once

#include "tests/support/CheapRepository.h"
#include "tools/Restic.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

/// A folder of files with odd names, and the backup of it.
class SampleBackup
{
public:
    SampleBackup()
    {
        for (const QByteArray &name : oddNames()) {
            write(sources() + u'/', name);
        }
        write(sources() + QLatin1String("/folder [x]/inner/"), "deep*.txt");
    }

    // Qt's temporary folders can't remove a file whose name isn't UTF-8.
    ~SampleBackup()
    {
        std::error_code failure;
        std::filesystem::remove_all(QDir::homePath().toStdString(), failure);
    }
    SampleBackup(const SampleBackup &) = delete;
    SampleBackup &operator=(const SampleBackup &) = delete;
    SampleBackup(SampleBackup &&) = delete;
    SampleBackup &operator=(SampleBackup &&) = delete;

    static QString sources() { return QDir::homePath() + QLatin1String("/sources"); }

    static QList<QByteArray> oddNames()
    {
        return {"plain.txt",        "a*b.txt",   "aXb.txt",     "a?b.txt",
                "a.b.txt",          "br[1].txt", "back\\slash", "quo\"te's",
                " blanks ",         "-hyphen",   "line\nfeed",  "{brace},$x `y`",
                "caf\xc3\xa8",      "cafe.txt",  "caf\xe9.txt", "\xe6\x97\xa5\xe6\x9c\xac.txt",
                "file:with:colons", "tab\there", "100%"};
    }

    /// The content of each file: its own name.
    static void write(const QString &folder, const QByteArray &name)
    {
        ASSERT_TRUE(QDir().mkpath(folder));
        const int descriptor = ::open(QByteArray(folder.toUtf8() + name).constData(),
                                      O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        ASSERT_GE(descriptor, 0) << name.constData();
        const FileDescriptor file(descriptor);
        ASSERT_EQ(::write(file.get(), name.constData(), static_cast<size_t>(name.size())),
                  name.size());
    }

    /// What restic's JSON makes of a name.
    static QString shown(const QByteArray &name) { return repairedText(name); }

    static std::optional<QByteArray> content(const QString &folder, const QByteArray &name)
    {
        const FileDescriptor file(
            ::open(QByteArray(folder.toUtf8() + '/' + name).constData(), O_RDONLY | O_CLOEXEC));
        QByteArray bytes(1024, '\0');
        const ssize_t length = file.isOpen() ? ::read(file.get(), bytes.data(), 1024) : -1;
        return length < 0 ? std::nullopt : std::optional(bytes.first(length));
    }

    /// Makes the repository and the backup and gives the snapshot.
    static Snap backUp(const Restic &restic)
    {
        if (restic.dest == DestinationID::Local) {
            EXPECT_TRUE(
                CheapRepository::make(restic.config.repository(restic.dest), restic.password));
        }
        EXPECT_TRUE(restic.prepare().has_value());
        const ProcessResult made =
            restic.run({QStringLiteral("backup"), QStringLiteral("--json"),
                        QStringLiteral("--host"), QStringLiteral("macchina"), sources()});
        EXPECT_EQ(made.status, 0) << qPrintable(made.standardError);
        const auto snaps = restic.snapshots();
        EXPECT_TRUE(snaps.has_value() && snaps->size() == 1);
        return snaps.has_value() ? snaps->value(0) : Snap();
    }

    static Node nodeOf(const QList<Node> &nodes, const QByteArray &name)
    {
        for (const Node &node : nodes) {
            if (node.name == shown(name)) {
                return node;
            }
        }
        ADD_FAILURE() << "not found: " << name.constData();
        return {};
    }
};
