#pragma once

#include <QList>
#include <QObject>
#include <QRect>
#include <QSize>
#include <QTimer>
#include <QWindow>

/// Keeps the place of a window in the user defaults: the constructor restores it, and later changes
/// are saved. On a screen smaller than the window's smallest size the window is as large as the
/// screen.
class WindowPlace : public QObject
{
    Q_OBJECT

public:
    /// `window`, the parent, isn't shown yet. `ordinary` is its size when no place was saved.
    WindowPlace(QWindow *window, QSize ordinary);
    ~WindowPlace() override;
    WindowPlace(const WindowPlace &) = delete;
    WindowPlace &operator=(const WindowPlace &) = delete;
    WindowPlace(WindowPlace &&) = delete;
    WindowPlace &operator=(WindowPlace &&) = delete;

    /// The place, moved and made smaller as necessary to fit into the screen that it overlaps most,
    /// or into the first when it overlaps none. Not smaller than `minimum`, unless the screen is.
    static QRect fitted(const QRect &place, const QList<QRect> &screens, QSize minimum);

private:
    void restore(QSize ordinary);
    void keepToScreen();
    [[nodiscard]] bool isInSight() const;
    void notice();
    void remember();

    QWindow *m_window;
    QSize m_least; ///< the window's smallest size where the screen has room for it
    QRect m_place; ///< the last one while the window wasn't maximised
    bool m_maximized = false;
    QTimer m_settled;
};
