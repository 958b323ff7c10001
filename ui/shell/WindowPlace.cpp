#include "ui/shell/WindowPlace.h"

#include "model/UserDefaults.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <chrono>

namespace {

constexpr QLatin1String placeKey("windowPlace");
constexpr QLatin1String maximizedKey("windowMaximized");

qint64 sharedArea(const QRect &one, const QRect &other)
{
    const QRect shared = one.intersected(other);
    return shared.isEmpty() ? 0 : qint64{shared.width()} * shared.height();
}

/// The place in the user defaults; empty unless it is a possible one.
QRect keptPlace()
{
    constexpr int most = 100000;
    const QVariant value = UserDefaults::value(placeKey);
    const QRect place = value.toRect();
    const bool sound = value.metaType().id() == QMetaType::QRect && place.width() > 0 &&
                       place.height() > 0 && place.width() < most && place.height() < most &&
                       qAbs(place.x()) < most && qAbs(place.y()) < most;
    return sound ? place : QRect();
}

} // namespace

WindowPlace::WindowPlace(QWindow *window, QSize ordinary)
    : QObject(window)
    , m_window(window)
    , m_least(window->minimumSize())
{
    restore(ordinary);
    keepToScreen();

    // A window that is being dragged moves many times a second.
    m_settled.setSingleShot(true);
    m_settled.setInterval(std::chrono::milliseconds(300));
    connect(&m_settled, &QTimer::timeout, this, &WindowPlace::remember);
    connect(window, &QWindow::xChanged, this, &WindowPlace::notice);
    connect(window, &QWindow::yChanged, this, &WindowPlace::notice);
    connect(window, &QWindow::widthChanged, this, &WindowPlace::notice);
    connect(window, &QWindow::heightChanged, this, &WindowPlace::notice);
    connect(window, &QWindow::windowStateChanged, this, &WindowPlace::notice);
    connect(window, &QWindow::visibleChanged, this, &WindowPlace::notice);
    connect(window, &QWindow::screenChanged, this, &WindowPlace::keepToScreen);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] {
        // The last move may still wait for the timer.
        if (m_settled.isActive() || isInSight()) {
            remember();
        }
    });
}

WindowPlace::~WindowPlace() = default;

QRect WindowPlace::fitted(const QRect &place, const QList<QRect> &screens, QSize minimum)
{
    QRect result(place.topLeft(), place.size().expandedTo(minimum));
    if (screens.isEmpty()) {
        return result;
    }
    // The first of several that are equally good.
    const QRect screen = *std::max_element(
        screens.begin(), screens.end(), [&result](const QRect &one, const QRect &other) {
            return sharedArea(result, one) < sharedArea(result, other);
        });
    result.setSize(result.size().boundedTo(screen.size()));
    result.moveLeft(
        std::max(screen.left(), std::min(result.left(), screen.right() + 1 - result.width())));
    result.moveTop(
        std::max(screen.top(), std::min(result.top(), screen.bottom() + 1 - result.height())));
    return result;
}

void WindowPlace::restore(QSize ordinary)
{
    const QRect kept = keptPlace();
    if (kept.isNull()) {
        m_window->resize(ordinary);
        return; // the desktop chooses the place
    }
    QList<QRect> screens;
    if (const QScreen *first = QGuiApplication::primaryScreen()) {
        screens.append(first->availableGeometry());
    }
    for (const QScreen *screen : QGuiApplication::screens()) {
        screens.append(screen->availableGeometry());
    }
    m_place = fitted(kept, screens, m_least);
    m_window->setMinimumSize(m_least.boundedTo(m_place.size()));
    m_window->resize(m_place.size());
    m_window->setFramePosition(m_place.topLeft());
    const QVariant maximized = UserDefaults::value(maximizedKey);
    m_maximized = maximized.toString() == QLatin1String("true");
    if (m_maximized) {
        // Showing a window sets its state to the desktop's default.
        connect(
            m_window, &QWindow::visibleChanged, this,
            [this] { m_window->setWindowStates(Qt::WindowMaximized); }, Qt::SingleShotConnection);
    }
}

void WindowPlace::keepToScreen()
{
    const QScreen *screen = m_window->screen();
    if (screen == nullptr) {
        return;
    }
    // The size of the frame is known once the window has been shown.
    const QRect available = screen->availableGeometry();
    const QMargins frame = m_window->frameMargins();
    const QSize room = available.marginsRemoved(frame).size();
    const QSize least = m_least.boundedTo(room);
    m_window->setMinimumSize(least);
    constexpr Qt::WindowStates whole = Qt::WindowMaximized | Qt::WindowFullScreen;
    const QSize size = m_window->size().expandedTo(least).boundedTo(room);
    if (!(m_window->windowStates() & whole) && size != m_window->size()) {
        // The side that fits keeps its place.
        const QRect place(m_window->framePosition(), size.grownBy(frame));
        m_window->resize(size);
        m_window->setFramePosition(fitted(place, {available}, {}).topLeft());
    }
}

bool WindowPlace::isInSight() const
{
    return m_window->isVisible() && !(m_window->windowStates() & Qt::WindowMinimized);
}

void WindowPlace::notice()
{
    // The place of a hidden or minimised window means nothing.
    if (isInSight()) {
        m_settled.start();
    }
}

void WindowPlace::remember()
{
    m_settled.stop();
    keepToScreen();
    constexpr Qt::WindowStates whole = Qt::WindowMaximized | Qt::WindowFullScreen;
    const bool fills = bool(m_window->windowStates() & whole);
    if (fills != m_maximized) {
        m_maximized = fills;
        UserDefaults::set(maximizedKey, m_maximized);
    }
    const QRect place(m_window->framePosition(), m_window->size());
    if (!fills && place != m_place) {
        m_place = place;
        UserDefaults::set(placeKey, m_place);
    }
}
