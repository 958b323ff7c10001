#pragma once

#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>

/// The item in the desktop's tray. A desktop without a tray shows it as soon as there is one.
class TrayItem : public QObject
{
    Q_OBJECT

public:
    explicit TrayItem(QObject *parent = nullptr);

    /// Whether the desktop has a tray at this moment.
    [[nodiscard]] static bool isAvailable();
    /// Whether the picture is that of a running backup.
    [[nodiscard]] bool isBusy() const { return m_busy; }
    void setBusy(bool busy);
    /// Where it is on the screen; empty when the desktop doesn't report it.
    [[nodiscard]] QRect place() const { return m_icon.geometry(); }

Q_SIGNALS:
    /// The user clicked on it, with any button: its panel is to open, or to close.
    void activated();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void draw();

    QSystemTrayIcon m_icon;
    bool m_busy = false;
};
