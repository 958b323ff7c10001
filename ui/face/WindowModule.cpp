#include "model/Background.h"
#include "state/Texts.h"
#include "ui/face/EndSignals.h"
#include "ui/face/Rendering.h"
#include "ui/face/WindowFace.h"
#include "ui/shell/SingleInstance.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QMessageBox>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr std::chrono::seconds patience(5);

/// Ends the program with a sentence when there is no screen, where Qt itself would abort.
void reportMissingScreen(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    static_cast<void>(std::fputs(qPrintable(text + u'\n'), stderr));
    if (type == QtFatalMsg) {
        static_cast<void>(
            std::fputs(qUtf8Printable(Texts::tr(
                           "Vellomar: qui non c'è uno schermo su cui aprire la finestra.\n"
                           "Per un backup senza finestra: vellomar --backup --manual\n")),
                       stderr));
        std::_Exit(EXIT_FAILURE);
    }
}

std::unique_ptr<QApplication> madeApplication(int &argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Vellomar"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELLOMAR_VERSION));
    // The engine's notifications name it, too.
    QGuiApplication::setDesktopFileName(QStringLiteral("it.vellomar.app"));
    const QtMessageHandler ordinary = qInstallMessageHandler(reportMissingScreen);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(ordinary);
    // The program goes on without any open window.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return application;
}

/// For when the first process doesn't answer: it hangs, or waits for the keyring.
void reportNoAnswer()
{
    const QString message = Texts::tr("Vellomar è già aperto, ma non risponde.");
    static_cast<void>(std::fputs(qUtf8Printable(message + u'\n'), stderr));
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Vellomar"), message, QMessageBox::Close);
    box.setInformativeText(
        Texts::tr("Attendi qualche secondo e riprova. Un backup in corso non ne risente."));
    box.exec();
}

int runWindow(int &argc, char *argv[])
{
    Background::begin();
    EndSignals endings;
    SingleInstance instance;
    const std::unique_ptr<QApplication> application = madeApplication(argc, argv);
    QObject::connect(&endings, &EndSignals::received, application.get(),
                     [] { QCoreApplication::exit(EXIT_SUCCESS); });

    QTranslator words; // those of Qt's own panels
    if (words.load(QLocale(QLocale::Italian), QStringLiteral("qtbase"), QStringLiteral("_"),
                   QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&words);
    }
    Texts::load();

    switch (instance.begin(patience)) {
    case SingleInstance::Role::first:
        break;
    case SingleInstance::Role::handedOver:
        return EXIT_SUCCESS;
    case SingleInstance::Role::unanswered:
        endings.listen();
        reportNoAnswer();
        return EXIT_FAILURE;
    }
    // The window will need the list of fonts, for which many small files are read.
    Background().run([] { QFontDatabase::families(); });
    Rendering::choose();
    WindowFace face(instance);
    if (!face.open()) {
        return EXIT_FAILURE;
    }
    endings.listen();
    return QApplication::exec();
}

} // namespace

/// The one function that the module is loaded for.
extern "C" int vellomar_window(int argc, char *argv[])
{
    const int code = runWindow(argc, argv);
    // The schedule may still be being updated; a tool that hangs isn't waited for any longer.
    constexpr std::chrono::seconds lastPatience(2);
    if (!Background::endsWithin(lastPatience)) {
        // Without destructors, as work that still waits for a disk or a network uses the objects.
        static_cast<void>(std::fflush(nullptr));
        std::_Exit(code);
    }
    return code;
}
