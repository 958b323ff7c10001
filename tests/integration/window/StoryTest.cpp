#include "state/ConfigStore.h"
#include "state/Paths.h"
#include "state/StatusStore.h"
#include "tests/support/AccessibleTree.h"
#include "tests/support/Cycle.h"
#include "tests/support/Files.h"
#include "tests/support/Waiting.h"
#include "tests/support/WindowSession.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>

#include <sys/prctl.h>

// From the first start to a finished backup, as a user gets there: the real program in its
// window with the real restic and a real keyring, by mouse and keyboard, read by a screen reader.
// Pictures of each step are kept in the folder of the build.

namespace {

class Story : public WindowSession
{
protected:
    Story()
    {
        installation.addWindow();
        installation.addReal(QStringLiteral("rclone"));
        installation.addScript(
            QStringLiteral("restic"),
            QStringLiteral("#!/bin/sh\nexec '%1' --pack-size 4 --limit-upload $(cat '%2') \"$@\"\n")
                .arg(Installation::realTool(QStringLiteral("restic")), speedFile)
                .toUtf8());
        // What a test leaves running comes back to it, to be ended.
        ::prctl(PR_SET_CHILD_SUBREAPER, 1);
        tray.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        tray.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        tray.setStandardOutputFile(QProcess::nullDevice()); // it writes more than a pipe takes
        QDir().mkpath(pictures);
        writeFiles();
        setSpeed(5000);
        AppConfig config;
        config.sources = {source};
        config.localEnabled = true;
        config.localFolder = disk;
        ConfigStore::save(config);
    }
    ~Story() override
    {
        tray.kill();
        tray.waitForFinished();
        for (const pid_t child : childrenOf(::getpid())) {
            if (const auto left = StatusStore::loadStatus(); left && left->pid == child) {
                ::kill(child, SIGKILL);
            }
        }
    }
    void SetUp() override
    {
        WindowSession::SetUp();
        ASSERT_TRUE(reader.isRunning());
        tray.start(QStringLiteral("/usr/bin/python3"),
                   {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/tray_host.py")});
        ASSERT_TRUE(screen.run(QStringLiteral("gdbus"),
                               {QStringLiteral("wait"), QStringLiteral("--session"),
                                QStringLiteral("--timeout=20"),
                                QStringLiteral("org.kde.StatusNotifierWatcher")}));
        program.start();
        ASSERT_TRUE(program.shows()) << program.errors().toStdString();
    }

    void writeFiles() const
    {
        constexpr qsizetype size = 400'000;
        QDir().mkpath(source);
        for (int i = 0; i < 250; ++i) {
            QByteArray bytes(size, Qt::Uninitialized);
            auto *const numbers = reinterpret_cast<quint32 *>(bytes.data());
            QRandomGenerator::global()->fillRange(numbers, size / 4);
            ASSERT_TRUE(writeFile(
                QStringLiteral("%1/Foto %2.jpg").arg(source).arg(i, 3, 10, QLatin1Char('0')),
                bytes));
        }
    }
    /// How many KiB a second restic may write from its next start on.
    void setSpeed(int speed) const { ASSERT_TRUE(writeFile(speedFile, QByteArray::number(speed))); }

    std::optional<AccessibleObject> find(const QString &role, const QString &name)
    {
        return reader.find(program.processId(), role, name);
    }
    /// Everything on the screen, for the message of a failure.
    std::string allLines()
    {
        QString lines;
        const QList<AccessibleObject> objects = reader.read(program.processId());
        for (const AccessibleObject &object : objects) {
            lines += QString(object.depth, u' ') + object.line() + u'\n';
        }
        return lines.toStdString();
    }
    /// Waits until something is on show.
    bool shows(const QString &role, const QString &name)
    {
        return eventually([&] { return find(role, name).has_value(); });
    }
    bool has(const QString &role, const QString &name, const char *state)
    {
        const auto object = find(role, name);
        return object && object->is(state);
    }
    /// Clicks on the middle of something when it is there and can be clicked on.
    bool click(const QString &role, const QString &name)
    {
        std::optional<AccessibleObject> object;
        const bool isThere = eventually([&] {
            object = find(role, name);
            return object && object->is("sensitive");
        });
        return isThere && screen.click(object->place.center());
    }
    /// The number that the dial shows in percent; -1 while it shows none.
    int percent()
    {
        static const QRegularExpression form(QStringLiteral("^(\\d+)% "));
        const QList<AccessibleObject> objects = reader.read(program.processId());
        for (const AccessibleObject &object : objects) {
            const auto match = form.match(object.name);
            if (object.role == QLatin1String("label") && match.hasMatch()) {
                return match.captured(1).toInt();
            }
        }
        return -1;
    }
    /// Keeps a picture of the program's window, or of all that is on the screen.
    void keep(const QString &name, bool isWhole = false)
    {
        const QString window =
            isWhole ? QStringLiteral("root") : program.windows().value(0, QStringLiteral("root"));
        EXPECT_TRUE(screen.run(QStringLiteral("import"), {QStringLiteral("-window"), window,
                                                          pictures + QLatin1String("/story-") +
                                                              name + QLatin1String(".png")}));
    }
    /// How the backups came out, the newest first.
    static QList<Outcome> outcomes()
    {
        QList<Outcome> result;
        const QList<RunRecord> history = StatusStore::loadHistory();
        for (const RunRecord &record : history) {
            if (!record.kind) {
                result.append(record.outcome);
            }
        }
        return result;
    }
    void toggleTrayPanel()
    {
        tray.write("Activate\n");
        tray.waitForBytesWritten();
    }
    /// All the names on show in the tray's panel.
    QStringList panelNames()
    {
        QStringList names;
        const QList<AccessibleObject> objects = reader.read(program.processId());
        const auto isPower = [](const AccessibleObject &object) {
            return object.name == QLatin1String("Esci da Vellomar");
        };
        const auto power = std::find_if(objects.begin(), objects.end(), isPower);
        if (power == objects.end()) {
            return {};
        }
        auto first = power;
        while (first->depth > 1) {
            --first;
        }
        for (auto object = first; object != power + 1; ++object) {
            names.append(object->name);
        }
        return names;
    }

    QString home = QDir::homePath();
    QString source = home + QLatin1String("/Foto");
    QString disk = [] {
        const QString folder = QDir::homePath() + QLatin1String("/Disco");
        QDir().mkpath(folder);
        return folder;
    }();
    QString kit = home + QLatin1String("/kit.txt");
    QString speedFile = home + QLatin1String("/speed");
    QString pictures = QStringLiteral(VELLOMAR_PICTURES);
    Installation installation;
    AccessibleTree reader;
    QProcess tray;
    ShownProgram program{installation.program()};

    const QString button = QStringLiteral("push button");
    const QString heading = QStringLiteral("heading");
    const QString label = QStringLiteral("label");
};

TEST_F(Story, fromTheFirstStartToAFinishedBackup)
{
    // A new installation says what to do.
    ASSERT_TRUE(shows(heading, QStringLiteral("Nessun backup eseguito"))) << allLines();
    EXPECT_TRUE(find(label, QStringLiteral("-- nessun backup")));
    EXPECT_TRUE(find(button, QStringLiteral("Kit di recupero da salvare*")));
    keep(QStringLiteral("1-first-start"));

    // The key comes before the first backup.
    ASSERT_TRUE(click(button, QStringLiteral("Esegui backup ora")));
    ASSERT_TRUE(shows(heading, QStringLiteral("Kit di recupero"))) << allLines();
    // Going on isn't possible yet; what comes next would show it.
    ASSERT_TRUE(click(button, QStringLiteral("Continua")));
    EXPECT_FALSE(QFile::exists(Paths::supportFile(QStringLiteral("status.json"))));

    // It is saved through the panel of the toolkit, by the keyboard.
    ASSERT_TRUE(click(button, QStringLiteral("Salva il kit")));
    const QString panel =
        QStringLiteral("Scegli una chiavetta o un disco diverso da quello dei backup");
    ASSERT_TRUE(program.shows(panel));
    ASSERT_TRUE(
        eventually([&] { return screen.activeWindow() == program.windows(panel).value(0); }));
    ASSERT_TRUE(screen.press(QStringLiteral("ctrl+a")));
    ASSERT_TRUE(screen.run(QStringLiteral("xdotool"), {QStringLiteral("type"), kit}));
    ASSERT_TRUE(screen.press(QStringLiteral("Return")));
    ASSERT_TRUE(eventually([this] { return QFile::exists(kit); }));
    const QByteArray key = readFile(kit).split('\n').value(6);
    EXPECT_EQ(key.size(), 32);
    EXPECT_EQ(QFile::permissions(kit) & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_TRUE(
        shows(QStringLiteral("alert"), QStringLiteral("Il kit è sullo stesso disco dei backup: *")))
        << allLines();
    keep(QStringLiteral("2-recovery-kit"));

    // Only the user's confirmation counts; after that the keyboard goes on.
    ASSERT_FALSE(ConfigStore::load().keySaved);
    const QString word =
        QStringLiteral("Ho messo la chiave in un posto sicuro, fuori da questo Mac");
    ASSERT_TRUE(click(QStringLiteral("check box"), word));
    ASSERT_TRUE(eventually([&] { return has(QStringLiteral("check box"), word, "checked"); }));
    ASSERT_TRUE(eventually([this] {
        return has(button, QStringLiteral("Continua"), "focused") ||
               (screen.press(QStringLiteral("Tab")) && false);
    }));
    ASSERT_TRUE(screen.press(QStringLiteral("Return")));

    // The backup that waited for it runs, and fills the dial.
    ASSERT_TRUE(shows(heading, QStringLiteral("Backup su Disco esterno"))) << allLines();
    EXPECT_TRUE(ConfigStore::load().keySaved);
    int first = 0;
    ASSERT_TRUE(eventually([&] { return (first = percent()) > 0; }));
    EXPECT_TRUE(eventually([&] { return percent() > first; }));
    keep(QStringLiteral("3-running"));
    toggleTrayPanel();
    ASSERT_TRUE(eventually([this] {
        const QStringList names = panelNames();
        return names.contains(QStringLiteral("Interrompi")) &&
               !names.filter(QStringLiteral("% su Disco esterno")).isEmpty() &&
               names.contains(QStringLiteral("Copia dei file"));
    })) << allLines();
    keep(QStringLiteral("4-panel-running"), true);
    toggleTrayPanel();
    ASSERT_TRUE(eventually([this] { return panelNames().isEmpty(); }));

    // Stopped.
    ASSERT_TRUE(click(button, QStringLiteral("Interrompi")));
    ASSERT_TRUE(shows(heading, QStringLiteral("Nessun backup eseguito"))) << allLines();
    ASSERT_TRUE(eventually([] { return !outcomes().isEmpty(); }));
    EXPECT_THAT(outcomes(), testing::ElementsAre(Outcome::Cancelled));

    // Once more, to the end; the key is at home now, and nothing is asked.
    setSpeed(100'000);
    ASSERT_TRUE(eventually([this] {
        const auto start = find(button, QStringLiteral("Esegui backup ora"));
        return start && reader.press(program.processId(), *start);
    }));
    ASSERT_TRUE(shows(heading, QStringLiteral("Backup aggiornato"))) << allLines();
    std::optional<AccessibleObject> tile;
    EXPECT_TRUE(eventually([&] {
        tile = find(button, QStringLiteral("Disco esterno: Backup *"));
        return tile && tile->description == QLatin1String("1 versione");
    }));
    EXPECT_TRUE(shows(label, QStringLiteral("Backup aggiornato"))); // at the sidebar's foot
    EXPECT_TRUE(find(label, QStringLiteral("Chiave al sicuro: *")));
    EXPECT_THAT(outcomes(), testing::ElementsAre(Outcome::Ok, Outcome::Cancelled));
    keep(QStringLiteral("5-finished"));

    // The tray's panel shows the same.
    toggleTrayPanel();
    ASSERT_TRUE(eventually([this] {
        const QStringList names = panelNames();
        return names.contains(QStringLiteral("Esegui backup")) &&
               names.contains(QStringLiteral("Ultimo backup"));
    })) << allLines();
    keep(QStringLiteral("6-panel-finished"), true);

    // The key in the kit is the one that opens the backup.
    qputenv("RESTIC_PASSWORD", key);
    const auto versions =
        screen.run(Installation::realTool(QStringLiteral("restic")),
                   {QStringLiteral("-r"), disk + QLatin1String("/Vellomar.backup"),
                    QStringLiteral("--no-cache"), QStringLiteral("--no-lock"), QStringLiteral("ls"),
                    QStringLiteral("latest")});
    ASSERT_TRUE(versions);
    EXPECT_TRUE(versions->contains(source + QLatin1String("/Foto 249.jpg")));

    ASSERT_TRUE(click(button, QStringLiteral("Esci da Vellomar")));
    EXPECT_EQ(program.finish(), 0);
    EXPECT_FALSE(QFile::exists(Paths::supportFile(QStringLiteral("status.json"))));
}

} // namespace
