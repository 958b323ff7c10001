#include "ui/design/Typesetting.h"

#include "ui/design/Theme.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

namespace {

class TypesettingTest : public testing::Test
{
protected:
    TypesettingTest()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application.emplace(argc, argv.data());
        Typesetting::drawOutlines();
        font.setFamily(Theme::textFamily());
        font.setPixelSize(13);
    }

    [[nodiscard]] qreal wide(const char *text) const
    {
        return QFontMetricsF(font).horizontalAdvance(QString::fromUtf8(text));
    }
    [[nodiscard]] std::string together(const char *text, qreal width) const
    {
        return Typesetting::together(QString::fromUtf8(text), font, width).toStdString();
    }

    int argc = 1;
    std::array<char, 5> name = {'t', 'e', 's', 't', '\0'};
    std::array<char *, 2> argv{name.data(), nullptr};
    std::optional<QGuiApplication> application;
    QFont font;
};

TEST_F(TypesettingTest, aLastWordAloneTakesTheOneBeforeItAlong)
{
    EXPECT_EQ(together("Da conservare fuori da questo Mac", wide("Da conservare fuori da questo ")),
              "Da conservare fuori da questo\u00a0Mac");
}

TEST_F(TypesettingTest, blanksAtTheEndAreNoWord)
{
    EXPECT_EQ(together("fuori da questo Mac \n", wide("fuori da questo ")),
              "fuori da questo\u00a0Mac \n");
    EXPECT_EQ(together("  ", 5), "  ");
}

TEST_F(TypesettingTest, twoWordsOrMoreOnTheLastLineStay)
{
    constexpr auto text = "Da conservare fuori da questo Mac";
    EXPECT_EQ(together(text, wide("Da conservare fuori da ")), text);
    EXPECT_EQ(together(text, wide(text) + 1), text);
}

TEST_F(TypesettingTest, whatHasNoRoomForBothStaysAsItIs)
{
    constexpr auto text = "uno cartella/con/un/nome/lungo immagine/con/un/nome";
    EXPECT_EQ(together(text, wide("cartella/con/un/nome/lungo ")), text);
    EXPECT_EQ(together("parola", 10), "parola");
    EXPECT_EQ(together("", 10), "");
    EXPECT_EQ(together("due parole", 0), "due parole");
}

TEST_F(TypesettingTest, aWordAfterABreakOfItsOwnStaysThere)
{
    EXPECT_EQ(together("Errore:\ndue parole", 1000), "Errore:\ndue parole");
    EXPECT_EQ(together("una riga e poi\nparola", wide("una riga e ")), "una riga e poi\nparola");
}

TEST_F(TypesettingTest, itIsAsManyLinesAsBefore)
{
    constexpr auto text = "Senza la chiave non si recupera nulla di quello che era sul disco.";
    for (int width = 60; width < 460; ++width) {
        const QString kept = Typesetting::together(QString::fromUtf8(text), font, width);
        const auto lines = [&](const QString &words) {
            const QRectF room(0, 0, width, 10'000);
            return QFontMetricsF(font).boundingRect(room, Qt::TextWordWrap, words).height();
        };
        EXPECT_EQ(lines(kept), lines(QString::fromUtf8(text))) << width;
    }
}

/// How much of a dark picture the text makes light.
qreal ink(const QFont &font, bool outlined)
{
    const QString text = QStringLiteral("Prossimo backup automatico entro un'ora.");
    QImage image(320, 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    if (outlined) {
        QPainterPath outline;
        outline.addText(5, 20, font, text);
        painter.fillPath(outline, Qt::white);
    } else {
        painter.setPen(Qt::white);
        painter.setFont(font);
        painter.drawText(QPointF(5, 20), text);
    }
    painter.end();
    qreal sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            sum += image.pixelColor(x, y).lightnessF();
        }
    }
    return sum;
}

TEST_F(TypesettingTest, textIsAsHeavyAsItsOutlines)
{
    for (const QFont::Weight weight : {QFont::Normal, QFont::DemiBold, QFont::Bold}) {
        font.setWeight(weight);
        EXPECT_NEAR(ink(font, false) / ink(font, true), 1, 0.05) << weight;
    }
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_MAX_CACHED_GLYPH_SIZE"));
}

} // namespace
