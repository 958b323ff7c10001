#include "ui/sources/SourcesView.h"
#include "state/Paths.h"
#include "state/Texts.h"
#include "tests/support/EventLoop.h"
#include "ui/prepared/PreparedWorld.h"

#include <QPersistentModelIndex>

#include <gtest/gtest.h>

#include <utility>

namespace {

class SourcesViewTest : public testing::Test
{
protected:
    SourcesViewTest()
    {
        Texts::load();
        choose({Paths::home(), QStringLiteral("/srv/foto")});
        view.setModel(model.get());
        QObject::connect(&view, &SourcesView::changed, &view, [this] { ++changes; });
    }

    void choose(const QStringList &sources)
    {
        AppConfig config = model->config();
        config.sources = sources;
        model->setConfig(config);
    }

    void exclude(const QStringList &excludes)
    {
        AppConfig config = model->config();
        config.excludes = excludes;
        model->setConfig(config);
    }

    [[nodiscard]] QStringList names() { return column(view.folders(), "name"); }
    [[nodiscard]] QStringList patterns() { return column(view.exclusions(), "pattern"); }

    static QStringList column(const KeyedListModel *list, const QByteArray &role)
    {
        QStringList values;
        for (int row = 0; row < list->count(); ++row) {
            values.append(list->index(row).data(list->roleNames().key(role)).toString());
        }
        return values;
    }

    TestApplication application;
    PreparedWorld world;
    std::unique_ptr<AppModel> model = world.model();
    SourcesView view;
    int changes = 0;
};

TEST_F(SourcesViewTest, withoutAModelThereIsNothing)
{
    SourcesView alone;
    EXPECT_EQ(alone.folders()->count(), 0);
    EXPECT_EQ(alone.exclusions()->count(), 0);
    EXPECT_EQ(alone.measureLabel().toStdString(), "Misura le cartelle");
    EXPECT_EQ(alone.total().toStdString(), "");
    EXPECT_EQ(alone.faults().toStdString(), "");
}

TEST_F(SourcesViewTest, theRowsFollowTheSettings)
{
    EXPECT_EQ(names(), QStringList({QStringLiteral("Cartella Inizio"), QStringLiteral("foto")}));
    EXPECT_EQ(column(view.folders(), "symbol"),
              QStringList({QStringLiteral("house"), QStringLiteral("folder")}));
    choose({QStringLiteral("/srv/video")});
    EXPECT_EQ(names(), QStringList(QStringLiteral("video")));
    EXPECT_EQ(patterns(), AppConfig().excludes);
    exclude({QStringLiteral("*.tmp")});
    EXPECT_EQ(patterns(), QStringList(QStringLiteral("*.tmp")));
}

TEST_F(SourcesViewTest, rowsStayThemselvesWhileOthersComeAndGo)
{
    const QPersistentModelIndex folder = view.folders()->index(1);
    const QPersistentModelIndex pattern = view.exclusions()->index(8);
    choose({QStringLiteral("/srv/nuova"), QStringLiteral("/srv/foto"), Paths::home()});
    exclude({QStringLiteral("node_modules")});
    EXPECT_EQ(folder.row(), 1);
    EXPECT_EQ(pattern.row(), 0);
}

TEST_F(SourcesViewTest, anythingElseInTheSettingsReportsNothing)
{
    AppConfig config = model->config();
    config.keepDays = 30;
    config.excludeCaches = !config.excludeCaches;
    model->setConfig(config);
    EXPECT_EQ(changes, 0);
}

TEST_F(SourcesViewTest, aMeasurementReachesIt)
{
    model->runMeasure();
    EXPECT_EQ(view.measureLabel().toStdString(), "Misura le cartelle");
    EXPECT_EQ(column(view.folders(), "size").filter(QString()).size(), 2);
    EXPECT_EQ(view.total().toStdString(), "Da salvare Zero kB, esclusioni già tolte");
    choose({QStringLiteral("/srv/video")});
    EXPECT_EQ(view.total().toStdString(), "");
    EXPECT_EQ(column(view.folders(), "size"), QStringList(QString()));
}

TEST_F(SourcesViewTest, aModelThatGoesAwayLeavesNothingBehind)
{
    int models = 0;
    QObject::connect(&view, &SourcesView::modelChanged, &view, [&models] { ++models; });
    model.reset();
    EXPECT_EQ(models, 1);
    EXPECT_EQ(view.model(), nullptr);
    EXPECT_EQ(view.folders()->count(), 0);
    EXPECT_EQ(view.exclusions()->count(), 0);
}

TEST_F(SourcesViewTest, aModelThatIsTakenAwayIsHeardNoMore)
{
    PreparedWorld elsewhere;
    const std::unique_ptr<AppModel> other = elsewhere.model();
    view.setModel(other.get());
    choose({QStringLiteral("/srv/video")});
    EXPECT_EQ(names().size(), 2);
    EXPECT_EQ(names().first().toStdString(), "Cartella Inizio");
    model.reset();
    EXPECT_EQ(view.model(), other.get());
    EXPECT_EQ(names().size(), 2);
}

} // namespace
