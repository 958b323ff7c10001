#include "ui/shell/TrayItem.h"

#include "ui/shell/MenuBarIcon.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>

TrayItem::TrayItem(QObject *parent)
    : QObject(parent)
{
    connect(&m_icon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                // A double click is reported as a click first.
                if (reason != QSystemTrayIcon::DoubleClick) {
                    Q_EMIT activated();
                }
            });
    qApp->installEventFilter(this);
    m_icon.setToolTip(QStringLiteral("Vellomar"));
    draw();
    m_icon.show();
}

bool TrayItem::isAvailable()
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayItem::setBusy(bool busy)
{
    if (busy != m_busy) {
        m_busy = busy;
        draw();
    }
}

bool TrayItem::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) {
        draw();
    }
    return false;
}

void TrayItem::draw()
{
    const QColor color = MenuBarIcon::colorFor(qEnvironmentVariable("XDG_CURRENT_DESKTOP"),
                                               QApplication::palette().color(QPalette::WindowText));
    m_icon.setIcon(m_busy ? MenuBarIcon::busyIcon(color) : MenuBarIcon::icon(color));
}
