#include "tests/ui/testing/ScreenReader.h"

#include <QAccessible>
#include <QMetaEnum>
#include <QQuickWindow>

#include <algorithm>

namespace {

QAccessibleInterface *seen(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

QString line(QAccessibleInterface *element)
{
    const auto roles = QMetaEnum::fromType<QAccessible::Role>();
    return QLatin1String(roles.valueToKey(element->role())) + QLatin1String(": ") +
           element->text(QAccessible::Name);
}

/// An element and all below it, as far as they are on show.
void collect(QAccessibleInterface *element, QList<QAccessibleInterface *> &elements)
{
    if (element == nullptr || element->state().invisible) {
        return;
    }
    elements.append(element);
    for (int i = 0; i < element->childCount(); ++i) {
        collect(element->child(i), elements);
    }
}

QQuickItem *rootItem(QObject *root)
{
    auto *window = qobject_cast<QQuickWindow *>(root);
    return window != nullptr ? window->contentItem() : qobject_cast<QQuickItem *>(root);
}

QList<QAccessibleInterface *> elements(QObject *root)
{
    QList<QAccessibleInterface *> list;
    QAccessibleInterface *own = seen(root);
    if (own != nullptr && own->window() != nullptr && own->object() == own->window()) {
        for (int i = 0; i < own->childCount(); ++i) {
            collect(own->child(i), list);
        }
    } else {
        collect(own, list);
    }
    return list;
}

bool isPressed(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::Button:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::MenuItem:
    case QAccessible::PageTab:
    case QAccessible::RadioButton:
        return true;
    default:
        return false;
    }
}

QStringList actions(QAccessibleInterface *element)
{
    QAccessibleActionInterface *actions = element->actionInterface();
    return actions != nullptr ? actions->actionNames() : QStringList();
}

/// Whether the name, description or value of one of the elements says the text.
bool isAnnounced(const QString &text, const QList<QAccessibleInterface *> &elements)
{
    for (QAccessibleInterface *element : elements) {
        for (const auto part : {QAccessible::Name, QAccessible::Description, QAccessible::Value}) {
            if (element->text(part).contains(text, Qt::CaseInsensitive)) {
                return true;
            }
        }
    }
    return false;
}

void examine(QQuickItem *item, const QList<QAccessibleInterface *> &elements, QStringList &faults)
{
    if (!item->isVisible() || qFuzzyIsNull(item->opacity())) {
        return;
    }
    const bool isMet =
        std::any_of(elements.cbegin(), elements.cend(),
                    [item](QAccessibleInterface *element) { return element->object() == item; });
    if (item->activeFocusOnTab() && item->isEnabled() && !isMet) {
        faults.append(QStringLiteral("the keyboard reaches a %1 that isn't announced")
                          .arg(QLatin1String(item->metaObject()->className())));
    }
    if (item->inherits("QQuickText")) {
        QString text = item->property("text").toString().trimmed();
        text.replace(QChar::Nbsp, u' '); // how it is set in lines isn't read out
        if (!text.isEmpty() && !isAnnounced(text, elements)) {
            faults.append(QStringLiteral("the text \"%1\" isn't announced").arg(text));
        }
    }
    for (QQuickItem *child : item->childItems()) {
        examine(child, elements, faults);
    }
}

// What an item that is ignored has none of.

QString textOf(QQuickItem *item, QAccessible::Text kind)
{
    const QAccessibleInterface *element = seen(item);
    return element != nullptr ? element->text(kind) : QString();
}

QAccessible::State stateOf(QQuickItem *item)
{
    const QAccessibleInterface *element = seen(item);
    return element != nullptr ? element->state() : QAccessible::State();
}

} // namespace

int ScreenReader::role(QQuickItem *item)
{
    const QAccessibleInterface *element = seen(item);
    return element != nullptr ? element->role() : QAccessible::NoRole;
}

QString ScreenReader::name(QQuickItem *item)
{
    return textOf(item, QAccessible::Name);
}

QString ScreenReader::description(QQuickItem *item)
{
    return textOf(item, QAccessible::Description);
}

QString ScreenReader::heard(QQuickItem *item)
{
    QStringList texts;
    QAccessibleInterface *element = seen(item);
    if (element == nullptr) {
        return {};
    }
    for (const auto part : {QAccessible::Name, QAccessible::Description, QAccessible::Value,
                            QAccessible::Help, QAccessible::Accelerator}) {
        texts.append(element->text(part));
    }
    if (QAccessibleTextInterface *text = element->textInterface()) {
        texts.append(text->text(0, text->characterCount()));
    }
    if (QAccessibleValueInterface *value = element->valueInterface()) {
        texts.append(value->currentValue().toString());
    }
    return texts.join(u'\n');
}

bool ScreenReader::checked(QQuickItem *item)
{
    return stateOf(item).checked;
}

bool ScreenReader::selected(QQuickItem *item)
{
    return stateOf(item).selected;
}

QVariant ScreenReader::value(QQuickItem *item)
{
    QAccessibleInterface *element = seen(item);
    QAccessibleValueInterface *value = element != nullptr ? element->valueInterface() : nullptr;
    return value != nullptr ? value->currentValue() : QVariant();
}

void ScreenReader::perform(QQuickItem *item, const QString &action)
{
    QAccessibleInterface *element = seen(item);
    QAccessibleActionInterface *actions = element != nullptr ? element->actionInterface() : nullptr;
    if (actions != nullptr) {
        actions->doAction(action);
    }
}

QStringList ScreenReader::tree(QObject *root)
{
    QStringList lines;
    for (QAccessibleInterface *element : elements(root)) {
        lines.append(line(element));
    }
    return lines;
}

QStringList ScreenReader::faults(QObject *root)
{
    QStringList faults;
    const QList<QAccessibleInterface *> met = elements(root);
    for (QAccessibleInterface *element : met) {
        if (element->role() == QAccessible::NoRole || element->role() == QAccessible::Client) {
            faults.append(QStringLiteral("no role: ") + line(element));
        }
        // Qt gives a password field no name.
        const QAccessible::Text name =
            element->state().passwordEdit ? QAccessible::Description : QAccessible::Name;
        if (element->text(name).trimmed().isEmpty() && element->role() != QAccessible::Separator) {
            faults.append(QStringLiteral("no name: ") + line(element));
        }
        if (isPressed(element->role()) && !element->state().disabled &&
            !actions(element).contains(QAccessibleActionInterface::pressAction())) {
            faults.append(QStringLiteral("can't be pressed: ") + line(element));
        }
    }
    if (met.isEmpty()) {
        faults.append(QStringLiteral("nothing is announced"));
    }
    if (QQuickItem *item = rootItem(root)) {
        examine(item, met, faults);
    }
    return faults;
}
