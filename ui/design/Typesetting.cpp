#include "ui/design/Typesetting.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

QString Typesetting::together(const QString &text, const QFont &font, qreal width)
{
    qsizetype end = text.size();
    while (end > 0 && text[end - 1].isSpace()) {
        --end;
    }
    const qsizetype gap = text.left(end).lastIndexOf(u' ');
    if (gap <= 0 || width <= 0) {
        return text;
    }
    QString lines = text.left(end);
    lines.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(lines, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    int last = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        last = line.textStart();
    }
    layout.endLayout();
    if (last != gap + 1) {
        return text;
    }
    const qsizetype pair =
        std::max(text.lastIndexOf(u' ', gap - 1), text.lastIndexOf(u'\n', gap)) + 1;
    if (QFontMetricsF(font).horizontalAdvance(text.mid(pair, end - pair)) > width) {
        return text;
    }
    QString result = text;
    result[gap] = QChar::Nbsp;
    return result;
}

void Typesetting::drawOutlines()
{
    // The largest glyph that Qt caches as an image. Qt reads it at the first glyph; after that it
    // is unset, so that child processes don't inherit it.
    constexpr auto largest = "QT_MAX_CACHED_GLYPH_SIZE";
    if (qEnvironmentVariableIsSet(largest)) {
        return;
    }
    qputenv(largest, "1");
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    QPainter(&image).drawText(0, 1, QStringLiteral("a"));
    qunsetenv(largest);
}
