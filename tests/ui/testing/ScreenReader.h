#pragma once

#include <QObject>
#include <QQuickItem>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

class QAccessibleInterface;

/// What a screen reader sees of an item and does to it. An item that is ignored has no role and no
/// texts, and nothing can be done to it.
class ScreenReader : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE static int role(QQuickItem *item);
    Q_INVOKABLE static QString name(QQuickItem *item);
    Q_INVOKABLE static QString description(QQuickItem *item);
    /// Every text that the item gives to a screen reader, of whatever kind, a line each.
    Q_INVOKABLE static QString heard(QQuickItem *item);
    Q_INVOKABLE static bool checked(QQuickItem *item);
    Q_INVOKABLE static bool selected(QQuickItem *item);
    Q_INVOKABLE static QVariant value(QQuickItem *item);
    Q_INVOKABLE static void perform(QQuickItem *item, const QString &action);

    /// All that is on show in an item or a window, in order, each as "Role: name".
    Q_INVOKABLE static QStringList tree(QObject *root);
    /// What is wrong with that: elements without a role or a name, controls that nothing can be
    /// done to, what the keyboard reaches but the reader doesn't, and texts on show that are in no
    /// name and no description.
    Q_INVOKABLE static QStringList faults(QObject *root);
};
