// Times what holds the window's thread in the model, in a home with settings, a key and one backup.
//
// usage: WaitBench VELLOMAR URL USER PASSWORD
// Brings the model up, connects a WebDAV server, and has that program make a backup. Prints, in
// milliseconds, the longest that a single event held the thread in each of the three: the start
// (the making of the model is one), the connection, and the run with its end.

#include "model/AppModel.h"
#include "model/Delivery.h"
#include "state/StatusStore.h"
#include "tests/support/PlainDesktop.h"
#include "tools/OneShotSecret.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <span>
#include <string_view>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// Measures each event.
class TimedApplication final : public QCoreApplication
{
public:
    using QCoreApplication::QCoreApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        QElapsedTimer timer;
        timer.start();
        const bool isTaken = QCoreApplication::notify(receiver, event);
        m_longest = std::max(m_longest, timer.nsecsElapsed());
        return isTaken;
    }

    void add(qint64 nanoseconds) { m_longest = std::max(m_longest, nanoseconds); }

    /// The longest since the last call, in milliseconds.
    double takeLongest() { return static_cast<double>(std::exchange(m_longest, 0)) / 1e6; }

private:
    qint64 m_longest = 0;
};

bool comesTrue(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(2min);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

/// Until nothing is under way any more, and a moment longer, for what begins on a timer.
bool settles(const AppModel &model)
{
    QElapsedTimer quiet;
    quiet.start();
    return comesTrue([&] {
        if (!model.findChildren<Delivery *>().isEmpty()) {
            quiet.restart();
        }
        return quiet.elapsed() > 2000;
    });
}

bool connect(AppModel &model, std::span<char *> words)
{
    AppConfig config = model.config();
    config.serverKind = ServerKind::Webdav;
    config.serverHost = QString::fromLocal8Bit(words[2]);
    config.serverUser = QString::fromLocal8Bit(words[3]);
    model.setConfig(config);
    model.connectServer(QString::fromLocal8Bit(words[4]));
    return comesTrue([&model] { return !model.connections()->server().connecting; }) &&
           model.connections()->server().connected && settles(model);
}

bool backUp(AppModel &model, const QString &program)
{
    // A short run may come and go between two looks; its records stay.
    const RunRecord before = model.run()->history().value(0);
    return QProcess::startDetached(program,
                                   {QStringLiteral("--backup"), QStringLiteral("--manual")}) &&
           comesTrue([&] { return model.run()->history().value(0) != before; }) &&
           comesTrue([&model] { return !model.run()->status(); }) && settles(model);
}

int fail(const char *words)
{
    static_cast<void>(std::fputs(words, stderr));
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    // rclone asks the executable that started it for its key.
    if (words.size() == 3 && std::string_view(words[1]) == "--secret") {
        OneShotSecret::deliver(QFile::decodeName(words[2]));
    }
    if (words.size() != 5) {
        return EXIT_FAILURE;
    }
    TimedApplication application(argc, argv);
    Background::begin();
    for (RunRecord record = StatusStore::loadHistory().value(0);
         StatusStore::loadHistory().size() < StatusStore::historyLimit;) {
        record.dataAdded += 1;
        StatusStore::append(record);
    }

    QElapsedTimer making;
    making.start();
    AppModel model(World::real(std::make_shared<PlainDesktop>()));
    application.add(making.nsecsElapsed());
    if (!comesTrue([&model] { return !model.isStarting(); }) || !settles(model)) {
        return fail("the model didn't come up\n");
    }
    const double start = application.takeLongest();
    if (!connect(model, words)) {
        return fail("the server couldn't be connected\n");
    }
    const double connection = application.takeLongest();
    if (!backUp(model, QFile::decodeName(words[1]))) {
        return fail("no backup was seen\n");
    }
    std::printf("%.2f %.2f %.2f\n", start, connection, application.takeLongest());
    return EXIT_SUCCESS;
}
