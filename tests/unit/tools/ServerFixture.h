#pragma once

#include "tests/support/Files.h"
#include "tests/unit/tools/RcloneFixture.h"

/// An rclone and an ssh-keyscan with which a connection to the private server succeeds, unless a
/// test makes a step fail.
class ServerFixture : public RcloneFixture
{
protected:
    ServerFixture()
    {
        writeConfig(envelope);
        rclone = [this](const Call &call) { return answer(call); };
        otherTool = [this](const Call &) { return scanned; };
        server.serverHost = QStringLiteral("host");
        server.serverUser = QStringLiteral("anna");
    }

    static QString knownHosts() { return Paths::supportFile(QStringLiteral("known_hosts")); }
    static bool isKnown() { return QFile::exists(knownHosts()); }
    static QByteArray keys() { return readFile(knownHosts()); }
    static void writeKeys(const QByteArray &content) { writeFile(knownHosts(), content); }
    static ProcessResult said(const QString &output, int status = 0)
    {
        return {status, output, QString()};
    }

    AppConfig server; ///< SFTP, with a host and a user

    ProcessResult obscured = said(QStringLiteral("scrambled\n"));
    ProcessResult shown = said(QString());
    std::optional<ProcessResult> encryptedCopy; ///< what rclone says in place of encrypting it
    ProcessResult tested = said(QString());
    ProcessResult versioned = said(QString());
    ProcessResult dumped = said(QStringLiteral("{}"));
    ProcessResult scanned = said(QStringLiteral("host ssh-ed25519 AAAA\n"));
    QByteArray stored; ///< the configuration that was to be encrypted, in plain

    const QString deletion = QStringLiteral("config delete vellomar-server");
    const QString scan = QStringLiteral("/usr/bin/ssh-keyscan -T 10 -- host");
    const QString scrambling = QStringLiteral("obscure -");
    const QString trial = QStringLiteral("lsd vellomar-server: --contimeout 10s --timeout 20s "
                                         "--retries 1 --low-level-retries 1");

private:
    ProcessResult answer(const Call &call)
    {
        if (call.words() == encryption) {
            stored = readFile(call.config());
            return encryptedCopy ? *encryptedCopy : encryptAsRcloneDoes(call.env);
        }
        const QMap<QString, ProcessResult> answers{
            {QStringLiteral("obscure"), obscured},
            {QStringLiteral("lsd"), tested},
            {QStringLiteral("backend"), versioned},
        };
        const QMap<QString, ProcessResult> configAnswers{{show, shown}, {dump, dumped}};
        return answers.value(call.arguments.value(0),
                             configAnswers.value(call.words(), said(QString())));
    }
};
