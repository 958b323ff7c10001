#include "tests/integration/tools/SampleBackup.h"
#include "tests/support/Files.h"
#include "tools/ProcessRunner.h"
#include "tools/ResticPattern.h"
#include "tools/Tools.h"

#include <QDir>
#include <QSet>

#include <random>

// Which exclusions the real restic refuses.

namespace {

class ExclusionsTest : public testing::Test
{
protected:
    ExclusionsTest()
    {
        restic.config.localFolder = QDir::homePath() + QLatin1String("/disk");
        restic.password = QStringLiteral("a key");
        EXPECT_TRUE(QDir().mkpath(restic.config.localFolder));
        EXPECT_TRUE(restic.prepare().has_value());
    }

    /// Those that restic names when it refuses a file with all of them.
    [[nodiscard]] QStringList refused(const QStringList &patterns) const
    {
        const QString file = QDir::homePath() + QLatin1String("/patterns");
        writeFile(file, patterns.join(u'\n').toUtf8());
        const ProcessResult result =
            runProcess(Tools::find(QStringLiteral("restic")).value_or(QString()),
                       {QStringLiteral("-r"), restic.config.repository(DestinationID::Local),
                        QStringLiteral("backup"), QStringLiteral("--dry-run"),
                        QStringLiteral("--exclude-file"), file, QDir::homePath()},
                       {.env = {{QStringLiteral("RESTIC_PASSWORD"), restic.password}}});
        const QString introduction = QStringLiteral("invalid pattern(s) provided:\n");
        const qsizetype at = result.standardError.indexOf(introduction);
        if (at < 0) {
            EXPECT_EQ(result.status, 0) << result.standardError.toStdString();
            return {};
        }
        QStringList named = result.standardError.mid(at + introduction.size()).split(u'\n');
        named.removeAll(QString());
        return named;
    }

    SampleBackup sample;
    Restic restic;
};

TEST_F(ExclusionsTest, thoseThatAreTakenForWrongAreThoseThatResticRefuses)
{
    const QString signs = QString::fromUtf8("[[[]]]^^--\\\\a*?!/.z{\xc3\xa9");
    std::mt19937 random(12); // the same ones each time
    QStringList patterns;
    QStringList wrong;
    for (int i = 0; i < 6000; ++i) {
        QString pattern;
        for (auto length = random() % 8 + 1; length > 0; --length) {
            pattern += signs.at(static_cast<qsizetype>(random()) % signs.size());
        }
        patterns.append(pattern);
        if (!isResticPattern(pattern)) {
            wrong.append(pattern);
        }
    }
    const QStringList named = refused(patterns);
    EXPECT_GT(named.size(), 1000);
    EXPECT_LT(named.size(), 5000);
    const QSet<QString> byRestic(named.cbegin(), named.cend());
    const QSet<QString> byUs(wrong.cbegin(), wrong.cend());
    EXPECT_EQ((byRestic - byUs).values().join(u'\n').toStdString(), "");
    // Those that restic itself reads only up to their first asterisk are wrong behind it.
    QStringList behind;
    const QSet<QString> halfRead = byUs - byRestic;
    for (const QString &pattern : halfRead) {
        EXPECT_TRUE(pattern.contains(u'*')) << pattern.toStdString();
        behind.append(pattern.section(u'*', -1));
    }
    EXPECT_FALSE(behind.isEmpty());
    const QStringList refusedBehind = refused(behind);
    EXPECT_EQ(QSet<QString>(behind.cbegin(), behind.cend()),
              QSet<QString>(refusedBehind.cbegin(), refusedBehind.cend()))
        << behind.join(u'\n').toStdString();
}

TEST_F(ExclusionsTest, variablesAndCommentsCountAsResticReadsThem)
{
    qputenv("VELLOMAR_TEST_BRACKET", "[");
    for (const QString &right :
         {QStringLiteral("# ["), QStringLiteral("  # [ "), QStringLiteral("[$$]"),
          QStringLiteral("[$]"), QStringLiteral("${VELLOMAR_TEST_NONE}"), QStringLiteral("${"),
          QStringLiteral("a${}b"), QStringLiteral("$-]"), QStringLiteral("[/.."),
          QStringLiteral(" [a] ")}) {
        EXPECT_TRUE(isResticPattern(right)) << right.toStdString();
        EXPECT_EQ(refused({right}), QStringList()) << right.toStdString();
    }
    for (const QString &wrong :
         {QStringLiteral("[$VELLOMAR_TEST_NONE]"), QStringLiteral("[${}]"), QStringLiteral("[${]"),
          QStringLiteral("[$-]"), QStringLiteral("a/../["), QStringLiteral(" [a "),
          QStringLiteral("[$1]"), QStringLiteral("[$a-]")}) {
        EXPECT_FALSE(isResticPattern(wrong)) << wrong.toStdString();
        EXPECT_EQ(refused({wrong}).size(), 1) << wrong.toStdString();
    }
}

} // namespace
