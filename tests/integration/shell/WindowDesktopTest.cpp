#include "ui/shell/WindowDesktop.h"

#include "tests/support/EventLoop.h"
#include "tests/support/Files.h"
#include "tests/support/KeyringSession.h"
#include "tests/support/Screen.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <memory>

#include <sys/prctl.h>

namespace {

/// The desktop around a real window on a real screen.
class WindowDesktopTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(screen.isRunning());
        app = std::make_unique<QApplication>(argc, argv.data());
        desktop = std::make_unique<WindowDesktop>();
        window = std::make_unique<QWindow>();
        window->show();
        desktop->setWindow(window.get());
    }
    void TearDown() override
    {
        desktop.reset();
        window.reset();
        app.reset();
    }

    /// The dialog of that kind that is on the screen, once it is.
    template <typename Dialog>
    Dialog *shownDialog()
    {
        Dialog *found = nullptr;
        EXPECT_TRUE(eventuallyInLoop([&found] {
            found = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            return found != nullptr && found->isVisible();
        }));
        return found;
    }
    void print()
    {
        desktop->print(QStringLiteral("Vellomar - Kit di recupero"),
                       [this](const Desktop::Printing &result) { printing = result; });
    }
    /// Has the open dialog print to a file, as the user would choose it.
    void acceptPrintTo(const QString &file)
    {
        auto *dialog = shownDialog<QPrintDialog>();
        ASSERT_NE(dialog, nullptr);
        dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
        dialog->printer()->setOutputFileName(file);
        Q_EMIT dialog->QDialog::accepted();
        EXPECT_TRUE(eventuallyInLoop([this] { return printing.has_value(); }));
        dialog->reject();
    }
    void askSavePath()
    {
        desktop->askSavePath(QStringLiteral("Kit di recupero Vellomar.txt"),
                             QStringLiteral("Scegli una chiavetta"),
                             [this](const std::optional<QString> &path) {
                                 ++answers;
                                 chosen = path;
                             });
    }

    void askFolder(const QString &start)
    {
        desktop->askFolder({.prompt = QStringLiteral("Usa questa cartella"),
                            .message = QStringLiteral("Scegli il disco"),
                            .startFolder = start},
                           [this](const std::optional<QString> &path) {
                               ++answers;
                               chosen = path;
                           });
    }

    int argc = 1;
    QByteArray name{"test"};
    std::array<char *, 2> argv{name.data(), nullptr};
    Screen screen;
    std::unique_ptr<QApplication> app;
    std::unique_ptr<WindowDesktop> desktop;
    std::unique_ptr<QWindow> window;
    int answers = 0;
    std::optional<QString> chosen;
    std::optional<Desktop::Printing> printing;
};

TEST_F(WindowDesktopTest, theSavePanelProposesANameAndGivesAPath)
{
    askSavePath();
    EXPECT_EQ(answers, 0); // nothing waits for it
    auto *dialog = shownDialog<QFileDialog>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Scegli una chiavetta"));
    EXPECT_EQ(dialog->windowHandle()->transientParent(), window.get());
    auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->text(), QStringLiteral("Kit di recupero Vellomar.txt"));

    const QString path = QDir::homePath() + QLatin1String("/chiavetta \u00e8.txt");
    field->setText(path);
    static_cast<QDialog *>(dialog)->accept();
    EXPECT_TRUE(eventuallyInLoop([this] { return answers == 1; }));
    EXPECT_EQ(chosen, path);
    EXPECT_FALSE(QFile::exists(path)); // the caller writes it
}

TEST_F(WindowDesktopTest, aSavePanelThatIsCancelledOrClosedGivesNothing)
{
    for (int time = 1; time <= 2; ++time) {
        chosen = QStringLiteral("unset");
        askSavePath();
        auto *dialog = shownDialog<QFileDialog>();
        ASSERT_NE(dialog, nullptr);
        if (time == 1) {
            dialog->reject();
        } else {
            dialog->close();
        }
        EXPECT_TRUE(eventuallyInLoop([this, time] { return answers == time; }));
        EXPECT_FALSE(chosen);
        EXPECT_TRUE(eventuallyInLoop([] { return QApplication::activeModalWidget() == nullptr; }));
    }
}

TEST_F(WindowDesktopTest, aFolderPanelGivesTheFolderThatIsOpenedOrTyped)
{
    const QString start = QDir::homePath() + QLatin1String("/Dischi");
    ASSERT_TRUE(QDir().mkpath(start + QStringLiteral("/Archivio \u00e8")));
    for (const QString &typed : {QString(), QStringLiteral("Archivio \u00e8")}) {
        askFolder(start);
        EXPECT_EQ(answers, 0); // nothing waits for it
        auto *dialog = shownDialog<QFileDialog>();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Scegli il disco"));
        EXPECT_EQ(dialog->labelText(QFileDialog::Accept), QStringLiteral("Usa questa cartella"));
        EXPECT_EQ(dialog->directory().path(), start);
        EXPECT_EQ(dialog->windowHandle()->transientParent(), window.get());
        // The user may make one there.
        auto *make = dialog->findChild<QWidget *>(QStringLiteral("newFolderButton"));
        ASSERT_NE(make, nullptr);
        EXPECT_TRUE(make->isVisible() && make->isEnabled());
        auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(field, nullptr);
        field->setText(typed);
        static_cast<QDialog *>(dialog)->accept();
        EXPECT_TRUE(eventuallyInLoop([this] { return answers == 1; }));
        EXPECT_EQ(chosen, typed.isEmpty() ? start : start + u'/' + typed);
        EXPECT_TRUE(eventuallyInLoop([] { return QApplication::activeModalWidget() == nullptr; }));
        answers = 0;
    }
}

TEST_F(WindowDesktopTest, aFolderPanelThatIsCancelledGivesNothing)
{
    askFolder(QDir::homePath());
    auto *dialog = shownDialog<QFileDialog>();
    ASSERT_NE(dialog, nullptr);
    chosen = QStringLiteral("unset");
    dialog->reject();
    EXPECT_TRUE(eventuallyInLoop([this] { return answers == 1; }));
    EXPECT_FALSE(chosen);
}

TEST_F(WindowDesktopTest, severalFoldersAreChosenAtOnceAndFilesAreNot)
{
    for (const char *made : {"a", "b b", "c", "d"}) {
        ASSERT_TRUE(
            QDir().mkpath(QDir::homePath() + QLatin1String("/many/") + QString::fromLatin1(made)));
    }
    ASSERT_TRUE(writeFile(QDir::homePath() + QLatin1String("/many/file"), "x"));
    std::optional<QStringList> folders;
    desktop->askFolders({.prompt = QStringLiteral("Aggiungi"),
                         .message = {},
                         .startFolder = QDir::homePath() + QLatin1String("/many")},
                        [&folders](const QStringList &answer) { folders = answer; });
    auto *dialog = shownDialog<QFileDialog>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Aggiungi"));
    auto *rows = dialog->findChild<QListView *>(QStringLiteral("listView"));
    ASSERT_NE(rows, nullptr);
    const auto nameOf = [rows](int row) {
        return rows->model()->index(row, 0, rows->rootIndex()).data().toString();
    };
    EXPECT_TRUE(eventuallyInLoop([&] { // read, and in order
        return rows->model()->rowCount(rows->rootIndex()) == 4 && nameOf(0) == QLatin1String("a") &&
               nameOf(3) == QLatin1String("d");
    }));
    rows->setFocus();
    for (const int row : {3, 0, 1}) {
        const QModelIndex index = rows->model()->index(row, 0, rows->rootIndex());
        QTest::mouseClick(rows->viewport(), Qt::LeftButton,
                          row == 3 ? Qt::NoModifier : Qt::ControlModifier,
                          rows->visualRect(index).center());
    }
    static_cast<QDialog *>(dialog)->accept();
    EXPECT_TRUE(eventuallyInLoop([&folders] { return folders.has_value(); }));
    const QString many = QDir::homePath() + QLatin1String("/many/");
    EXPECT_EQ(folders.value_or(QStringList()),
              (QStringList{many + u'a', many + QLatin1String("b b"), many + u'd'}));
}

TEST_F(WindowDesktopTest, itsEndClosesAnOpenPanelWithoutAnAnswer)
{
    askSavePath();
    ASSERT_NE(shownDialog<QFileDialog>(), nullptr);
    desktop.reset();
    EXPECT_EQ(answers, 0);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(WindowDesktopTest, whatIsPrintedToAFileIsForItsOwnerAlone)
{
    const QString file = QDir::homePath() + QLatin1String("/kit.pdf");
    ASSERT_TRUE(writeFile(file, QByteArray(100000, 'x')));
    ASSERT_TRUE(
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    print();
    acceptPrintTo(file);
    ASSERT_TRUE(printing);
    EXPECT_EQ(printing->failure, std::nullopt);
    EXPECT_EQ(printing->file, file);
    EXPECT_EQ(QFileInfo(file).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);

    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {file, QStringLiteral("-")});
    ASSERT_TRUE(reader.waitForFinished(60000));
    EXPECT_TRUE(reader.readAllStandardOutput().contains("Vellomar - Kit di recupero"));
}

TEST_F(WindowDesktopTest, aFileThatCannotBePrintedToIsReported)
{
    print();
    acceptPrintTo(QDir::homePath() + QLatin1String("/nowhere/kit.pdf"));
    ASSERT_TRUE(printing);
    EXPECT_EQ(printing->failure, QStringLiteral("No such file or directory"));
}

TEST_F(WindowDesktopTest, aPrinterThatTakesNothingIsReported)
{
    print();
    auto *dialog = shownDialog<QPrintDialog>();
    ASSERT_NE(dialog, nullptr);
    dialog->printer()->setOutputFormat(QPrinter::NativeFormat);
    Q_EMIT dialog->QDialog::accepted();
    EXPECT_TRUE(eventuallyInLoop([this] { return printing.has_value(); }));
    ASSERT_TRUE(printing);
    EXPECT_TRUE(printing->failure);
    dialog->reject();
}

TEST_F(WindowDesktopTest, aPrintDialogThatIsCancelledPrintsNothing)
{
    const QString file = QDir::homePath() + QLatin1String("/kit.pdf");
    print();
    auto *dialog = shownDialog<QPrintDialog>();
    ASSERT_NE(dialog, nullptr);
    dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
    dialog->printer()->setOutputFileName(file);
    dialog->reject();
    EXPECT_TRUE(eventuallyInLoop([] { return QApplication::activeModalWidget() == nullptr; }));
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_FALSE(printing);
}

TEST_F(WindowDesktopTest, aCopyCanBeClearedAgain)
{
    const qint64 noted = desktop->copyConcealed(QStringLiteral("key"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("key"));
    EXPECT_EQ(desktop->clipboardChangeCount(), noted);
    desktop->clearClipboard();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().isEmpty());
    EXPECT_NE(desktop->clipboardChangeCount(), noted);
}

TEST_F(WindowDesktopTest, answersOfTheLoginComeOnItsOwnThread)
{
    // There is no system bus here.
    std::optional<Desktop::Authentication> answer;
    QThread *thread = nullptr;
    desktop->authenticate(OwnerReason::copyKey, [&](Desktop::Authentication given) {
        answer = given;
        thread = QThread::currentThread();
    });
    EXPECT_FALSE(answer);
    EXPECT_TRUE(eventuallyInLoop([&answer] { return answer.has_value(); }));
    EXPECT_EQ(answer, Desktop::Authentication::impossible);
    EXPECT_EQ(thread, QThread::currentThread());
}

TEST_F(WindowDesktopTest, anOpenLoginIsTakenBackAtItsEnd)
{
    const KeyringSession bus(KeyringSession::Keyring::none);
    ASSERT_TRUE(bus.isRunning());
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    const QString record = QDir::homePath() + QLatin1String("/authority");
    QProcess authority;
    authority.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    authority.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/polkit_service.py"),
                     QStringLiteral("hanging"), record});
    ASSERT_EQ(QProcess::execute(QStringLiteral("gdbus"),
                                {QStringLiteral("wait"), QStringLiteral("--system"),
                                 QStringLiteral("--timeout=20"),
                                 QStringLiteral("org.freedesktop.PolicyKit1")}),
              0);
    bool answered = false;
    desktop->authenticate(OwnerReason::showKey,
                          [&answered](Desktop::Authentication) { answered = true; });
    ASSERT_TRUE(eventuallyInLoop([&record] { return readFile(record).count('\n') == 2; }));
    desktop.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(answered);
    authority.kill();
    authority.waitForFinished(20000);
}

TEST_F(WindowDesktopTest, theSettingsOfTheDesktopAreOpenedWhereThereAreAny)
{
    // A stand-in for the desktop's settings program, which records its arguments.
    const QString folder = QDir::homePath() + QLatin1String("/bin");
    const QString record = QDir::homePath() + QLatin1String("/opened");
    ASSERT_TRUE(writeProgram(folder + QLatin1String("/gnome-control-center"),
                             "#!/bin/sh\necho \"$@\" >'" + record.toUtf8() + "'\n"));
    qputenv("PATH", folder.toUtf8() + ':' + qgetenv("PATH"));

    qputenv("XDG_CURRENT_DESKTOP", "unheard-of");
    desktop->openPrivacySettings();
    qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    desktop->openPrivacySettings();
    EXPECT_TRUE(eventuallyInLoop([&record] { return readFile(record) == "applications\n"; }));
}

TEST_F(WindowDesktopTest, quittingAsksNobodyAndClosesWhatIsOpen)
{
    askSavePath();
    ASSERT_NE(shownDialog<QFileDialog>(), nullptr);
    QTimer::singleShot(0, desktop.get(), [this] { desktop->quit(); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_EQ(answers, 0);
}

TEST_F(WindowDesktopTest, theEndAtOnceIsASuccess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(desktop->exitNow(), testing::ExitedWithCode(0), "");
}

} // namespace
