#pragma once

#include <QString>

class QPagedPaintDevice;

/// Prints texts: in a monospaced font of 12 points, on an area of at most 480 by 640 points in the
/// middle of each page. A long text continues on the next page.
namespace TextPrinter {

/// False when the device couldn't be written to.
bool print(const QString &text, QPagedPaintDevice &device);

} // namespace TextPrinter
