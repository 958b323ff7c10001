#include "tools/Tools.h"

#include "state/Paths.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

const QString tool = QStringLiteral("a-tool-of-the-test");

void putTool(const QString &folder,
             QFileDevice::Permissions permissions = QFileDevice::ReadOwner | QFileDevice::ExeOwner)
{
    ASSERT_TRUE(writeFile(folder + u'/' + tool));
    ASSERT_TRUE(QFile::setPermissions(folder + u'/' + tool, permissions));
}

/// A view of the file system of this process's own, with fresh folders in it for the machine's and
/// for Homebrew's tools.
class ToolsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        const int flags = ::geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
        ASSERT_EQ(::unshare(flags), 0);
        ASSERT_EQ(::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
        for (const char *folder : {"/usr/local", "/opt"}) {
            ASSERT_EQ(::mount("test", folder, "tmpfs", 0, "size=1m"), 0);
        }
        resources = *Paths::resources() + QLatin1String("/bin");
    }

    QString resources;
    QString homebrew = QStringLiteral("/opt/homebrew/bin");
    QString local = QStringLiteral("/usr/local/bin");
};

TEST_F(ToolsTest, anAbsentToolIsAbsent)
{
    EXPECT_EQ(Tools::find(tool), std::nullopt);
    EXPECT_EQ(Tools::find(QString()), std::nullopt);
}

TEST_F(ToolsTest, theFoldersAreSearchedInOrderAndAnewEachTime)
{
    putTool(local);
    EXPECT_EQ(Tools::find(tool), local + u'/' + tool);
    putTool(homebrew);
    EXPECT_EQ(Tools::find(tool), homebrew + u'/' + tool);
    ASSERT_EQ(::mount("test", resources.toUtf8().constData(), "tmpfs", 0, "size=1m"), 0);
    putTool(resources);
    EXPECT_EQ(Tools::find(tool), resources + u'/' + tool);
    QFile::remove(resources + u'/' + tool);
    QFile::remove(homebrew + u'/' + tool);
    EXPECT_EQ(Tools::find(tool), local + u'/' + tool);
}

TEST_F(ToolsTest, whatCannotBeExecutedIsPassedOver)
{
    putTool(local);
    putTool(homebrew, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    EXPECT_EQ(Tools::find(tool), local + u'/' + tool);
    QFile::remove(homebrew + u'/' + tool);
    ASSERT_TRUE(QDir().mkpath(homebrew + u'/' + tool));
    EXPECT_EQ(Tools::find(tool), local + u'/' + tool);
}

TEST_F(ToolsTest, aLinkToAnExecutableServesAndADeadOneDoesNot)
{
    ASSERT_TRUE(QDir().mkpath(homebrew));
    ASSERT_TRUE(QFile::link(QStringLiteral("/nonexistent"), homebrew + u'/' + tool));
    EXPECT_EQ(Tools::find(tool), std::nullopt);
    QFile::remove(homebrew + u'/' + tool);
    ASSERT_TRUE(QFile::link(QStringLiteral("/bin/true"), homebrew + u'/' + tool));
    EXPECT_EQ(Tools::find(tool), homebrew + u'/' + tool);
}

TEST_F(ToolsTest, pathIsNotConsulted)
{
    const QString folder = QDir::homePath() + QLatin1String("/bin");
    putTool(folder);
    qputenv("PATH", folder.toUtf8() + ":/usr/bin:/bin");
    EXPECT_EQ(Tools::find(tool), std::nullopt);
    EXPECT_EQ(Tools::find(QStringLiteral("env")), std::nullopt);
}

} // namespace
