#include "ui/shell/TextPrinter.h"

#include <QAbstractTextDocumentLayout>
#include <QFontDatabase>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>

namespace {

constexpr qreal areaWidth = 480;
constexpr qreal areaHeight = 640;
constexpr qreal pointsPerInch = 72;

} // namespace

bool TextPrinter::print(const QString &text, QPagedPaintDevice &device)
{
    QPainter painter;
    if (!painter.begin(&device)) {
        return false;
    }
    const qreal unit = painter.device()->logicalDpiX() / pointsPerInch;
    const QSizeF area = QSizeF(areaWidth, areaHeight) * unit;

    QTextDocument document;
    document.documentLayout()->setPaintDevice(&device);
    document.setDocumentMargin(0);
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(12);
    document.setDefaultFont(font);
    QTextOption option;
    // A key has no blanks to wrap at.
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(option);
    document.setPlainText(text);
    document.setPageSize(area);

    const QSizeF paper(device.width(), device.height());
    const qreal scale =
        std::min({1.0, paper.width() / area.width(), paper.height() / area.height()});
    const QSizeF taken = area * scale;
    painter.translate((paper.width() - taken.width()) / 2, (paper.height() - taken.height()) / 2);
    painter.scale(scale, scale);

    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0 && !device.newPage()) {
            return false;
        }
        const QRectF part(QPointF(0, page * area.height()), area);
        painter.save();
        painter.translate(0, -part.top());
        QAbstractTextDocumentLayout::PaintContext context;
        // A line that only touches the edge is on a different page, and mustn't be hidden in the
        // file of this one.
        context.clip = part.adjusted(0, unit, 0, -unit);
        // On paper the text is black, whatever the window's colours are.
        context.palette.setColor(QPalette::Text, Qt::black);
        painter.setClipRect(part);
        document.documentLayout()->draw(&painter, context);
        painter.restore();
    }
    return painter.end();
}
