#pragma once

#include <QStringList>

/// What draws the window.
namespace Rendering {

/// Chooses the renderer, once, before there is any window: the graphics processor where there is
/// one, otherwise Qt's own painter, which paints only what has changed, with text of the same
/// weight. What the user has set by Qt's own variables is kept.
void choose();

/// Whether a graphics processor draws OpenGL here. OpenGL, which is slow to start, is only asked if
/// one of these device files exists.
bool hasGraphicsProcessor(const QStringList &devices);

} // namespace Rendering
