#include "platform/FullDiskAccess.h"

#include "tests/support/Files.h"
#include "tests/support/OrdinaryUser.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

QString home()
{
    return QDir::homePath();
}

/// Whether there is access in a sandbox with this description.
bool hasAccessIn(const QByteArray &description)
{
    const QString path = home() + QLatin1String("/flatpak-info");
    writeFile(path, description);
    return hasFullDiskAccess(home(), path);
}

bool hasAccessWith(const QByteArray &filesystems)
{
    return hasAccessIn("[Application]\nname=it.vellomar.app\nfilesystems=home\n\n[Context]\n"
                       "shared=network;ipc;\nfilesystems=" +
                       filesystems + "\nsockets=x11;\n\n[Instance]\nfilesystems=host\n");
}

} // namespace

TEST(FullDiskAccess, isThereOutsideOfASandbox)
{
    EXPECT_TRUE(hasFullDiskAccess(home(), home() + QLatin1String("/no-such-file")));
}

TEST(FullDiskAccess, isThereInASandboxWithTheHome)
{
    for (const char *folders : {"home", "home;", "host", "host:ro;", "xdg-music;home:ro;/mnt",
                                "home:create", "host-etc;host;", "home;!host-os"}) {
        EXPECT_TRUE(hasAccessWith(folders)) << folders;
    }
}

TEST(FullDiskAccess, isNotThereInASandboxWithoutIt)
{
    for (const char *folders : {"", ";", "xdg-documents;", "~/Documents", "host-etc;host-os:ro",
                                "!home", "!host", "homes;hosting", "/home"}) {
        EXPECT_FALSE(hasAccessWith(folders)) << folders;
    }
    EXPECT_FALSE(hasAccessIn(""));
    EXPECT_FALSE(hasAccessIn("[Context]\nshared=network\n"));
    EXPECT_FALSE(hasAccessIn("[Other]\nfilesystems=host\n"));
    EXPECT_FALSE(hasAccessIn(QByteArray(100000, '\xff')));
}

TEST(FullDiskAccess, isNotThereWhenAPartOfTheHomeIsHidden)
{
    for (const char *folders : {"home;!~/private", "host;!xdg-documents", "host;!home"}) {
        EXPECT_FALSE(hasAccessWith(folders)) << folders;
    }
}

TEST(FullDiskAccess, isNotThereWithoutAReadableHome)
{
    const QString none = home() + QLatin1String("/none");
    EXPECT_FALSE(hasFullDiskAccess(none, none));
    ASSERT_TRUE(becomeOrdinaryUser());
    const QString shut = home() + QLatin1String("/shut");
    ASSERT_TRUE(QDir().mkpath(shut));
    EXPECT_TRUE(hasFullDiskAccess(shut, none));
    for (const QFile::Permissions permissions :
         {QFile::Permissions(), QFile::Permissions(QFile::ReadOwner),
          QFile::Permissions(QFile::ExeOwner)}) {
        ASSERT_TRUE(QFile::setPermissions(shut, permissions));
        EXPECT_FALSE(hasFullDiskAccess(shut, none)) << permissions;
    }
}

TEST(FullDiskAccess, isThereHere)
{
    EXPECT_TRUE(hasFullDiskAccess(home()));
}
