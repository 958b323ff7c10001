#pragma once

#include "tools/ProcessRunner.h"

#include <QFile>
#include <QSaveFile>

/// What a scripted rclone does when it is asked to encrypt its file, `config encryption set`: what
/// the real one does, as far as the program can see (EncryptionStandInsTest compares them). It ends
/// with 0 whether it could save the file or not, and with 1 where it would have to ask for the key.
///
/// The plain text follows the envelope, so that a test can look at it.
inline ProcessResult encryptAsRcloneDoes(const ChildProcess::Environment &environment)
{
    if (environment.value(QStringLiteral("RCLONE_PASSWORD_COMMAND")).isEmpty()) {
        return {1, {}, QStringLiteral("CRITICAL: Failed to read line: EOF\n")};
    }
    QFile file(environment.value(QStringLiteral("RCLONE_CONFIG")));
    const QByteArray plain = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    QSaveFile encrypted(file.fileName());
    if (!encrypted.open(QIODevice::WriteOnly)) {
        return {0, {}, QStringLiteral("ERROR : Failed to save config after 10 tries\n")};
    }
    encrypted.write("# Encrypted rclone configuration File\n\nRCLONE_ENCRYPT_V0:\n" + plain);
    encrypted.commit();
    return {0, {}, {}};
}
