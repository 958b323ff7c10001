#include "ui/design/Theme.h"

#include <QFontDatabase>

#include <algorithm>

namespace {

QColor rgb(double red, double green, double blue)
{
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green),
                            static_cast<float>(blue));
}

QColor gray(double level)
{
    return rgb(level, level, level);
}

QString familyOr(const QString &wanted, const QString &otherwise)
{
    return QFontDatabase::hasFamily(wanted) ? wanted : otherwise;
}

QString systemFamily()
{
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

} // namespace

QColor Theme::ground()
{
    return rgb(0.063, 0.227, 0.247);
}
QColor Theme::amber()
{
    return rgb(0.98, 0.74, 0.26);
}
QColor Theme::mint()
{
    return rgb(0.47, 0.88, 0.69);
}
QColor Theme::coral()
{
    return rgb(0.98, 0.5, 0.42);
}
QColor Theme::ink()
{
    return rgb(0.04, 0.13, 0.14);
}
QColor Theme::line()
{
    return white(0.09);
}
QColor Theme::text()
{
    return white(1);
}
QColor Theme::label()
{
    return white(0.8);
}
QColor Theme::secondary()
{
    return white(0.74);
}
QColor Theme::tertiary()
{
    return white(0.6);
}

VerticalGradient Theme::groundGradient()
{
    return vertical(rgb(0.09, 0.29, 0.315), rgb(0.045, 0.175, 0.195));
}

VerticalGradient Theme::sidebarGradient()
{
    return vertical(rgb(0.055, 0.19, 0.21), rgb(0.018, 0.085, 0.097));
}

VerticalGradient Theme::amberGradient()
{
    return vertical(rgb(1.0, 0.83, 0.44), rgb(0.95, 0.66, 0.18));
}

VerticalGradient Theme::panelGradient()
{
    return vertical(white(0.105), white(0.055));
}

VerticalGradient Theme::rim()
{
    return vertical(white(0.24), white(0.03));
}

VerticalGradient Theme::knobGradient()
{
    return vertical(white(1), gray(0.84));
}

VerticalGradient Theme::bezelGradient()
{
    return vertical(rgb(0.135, 0.375, 0.405), rgb(0.045, 0.165, 0.185));
}

VerticalGradient Theme::wellGradient()
{
    return vertical(rgb(0.03, 0.125, 0.14), rgb(0.065, 0.225, 0.245));
}

QString Theme::textFamily()
{
    static const QString family = familyOr(QStringLiteral("Inter"), systemFamily());
    return family;
}

QString Theme::roundedFamily()
{
    static const QString family = familyOr(QStringLiteral("Quicksand"), textFamily());
    return family;
}

QString Theme::monospacedFamily()
{
    static const QString family = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    return family;
}

QColor Theme::white(qreal opacity)
{
    return faded(gray(1), opacity);
}

QColor Theme::black(qreal opacity)
{
    return faded(gray(0), opacity);
}

QColor Theme::faded(const QColor &color, qreal opacity)
{
    QColor result = color;
    result.setAlphaF(static_cast<float>(opacity));
    return result;
}

VerticalGradient Theme::vertical(const QColor &top, const QColor &bottom)
{
    return {top, bottom};
}

VerticalGradient Theme::flat(const QColor &color)
{
    return {color, color};
}

QColor Theme::brightened(const QColor &color, qreal amount)
{
    const auto more = [amount](float level) {
        return std::clamp(level + static_cast<float>(amount), 0.0F, 1.0F);
    };
    if (color.alpha() == 0 || amount == 0) {
        return color;
    }
    if (color.red() == 255 && color.green() == 255 && color.blue() == 255) {
        return faded(color, more(color.alphaF()));
    }
    return QColor::fromRgbF(more(color.redF()), more(color.greenF()), more(color.blueF()),
                            color.alphaF());
}

VerticalGradient Theme::brightened(const VerticalGradient &gradient, qreal amount)
{
    return {brightened(gradient.top, amount), brightened(gradient.bottom, amount)};
}
