#include "state/JSONFile.h"
#include "tools/OneShotSecret.h"
#include "tools/Rclone.h"

#include <QFile>
#include <QJsonObject>

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

// Connects the server that a JSON object on standard input describes, secret and all, and writes
// the message of a failure. Serves rclone with the configuration's key as the program itself does,
// since rclone asks the process that started it.
int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    if (words.size() == 3 && words[1] == std::string_view("--secret")) {
        OneShotSecret::deliver(QFile::decodeName(words[2]));
    }
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly)) {
        return EXIT_FAILURE;
    }
    const auto document = JSONFile::decode(input.readAll());
    if (!document || !document->isObject()) {
        return EXIT_FAILURE;
    }
    const QJsonObject server = document->object();
    const auto text = [&server](const char *key) {
        return server.value(QLatin1String(key)).toString();
    };
    AppConfig config;
    for (const ServerKind kind :
         {ServerKind::Sftp, ServerKind::Smb, ServerKind::Webdav, ServerKind::S3}) {
        if (rawValue(kind) == text("kind")) {
            config.serverKind = kind;
        }
    }
    config.serverHost = text("host");
    config.serverPort = text("port");
    config.serverUser = text("user");
    const auto message = Rclone::connectServer(config, text("secret"));
    std::fputs(message.value_or(QString()).toUtf8().constData(), stdout);
    return message ? EXIT_FAILURE : EXIT_SUCCESS;
}
