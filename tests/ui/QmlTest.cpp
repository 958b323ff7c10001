#include "state/Texts.h"
#include "ui/design/Typesetting.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QtQuickTest>

// Runs a file of tests written in QML, in a home of its own.

class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    static void applicationAvailable()
    {
        QAccessible::setActive(true);
        Typesetting::drawOutlines();
        Texts::load();
    }
    static void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    }
};

int main(int argc, char *argv[])
{
    const QTemporaryDir home;
    if (!home.isValid()) {
        return 1;
    }
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
        qunsetenv(name);
    }
    QTEST_SET_MAIN_SOURCE_PATH
    Setup setup;
    return quick_test_main_with_setup(argc, argv, "qml", VELLOMAR_TEST_SOURCES, &setup);
}

#include "QmlTest.moc"
