#include "model/AppModel.h"
#include "model/Background.h"
#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/Paths.h"
#include "tests/support/EventLoop.h"
#include "tests/support/Files.h"
#include "tests/support/ManualClock.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/ModelReady.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ReadySettings.h"
#include "tests/support/Screen.h"
#include "tests/support/ScriptedDesktop.h"
#include "tests/support/ScriptedTools.h"
#include "tests/support/SmallDisk.h"

#include <QAccessible>
#include <QColor>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

// The kit sheet on the model of the program itself, which writes real files.

namespace {

const QString coral = QStringLiteral("#fa806b");
const QString mint = QStringLiteral("#78e0b0");

/// A graphical program without a display.
class WindowApplication
{
public:
    WindowApplication() { QAccessible::setActive(true); }

private:
    static int &argumentCount()
    {
        // Before the application, which reads them.
        makeRuntimeFolder();
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
        static int count = 1;
        return count;
    }

    std::array<char, 5> m_name = {'t', 'e', 's', 't', '\0'};
    std::array<char *, 2> m_arguments = {m_name.data(), nullptr};
    QGuiApplication m_application{argumentCount(), m_arguments.data()};
};

/// What stands in for a stick is plugged in before there is any thread but this one.
struct Stick
{
    explicit Stick(bool wanted)
    {
        if (wanted) {
            disk.emplace(path());
        }
    }
    static QString path() { return QDir::homePath() + QLatin1String("/stick"); }

    std::optional<SmallDisk> disk;
};

class KitSheet : public testing::Test
{
protected:
    explicit KitSheet(bool withStick = false)
        : stick(withStick)
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), Keychain::repositoryKey}] =
            "the key in use";
        AppConfig config = readySettings();
        config.keySaved = false;
        ConfigStore::save(config);
        model = std::make_unique<AppModel>(World::real(desktop));
        EXPECT_TRUE(comesUp(*model));
        QObject::connect(view.engine(), &QQmlEngine::warnings, view.engine(),
                         [](const QList<QQmlError> &warnings) {
                             for (const QQmlError &warning : warnings) {
                                 ADD_FAILURE() << warning.toString().toStdString();
                             }
                         });
        view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        view.setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(model.get())}});
        view.setSource(QUrl::fromLocalFile(QStringLiteral(VELLOMAR_TEST_SOURCES "/Stage.qml")));
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(980, 660);
    }

    void TearDown() override
    {
        delete view.rootObject(); // before the model that it shows
        model.reset();
        Background::waitForAll();
        desktop->forget();
    }

    void showWindow()
    {
        view.show();
        view.requestActivate();
        ASSERT_TRUE(eventuallyInLoop([this] { return view.isExposed() && view.isActive(); }));
    }

    /// Brings the sheet up as the user does: by asking for a backup.
    void askForBackup()
    {
        showWindow();
        click("behind");
        ASSERT_TRUE(eventuallyInLoop([this] { return isOpened(); }));
        frame();
    }

    /// Waits until the visible items have been laid out again.
    void frame() { static_cast<void>(view.grabWindow()); }

    [[nodiscard]] QObject *sheet() const
    {
        return view.rootObject()->property("sheet").value<QObject *>();
    }
    [[nodiscard]] bool isOpened() const { return sheet()->property("opened").toBool(); }

    [[nodiscard]] QQuickItem *part(const char *name) const
    {
        return part(view.contentItem(), QString::fromUtf8(name));
    }

    void click(const char *name)
    {
        QQuickItem *item = part(name);
        ASSERT_NE(item, nullptr) << name;
        const QPointF middle(item->width() / 2, item->height() / 2);
        QTest::mouseClick(&view, Qt::LeftButton, {}, item->mapToScene(middle).toPoint());
        settle(model.get());
        frame();
    }

    /// The line about how the saving came out: its text, symbol and colour.
    [[nodiscard]] QStringList notice() const
    {
        const QQuickItem *line = part("notice");
        if (!line->isVisible()) {
            return {};
        }
        const QQuickItem *words = part(line, QStringLiteral("words"));
        const QQuickItem *sign = part(line, QStringLiteral("sign"));
        EXPECT_EQ(sign->property("color").value<QColor>().name(),
                  words->property("color").value<QColor>().name());
        return {words->property("text").toString(), sign->property("name").toString(),
                words->property("color").value<QColor>().name()};
    }

    Stick stick;
    WindowApplication application;
    ManualClock clock;
    ScopedClock clockInForce{clock};
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    ScriptedTools tools;
    std::shared_ptr<ScriptedDesktop> desktop = std::make_shared<ScriptedDesktop>();
    std::unique_ptr<AppModel> model;
    QQuickView view;

private:
    static QQuickItem *part(const QQuickItem *item, const QString &name)
    {
        for (QQuickItem *child : item->childItems()) {
            QQuickItem *found = child->objectName() == name ? child : part(child, name);
            if (found != nullptr) {
                return found;
            }
        }
        return nullptr;
    }
};

class KitSheetAndStick : public KitSheet
{
protected:
    KitSheetAndStick()
        : KitSheet(true)
    {
        desktop->savePath = kit;
    }

    const QString kit = Stick::path() + QLatin1String("/kit.txt");
};

TEST_F(KitSheetAndStick, savesTheKitAndSaysWhere)
{
    ASSERT_TRUE(stick.disk->isMounted());
    askForBackup();
    EXPECT_TRUE(notice().isEmpty());
    click("save");
    EXPECT_EQ(notice(), QStringList({QStringLiteral("Kit salvato in ~/stick/kit.txt."),
                                     QStringLiteral("checkmark.circle"), mint}));
    EXPECT_EQ(readFile(kit), model->kit()->text().toUtf8());
    EXPECT_TRUE(isOpened());
    EXPECT_FALSE(model->config().keySaved);
    EXPECT_TRUE(desktop->started.isEmpty());
}

TEST_F(KitSheetAndStick, aFullDiskIsReportedAndLosesNothing)
{
    ASSERT_TRUE(stick.disk->isMounted());
    writeFile(kit, "an earlier kit");
    stick.disk->fill();
    askForBackup();
    click("confirmation");
    click("save");
    EXPECT_EQ(notice(), QStringList({QStringLiteral("Kit non salvato: No space left on device"),
                                     QStringLiteral("exclamationmark.triangle"), coral}));
    EXPECT_EQ(readFile(kit), "an earlier kit");
    EXPECT_EQ(QDir(Stick::path()).entryList(QDir::Files | QDir::Hidden),
              QStringList({QStringLiteral("filling"), QStringLiteral("kit.txt")}));
    EXPECT_TRUE(isOpened());
    EXPECT_TRUE(sheet()->property("confirmed").toBool());
    EXPECT_FALSE(ConfigStore::load().keySaved);

    // With some room made, all goes on from where it was.
    stick.disk->makeRoom();
    click("save");
    EXPECT_EQ(notice().value(2), mint);
    EXPECT_EQ(readFile(kit), model->kit()->text().toUtf8());
    click("last");
    EXPECT_TRUE(eventuallyInLoop([this] { return !isOpened(); }));
    EXPECT_TRUE(ConfigStore::load().keySaved);
    EXPECT_EQ(desktop->started.size(), 1);
}

TEST_F(KitSheetAndStick, soIsADiskThatCannotBeWrittenOn)
{
    ASSERT_TRUE(stick.disk->isMounted());
    const QString earlier = Stick::path() + QLatin1String("/earlier.txt");
    writeFile(earlier, "an earlier kit");
    ASSERT_TRUE(stick.disk->makeReadOnly());
    askForBackup();
    click("save");
    EXPECT_EQ(notice(), QStringList({QStringLiteral("Kit non salvato: Read-only file system"),
                                     QStringLiteral("exclamationmark.triangle"), coral}));
    desktop->savePath = earlier;
    click("save");
    EXPECT_TRUE(notice().value(0).startsWith(QStringLiteral("Kit non salvato: ")));
    EXPECT_EQ(notice().value(2), coral);
    EXPECT_EQ(readFile(earlier), "an earlier kit");
    EXPECT_TRUE(isOpened());
    EXPECT_FALSE(model->config().keySaved);
}

TEST_F(KitSheet, soIsAFolderThatIsNotTheUsersOwn)
{
    const QString folder = QDir::homePath() + QLatin1String("/others");
    QDir().mkpath(folder);
    ASSERT_TRUE(becomeOrdinaryUser());
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    desktop->savePath = folder + QLatin1String("/kit.txt");
    askForBackup();
    click("save");
    EXPECT_EQ(notice(), QStringList({QStringLiteral("Kit non salvato: Permission denied"),
                                     QStringLiteral("exclamationmark.triangle"), coral}));
    EXPECT_TRUE(QDir(folder).isEmpty());
    EXPECT_TRUE(isOpened());
    ASSERT_TRUE(
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

TEST_F(KitSheet, onThisMachineItWarnsInTheSheet)
{
    desktop->savePath = QDir::homePath() + QLatin1String("/disk/kit.txt");
    askForBackup();
    click("save");
    EXPECT_EQ(notice(),
              QStringList({QStringLiteral("Il kit è sullo stesso disco dei backup: chi trova il "
                                          "disco può leggerli. Spostalo altrove."),
                           QStringLiteral("exclamationmark.triangle"), coral}));
    EXPECT_EQ(readFile(*desktop->savePath), model->kit()->text().toUtf8());
}

TEST_F(KitSheet, aCancelledPanelLeavesTheSheetAsItWas)
{
    askForBackup();
    click("confirmation");
    click("save");
    EXPECT_EQ(desktop->savePanels.size(), 1);
    EXPECT_TRUE(notice().isEmpty());
    EXPECT_TRUE(isOpened());
    EXPECT_TRUE(sheet()->property("confirmed").toBool());
}

TEST_F(KitSheet, theKeyIsOnTheClipboardForAsLongAsTheButtonSaysSo)
{
    askForBackup();
    const QQuickItem *copy = part("copy");
    EXPECT_EQ(copy->property("text").toString(), QStringLiteral("Copia la chiave"));
    click("copy");
    EXPECT_EQ(copy->property("text").toString(), QStringLiteral("Copiata per un minuto"));
    EXPECT_EQ(desktop->clipboard, QStringLiteral("the key in use"));
    EXPECT_TRUE(desktop->isConcealed);
    EXPECT_TRUE(desktop->reasons.isEmpty()); // no login
    desktop->pass(std::chrono::milliseconds(59'999));
    EXPECT_EQ(copy->property("text").toString(), QStringLiteral("Copiata per un minuto"));
    desktop->pass(std::chrono::milliseconds(1));
    EXPECT_EQ(copy->property("text").toString(), QStringLiteral("Copia la chiave"));
    EXPECT_EQ(desktop->clipboard, QString());
}

TEST_F(KitSheet, aKeyThatIsHeldPressesOnce)
{
    askForBackup();
    const auto press = [this](bool repeated) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"),
                        repeated);
        QCoreApplication::sendEvent(&view, &event);
    };
    press(true); // still held from before the sheet came up
    EXPECT_TRUE(desktop->savePanels.isEmpty());
    press(false);
    for (int i = 0; i < 5; ++i) {
        press(true);
    }
    EXPECT_EQ(desktop->savePanels.size(), 1);
}

TEST_F(KitSheet, askedForBeforeThereIsAWindowItComesUpWithIt)
{
    model->openRecoveryKit();
    showWindow();
    EXPECT_TRUE(eventuallyInLoop([this] { return isOpened(); }));
    EXPECT_TRUE(part("save")->hasActiveFocus());
}

TEST_F(KitSheet, itGoesWithTheProgram)
{
    askForBackup();
    model->prepareToQuit();
    EXPECT_TRUE(eventuallyInLoop([this] { return !isOpened(); }));
    EXPECT_FALSE(model->config().keySaved);
}

/// All that a screen reader finds in a window.
QList<QAccessibleInterface *> found(QAccessibleInterface *top)
{
    QList<QAccessibleInterface *> list{top};
    for (int i = 0; i < top->childCount(); ++i) {
        list += found(top->child(i));
    }
    return list;
}

TEST_F(KitSheet, theScreenReaderFindsOneDialogAndANameForEachControl)
{
    askForBackup();
    QStringList dialogs;
    QStringList controls;
    QAccessibleInterface *window = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(window, nullptr);
    for (const QAccessibleInterface *item : found(window)) {
        if (item->state().invisible) {
            continue;
        }
        if (item->role() == QAccessible::Dialog) {
            dialogs.append(item->text(QAccessible::Name));
        } else if (item->role() == QAccessible::Button || item->role() == QAccessible::CheckBox) {
            controls.append(item->text(QAccessible::Name));
        }
    }
    EXPECT_EQ(dialogs, QStringList{QStringLiteral("Kit di recupero")});
    EXPECT_EQ(controls,
              QStringList({QStringLiteral("Esegui backup ora"), QStringLiteral("Chiudi"),
                           QStringLiteral("Salva il kit"), QStringLiteral("Stampa"),
                           QStringLiteral("Copia la chiave"),
                           QStringLiteral("Ho messo la chiave in un posto sicuro, fuori da questo "
                                          "Mac"),
                           QStringLiteral("Continua")}));
}

} // namespace
