#include "ui/sources/SourcesTexts.h"
#include "state/Texts.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const QString home = QStringLiteral("/home/anna");

std::string name(const QString &path)
{
    return SourcesTexts::name(path, home).toStdString();
}

TEST(SourcesTexts, theHomeFolderHasANameAndASymbolOfItsOwn)
{
    EXPECT_EQ(name(home), "Cartella Inizio");
    EXPECT_EQ(SourcesTexts::symbol(home, home).toStdString(), "house");
}

TEST(SourcesTexts, onlyThePathOfTheHomeFolderItselfIsIt)
{
    for (const char *path : {"/home/anna/Documenti", "/home/anna2", "/home", "/home/anna/"}) {
        const QString other = QString::fromUtf8(path);
        EXPECT_NE(name(other), "Cartella Inizio") << path;
        EXPECT_EQ(SourcesTexts::symbol(other, home).toStdString(), "folder") << path;
    }
}

TEST(SourcesTexts, aFolderIsCalledByItsLastComponent)
{
    EXPECT_EQ(name(QStringLiteral("/home/anna/Foto")), "Foto");
    EXPECT_EQ(name(QStringLiteral("/srv/dati/")), "dati");
    EXPECT_EQ(name(QStringLiteral("/srv//dati///")), "dati");
    EXPECT_EQ(name(QStringLiteral("Documenti")), "Documenti");
    EXPECT_EQ(name(QStringLiteral("~/Musica")), "Musica");
    EXPECT_EQ(name(QStringLiteral("/home/anna/.config")), ".config");
}

TEST(SourcesTexts, theWholeDiskIsASlash)
{
    EXPECT_EQ(name(QStringLiteral("/")), "/");
    EXPECT_EQ(name(QStringLiteral("//")), "/");
}

TEST(SourcesTexts, oddNamesStayAsTheyAre)
{
    EXPECT_EQ(name(QStringLiteral("/a/uno\ndue")), "uno\ndue");
    EXPECT_EQ(name(QStringLiteral("/a/  blu  ")), "  blu  ");
    EXPECT_EQ(name(QStringLiteral("/a/\u05e9\u05dc\u05d5\u05dd")), "\u05e9\u05dc\u05d5\u05dd");
    EXPECT_EQ(name(QStringLiteral("/a/\U0001f4f7")), "\U0001f4f7");
    EXPECT_EQ(name(QStringLiteral("/a/<b>%1<b>")), "<b>%1<b>");
    const QString longOne(10000, u'x');
    EXPECT_EQ(name(u'/' + longOne), longOne.toStdString());
}

TEST(SourcesTexts, aNameThatCantBeSeenIsReplacedByAWord)
{
    for (const char *path : {"", "/a/   ", "/a/\n", "  ", "/a/\u00a0"}) {
        EXPECT_EQ(name(QString::fromUtf8(path)), "Cartella senza nome") << path;
    }
}

TEST(SourcesTexts, aSizeIsGivenOnceItIsKnown)
{
    EXPECT_EQ(SourcesTexts::size(std::nullopt).toStdString(), "");
    EXPECT_EQ(SourcesTexts::size(0).toStdString(), "Zero kB");
    EXPECT_EQ(SourcesTexts::size(214000000000).toStdString(), "214 GB");
}

TEST(SourcesTexts, theButtonForMeasuringCountsWhileItIsUnderWay)
{
    EXPECT_EQ(SourcesTexts::measure(false, 0).toStdString(), "Misura le cartelle");
    EXPECT_EQ(SourcesTexts::measure(false, 5000000).toStdString(), "Misura le cartelle");
    EXPECT_EQ(SourcesTexts::measure(true, 0).toStdString(), "Misura in corso: Zero kB");
    EXPECT_EQ(SourcesTexts::measure(true, 1230000000).toStdString(), "Misura in corso: 1,23 GB");
}

TEST(SourcesTexts, theTotalIsGivenOnceItIsKnown)
{
    EXPECT_EQ(SourcesTexts::total(std::nullopt).toStdString(), "");
    EXPECT_EQ(SourcesTexts::total(0).toStdString(), "Da salvare Zero kB, esclusioni già tolte");
    EXPECT_EQ(SourcesTexts::total(73100000000).toStdString(),
              "Da salvare 73,1 GB, esclusioni già tolte");
    EXPECT_NE(SourcesTexts::total(std::numeric_limits<qint64>::max()).toStdString(), "");
}

TEST(SourcesTexts, wrongExclusionsAreCounted)
{
    const TestApplication application;
    Texts::load();
    EXPECT_EQ(SourcesTexts::faults(0).toStdString(), "");
    EXPECT_EQ(SourcesTexts::faults(1).toStdString(),
              "Un'esclusione non è valida: finché c'è, nessun backup riesce.");
    EXPECT_EQ(SourcesTexts::faults(12).toStdString(),
              "12 esclusioni non sono valide: finché ci sono, nessun backup riesce.");
    EXPECT_EQ(SourcesTexts::fault().toStdString(),
              "Esclusione non valida: finché c'è, nessun backup riesce.");
}

} // namespace
