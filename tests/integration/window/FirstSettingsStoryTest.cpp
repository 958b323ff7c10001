#include "state/ConfigStore.h"
#include "state/DestinationID.h"
#include "state/Keychain.h"
#include "state/Paths.h"
#include "state/StatusStore.h"
#include "tests/support/AccessibleTree.h"
#include "tests/support/Cycle.h"
#include "tests/support/Files.h"
#include "tests/support/SftpServer.h"
#include "tests/support/SignInPage.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/Waiting.h"
#include "tests/support/WindowSession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <optional>
#include <utility>

#include <sys/prctl.h>

// How a user chooses folders and destinations: the real program in its window with the real tools,
// a real keyring, a disk and an SFTP server, by mouse and keyboard, read by a screen reader.

namespace {

class FirstSettings : public WindowSession
{
protected:
    FirstSettings()
    {
        installation.addWindow();
        installation.addReal(QStringLiteral("restic"));
        // After the sign-in a folder is in the place of the service.
        installation.addScript(
            QStringLiteral("rclone"),
            QStringLiteral("#!/bin/sh\n"
                           "case \" $* \" in *' serve '*|*' about '*)\n"
                           "  export RCLONE_CONFIG_VELLOMAR_TYPE=alias\n"
                           "  export RCLONE_CONFIG_VELLOMAR_REMOTE='%1' ;;\n"
                           "esac\n"
                           "exec '%2' \"$@\"\n")
                .arg(homeFolder("service"), Installation::realTool(QStringLiteral("rclone")))
                .toUtf8());
        // What a test leaves running comes back to it, to be ended.
        ::prctl(PR_SET_CHILD_SUBREAPER, 1);
        writeFile(photos + QLatin1String("/mare.jpg"), QByteArray(2'000'000, 'm'));
        writeFile(photos + QLatin1String("/bozze/prova.jpg"), QByteArray(5'000'000, 'b'));
        writeFile(letters + QLatin1String("/lettera.txt"), QByteArray(1'000'000, 'l'));
    }
    ~FirstSettings() override
    {
        for (const pid_t child : childrenOf(::getpid())) {
            if (const auto left = StatusStore::loadStatus(); left && left->pid == child) {
                ::kill(child, SIGKILL);
            }
        }
    }
    void SetUp() override
    {
        ASSERT_TRUE(SignInPage::isApart()); // a sign-in ends others by their name
        WindowSession::SetUp();
        ASSERT_TRUE(reader.isRunning());
        ASSERT_TRUE(external->isMounted());
        ASSERT_TRUE(server.start()) << server.output().toStdString();
        ASSERT_TRUE(signInPage.isRunning());
    }

    /// Starts the program, as large as the screen.
    void open()
    {
        program.start();
        ASSERT_TRUE(program.shows()) << program.errors().toStdString();
        ASSERT_TRUE(screen.run(QStringLiteral("wmctrl"),
                               {QStringLiteral("-i"), QStringLiteral("-r"),
                                program.windows().value(0), QStringLiteral("-b"),
                                QStringLiteral("add,maximized_vert,maximized_horz")}));
        ASSERT_TRUE(shows(tab, QStringLiteral("Cartelle"))) << allLines();
    }
    /// Ends the program as the session does, and expects that it wrote down no secret.
    void end()
    {
        program.send(SIGTERM);
        EXPECT_EQ(program.finish(), 0);
        EXPECT_EQ(program.errors().toStdString(), "");
        const auto key = Keychain::read(Keychain::repositoryKey);
        ASSERT_TRUE(key.has_value() && key->has_value());
        for (const QByteArray &secret : {key->value_or(QString()).toUtf8(), password.toUtf8(),
                                         SignInPage::accessToken(), SignInPage::refreshToken()}) {
            EXPECT_FALSE(isInAnyFile(home, secret)) << secret.constData();
        }
    }

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
    /// Turns the wheel over the page; what is outside of the window, a screen reader doesn't get.
    void scroll(bool down)
    {
        const QRect place = ManagedScreen::place(program.windows().value(0));
        screen.run(QStringLiteral("xdotool"),
                   {QStringLiteral("mousemove"), QString::number(place.right() - 30),
                    QString::number(place.center().y()), QStringLiteral("click"),
                    QStringLiteral("--repeat"), QStringLiteral("4"),
                    down ? QStringLiteral("5") : QStringLiteral("4")});
    }
    /// Waits until a look at something finds what it looks for, on some part of the page.
    template <typename Look>
    bool comes(Look look)
    {
        int looks = 0;
        return eventually([&] {
            if (look()) {
                return true;
            }
            if (++looks > 2) {
                scroll(looks % 8 < 4);
            }
            return false;
        });
    }
    bool shows(const QString &role, const QString &name)
    {
        return comes([&] { return find(role, name).has_value(); });
    }
    bool shows(const QString &role, const QString &name, const char *state)
    {
        return comes([&] {
            const auto object = find(role, name);
            return object && object->is(state);
        });
    }
    /// Does what a press on it does, when it is there and can be pressed.
    bool press(const QString &role, const QString &name)
    {
        return comes([&] {
            const auto object = find(role, name);
            return object && reader.press(program.processId(), *object);
        });
    }
    /// Clicks on a field, once it has come to rest, and types. A password has no name here.
    bool type(const QString &role, const QString &name, const QString &text)
    {
        QRect place;
        const auto rests = [&] {
            const auto object = find(role, name);
            const QRect before = std::exchange(place, object ? object->place : QRect());
            return object && before == place;
        };
        const auto isFocused = [&] {
            const auto object = find(role, name);
            return object && object->is("focused");
        };
        return comes(rests) && screen.click(place.center()) && eventually(isFocused) &&
               screen.press(QStringLiteral("ctrl+a")) &&
               screen.run(QStringLiteral("xdotool"), {QStringLiteral("type"), text}) &&
               eventually([&] {
                   const auto object = find(role, name);
                   return object && object->text.size() == text.size();
               });
    }
    /// Chooses a folder in the panel that the program has opened, by the keyboard.
    bool choose(const QString &folder)
    {
        const auto panel = [this] {
            QStringList open = program.windows(QStringLiteral(".*"));
            const QStringList main = program.windows();
            open.removeIf([&main](const QString &window) { return main.contains(window); });
            return open.value(0);
        };
        const auto isTyped = [&] {
            const QList<AccessibleObject> objects = reader.read(program.processId());
            return std::any_of(objects.begin(), objects.end(), [&](const AccessibleObject &object) {
                return object.text == folder && object.is("focused");
            });
        };
        return eventually([&] {
                   const QString window = panel();
                   return !window.isEmpty() && screen.activeWindow() == window;
               }) &&
               screen.press(QStringLiteral("ctrl+a")) &&
               screen.run(QStringLiteral("xdotool"), {QStringLiteral("type"), folder}) &&
               eventually(isTyped) && screen.press(QStringLiteral("Return")) &&
               eventually([&] { return panel().isEmpty(); });
    }

    /// How many backups a destination has, on its panel; -1 while that isn't shown.
    int versions(const QString &destination)
    {
        const QList<AccessibleObject> objects = reader.read(program.processId());
        auto object = std::find_if(objects.begin(), objects.end(), [&](const auto &candidate) {
            return candidate.role == heading && candidate.name == destination;
        });
        for (; object != objects.end(); ++object) {
            if (object->name.startsWith(QLatin1String("Versioni: "))) {
                return object->name.section(u' ', 1).toInt();
            }
        }
        return -1;
    }

    void chooseDisk()
    {
        ASSERT_TRUE(shows(label, QStringLiteral("Nessun disco scelto"))) << allLines();
        ASSERT_TRUE(press(button, QStringLiteral("Scegli disco o cartella")));
        ASSERT_TRUE(choose(disk)) << allLines();
        ASSERT_TRUE(shows(label, disk)) << allLines();
        EXPECT_TRUE(shows(box, QStringLiteral("Disco esterno"), "checked")) << allLines();
        EXPECT_TRUE(shows(button, QStringLiteral("Cambia")));
        EXPECT_TRUE(shows(label, QStringLiteral("Spazio libero: *"))) << allLines();
        EXPECT_FALSE(find(label, QStringLiteral("Disco non collegato")));
    }
    void connectServer()
    {
        ASSERT_TRUE(type(entry, QStringLiteral("Indirizzo"), QStringLiteral("127.0.0.1")))
            << allLines();
        ASSERT_TRUE(type(entry, QStringLiteral("Porta"), server.portText())) << allLines();
        ASSERT_TRUE(type(entry, QStringLiteral("Utente"), SftpServer::user())) << allLines();
        ASSERT_TRUE(type(QStringLiteral("password text"), {}, password)) << allLines();
        ASSERT_TRUE(press(button, QStringLiteral("Collega"))) << allLines();
        ASSERT_TRUE(shows(label, QStringLiteral("SFTP \u00b7 127.0.0.1"))) << allLines();
        EXPECT_TRUE(shows(box, QStringLiteral("Server privato"), "checked")) << allLines();
        EXPECT_TRUE(QFile::exists(Paths::supportFile(QStringLiteral("known_hosts"))));
    }
    void signIn()
    {
        ASSERT_TRUE(press(button, QStringLiteral("Accedi con Google"))) << allLines();
        ASSERT_TRUE(shows(label, QStringLiteral("Account collegato"))) << allLines();
        EXPECT_TRUE(signInPage.isOpened());
        EXPECT_TRUE(shows(box, QStringLiteral("Google Drive"), "checked")) << allLines();
    }
    /// The first backup, which waits for the user to save the key.
    void backUp()
    {
        const QString word =
            QStringLiteral("Ho messo la chiave in un posto sicuro, fuori da questo Mac");
        ASSERT_TRUE(press(tab, QStringLiteral("Panoramica")));
        ASSERT_TRUE(press(button, QStringLiteral("Esegui backup ora")));
        ASSERT_TRUE(shows(heading, QStringLiteral("Kit di recupero"))) << allLines();
        ASSERT_TRUE(press(box, word)) << allLines();
        ASSERT_TRUE(press(button, QStringLiteral("Continua")));
        ASSERT_TRUE(shows(heading, QStringLiteral("Backup aggiornato"))) << allLines();
        for (const RunRecord &record : StatusStore::loadHistory()) {
            EXPECT_EQ(record.outcome, Outcome::Ok) << record.message.toStdString();
        }
        ASSERT_TRUE(press(tab, QStringLiteral("Destinazioni")));
        for (const DestinationID destination : allDestinations) {
            const QString title = DestinationIDs::title(destination);
            EXPECT_TRUE(comes([&] { return versions(title) == 1; })) << title.toStdString();
        }
    }
    /// The disk is taken away while the page is open.
    void loseDisk()
    {
        external.reset();
        ASSERT_TRUE(press(tab, QStringLiteral("Panoramica")));
        ASSERT_TRUE(press(tab, QStringLiteral("Destinazioni")));
        EXPECT_TRUE(shows(label, QStringLiteral("Disco non collegato"))) << allLines();
        EXPECT_TRUE(shows(button, QStringLiteral("Cambia"))) << allLines();
        EXPECT_FALSE(find(label, QStringLiteral("Spazio libero: *"))) << allLines();
    }
    void leaveServer()
    {
        ASSERT_TRUE(press(button, QStringLiteral("Scollega server"))) << allLines();
        ASSERT_TRUE(shows(heading, QStringLiteral("Scollegare il server?"))) << allLines();
        EXPECT_TRUE(ConfigStore::load().serverEnabled); // it only asks
        ASSERT_TRUE(press(button, QStringLiteral("Scollega"))) << allLines();
        ASSERT_TRUE(shows(label, QStringLiteral("Non collegato"))) << allLines();
        EXPECT_TRUE(eventually([] { return !ConfigStore::load().serverEnabled; }));
        EXPECT_TRUE(eventually(
            [] { return !QFile::exists(Paths::supportFile(QStringLiteral("known_hosts"))); }));
        // Its form is filled but for the password.
        EXPECT_TRUE(comes([&] {
            const auto secret = find(QStringLiteral("password text"), {});
            return secret && secret->text.isEmpty();
        })) << allLines();
        EXPECT_TRUE(comes([&] {
            const auto field = find(entry, QStringLiteral("Indirizzo"));
            return field && field->text == QLatin1String("127.0.0.1");
        })) << allLines();
        EXPECT_TRUE(shows(label, QStringLiteral("Account collegato"))) << allLines();
    }

    QString home = QDir::homePath();
    QString photos = home + QLatin1String("/Foto");
    QString letters = home + QLatin1String("/Lettere");
    QString disk = home + QLatin1String("/Disco");
    QString password = QStringLiteral("una password lunga");

    // The mount comes first: what is started later sees it.
    std::optional<SmallDisk> external{std::in_place, disk, 64 * 1024};
    SftpServer server{password};
    SignInPage signInPage;
    Installation installation;
    AccessibleTree reader;
    ShownProgram program{installation.program()};

    const QString button = QStringLiteral("push button");
    const QString box = QStringLiteral("check box");
    const QString entry = QStringLiteral("text");
    const QString heading = QStringLiteral("heading");
    const QString item = QStringLiteral("list item");
    const QString label = QStringLiteral("label");
    const QString tab = QStringLiteral("page tab");
};

TEST_F(FirstSettings, foldersAreChosenAndMeasuredOnAFreshStart)
{
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(press(tab, QStringLiteral("Cartelle")));
    ASSERT_TRUE(shows(heading, QStringLiteral("Cartelle salvate"))) << allLines();

    // Two folders take the place of those that a new installation proposes.
    for (const QString &folder : {photos, letters}) {
        ASSERT_TRUE(press(button, QStringLiteral("Aggiungi cartella"))) << allLines();
        ASSERT_TRUE(choose(folder)) << allLines();
        ASSERT_TRUE(shows(item, QFileInfo(folder).fileName() + QLatin1String(": ") + folder))
            << allLines();
    }
    for (const QString &folder : AppConfig().sources) {
        ASSERT_TRUE(press(button, QLatin1String("Rimuovi: ") + folder)) << allLines();
    }
    EXPECT_TRUE(eventually([this] {
        return ConfigStore::load().sources == QStringList({photos, letters});
    })) << ConfigStore::load().sources.join(u' ').toStdString();

    ASSERT_TRUE(
        type(entry, QStringLiteral("Percorso o nome da escludere"), QStringLiteral("bozze")))
        << allLines();
    ASSERT_TRUE(screen.press(QStringLiteral("Return")));
    ASSERT_TRUE(shows(item, QStringLiteral("bozze"))) << allLines();
    EXPECT_TRUE(eventually([] {
        return ConfigStore::load().excludes ==
               AppConfig().excludes + QStringList(QStringLiteral("bozze"));
    }));

    // What is left out isn't weighed.
    ASSERT_TRUE(press(button, QStringLiteral("Misura le cartelle")));
    EXPECT_TRUE(shows(label, QStringLiteral("Da salvare 3 MB, esclusioni gi\u00e0 tolte")))
        << allLines();
    const auto row = find(item, QLatin1String("Foto: ") + photos);
    ASSERT_TRUE(row) << allLines();
    EXPECT_EQ(row->description, QStringLiteral("2 MB"));
    ASSERT_TRUE(press(tab, QStringLiteral("Destinazioni")));
    EXPECT_TRUE(shows(label, QStringLiteral("Primo backup: 3 MB"))) << allLines();
    end();
}

TEST_F(FirstSettings, destinationsAreConnectedBackedUpToAndLost)
{
    AppConfig config;
    config.sources = {photos, letters};
    config.excludes.append(QStringLiteral("bozze"));
    ConfigStore::save(config);
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(press(tab, QStringLiteral("Destinazioni")));
    ASSERT_NO_FATAL_FAILURE(chooseDisk());
    ASSERT_NO_FATAL_FAILURE(connectServer());
    ASSERT_NO_FATAL_FAILURE(signIn());
    ASSERT_NO_FATAL_FAILURE(backUp());
    ASSERT_NO_FATAL_FAILURE(loseDisk());
    ASSERT_NO_FATAL_FAILURE(leaveServer());
    end();
}

} // namespace
