#include "ui/face/PanelPlace.h"

#include <algorithm>

namespace {

constexpr int gap = 8;

/// `start`, moved so that a length fits between `first` and `last`; `first` when it is too long.
int within(int start, int length, int first, int last)
{
    return std::max(first, std::min(start, last - length + 1));
}

} // namespace

QPoint PanelPlace::corner(QSize panel, const QRect &item, const QRect &screen, const QRect &free)
{
    const QRect room = free.adjusted(gap, gap, -gap, -gap);
    if (item.isEmpty()) {
        // A desktop with its bar at the bottom has its free area at the top.
        const bool isBelow = free.bottom() < screen.bottom() && free.top() == screen.top();
        const int top = isBelow ? room.bottom() - panel.height() + 1 : room.top();
        return {within(room.right() - panel.width() + 1, panel.width(), room.left(), room.right()),
                within(top, panel.height(), room.top(), room.bottom())};
    }
    const bool isInLowerHalf = item.center().y() > screen.center().y();
    const int top = isInLowerHalf ? item.top() - gap - panel.height() : item.bottom() + 1 + gap;
    return {within(item.center().x() - panel.width() / 2, panel.width(), room.left(), room.right()),
            within(top, panel.height(), room.top(), room.bottom())};
}
