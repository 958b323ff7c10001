#include "state/ConfigStore.h"
#include "state/Paths.h"
#include "tests/support/AccessibleTree.h"
#include "tests/support/Waiting.h"
#include "tests/support/WindowSession.h"

#include <QDir>
#include <QProcess>
#include <QSet>

#include <csignal>

#include <sys/prctl.h>

// Every window of the real program, read over the accessibility bus: what the keyboard reaches has
// a name, a role that says what it is, and something that can be done to it.

namespace {

/// What is wrong with an object; empty for nothing.
QString fault(const AccessibleObject &object)
{
    static const QSet<QString> controls{
        QStringLiteral("push button"),  QStringLiteral("toggle button"),
        QStringLiteral("check box"),    QStringLiteral("radio button"),
        QStringLiteral("page tab"),     QStringLiteral("menu item"),
        QStringLiteral("link"),         QStringLiteral("slider"),
        QStringLiteral("entry"),        QStringLiteral("text"),
        QStringLiteral("password text")};
    static const QSet<QString> read{QStringLiteral("label"),        QStringLiteral("heading"),
                                    QStringLiteral("static"),       QStringLiteral("alert"),
                                    QStringLiteral("notification"), QStringLiteral("list item")};
    const bool isControl = controls.contains(object.role);
    if (!object.is("focusable") && !isControl) {
        return {};
    }
    if (object.name.trimmed().isEmpty()) {
        return QStringLiteral("no name");
    }
    if (!isControl && !read.contains(object.role)) {
        return QStringLiteral("a role that says nothing");
    }
    if (isControl && object.actions.isEmpty()) {
        return QStringLiteral("nothing to be done to it");
    }
    return object.place.isEmpty() ? QStringLiteral("no place") : QString();
}

class ScreenReader : public WindowSession
{
protected:
    ScreenReader()
    {
        tray.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        tray.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        config.sources = {home + QLatin1String("/Foto")};
        config.localEnabled = true;
        config.localFolder = home + QLatin1String("/Disco");
        QDir().mkpath(config.localFolder);
    }
    ~ScreenReader() override
    {
        tray.kill();
        tray.waitForFinished();
    }

    /// Whether the tray has the program's item, as one line on its output says.
    bool isInTray()
    {
        tray.waitForReadyRead(1);
        return tray.canReadLine();
    }
    void open()
    {
        ASSERT_TRUE(reader.isRunning());
        ConfigStore::save(config);
        program.start();
        ASSERT_TRUE(program.shows()) << program.errors().toStdString();
        ASSERT_TRUE(shows(QStringLiteral("page tab"), QStringLiteral("Panoramica")));
    }
    std::optional<AccessibleObject> find(const QString &role, const QString &name)
    {
        return reader.find(program.processId(), role, name);
    }
    bool shows(const QString &role, const QString &name)
    {
        return eventually([&] { return find(role, name).has_value(); });
    }
    bool press(const QString &role, const QString &name)
    {
        return eventually([&] {
            const auto object = find(role, name);
            return object && reader.press(program.processId(), *object);
        });
    }
    /// Looks at all that shows; there must be at least so many controls.
    void expectNoFaults(int leastControls)
    {
        int controls = 0;
        const QList<AccessibleObject> objects = reader.read(program.processId());
        for (const AccessibleObject &object : objects) {
            const QString wrong = fault(object);
            EXPECT_TRUE(wrong.isEmpty())
                << wrong.toStdString() << ": " << object.line().toStdString();
            controls += object.is("focusable") && !object.actions.isEmpty() ? 1 : 0;
        }
        EXPECT_GE(controls, leastControls);
    }

    QString home = QDir::homePath();
    AppConfig config;
    AccessibleTree reader;
    QProcess tray;
    ShownProgram program;

    const QString button = QStringLiteral("push button");
    const QString heading = QStringLiteral("heading");
    const QString tab = QStringLiteral("page tab");
    const QString confirmation =
        QStringLiteral("Ho messo la chiave in un posto sicuro, fuori da questo Mac");
};

TEST_F(ScreenReader, findsItsWayThroughEachSection)
{
    open();
    const auto hasPage = [this](const QString &title) {
        return find(heading, title) || find(QStringLiteral("panel"), title);
    };
    QString previous = QStringLiteral("Panoramica");
    for (const char *name :
         {"Ripristina", "Cartelle", "Destinazioni", "Attività", "Impostazioni", "Panoramica"}) {
        const QString title = QString::fromUtf8(name);
        ASSERT_TRUE(press(tab, title));
        // Only one page is there once the previous one has faded out. What goes while it is being
        // looked at has no name any more.
        ASSERT_TRUE(eventually([&] {
            const auto chosen = find(tab, title);
            return chosen && chosen->is("selected") && hasPage(title) && !hasPage(previous);
        })) << name;
        expectNoFaults(7);
        previous = title;
    }
    expectNoFaults(12);
}

TEST_F(ScreenReader, readsTheRecoveryKit)
{
    open();
    ASSERT_TRUE(press(button, QStringLiteral("Esegui backup ora")));
    ASSERT_TRUE(shows(heading, QStringLiteral("Kit di recupero")));
    for (const char *name : {"Chiudi", "Salva il kit", "Stampa", "Copia la chiave", "Continua"}) {
        EXPECT_TRUE(find(button, QString::fromUtf8(name))) << name;
    }
    EXPECT_TRUE(find(QStringLiteral("check box"), confirmation));
    expectNoFaults(6);
}

TEST_F(ScreenReader, readsWhatTheAccessToTheDiskIsFor)
{
    // A home that can't be listed is one that the program has no access to.
    qputenv("XDG_DATA_HOME", (home + QLatin1String("/.local/share")).toUtf8());
    qputenv("XDG_CONFIG_HOME", (home + QLatin1String("/.config")).toUtf8());
    qputenv("XDG_CACHE_HOME", (home + QLatin1String("/.cache")).toUtf8());
    ConfigStore::save(config);
    qputenv("HOME", (home + QLatin1String("/hidden")).toUtf8());
    open();
    ASSERT_TRUE(press(button, QStringLiteral("Esegui backup ora")));
    ASSERT_TRUE(press(QStringLiteral("check box"), confirmation));
    ASSERT_TRUE(eventually([this] {
        const auto box = find(QStringLiteral("check box"), confirmation);
        return box && box->is("checked");
    }));
    ASSERT_TRUE(press(button, QStringLiteral("Continua")));
    ASSERT_TRUE(shows(heading, QStringLiteral("Serve l'accesso completo al disco")));
    // The other sheet fades away.
    ASSERT_TRUE(eventually([this] { return !find(QStringLiteral("check box"), confirmation); }));
    for (const char *name : {"Chiudi", "Continua senza", "Apri Impostazioni"}) {
        EXPECT_TRUE(find(button, QString::fromUtf8(name))) << name;
    }
    EXPECT_TRUE(
        find(QStringLiteral("list item"), QStringLiteral("1. Apri Impostazioni di Sistema.")));
    expectNoFaults(3);
}

TEST_F(ScreenReader, readsTheMenuAndTheWindowsItOpens)
{
    open();
    ASSERT_TRUE(press(button, QStringLiteral("Menu")));
    ASSERT_TRUE(press(QStringLiteral("menu item"), QStringLiteral("Licenze open source")));
    ASSERT_TRUE(program.shows(QStringLiteral("Licenze open source")));
    ASSERT_TRUE(shows(QStringLiteral("frame"), QStringLiteral("Licenze open source")));
    expectNoFaults(9);
    ASSERT_TRUE(press(button, QStringLiteral("Menu")));
    ASSERT_TRUE(press(QStringLiteral("menu item"), QStringLiteral("Informazioni su Vellomar")));
    ASSERT_TRUE(program.shows(QStringLiteral("Informazioni su Vellomar")));
    ASSERT_TRUE(shows(QStringLiteral("frame"), QStringLiteral("Informazioni su Vellomar")));
    EXPECT_TRUE(
        shows(QStringLiteral("label"), QStringLiteral("Backup cifrati con restic e rclone.")));
    expectNoFaults(9);
}

TEST_F(ScreenReader, readsTheTraysPanel)
{
    tray.start(QStringLiteral("/usr/bin/python3"),
               {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/tray_host.py")});
    ASSERT_TRUE(
        screen.run(QStringLiteral("gdbus"), {QStringLiteral("wait"), QStringLiteral("--session"),
                                             QStringLiteral("--timeout=20"),
                                             QStringLiteral("org.kde.StatusNotifierWatcher")}));
    open();
    // A click before the tray has the item goes nowhere.
    ASSERT_TRUE(eventually([this] { return isInTray(); }));
    tray.write("Activate\n");
    tray.waitForBytesWritten();
    ASSERT_TRUE(shows(button, QStringLiteral("Esci da Vellomar")));
    for (const char *name : {"Esegui backup", "Apri Vellomar", "Esci da Vellomar"}) {
        EXPECT_TRUE(find(button, QString::fromUtf8(name))) << name;
    }
    expectNoFaults(15);
}

} // namespace
