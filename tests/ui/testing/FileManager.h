#pragma once

#include <QList>
#include <QMimeData>
#include <QObject>
#include <QQuickItem>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

/// A file manager from which something is dragged over a window. What it offers to do with it is
/// to move, copy or link it, and to move it is what it proposes.
class FileManager : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Drags files to a place of an item, in the item's own lengths, from outside of its window.
    /// Whether they would be taken there.
    Q_INVOKABLE bool drag(QQuickItem *item, qreal x, qreal y, const QList<QUrl> &urls);
    /// The same with a text that was selected somewhere.
    Q_INVOKABLE bool dragText(QQuickItem *item, qreal x, qreal y, const QString &text);
    /// Drags on what is being dragged. Whether it would be taken there.
    Q_INVOKABLE bool dragOn(QQuickItem *item, qreal x, qreal y);
    /// Lets it go there. What is to be done with it: an action of Qt.DropAction.
    Q_INVOKABLE int drop(QQuickItem *item, qreal x, qreal y);
    /// Drags it out of the window, or gives up.
    Q_INVOKABLE void leave(QQuickItem *item);

private:
    bool enter(QQuickItem *item, qreal x, qreal y);

    std::unique_ptr<QMimeData> m_load;
};
