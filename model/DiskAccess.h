#pragma once

#include "model/World.h"

#include <QObject>

#include <functional>

/// Access to the whole disk, and the action that waits for it.
class DiskAccess final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool granted READ isGranted NOTIFY grantedChanged FINAL)
    Q_PROPERTY(GatedAction request READ request WRITE setRequest NOTIFY requestChanged FINAL)

public:
    /// The actions that can wait for the access.
    enum class GatedAction { None, Backup, Measure };
    Q_ENUM(GatedAction)

    explicit DiskAccess(World world, QObject *parent = nullptr);

    /// The result of the last check; true before the first.
    [[nodiscard]] bool isGranted() const { return m_isGranted; }
    /// The action that the access sheet asks about; None while the sheet is closed.
    [[nodiscard]] GatedAction request() const { return m_request; }
    void setRequest(GatedAction action);

    /// Checks the access again. `done` is called when the result is known.
    void check(const std::function<void()> &done = {});
    /// Remembers an action until the user comes back from the system's settings.
    void keep(GatedAction action);
    /// Emits resumed() for the action that was kept, if the access has been given and the action
    /// isn't too old.
    Q_INVOKABLE void resume();

Q_SIGNALS:
    void grantedChanged();
    void requestChanged();
    /// The action that was kept can be performed now.
    void resumed(DiskAccess::GatedAction action);

private:
    void forget();

    const World m_world;
    bool m_isGranted = true;
    GatedAction m_request = GatedAction::None;
};
