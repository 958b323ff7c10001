#include "ui/design/FlowArrangement.h"

#include <algorithm>

FlowArrangement flowArrangement(const QList<QSizeF> &boxes, qreal available, qreal spacing)
{
    FlowArrangement result;
    qreal x = 0;
    qreal y = 0;
    qreal rowHeight = 0;
    qreal widest = 0;
    for (const QSizeF &box : boxes) {
        if (x > 0 && x + box.width() > available) {
            y += rowHeight + spacing;
            x = 0;
            rowHeight = 0;
        }
        result.places.append({x, y});
        rowHeight = std::max(rowHeight, box.height());
        widest = std::max(widest, x + box.width());
        x += box.width() + spacing;
    }
    result.size = QSizeF(widest, y + rowHeight);
    return result;
}
