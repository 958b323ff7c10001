#include "ui/shell/SingleInstance.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <chrono>
#include <cstdio>

#include <unistd.h>

namespace {

void say(const QByteArray &line)
{
    static_cast<void>(std::printf("%s\n", line.constData()));
    static_cast<void>(std::fflush(stdout));
}

} // namespace

// A program with a window, without the window: says which one it is, and lives until its standard
// input ends.
int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    SingleInstance instance;
    QObject::connect(&instance, &SingleInstance::startedAgain, &app,
                     [](const QString &token) { say("started again: " + token.toUtf8()); });
    switch (instance.begin(std::chrono::minutes(1))) {
    case SingleInstance::Role::first:
        break;
    case SingleInstance::Role::handedOver:
        say("handed over");
        return 0;
    case SingleInstance::Role::unanswered:
        say("unanswered");
        return 0;
    }
    say("first");
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, [] {
        char byte = 0;
        if (::read(STDIN_FILENO, &byte, 1) <= 0) {
            QCoreApplication::quit();
        }
    });
    return QCoreApplication::exec();
}
