#include "tests/ui/testing/FileManager.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QQuickWindow>

namespace {

constexpr Qt::DropActions offered = Qt::MoveAction | Qt::CopyAction | Qt::LinkAction;

QPoint place(const QQuickItem *item, qreal x, qreal y)
{
    return item->mapToScene({x, y}).toPoint();
}

} // namespace

bool FileManager::drag(QQuickItem *item, qreal x, qreal y, const QList<QUrl> &urls)
{
    m_load = std::make_unique<QMimeData>();
    m_load->setUrls(urls);
    return enter(item, x, y);
}

bool FileManager::dragText(QQuickItem *item, qreal x, qreal y, const QString &text)
{
    m_load = std::make_unique<QMimeData>();
    m_load->setText(text);
    return enter(item, x, y);
}

bool FileManager::enter(QQuickItem *item, qreal x, qreal y)
{
    QDragEnterEvent event(place(item, x, y), offered, m_load.get(), Qt::LeftButton, {});
    event.setAccepted(false);
    QCoreApplication::sendEvent(item->window(), &event);
    return event.isAccepted();
}

bool FileManager::dragOn(QQuickItem *item, qreal x, qreal y)
{
    QDragMoveEvent event(place(item, x, y), offered, m_load.get(), Qt::LeftButton, {});
    event.setAccepted(false);
    QCoreApplication::sendEvent(item->window(), &event);
    return event.isAccepted();
}

int FileManager::drop(QQuickItem *item, qreal x, qreal y)
{
    QDropEvent event(place(item, x, y), offered, m_load.get(), Qt::LeftButton, {});
    event.setAccepted(false);
    QCoreApplication::sendEvent(item->window(), &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

void FileManager::leave(QQuickItem *item)
{
    QDragLeaveEvent event;
    QCoreApplication::sendEvent(item->window(), &event);
}
