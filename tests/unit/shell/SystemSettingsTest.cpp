#include "ui/shell/SystemSettings.h"

#include <gtest/gtest.h>

namespace {

QString onEveryPath(const QString &name)
{
    return QLatin1String("/usr/bin/") + name;
}

QString nowhere(const QString & /*name*/)
{
    return {};
}

TEST(SystemSettings, eachDesktopHasItsOwn)
{
    EXPECT_EQ(SystemSettings::privacyCommand(QStringLiteral("GNOME"), onEveryPath),
              QStringList({QStringLiteral("/usr/bin/gnome-control-center"),
                           QStringLiteral("applications")}));
    EXPECT_EQ(
        SystemSettings::privacyCommand(QStringLiteral("KDE"), onEveryPath),
        QStringList({QStringLiteral("/usr/bin/systemsettings"), QStringLiteral("kcm_flatpak")}));
    EXPECT_EQ(SystemSettings::privacyCommand(QStringLiteral("XFCE"), onEveryPath),
              QStringList({QStringLiteral("/usr/bin/xfce4-settings-manager")}));
}

TEST(SystemSettings, theFirstNameThatIsKnownDecides)
{
    EXPECT_EQ(
        SystemSettings::privacyCommand(QStringLiteral("ubuntu:GNOME:KDE"), onEveryPath).value(0),
        QStringLiteral("/usr/bin/gnome-control-center"));
    EXPECT_EQ(SystemSettings::privacyCommand(QStringLiteral("kde"), onEveryPath).value(0),
              QStringLiteral("/usr/bin/systemsettings"));
}

TEST(SystemSettings, aProgramThatIsNotInstalledIsPassedOver)
{
    const auto older = [](const QString &name) {
        return name == QLatin1String("systemsettings5") ? onEveryPath(name) : QString();
    };
    EXPECT_EQ(SystemSettings::privacyCommand(QStringLiteral("KDE"), older).value(0),
              QStringLiteral("/usr/bin/systemsettings5"));
    EXPECT_TRUE(SystemSettings::privacyCommand(QStringLiteral("KDE"), nowhere).isEmpty());
}

TEST(SystemSettings, anUnknownDesktopHasNone)
{
    EXPECT_TRUE(SystemSettings::privacyCommand(QStringLiteral("i3"), onEveryPath).isEmpty());
    EXPECT_TRUE(SystemSettings::privacyCommand(QString(), onEveryPath).isEmpty());
    EXPECT_TRUE(SystemSettings::privacyCommand(QStringLiteral("::"), onEveryPath).isEmpty());
}

} // namespace
