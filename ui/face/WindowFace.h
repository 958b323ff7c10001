#pragma once

#include "model/AppModel.h"
#include "ui/glance/Summary.h"
#include "ui/shell/SingleInstance.h"
#include "ui/shell/TrayItem.h"
#include "ui/shell/WindowDesktop.h"

#include <QElapsedTimer>
#include <QObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QVariantMap>

#include <memory>

/// The program with its window: the model, the windows that show it, the tray item with its panel,
/// and what happens between them. It lives from the opening of the window to the program's end.
class WindowFace : public QObject
{
    Q_OBJECT

public:
    /// `instance` is the first one, and outlives this.
    explicit WindowFace(SingleInstance &instance);
    ~WindowFace() override;
    WindowFace(const WindowFace &) = delete;
    WindowFace &operator=(const WindowFace &) = delete;
    WindowFace(WindowFace &&) = delete;
    WindowFace &operator=(WindowFace &&) = delete;

    /// Makes the model and opens the window. False, with the reason on standard error, when the
    /// window can't be made.
    bool open();

private:
    // Connected by name, as the signals are declared in QML.
    Q_SLOT void openWindow();
    Q_SLOT void openLicenses();
    Q_SLOT void openAbout();
    Q_SLOT void quit();

    [[nodiscard]] std::unique_ptr<QQuickWindow> made(const char *file,
                                                     const QVariantMap &properties);
    [[nodiscard]] std::unique_ptr<QQuickWindow> made(QQmlComponent &component,
                                                     const QVariantMap &properties);
    [[nodiscard]] QVariantMap windowProperties() const;
    bool makeMainWindow(QQmlComponent &component);
    void bringUp(const QString &token);
    void makeTrayItem();
    void togglePanel();
    void placePanel();
    void prepareToQuit();
    static void present(QQuickWindow *window);

    SingleInstance &m_instance;
    std::shared_ptr<WindowDesktop> m_desktop;
    QQmlEngine m_engine;
    // In this order, as each uses those before it and must be destroyed before them.
    std::unique_ptr<AppModel> m_model;
    std::unique_ptr<Summary> m_summary;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickWindow> m_panel;
    std::unique_ptr<QQuickWindow> m_licenses;
    std::unique_ptr<QQuickWindow> m_about;
    std::unique_ptr<TrayItem> m_tray;
    QElapsedTimer m_panelLeft; ///< since the panel closed by itself
};
