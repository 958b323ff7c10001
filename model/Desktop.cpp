#include "model/Desktop.h"

#include "engine/Notifier.h"
#include "model/Background.h"
#include "platform/FullDiskAccess.h"
#include "state/Paths.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>

bool Desktop::hasFullDiskAccess()
{
    return ::hasFullDiskAccess(Paths::home());
}

void Desktop::requestNotificationPermission()
{
    Background().run([] { Notifier::requestPermission(); });
}

bool Desktop::startDetached(const QString &program, const QStringList &arguments)
{
    // Forks twice, so that the program becomes the system's child and leaves no dead entry here.
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

void Desktop::after(std::chrono::milliseconds delay, std::function<void()> task)
{
    auto *timer = new QTimer(QCoreApplication::instance());
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    QObject::connect(timer, &QTimer::timeout, timer, std::move(task));
    timer->start(delay);
}
