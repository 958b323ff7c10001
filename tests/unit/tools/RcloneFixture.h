#pragma once

#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/RcloneEnvelope.h"
#include "tools/Rclone.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <functional>
#include <mutex>

/// An rclone and other tools that the test scripts by functions, and a key in memory; every call is
/// kept.
class RcloneFixture : public testing::Test
{
protected:
    struct Call
    {
        QString program;
        QStringList arguments;
        ChildProcess::Environment env;
        std::optional<QString> input;
        ProcessHandle *handle = nullptr;

        [[nodiscard]] bool isRclone() const { return program.endsWith(QLatin1String("/rclone")); }
        /// What was run: the arguments alone for rclone, behind the full path for anything else.
        [[nodiscard]] QString words() const
        {
            return (isRclone() ? arguments : QStringList(program) + arguments).join(u' ');
        }
        [[nodiscard]] QString config() const { return env.value(QStringLiteral("RCLONE_CONFIG")); }
        [[nodiscard]] QString passwordCommand() const
        {
            return env.value(QStringLiteral("RCLONE_PASSWORD_COMMAND"));
        }
    };

    RcloneFixture() { secrets.items[{service, account}] = "key of the configuration"; }

    /// Takes the key away for the whole process, if done before the first use.
    void refuseKey() { secrets.readFailure = -25308; }

    [[nodiscard]] QStringList commands() const
    {
        QStringList list;
        for (const Call &call : calls) {
            list.append(call.words());
        }
        return list;
    }

    static QString configFile() { return Paths::supportFile(QStringLiteral("rclone.conf")); }

    /// Writes the file, dated so many seconds back.
    static void writeConfig(const QByteArray &content, int age = 0)
    {
        ASSERT_TRUE(writeFile(configFile(), content));
        QFile file(configFile());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTimeUtc().addSecs(-age),
                                     QFileDevice::FileModificationTime));
    }
    static std::optional<QByteArray> config()
    {
        QFile file(configFile());
        return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
    }

    const QString service = QStringLiteral("it.vellomar.app");
    const QString account = QStringLiteral("rclone-config-key");
    const QString encryption = QStringLiteral("config encryption set");
    const QString dump = QStringLiteral("config dump");
    const QString show = QStringLiteral("config show");
    const QByteArray envelope = "# Encrypted rclone configuration File\n\nRCLONE_ENCRYPT_V0:\n";

    std::function<ProcessResult(const Call &)> rclone = [this](const Call &call) {
        return call.words() == encryption ? encryptAsRcloneDoes(call.env)
                                          : ProcessResult{0, {}, {}};
    };
    /// ssh-keyscan and pkill.
    std::function<ProcessResult(const Call &)> otherTool = [](const Call &) {
        return ProcessResult{0, {}, {}};
    };
    QList<Call> calls;
    std::mutex callsLock;
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    ScopedProcessRunner runner{[this](const QString &program, const QStringList &arguments,
                                      const ProcessOptions &options) {
        const Call call{program, arguments, options.env, options.input, options.handle};
        {
            const std::lock_guard lock(callsLock);
            calls.append(call);
        }
        return call.isRclone() ? rclone(call) : otherTool(call);
    }};
};
