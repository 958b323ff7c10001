#pragma once

#include <QFont>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// How text is broken into lines, and how its glyphs are drawn.
class Typesetting : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The text, for lines of a width, with a no-break space before its last word if that would
    /// otherwise be alone on the last line and there is room for two.
    Q_INVOKABLE static QString together(const QString &text, const QFont &font, qreal width);

    /// Makes the software renderer draw glyphs as outlines, as heavy as OpenGL draws them. Its
    /// cached glyph images have thickened stems and a gamma of their own, which makes light text on
    /// a dark ground a third too heavy. Call it after the application is made and before any text.
    static void drawOutlines();
};
