#pragma once

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

#include <optional>

/// Something on the screen as a screen reader gets it.
struct AccessibleObject
{
    int depth = 0;  ///< 1 for a window
    QString window; ///< the name of the window it is in
    QString role;   ///< "push button", "heading" …
    QString name;
    QString description;
    QString text; ///< what a field holds
    QStringList states;
    QStringList actions;
    QRect place; ///< on the screen

    [[nodiscard]] bool is(const char *state) const;
    /// Everything above in one line, for messages.
    [[nodiscard]] QString line() const;
};

/// The accessibility bus, and a screen reader on it that reads the windows of a program. Programs
/// that are started during its life are on that bus. Make it when there is a session bus.
class AccessibleTree
{
public:
    AccessibleTree();
    ~AccessibleTree();
    AccessibleTree(const AccessibleTree &) = delete;
    AccessibleTree &operator=(const AccessibleTree &) = delete;
    AccessibleTree(AccessibleTree &&) = delete;
    AccessibleTree &operator=(AccessibleTree &&) = delete;

    /// Whether it came up; a test that needs it must fail otherwise.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }

    /// All that a program shows now, each window followed by what is in it.
    QList<AccessibleObject> read(qint64 process);
    /// What of it has that role and that name, where a name that ends in "*" stands for all that
    /// begin so.
    std::optional<AccessibleObject> find(qint64 process, const QString &role, const QString &name);
    /// Does what a press on such an object does; false when there is none, or it can't be pressed.
    bool press(qint64 process, const AccessibleObject &object);

private:
    static QJsonObject ask(const QStringList &question);

    QProcess m_bus;
    bool m_isRunning = false;
};
