#include "state/Texts.h"
#include "ui/design/Motion.h"
#include "ui/design/Typesetting.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQmlListReference>
#include <QQuickItem>
#include <QQuickView>
#include <QTemporaryDir>

#include <cstdio>
#include <optional>

// For developers: every control and page of the window, in a window or as pictures.
namespace {

/// Saves a picture of each page. False, with a line on standard error, where one can't be saved.
bool savePictures(QQuickView &view, const QDir &folder)
{
    auto *motion =
        view.engine()->singletonInstance<Motion *>(qmlTypeId("Vellomar.Design", 1, 0, "Motion"));
    motion->setStill(true);
    QQuickItem *gallery = view.rootObject();
    gallery->setProperty("listed", false);
    const QQmlListReference pages(gallery, "pages");
    for (int i = 0; i < pages.count(); ++i) {
        gallery->setProperty("current", i);
        // Removes the page before, with the sheets and lists that it has open.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        const QString file =
            folder.filePath(pages.at(i)->property("name").toString() + QStringLiteral(".png"));
        if (!view.grabWindow().save(file)) {
            static_cast<void>(
                std::fputs(qUtf8Printable(file + QStringLiteral(" can't be written\n")), stderr));
            return false;
        }
        static_cast<void>(std::puts(qUtf8Printable(file)));
    }
    return true;
}

/// Makes a folder the home folder, so that no file of the user is read or written. To be called
/// before anything asks for the home folder.
void moveInto(const QTemporaryDir &home)
{
    if (!qEnvironmentVariableIsSet("XAUTHORITY")) {
        qputenv("XAUTHORITY", qgetenv("HOME") + "/.Xauthority");
    }
    qputenv("HOME", home.path().toUtf8());
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
        qunsetenv(name);
    }
}

/// Width and height from a text like "980x660"; absent where it isn't one.
std::optional<QSize> size(const QString &text)
{
    const QStringList lengths = text.split(u'x');
    const QSize size(lengths.value(0).toInt(), lengths.value(1).toInt());
    return lengths.size() == 2 && !size.isEmpty() ? std::optional(size) : std::nullopt;
}

} // namespace

int main(int argc, char *argv[])
{
    // Static, so that it is removed even where the parser below ends the program.
    static const QTemporaryDir home;
    if (!home.isValid()) {
        return 1;
    }
    moveInto(home);
    // Qt reads the scale when the application is made.
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], "--scale") == 0) {
            qputenv("QT_SCALE_FACTOR", argv[i + 1]);
        }
    }
    const QGuiApplication application(argc, argv);
    Texts::load();
    Typesetting::drawOutlines();

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Every control of the window in every state."));
    parser.addHelpOption();
    const QCommandLineOption pictures(QStringLiteral("pictures"),
                                      QStringLiteral("Save a picture of each page and end."),
                                      QStringLiteral("folder"));
    const QCommandLineOption scale(QStringLiteral("scale"), QStringLiteral("Pixels a point."),
                                   QStringLiteral("factor"));
    const QCommandLineOption extent(QStringLiteral("size"),
                                    QStringLiteral("Width and height of the window."),
                                    QStringLiteral("lengths"), QStringLiteral("980x660"));
    parser.addOption(pictures);
    parser.addOption(scale);
    parser.addOption(extent);
    parser.process(application);
    const std::optional<QSize> windowSize = size(parser.value(extent));
    if (!windowSize) {
        parser.showHelp(1);
    }

    QQuickView view;
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    view.setTitle(QStringLiteral("Vellomar gallery"));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Vellomar/Gallery/Gallery.qml")));
    if (view.status() != QQuickView::Ready) {
        return 1;
    }
    view.resize(*windowSize);
    view.show();
    if (parser.isSet(pictures)) {
        const QDir folder(parser.value(pictures));
        return folder.mkpath(QStringLiteral(".")) && savePictures(view, folder) ? 0 : 1;
    }
    return QGuiApplication::exec();
}
