#pragma once

#include <QList>
#include <QObject>
#include <QRect>
#include <QSize>
#include <QTimer>
#include <QWindow>

/// Where a window was the last time, kept in the user defaults. Restores it when made, then follows
/// the window for as long as this object lives. On a screen smaller than the window's smallest size
/// the window is as large as the screen.
class WindowPlace : public QObject
{
    Q_OBJECT

public:
    /// The window isn't shown yet. It is the parent. `ordinary` is its size when nothing is known.
    WindowPlace(QWindow *window, QSize ordinary);
    ~WindowPlace() override;
    WindowPlace(const WindowPlace &) = delete;
    WindowPlace &operator=(const WindowPlace &) = delete;
    WindowPlace(WindowPlace &&) = delete;
    WindowPlace &operator=(WindowPlace &&) = delete;

    /// A place moved, and made smaller where need be, so that all of it is on the one of the
    /// screens that it covers most of, or on the first when it is on none. Not below `minimum`,
    /// unless the screen is.
    static QRect fitted(const QRect &place, const QList<QRect> &screens, QSize minimum);

private:
    void restore(QSize ordinary);
    void keepToScreen();
    [[nodiscard]] bool isInSight() const;
    void notice();
    void remember();

    QWindow *m_window;
    QSize m_least; ///< the window's smallest size where the screen has room for it
    QRect m_place; ///< the last one that was the user's choice, not that of a maximised window
    bool m_maximized = false;
    QTimer m_settled;
};
