#pragma once

#include <QString>

class QPagedPaintDevice;

/// Texts on paper: in a monospaced font of 12 points, on areas of 480 by 640 points in the middle
/// of the pages, smaller where the paper is. What doesn't fit goes on on the next page.
namespace TextPrinter {

/// False when the device couldn't be written to.
bool print(const QString &text, QPagedPaintDevice &device);

} // namespace TextPrinter
