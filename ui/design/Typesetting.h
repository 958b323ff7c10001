#pragma once

#include <QFont>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// How words become lines and glyphs become pixels.
class Typesetting : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The text as it is to be shown in lines of a width: where its last word would stand on the
    /// last line alone, the word before it comes along, if there is room for both.
    Q_INVOKABLE static QString together(const QString &text, const QFont &font, qreal width);

    /// Has Qt's own painter draw glyphs by their outlines, as heavy as OpenGL draws them. Its
    /// pictures of glyphs have thickened stems and are mixed by a curve of its own: light text on a
    /// dark ground comes out a third too heavy. Once there is an application, before any text.
    static void drawOutlines();
};
