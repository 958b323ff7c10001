#include "ui/face/WindowFace.h"

#include "state/Paths.h"
#include "ui/face/PanelPlace.h"
#include "ui/shell/WindowPlace.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QTimer>

#include <chrono>
#include <cstdio>

namespace {

constexpr QSize ordinarySize(1060, 720);

QUrl source(const char *file)
{
    return QUrl(QLatin1String("qrc:/qt/qml/Vellomar/Window/") + QLatin1String(file));
}

/// Sets the program's own icon, if it is installed.
void setIcon()
{
    const QString file = Paths::resources().value_or(QString()) + QLatin1String("/vellomar.svg");
    if (const QIcon icon(file); !icon.availableSizes().isEmpty()) {
        QGuiApplication::setWindowIcon(icon);
    }
}

void waitFor(QQmlComponent &component)
{
    QEventLoop loop;
    QObject::connect(&component, &QQmlComponent::statusChanged, &loop, &QEventLoop::quit);
    if (component.isLoading()) {
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
}

} // namespace

WindowFace::WindowFace(SingleInstance &instance)
    : m_instance(instance)
    , m_desktop(std::make_shared<WindowDesktop>())
{
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
}

WindowFace::~WindowFace()
{
    // Signals that the members emit while they are destroyed are of no use any more.
    disconnect(qGuiApp, nullptr, this, nullptr);
    disconnect(&m_instance, nullptr, this, nullptr);
}

bool WindowFace::open()
{
    // Compiled on a thread of its own while the model starts.
    QQmlComponent component(&m_engine, source("MainWindow.qml"), QQmlComponent::Asynchronous);
    m_model = std::make_unique<AppModel>(World::real(m_desktop));
    m_summary = std::make_unique<Summary>();
    m_summary->setModel(m_model.get());
    if (!makeMainWindow(component)) {
        return false;
    }
    connect(&m_instance, &SingleInstance::startedAgain, this, &WindowFace::bringUp);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive) {
                    m_model->becomeActive();
                }
            });
    connect(qGuiApp, &QCoreApplication::aboutToQuit, this, &WindowFace::prepareToQuit);
    m_window->show();
    return true;
}

bool WindowFace::makeMainWindow(QQmlComponent &component)
{
    waitFor(component);
    m_window = made(component, windowProperties());
    if (!m_window) {
        return false;
    }
    setIcon();
    new WindowPlace(m_window.get(), ordinarySize); // the window's child
    m_desktop->setWindow(m_window.get());
    // By name, as these signals are declared in QML.
    connect(m_window.get(), SIGNAL(licensesAsked()), this, SLOT(openLicenses()));
    connect(m_window.get(), SIGNAL(aboutAsked()), this, SLOT(openAbout()));
    connect(m_window.get(), SIGNAL(quitAsked()), this, SLOT(quit()));
    // The desktop's tray may be slow to answer, so the window is shown first.
    connect(m_window.get(), &QQuickWindow::frameSwapped, this, &WindowFace::makeTrayItem,
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    return true;
}

std::unique_ptr<QQuickWindow> WindowFace::made(QQmlComponent &component,
                                               const QVariantMap &properties)
{
    std::unique_ptr<QObject> object(component.createWithInitialProperties(properties));
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(object.get()));
    if (!window) {
        static_cast<void>(std::fputs(qUtf8Printable(component.errorString()), stderr));
        return nullptr;
    }
    static_cast<void>(object.release()); // the window owns it now
    return window;
}

std::unique_ptr<QQuickWindow> WindowFace::made(const char *file, const QVariantMap &properties)
{
    QQmlComponent component(&m_engine, source(file));
    return made(component, properties);
}

QVariantMap WindowFace::windowProperties() const
{
    return {{QStringLiteral("model"), QVariant::fromValue(m_model.get())},
            {QStringLiteral("summary"), QVariant::fromValue(m_summary.get())}};
}

void WindowFace::bringUp(const QString &token)
{
    if (!token.isEmpty()) {
        // The desktop's permission to come to the front; Qt looks for it here.
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    }
    QMetaObject::invokeMethod(m_window.get(), "comeUp");
    // It is valid once, and isn't meant for child processes.
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

void WindowFace::makeTrayItem()
{
    m_tray = std::make_unique<TrayItem>();
    m_tray->setBusy(m_model->run()->isBusy());
    connect(m_model->run(), &RunWatch::busyChanged, m_tray.get(),
            [this] { m_tray->setBusy(m_model->run()->isBusy()); });
    connect(m_tray.get(), &TrayItem::activated, this, &WindowFace::togglePanel);
}

void WindowFace::togglePanel()
{
    // The click that is handled here has already closed the panel, by taking the focus away.
    constexpr qint64 sameClickMilliseconds = 300;
    const bool hasJustGone = m_panelLeft.isValid() && m_panelLeft.elapsed() < sameClickMilliseconds;
    m_panelLeft.invalidate();
    if (hasJustGone) {
        return;
    }
    if (m_panel && m_panel->isVisible()) {
        m_panel->hide();
        m_panelLeft.invalidate();
        return;
    }
    if (!m_panel) {
        m_panel = made("MenuPanelWindow.qml", windowProperties());
        if (!m_panel) {
            return;
        }
        connect(m_panel.get(), SIGNAL(windowAsked()), this, SLOT(openWindow()));
        connect(m_panel.get(), SIGNAL(quitAsked()), this, SLOT(quit()));
        connect(m_panel.get(), &QWindow::visibleChanged, this, [this](bool visible) {
            if (!visible) {
                m_panelLeft.start();
            }
        });
        connect(m_panel.get(), &QWindow::heightChanged, this, &WindowFace::placePanel);
    }
    placePanel();
    m_panel->show();
    m_panel->raise();
    m_panel->requestActivate();
}

void WindowFace::placePanel()
{
    const QRect item = m_tray->place();
    const QScreen *screen = QGuiApplication::screenAt(item.center());
    if (item.isEmpty() || screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen != nullptr) {
        m_panel->setPosition(PanelPlace::corner(m_panel->size(), item, screen->geometry(),
                                                screen->availableGeometry()));
    }
}

void WindowFace::openWindow()
{
    if (m_panel) {
        m_panel->hide();
    }
    bringUp({});
}

void WindowFace::openLicenses()
{
    if (!m_licenses) {
        m_licenses = made("LicensesWindow.qml", {});
    }
    present(m_licenses.get());
}

void WindowFace::openAbout()
{
    if (!m_about) {
        m_about = made("AboutWindow.qml",
                       {{QStringLiteral("version"), QCoreApplication::applicationVersion()}});
    }
    present(m_about.get());
}

void WindowFace::present(QQuickWindow *window)
{
    if (window != nullptr) {
        window->show();
        window->raise();
        window->requestActivate();
    }
}

void WindowFace::quit()
{
    m_desktop->quit();
}

void WindowFace::prepareToQuit()
{
    m_model->prepareToQuit();
}
