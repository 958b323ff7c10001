#include "ui/prepared/PreparedStates.h"

#include "platform/Clock.h"

#include <QMap>

#include <functional>

namespace {

constexpr qint64 secondsOfHour = 3600;
constexpr qint64 gigabyte = qint64{1000} * 1000 * 1000;

RunRecord record(double hoursAgo, DestinationID destination, Outcome outcome = Outcome::Ok)
{
    RunRecord made;
    made.id = QUuid::createUuid();
    made.date = Clock::now().addSecs(static_cast<qint64>(-hoursAgo * secondsOfHour));
    made.destination = destination;
    made.outcome = outcome;
    made.message = QStringLiteral("128 file nuovi, 12 modificati, 340 MB salvati");
    made.duration = 95;
    return made;
}

RunRecord check(double hoursAgo, DestinationID destination, Outcome outcome = Outcome::Ok)
{
    RunRecord made = record(hoursAgo, destination, outcome);
    made.kind = QStringLiteral("check");
    made.message = QStringLiteral("Verifica completata");
    return made;
}

/// A repository with a version in each of the last working hours, and older ones.
RepoInfo repository(int versions)
{
    RepoInfo info;
    for (int i = 0; i < versions; ++i) {
        const qint64 hours = i < 9 ? i : qint64{24} * (i - 8);
        info.snapshots.append(
            {.id = QString::number(i, 16).rightJustified(64, u'0'),
             .shortID = QString::number(i, 16).rightJustified(8, u'0'),
             .date = Clock::now().addSecs(-hours * secondsOfHour - qint64{12} * 60),
             .paths = {Paths::home()},
             .host = Paths::hostname()});
    }
    info.size = gigabyte * 214;
    return info;
}

RepoInfo unreadable(const QString &error)
{
    RepoInfo info;
    info.error = error;
    return info;
}

AppConfig ready()
{
    AppConfig config;
    config.localEnabled = true;
    config.localFolder = QStringLiteral("/Volumes/Archivio");
    config.driveEnabled = true;
    config.keySaved = true;
    return config;
}

RunStatus running()
{
    RunStatus status;
    status.startedAt = Clock::now().addSecs(-240);
    status.destination = DestinationID::Drive;
    status.phase = QStringLiteral("Copia dei file");
    status.percent = 0.424;
    status.filesDone = 48213;
    status.totalFiles = 113708;
    status.bytesDone = gigabyte * 31;
    status.totalBytes = gigabyte * 73;
    status.secondsRemaining = 372;
    status.currentFile = Paths::home() + QLatin1String("/Foto/2026/Estate/IMG_4211.heic");
    return status;
}

PreparedState fresh()
{
    PreparedState state;
    state.key = QStringLiteral("h7Kp2mWxR9tQvZ4nYcBd8sGfJ3uLeA6T");
    return state;
}

PreparedState waiting()
{
    PreparedState state = fresh();
    state.config = ready();
    state.repos = {{DestinationID::Local, {}}, {DestinationID::Drive, {}}};
    return state;
}

PreparedState well()
{
    PreparedState state = waiting();
    state.config.serverEnabled = true;
    state.history = {record(0.2, DestinationID::Server), record(0.3, DestinationID::Drive),
                     record(0.4, DestinationID::Local), check(50, DestinationID::Local)};
    state.repos = {{DestinationID::Local, repository(41)},
                   {DestinationID::Drive, repository(18)},
                   {DestinationID::Server, repository(1)}};
    return state;
}

PreparedState kit()
{
    PreparedState state = waiting();
    state.config.keySaved = false;
    return state;
}

PreparedState launching()
{
    PreparedState state = well();
    state.launching = true;
    return state;
}

PreparedState runningNow()
{
    PreparedState state = well();
    state.status = running();
    return state;
}

PreparedState scanning()
{
    PreparedState state = runningNow();
    state.status->phase = QStringLiteral("Analisi dei file");
    state.status->percent = 0;
    state.status->totalFiles = 0;
    state.status->currentFile = std::nullopt;
    return state;
}

PreparedState single()
{
    PreparedState state = well();
    state.config.driveEnabled = false;
    state.config.serverEnabled = false;
    state.config.localFolder = Paths::home();
    state.localPlace.isBesideHome = true;
    state.config.keepDays = -1;
    state.repos = {{DestinationID::Local, repository(1)}};
    return state;
}

PreparedState access()
{
    PreparedState state = well();
    state.fullDiskAccess = false;
    return state;
}

PreparedState stale()
{
    PreparedState state = well();
    state.history = {record(80, DestinationID::Drive), record(81, DestinationID::Local)};
    return state;
}

PreparedState staleRunning()
{
    PreparedState state = stale();
    state.status = running();
    return state;
}

PreparedState failed()
{
    PreparedState state = well();
    RunRecord failure = record(1, DestinationID::Drive, Outcome::Failed);
    failure.message = QStringLiteral("Connessione interrotta");
    RunRecord verification = check(2, DestinationID::Local, Outcome::Failed);
    verification.message = QStringLiteral("pack 3f2a1b0c: ciphertext verification failed");
    state.history = {failure, verification, record(30, DestinationID::Local)};
    state.repos[DestinationID::Server] =
        unreadable(QStringLiteral("Fatal: unable to open repository: connection refused"));
    return state;
}

PreparedState keyError()
{
    PreparedState state;
    state.keyError = QStringLiteral("Il portachiavi è bloccato (errore 3).");
    return state;
}

PreparedState starting()
{
    PreparedState state = well();
    state.starting = true;
    state.repos.clear();
    return state;
}

PreparedState support()
{
    PreparedState state = well();
    state.supportFault = QStringLiteral("permesso negato");
    return state;
}

PreparedState longTexts()
{
    PreparedState state = runningNow();
    state.status->phase = QStringLiteral("Copia <b>dei</b> file ").repeated(20);
    state.status->currentFile =
        Paths::home() + u'/' + QStringLiteral("<img src=x>&amp; \"molto lungo\"/").repeated(140);
    state.status->filesDone = 123456789012;
    state.status->totalFiles = 987654321098;
    state.status->bytesDone = gigabyte * 123456;
    state.status->totalBytes = gigabyte * 987654;
    state.status->secondsRemaining = qint64{3600} * 999;
    RunRecord verification = check(2, DestinationID::Local, Outcome::Failed);
    verification.message = QStringLiteral("<i>errore</i> senza spazi ").repeated(30);
    state.history.prepend(verification);
    state.repos[DestinationID::Server] =
        unreadable(QStringLiteral("<a href=\"x\">Fatal</a>: a very long error ").repeated(20));
    state.keyError =
        QStringLiteral("<b>Errore</b> del portachiavi che non finisce mai. ").repeated(8);
    state.kitNotice = Notice{QStringLiteral("Kit <u>salvato</u> in ~/") +
                                 QStringLiteral("cartella/").repeated(40),
                             true};
    return state;
}

struct Entry
{
    QString name;
    std::function<PreparedState()> make;
};

const QList<Entry> &entries()
{
    static const QList<Entry> list{{QStringLiteral("fresh"), fresh},
                                   {QStringLiteral("kit"), kit},
                                   {QStringLiteral("waiting"), waiting},
                                   {QStringLiteral("launching"), launching},
                                   {QStringLiteral("scanning"), scanning},
                                   {QStringLiteral("running"), runningNow},
                                   {QStringLiteral("well"), well},
                                   {QStringLiteral("single"), single},
                                   {QStringLiteral("access"), access},
                                   {QStringLiteral("stale"), stale},
                                   {QStringLiteral("staleRunning"), staleRunning},
                                   {QStringLiteral("failed"), failed},
                                   {QStringLiteral("keyError"), keyError},
                                   {QStringLiteral("starting"), starting},
                                   {QStringLiteral("support"), support},
                                   {QStringLiteral("long"), longTexts}};
    return list;
}

} // namespace

QStringList PreparedStates::names()
{
    QStringList list;
    for (const Entry &entry : entries()) {
        list.append(entry.name);
    }
    return list;
}

PreparedState PreparedStates::state(const QString &name)
{
    for (const Entry &entry : entries()) {
        if (entry.name == name) {
            return entry.make();
        }
    }
    return fresh();
}
