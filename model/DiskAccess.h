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
    /// What can wait for the access.
    enum class GatedAction { None, Backup, Measure };
    Q_ENUM(GatedAction)

    explicit DiskAccess(World world, QObject *parent = nullptr);

    /// As it was found last; true until then.
    [[nodiscard]] bool isGranted() const { return m_isGranted; }
    /// The action that the access sheet is on show for.
    [[nodiscard]] GatedAction request() const { return m_request; }
    void setRequest(GatedAction action);

    /// Looks for the access anew. `done` is called when the answer is there.
    void check(const std::function<void()> &done = {});
    /// Keeps an action for when the user comes back from the system's settings with the access.
    void keep(GatedAction action);
    /// Takes up what was kept, where the access is there by now and it isn't too old.
    Q_INVOKABLE void resume();

Q_SIGNALS:
    void grantedChanged();
    void requestChanged();
    /// What was kept can be done.
    void resumed(DiskAccess::GatedAction action);

private:
    void forget();

    const World m_world;
    bool m_isGranted = true;
    GatedAction m_request = GatedAction::None;
};
