#include "tests/support/Files.h"
#include "tests/unit/tools/RcloneFixture.h"

#include <QRegularExpression>

#include <sys/stat.h>

namespace {

/// An rclone whose encrypted file differs from the plain one, and that fails at any step on demand.
class RcloneStoreTest : public RcloneFixture
{
protected:
    RcloneStoreTest()
    {
        writeConfig(envelope);
        rclone = [this](const Call &call) { return answer(call); };
    }

    ProcessResult answer(const Call &call)
    {
        if (call.words() == show) {
            return {showStatus, QStringLiteral("[old]\ntype = x\n"), QString()};
        }
        plain = readFile(call.config());
        struct stat status = {};
        EXPECT_EQ(::stat(call.config().toUtf8().constData(), &status), 0);
        mode = status.st_mode & 07777U;
        copy = call.config();
        if (beforeRename) {
            beforeRename();
        }
        return encryptionStatus ? ProcessResult{*encryptionStatus, {}, {}}
                                : encryptAsRcloneDoes(call.env);
    }

    bool store(const QString &value = QStringLiteral("v"))
    {
        return Rclone::store(QStringLiteral("new"), {{QStringLiteral("type"), QStringLiteral("z")},
                                                     {QStringLiteral("a"), value}});
    }
    void expectUntouched()
    {
        EXPECT_EQ(config(), envelope);
        EXPECT_EQ(supportFiles(), QStringList({QStringLiteral("rclone.conf")}));
    }

    int showStatus = 0;
    std::optional<int> encryptionStatus; ///< how rclone ends that doesn't encrypt
    std::function<void()> beforeRename;
    QByteArray plain;
    mode_t mode = 0;
    QString copy;
};

TEST_F(RcloneStoreTest, addsASectionToWhatIsThere)
{
    EXPECT_TRUE(store());
    EXPECT_EQ(commands(), QStringList({show, encryption}));
    EXPECT_EQ(plain, "[old]\ntype = x\n\n[new]\ntype = z\na = v\n");
    EXPECT_EQ(config(), envelope + plain); // what rclone made of the copy
    EXPECT_EQ(supportFiles(), QStringList({QStringLiteral("rclone.conf")}));
    EXPECT_EQ(calls.first().config(), configFile());
    for (const Call &call : calls) {
        EXPECT_FALSE(call.passwordCommand().isEmpty());
        EXPECT_EQ(call.env.size(), 2);
        EXPECT_EQ(call.input, std::nullopt);
    }
    EXPECT_NE(calls.first().passwordCommand(), calls.last().passwordCommand());
}

TEST_F(RcloneStoreTest, theCopyIsForTheOwnerAloneAndHasItsOwnName)
{
    EXPECT_TRUE(store());
    EXPECT_EQ(mode, 0600U);
    const QRegularExpression name(
        QStringLiteral("\\A%1/rclone-[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}\\.conf\\z")
            .arg(QRegularExpression::escape(Paths::support())));
    EXPECT_TRUE(name.match(copy).hasMatch()) << qPrintable(copy);
    struct stat status = {};
    ASSERT_EQ(::stat(configFile().toUtf8().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(RcloneStoreTest, aValueWithALineBreakOfAnyKindIsRefusedWithoutRclone)
{
    for (const char16_t code : {u'\n', u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029'}) {
        const QString breaking{QChar(code)};
        for (const QString &value : {breaking, QString(breaking + u'x'), QString(u'x' + breaking),
                                     QString(u'x' + breaking + u'y'), QString(u'\r' + breaking)}) {
            EXPECT_FALSE(store(value)) << static_cast<int>(code);
        }
    }
    EXPECT_FALSE(store(QStringLiteral("x\r\ny")));
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(secrets.reads, 0);
    expectUntouched();
}

TEST_F(RcloneStoreTest, aValueThatRcloneWouldChangeIsRefusedWithoutRclone)
{
    for (const char *value : {"`", "a`b", "`quoted`", "\"\"\"", "\"\"\"quoted\"\"\"", "%(type)s",
                              "a%(type)sb", "%%(type)s", "%( )s", "%(a)b)s %(c)s"}) {
        EXPECT_FALSE(store(QString::fromUtf8(value))) << value;
    }
    EXPECT_TRUE(calls.isEmpty());
    expectUntouched();
}

TEST_F(RcloneStoreTest, aValueThatOnlyLooksLikeThatIsTaken)
{
    for (const char *value : {"\"", "\"\"", "\"a\"", "a\"\"\"b", "%()s", "%(type)", "%(type) s",
                              "%s", "(type)s", "100%"}) {
        EXPECT_TRUE(store(QString::fromUtf8(value))) << value;
        EXPECT_TRUE(plain.endsWith(QByteArray("\na = " + QByteArray(value) + "\n"))) << value;
    }
}

TEST_F(RcloneStoreTest, everyOtherCharacterIsTaken)
{
    const QString value = QStringLiteral("\t\"'%s=;#[]\\ \x08\x0e\x1f\x7f") +
                          QString::fromUtf8("\xe6\x97\xa5\xf0\x9f\x98\x80");
    EXPECT_TRUE(store(value));
    EXPECT_TRUE(plain.endsWith(QByteArray("\na = " + value.toUtf8() + "\n")));
}

TEST_F(RcloneStoreTest, aFailedShowChangesNothing)
{
    showStatus = 1;
    EXPECT_FALSE(store());
    EXPECT_EQ(commands(), QStringList({show}));
    expectUntouched();
}

TEST_F(RcloneStoreTest, aFailedEncryptionChangesNothingAndLeavesNoCopy)
{
    for (const int status : {0, 1, 130, -1}) { // 0: as rclone does it on a full disk
        encryptionStatus = status;
        EXPECT_FALSE(store());
        EXPECT_FALSE(plain.isEmpty());
        expectUntouched();
    }
}

TEST_F(RcloneStoreTest, aFailedReplacementLeavesNoCopy)
{
    beforeRename = [] {
        ASSERT_TRUE(QFile::remove(configFile()));
        ASSERT_TRUE(QDir().mkpath(configFile() + QLatin1String("/in the way")));
    };
    EXPECT_FALSE(store());
    EXPECT_EQ(supportFiles(), QStringList({QStringLiteral("rclone.conf")}));
    EXPECT_TRUE(QFileInfo::exists(configFile() + QLatin1String("/in the way")));
}

TEST_F(RcloneStoreTest, aFolderThatCannotBeWrittenIsAFailure)
{
    rclone = [this](const Call &call) {
        QDir(Paths::support()).removeRecursively();
        return answer(call);
    };
    EXPECT_FALSE(store());
    EXPECT_EQ(commands(), QStringList({show}));
}

TEST_F(RcloneStoreTest, withoutAKeyItStaysPlain)
{
    refuseKey();
    EXPECT_TRUE(store());
    EXPECT_EQ(commands(), QStringList({show}));
    EXPECT_TRUE(calls.first().passwordCommand().isEmpty());
    EXPECT_EQ(config(), QByteArray("[old]\ntype = x\n\n[new]\ntype = z\na = v\n"));
    struct stat status = {};
    ASSERT_EQ(::stat(configFile().toUtf8().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(RcloneStoreTest, noValueStandsInAnArgumentOrInTheEnvironment)
{
    EXPECT_TRUE(store(QStringLiteral("a hidden value")));
    for (const Call &call : calls) {
        EXPECT_FALSE(QStringList(call.arguments + call.env.values())
                         .join(u' ')
                         .contains(QLatin1String("hidden")));
    }
}

TEST_F(RcloneStoreTest, noPairsGiveABareSection)
{
    EXPECT_TRUE(Rclone::store(QStringLiteral("new"), {}));
    EXPECT_EQ(plain, "[old]\ntype = x\n\n[new]\n");
}

} // namespace
