#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTemporaryDir>
#include <QtQuickTest>

// Runs a file of tests written in QML, in a home of its own.

/// What a screen reader sees of an item and does to it.
class ScreenReader : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    Q_INVOKABLE static int role(QQuickItem *item) { return seen(item)->role(); }
    Q_INVOKABLE static QString name(QQuickItem *item)
    {
        return seen(item)->text(QAccessible::Name);
    }
    Q_INVOKABLE static QString description(QQuickItem *item)
    {
        return seen(item)->text(QAccessible::Description);
    }
    Q_INVOKABLE static bool checked(QQuickItem *item) { return seen(item)->state().checked; }
    Q_INVOKABLE static QVariant value(QQuickItem *item)
    {
        QAccessibleValueInterface *value = seen(item)->valueInterface();
        return value != nullptr ? value->currentValue() : QVariant();
    }
    Q_INVOKABLE static void perform(QQuickItem *item, const QString &action)
    {
        QAccessibleActionInterface *actions = seen(item)->actionInterface();
        if (actions != nullptr) {
            actions->doAction(action);
        }
    }

private:
    static QAccessibleInterface *seen(QQuickItem *item)
    {
        return QAccessible::queryAccessibleInterface(item);
    }
};

class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    static void applicationAvailable() { QAccessible::setActive(true); }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        qmlRegisterSingletonInstance("Vellomar.Testing", 1, 0, "ScreenReader", &m_reader);
    }

private:
    ScreenReader m_reader;
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
