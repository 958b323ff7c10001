#include "ui/face/Rendering.h"

#include "ui/design/Typesetting.h"

#include <QFileInfo>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

#include <algorithm>
#include <array>

namespace {

/// Whether a renderer is OpenGL in software, by Mesa's names.
bool isImitation(QByteArray renderer)
{
    static constexpr std::array imitations = {"llvmpipe", "softpipe", "swrast", "software"};
    renderer = renderer.toLower();
    return std::any_of(imitations.begin(), imitations.end(),
                       [&renderer](const char *name) { return renderer.contains(name); });
}

} // namespace

bool Rendering::hasGraphicsProcessor(const QStringList &devices)
{
    if (std::none_of(devices.begin(), devices.end(),
                     [](const QString &device) { return QFileInfo::exists(device); })) {
        return false;
    }
    QOpenGLContext context;
    if (!context.create()) {
        return false;
    }
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!surface.isValid() || !context.makeCurrent(&surface)) {
        return false;
    }
    const auto *renderer =
        reinterpret_cast<const char *>(context.functions()->glGetString(GL_RENDERER));
    return renderer != nullptr && !isImitation(renderer);
}

void Rendering::choose()
{
    Typesetting::drawOutlines();
    for (const char *name : {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI_BACKEND"}) {
        if (qEnvironmentVariableIsSet(name)) {
            return;
        }
    }
    // The devices of the kernel's drivers, of NVIDIA's own, and of Linux within Windows.
    if (!hasGraphicsProcessor({QStringLiteral("/dev/dri"), QStringLiteral("/dev/nvidiactl"),
                               QStringLiteral("/dev/dxg")})) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
}
