#include "ui/design/Motion.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQmlListReference>
#include <QQuickItem>
#include <QQuickView>

#include <cstdio>

// For developers: everything the window is made of, in a window to play with, or straight to
// pictures.
namespace {

/// Saves a picture of each page; false, with the reason said, if one can't be.
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

} // namespace

int main(int argc, char *argv[])
{
    // The scale must be known before there is an application.
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], "--scale") == 0) {
            qputenv("QT_SCALE_FACTOR", argv[i + 1]);
        }
    }
    const QGuiApplication application(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Every control of the window in every state."));
    parser.addHelpOption();
    const QCommandLineOption pictures(QStringLiteral("pictures"),
                                      QStringLiteral("Save a picture of each page and end."),
                                      QStringLiteral("folder"));
    const QCommandLineOption scale(QStringLiteral("scale"), QStringLiteral("Pixels a point."),
                                   QStringLiteral("factor"));
    parser.addOption(pictures);
    parser.addOption(scale);
    parser.process(application);

    QQuickView view;
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    view.setTitle(QStringLiteral("Vellomar gallery"));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Vellomar/Gallery/Gallery.qml")));
    if (view.status() != QQuickView::Ready) {
        return 1;
    }
    view.resize(980, 660);
    view.show();
    if (parser.isSet(pictures)) {
        const QDir folder(parser.value(pictures));
        return folder.mkpath(QStringLiteral(".")) && savePictures(view, folder) ? 0 : 1;
    }
    return QGuiApplication::exec();
}
