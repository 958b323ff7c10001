#pragma once

#include <QStringList>

/// What draws the window.
namespace Rendering {

/// Settles it, once, before there is any window: the graphics processor where there is one,
/// otherwise Qt's own painter, which paints nothing but what has changed, and text as heavy as the
/// other does. What the user has set by Qt's own variables holds.
void choose();

/// Whether OpenGL is drawn by a graphics processor here. Only asked of OpenGL, which takes its time
/// to come up, where one of these files of devices is there.
bool hasGraphicsProcessor(const QStringList &devices);

} // namespace Rendering
