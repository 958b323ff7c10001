#include "tests/support/Files.h"
#include "ui/design/Theme.h"

#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QGuiApplication>

#include <gtest/gtest.h>

#include <array>

namespace {

/// A machine with one font, which is none of those that the window would like.
class ThemeFamiliesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        const QString file = QDir::homePath() + QStringLiteral("/fonts.conf");
        ASSERT_TRUE(writeFile(
            file, "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
                  "<fontconfig><dir>/usr/share/fonts/truetype/dejavu</dir></fontconfig>"));
        qputenv("FONTCONFIG_FILE", file.toUtf8());
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    int argc = 1;
    std::array<char, 5> name = {'t', 'e', 's', 't', '\0'};
    std::array<char *, 2> argv{name.data(), nullptr};
};

TEST_F(ThemeFamiliesTest, whatIsInstalledIsAskedOnce)
{
    const QGuiApplication application(argc, argv.data());
    const QString text = Theme::textFamily();
    const QString rounded = Theme::roundedFamily();
    EXPECT_NE(text, QStringLiteral("Inter"));
    EXPECT_EQ(rounded, text);
    ASSERT_NE(QFontDatabase::addApplicationFont(
                  QStringLiteral("/usr/share/fonts/opentype/inter/Inter-Regular.otf")),
              -1);
    ASSERT_NE(QFontDatabase::addApplicationFont(
                  QStringLiteral("/usr/share/fonts/truetype/quicksand/Quicksand-Regular.ttf")),
              -1);
    ASSERT_TRUE(QFontDatabase::hasFamily(QStringLiteral("Inter")));
    EXPECT_EQ(Theme::textFamily(), text);
    EXPECT_EQ(Theme::roundedFamily(), rounded);
}

} // namespace
