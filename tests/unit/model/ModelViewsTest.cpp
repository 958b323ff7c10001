#include "model/PreviewFolder.h"
#include "state/Paths.h"
#include "tests/support/ModelFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QMetaProperty>

namespace {

/// The model as QML sees it: by the names of its properties.
class ModelViews : public ModelFixture
{
protected:
    [[nodiscard]] QVariant property(const char *name) const { return model->property(name); }

    /// A property of a value.
    static QVariant field(const QVariant &value, const char *name)
    {
        const QMetaObject *const type = value.metaType().metaObject();
        if (type == nullptr) {
            return {};
        }
        const int index = type->indexOfProperty(name);
        EXPECT_GE(index, 0) << name;
        return type->property(index).readOnGadget(value.constData());
    }

    /// The model and its parts.
    [[nodiscard]] QList<QObject *> objects() const
    {
        return {model.get(),          model->run(),         model->repositories(),
                model->connections(), model->measurement(), model->key(),
                model->kit(),         model->access(),      model->localFolder()};
    }

    [[nodiscard]] QList<DestinationState> destinations() const
    {
        return model->repositories()->property("destinations").value<QList<DestinationState>>();
    }
};

TEST_F(ModelViews, everyPropertyIsFinalAndReportsItsChanges)
{
    start();
    int count = 0;
    for (QObject *object : objects()) {
        const QMetaObject *const type = object->metaObject();
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i, ++count) {
            const QMetaProperty found = type->property(i);
            EXPECT_TRUE(found.hasNotifySignal() || found.isConstant()) << found.name();
            EXPECT_TRUE(found.isFinal()) << found.name();
            EXPECT_TRUE(found.read(object).metaType().isValid()) << found.name();
        }
    }
    EXPECT_GT(count, 30);
}

TEST_F(ModelViews, theModelItselfHasNoMoreThanItsParts)
{
    const QMetaObject &type = AppModel::staticMetaObject;
    EXPECT_LE(type.propertyCount() - type.propertyOffset(), 12);
}

TEST_F(ModelViews, anAbsentTextIsEmpty)
{
    start();
    EXPECT_EQ(model->run()->property("staleText"), QVariant(QString()));
    EXPECT_EQ(model->run()->property("supportError"), QVariant(QString()));
    EXPECT_EQ(model->key()->property("error"), QVariant(QString()));
    EXPECT_EQ(field(model->kit()->property("notice"), "text"), QVariant(QString()));
    for (const char *place : {"drive", "server"}) {
        const QVariant connection = model->connections()->property(place);
        EXPECT_EQ(field(connection, "error"), QVariant(QString()));
        EXPECT_EQ(field(connection, "versioning"), QVariant(QString()));
    }
}

TEST_F(ModelViews, aPropertySaysWhetherAValueIsThere)
{
    start();
    for (const char *name : {"running", "hasLastSuccess", "hasLastCheck"}) {
        EXPECT_EQ(model->run()->property(name), false) << name;
    }
    EXPECT_EQ(field(model->connections()->property("drive"), "hasQuota"), false);
    EXPECT_EQ(model->run()->property("status").value<RunStatus>(), RunStatus());
    EXPECT_EQ(model->run()->property("lastSuccess").value<RunRecord>(), RunRecord());
}

TEST_F(ModelViews, everyPropertyHasATypeOfItsOwn)
{
    start();
    for (const QObject *object : objects()) {
        const QMetaObject *const type = object->metaObject();
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
            EXPECT_NE(type->property(i).metaType(), QMetaType::fromType<QVariant>())
                << type->property(i).name();
        }
    }
}

TEST_F(ModelViews, theKeyIsInNoProperty)
{
    start();
    ASSERT_TRUE(model->key()->hasKey());
    for (const QObject *object : objects()) {
        const QMetaObject *const type = object->metaObject();
        for (int i = 0; i < type->propertyCount(); ++i) {
            EXPECT_FALSE(type->property(i).read(object).toString().contains(model->key()->value()))
                << type->property(i).name();
        }
    }
}

TEST_F(ModelViews, theSettingsAreReadAndWrittenByName)
{
    start();
    EXPECT_EQ(field(property("config"), "localFolder"), config.localFolder);
    EXPECT_EQ(field(property("config"), "serverKind").value<ServerKind>(), ServerKind::Sftp);
    EXPECT_EQ(field(property("config"), "hasDestination"), true);
    EXPECT_EQ(field(property("config"), "retentionLabel"), config.retentionLabel());
    // As QML does it: copies the value, changes a field and writes the whole back.
    AppConfig copy = property("config").value<AppConfig>();
    const QMetaObject &type = AppConfig::staticMetaObject;
    for (const auto &[name, value] :
         {std::pair("intervalHours", QVariant(qint64{12})),
          std::pair("localEnabled", QVariant(false)),
          std::pair("serverKind", QVariant(static_cast<int>(ServerKind::S3))),
          std::pair("excludes", QVariant(QStringList{QStringLiteral("*.o")}))}) {
        EXPECT_TRUE(type.property(type.indexOfProperty(name)).writeOnGadget(&copy, value)) << name;
    }
    EXPECT_TRUE(model->setProperty("config", QVariant::fromValue(copy)));
    EXPECT_EQ(model->config().intervalHours, 12);
    EXPECT_FALSE(model->config().localEnabled);
    EXPECT_EQ(model->config().serverKind, ServerKind::S3);
    EXPECT_EQ(model->config().excludes, QStringList{QStringLiteral("*.o")});
    EXPECT_EQ(field(property("config"), "hasDestination"), false);
    EXPECT_FALSE(type.property(type.indexOfProperty("serverKind"))
                     .writeOnGadget(&copy, QStringLiteral("carrier pigeon")));
    EXPECT_EQ(copy.serverKind, ServerKind::S3);
}

TEST_F(ModelViews, everySettingHasAProperty)
{
    const QStringList names = AppConfig().toJSON().keys();
    for (const QString &name : names) {
        EXPECT_GE(AppConfig::staticMetaObject.indexOfProperty(name.toUtf8().constData()), 0)
            << name.toStdString();
    }
}

TEST_F(ModelViews, aRunIsReadByName)
{
    const EngineLookalike engine;
    leaveStatus(engine.pid(), 0.5);
    start();
    settle();
    const QVariant status = model->run()->property("status");
    EXPECT_EQ(field(status, "percent"), 0.5);
    EXPECT_EQ(field(status, "phase"), QStringLiteral("Copia dei file"));
    EXPECT_EQ(field(status, "destination").value<DestinationID>(), DestinationID::Local);
    EXPECT_EQ(field(status, "destinationTitle"), title(DestinationID::Local));
    EXPECT_EQ(model->run()->property("running"), true);
    EXPECT_EQ(model->run()->property("busy"), true);
}

TEST_F(ModelViews, recordsAreReadByName)
{
    RunRecord check = record(1, Outcome::Failed, DestinationID::Server);
    check.kind = QStringLiteral("check");
    const RunRecord good = record(2, Outcome::Warning);
    writeHistory({check, good});
    start();
    EXPECT_EQ(field(model->run()->property("lastSuccess"), "date"), good.date);
    EXPECT_EQ(field(model->run()->property("lastSuccess"), "outcome").value<Outcome>(),
              Outcome::Warning);
    EXPECT_EQ(model->run()->property("hasLastSuccess"), true);
    EXPECT_EQ(field(model->run()->property("lastSuccess"), "verification"), false);
    EXPECT_EQ(model->run()->property("hasLastCheck"), true);
    EXPECT_EQ(field(model->run()->property("lastCheck"), "destination").value<DestinationID>(),
              DestinationID::Server);
    EXPECT_EQ(field(model->run()->property("lastCheck"), "verification"), true);
    EXPECT_EQ(field(model->run()->property("lastCheck"), "message"),
              QStringLiteral("un messaggio"));
    const auto history = model->run()->property("history").value<QList<RunRecord>>();
    ASSERT_EQ(history.size(), 2);
    EXPECT_EQ(history.at(0).id, check.id);
}

TEST_F(ModelViews, destinationsComeWithTheirState)
{
    tools.answer(
        QStringLiteral("snapshots"),
        ScriptedTools::ended(
            0, u'[' + ScriptedTools::snapshot(QStringLiteral("aa"), Paths::hostname()) + u']'));
    start();
    ASSERT_EQ(destinations().size(), 3);
    EXPECT_TRUE(destinations().at(0).loading);
    settle();
    const DestinationState local = destinations().at(0);
    EXPECT_EQ(local.title(), title(DestinationID::Local));
    EXPECT_TRUE(local.enabled);
    EXPECT_TRUE(local.known);
    EXPECT_EQ(local.stateText, QStringLiteral("In attesa del primo backup"));
    EXPECT_EQ(local.stateTone, Tone::Attention);
    EXPECT_EQ(local.snapshotCount(), 1);
    EXPECT_EQ(local.snapshotDates, QList{QDateTime(QDate(2026, 3, 1), QTime(8, 0), Qt::UTC)});
    EXPECT_EQ(local.size, 1000);
    EXPECT_EQ(local.error, QString());
    EXPECT_FALSE(local.loading);
    EXPECT_FALSE(destinations().at(2).known);
    EXPECT_FALSE(destinations().at(2).enabled);
    EXPECT_EQ(destinations().at(2).stateTone, Tone::Off);
}

TEST_F(ModelViews, pagesAndSheetsAreSetByName)
{
    start();
    const SignalCount sections(model.get(), &AppModel::sectionChanged);
    EXPECT_TRUE(model->setProperty("section", 5));
    EXPECT_TRUE(model->setProperty("section", 5));
    EXPECT_EQ(model->section(), AppModel::Section::Settings);
    EXPECT_EQ(sections.count(), 1);
    model->startBackup();
    EXPECT_TRUE(model->kit()->setProperty("showing", true));
    EXPECT_TRUE(model->access()->setProperty("request", 2));
    EXPECT_EQ(model->access()->request(), AppModel::GatedAction::Measure);
    EXPECT_TRUE(model->setProperty("showingForeignWizard", true));
    EXPECT_TRUE(model->isShowingForeignWizard());
}

TEST_F(ModelViews, quittingClosesSheetsAndClearsPreviews)
{
    qputenv("TMPDIR", QFile::encodeName(folder("tmp")));
    const EngineLookalike engine;
    start();
    leaveStatus(engine.pid());
    tick();
    QDir().mkpath(PreviewFolder::path());
    model->kit()->setShowing(true);
    model->setShowingForeignWizard(true);
    model->access()->setRequest(AppModel::GatedAction::Backup);
    model->prepareToQuit();
    EXPECT_FALSE(model->kit()->isShowing());
    EXPECT_FALSE(model->isShowingForeignWizard());
    EXPECT_EQ(model->access()->request(), AppModel::GatedAction::None);
    EXPECT_FALSE(QFileInfo::exists(PreviewFolder::path()));
    // A backup goes on, without a question about it.
    EXPECT_TRUE(model->run()->status()->isAlive());
}

} // namespace
