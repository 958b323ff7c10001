#include "model/SourceSelection.h"

#include "tests/support/ModelFixture.h"

#include <QDir>
#include <QFile>

namespace {

class Selection : public ModelFixture
{
protected:
    Selection() { config.sources = {QStringLiteral("/a")}; }

    void startWith(const QStringList &sources)
    {
        config.sources = sources;
        start();
    }
    void drop(const QStringList &paths)
    {
        QList<QUrl> things;
        for (const QString &path : paths) {
            things.append(QUrl::fromLocalFile(path));
        }
        model->addDroppedSources(things);
        settle();
    }
    /// One that isn't there.
    static QString path(const char *name) { return QDir::homePath() + u'/' + QLatin1String(name); }
};

TEST_F(Selection, foldersAreAddedInTheOrderOfThePanel)
{
    start();
    desktop->folders = {QStringLiteral("/z"), QStringLiteral("/a"), QStringLiteral("/b"),
                        QStringLiteral("/z"), QStringLiteral("/a/")};
    const SignalCount changes(model.get(), &AppModel::configChanged);
    model->addSources();
    EXPECT_EQ(model->config().sources, (QStringList{QStringLiteral("/a"), QStringLiteral("/z"),
                                                    QStringLiteral("/b"), QStringLiteral("/a/")}));
    EXPECT_EQ(changes.count(), 3);
    ASSERT_EQ(desktop->folderPanels.size(), 1);
    EXPECT_EQ(desktop->folderPanels.first().prompt, QStringLiteral("Aggiungi"));
}

TEST_F(Selection, aPanelThatIsCancelledChangesNothing)
{
    start();
    const AppConfig before = model->config();
    model->addSources();
    EXPECT_EQ(model->config(), before);
}

TEST_F(Selection, aPanelMayOutliveTheModel)
{
    start();
    desktop->answersLater = true;
    desktop->folders = {QStringLiteral("/b")};
    model->addSources();
    model->chooseLocalFolder();
    model.reset();
    desktop->answer();
}

TEST_F(Selection, anotherSelectionForgetsTheSizes)
{
    startWith({folder("one")});
    model->runMeasure();
    settle();
    ASSERT_TRUE(model->measurement()->hasTotal());
    const SignalCount changes(model->measurement(), &Measurement::sizesChanged);
    drop({folder("two")});
    EXPECT_FALSE(model->measurement()->hasTotal());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(Selection, droppedFoldersAreAddedAndAnythingElseIsRefused)
{
    start();
    const QString file = path("a file");
    writeFile(file, "x");
    const QString link = path("link");
    ASSERT_TRUE(QFile::link(folder("one"), link));
    drop({folder("one"), file, link, QStringLiteral("/a")});
    EXPECT_EQ(model->config().sources, (QStringList{QStringLiteral("/a"), folder("one"), link}));
    EXPECT_EQ(model->sources()->refusal(), QStringLiteral("Si possono aggiungere solo cartelle."));
    drop({file});
    EXPECT_EQ(model->sources()->refusal(), QStringLiteral("\"a file\" non è una cartella."));
    drop({folder("two")});
    EXPECT_EQ(model->sources()->refusal(), QString());
    EXPECT_EQ(model->config().sources.size(), 4);
}

TEST_F(Selection, aSlashBehindADroppedFolderIsNoPartOfItsName)
{
    start();
    model->addDroppedSources(
        {QUrl::fromLocalFile(folder("one") + u'/'), QUrl::fromLocalFile(QStringLiteral("/"))});
    settle();
    EXPECT_EQ(model->config().sources,
              (QStringList{QStringLiteral("/a"), folder("one"), QStringLiteral("/")}));
}

TEST_F(Selection, whatIsNoFileIsRefused)
{
    start();
    model->addDroppedSources({QUrl(QStringLiteral("https://example.org/pictures"))});
    settle();
    EXPECT_EQ(model->sources()->refusal(), QStringLiteral("\"pictures\" non è una cartella."));
    model->addDroppedSources({QUrl(QStringLiteral("smb://nas/"))});
    settle();
    EXPECT_EQ(model->sources()->refusal(), QStringLiteral("\"smb://nas/\" non è una cartella."));
    EXPECT_EQ(model->config().sources, QStringList{QStringLiteral("/a")});
    model->sources()->forgetRefusals();
    EXPECT_EQ(model->sources()->refusal(), QString());
}

TEST_F(Selection, aSourceIsRemovedByItsExactPath)
{
    startWith({QStringLiteral("/a"), QStringLiteral("/a/"), QStringLiteral("/b")});
    model->removeSource(QStringLiteral("/a"));
    EXPECT_EQ(model->config().sources, (QStringList{QStringLiteral("/a/"), QStringLiteral("/b")}));
    model->removeSource(QStringLiteral("/c"));
    EXPECT_EQ(model->config().sources.size(), 2);
}

TEST_F(Selection, anExclusionLosesItsBlanksAndIsAddedOnce)
{
    config.excludes = {QStringLiteral("a")};
    start();
    const SignalCount taken(model->sources(), &SourceSelection::excludeTaken);
    model->addExclude(QStringLiteral(" \t*.iso \n"));
    EXPECT_EQ(model->config().excludes,
              (QStringList{QStringLiteral("a"), QStringLiteral("*.iso")}));
    EXPECT_EQ(taken.count(), 1);
    const SignalCount changes(model.get(), &AppModel::configChanged);
    model->addExclude(QStringLiteral("a "));
    EXPECT_EQ(taken.count(), 2);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(Selection, nothingTypedIsNothing)
{
    start();
    const AppConfig before = model->config();
    const SignalCount taken(model->sources(), &SourceSelection::excludeTaken);
    model->addExclude(QStringLiteral(" \t\n"));
    EXPECT_EQ(taken.count(), 0);
    EXPECT_EQ(model->config(), before);
    EXPECT_EQ(model->sources()->excludeError(), QString());
}

TEST_F(Selection, anExclusionThatResticRefusesIsNotAdded)
{
    start();
    const AppConfig before = model->config();
    const SignalCount taken(model->sources(), &SourceSelection::excludeTaken);
    model->addExclude(QStringLiteral("photos [2019"));
    EXPECT_EQ(model->sources()->excludeError(),
              QStringLiteral("Questa esclusione non è valida: controlla parentesi quadre e barre "
                             "rovesciate."));
    EXPECT_EQ(model->config(), before);
    EXPECT_EQ(taken.count(), 0);
    model->addExclude(QStringLiteral("photos [2019]"));
    EXPECT_EQ(model->sources()->excludeError(), QString());
    EXPECT_EQ(taken.count(), 1);
    model->addExclude(QStringLiteral("x\\"));
    EXPECT_NE(model->sources()->excludeError(), QString());
    model->sources()->forgetRefusals();
    EXPECT_EQ(model->sources()->excludeError(), QString());
}

TEST_F(Selection, wrongExclusionsOfTheSettingsAreKnownFromTheStart)
{
    config.excludes = {QStringLiteral("["), QStringLiteral("a"), QStringLiteral("b\\")};
    start();
    EXPECT_EQ(model->sources()->wrongExcludes(),
              (QStringList{QStringLiteral("["), QStringLiteral("b\\")}));
    const SignalCount changes(model->sources(), &SourceSelection::wrongExcludesChanged);
    model->removeExclude(QStringLiteral("a"));
    EXPECT_EQ(changes.count(), 0);
    model->removeExclude(QStringLiteral("["));
    EXPECT_EQ(model->sources()->wrongExcludes(), QStringList{QStringLiteral("b\\")});
    EXPECT_EQ(changes.count(), 1);
    model->restoreDefaultExcludes();
    EXPECT_EQ(model->config().excludes, AppConfig().excludes);
    EXPECT_TRUE(model->sources()->wrongExcludes().isEmpty());
}

} // namespace
