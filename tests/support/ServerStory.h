#pragma once

#include "tests/support/CycleHome.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include <optional>
#include <string>

/// A home whose only destination is the private server. The test sets the server's kind, address
/// and user.
class ServerStory : public CycleHome
{
protected:
    ServerStory();

    /// Connects the server of `config`, as the window does; absent on success.
    std::optional<QString> connect(const QString &secret = {});

    /// Connects the server, backs the source up to it with the real program, lists the backup,
    /// restores it to a new folder, compares every byte, and disconnects, leaving nothing.
    void expectWholeLife(const QString &secret);

    /// Expects that the server isn't connected and that no file is left of a connection or of an
    /// attempt, and that the last secret that connect() got is nowhere in the support folder.
    void expectNothingLeft();

    /// The message of an attempt that fails and leaves nothing; empty when it succeeds.
    std::string refusal(const QString &secret);

    /// The settings of the connection, as rclone gives them; empty when there is none.
    static QJsonObject section();

    static constexpr const char *accessText = "Accesso rifiutato: controlla utente e password.";
    static constexpr const char *unreachableText =
        "Server non raggiungibile: controlla indirizzo e porta.";

    /// Every file below a folder, by its path from there, with what it holds.
    static QMap<QString, QByteArray> contents(const QString &folder);

private:
    void expectSecretKept() const;
    void expectBackup() const;
    void expectRestore() const;

    QString m_secret;
};
