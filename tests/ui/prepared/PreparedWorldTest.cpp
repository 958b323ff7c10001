#include "ui/prepared/PreparedWorld.h"

#include "model/Background.h"
#include "tests/support/EventLoop.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/ScriptedTools.h"
#include "ui/prepared/PreparedStates.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QMetaMethod>
#include <QMetaProperty>

#include <gtest/gtest.h>

#include <array>

// Nothing that is done in a gallery may reach anything real.

namespace {

/// A home in which every access leaves a trace.
class PreparedWorldTest : public testing::Test
{
protected:
    PreparedWorldTest()
    {
        QDir().mkpath(QDir::homePath() + QLatin1String("/tmp"));
        qputenv("TMPDIR", QFile::encodeName(QDir::homePath() + QLatin1String("/tmp")));
        before = everything();
    }
    ~PreparedWorldTest() override { Background::waitForAll(); }

    static QStringList everything()
    {
        QStringList found;
        QDirIterator entries(QDir::homePath(),
                             QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            found.append(entries.next());
        }
        found.sort();
        return found;
    }

    static QList<QObject *> parts(AppModel &model)
    {
        return {&model,          model.run(),         model.repositories(), model.connections(),
                model.sources(), model.measurement(), model.key(),          model.kit(),
                model.access(),  model.localFolder(), model.settings()};
    }

    /// Calls a function with the default of each of its arguments, and with `number` where that is
    /// an enumeration.
    static void call(QObject *object, const QMetaMethod &method, int number)
    {
        std::array<QVariant, 4> values;
        std::array<QGenericArgument, 4> arguments;
        for (int i = 0; i < method.parameterCount(); ++i) {
            const auto at = static_cast<std::size_t>(i);
            QVariant &value = values.at(at);
            value = QVariant(method.parameterMetaType(i));
            if (value.metaType().flags().testFlag(QMetaType::IsEnumeration)) {
                QVariant chosen(number);
                ASSERT_TRUE(chosen.convert(value.metaType())) << method.name().constData();
                value = chosen;
            }
            arguments.at(at) = QGenericArgument(value.metaType().name(), value.constData());
        }
        EXPECT_TRUE(method.invoke(object, Qt::DirectConnection, arguments[0], arguments[1],
                                  arguments[2], arguments[3]))
            << method.name().constData();
    }

    static int callEverything(QObject *object)
    {
        int calls = 0;
        const QMetaObject *const type = object->metaObject();
        for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
            const QMetaMethod method = type->method(i);
            if (method.methodType() != QMetaMethod::Method &&
                method.methodType() != QMetaMethod::Slot) {
                continue;
            }
            for (int number = 0; number < 3; ++number) {
                call(object, method, number);
                ++calls;
            }
        }
        return calls;
    }

    static int setEverything(QObject *object)
    {
        int settings = 0;
        const QMetaObject *const type = object->metaObject();
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            if (!property.isWritable()) {
                continue;
            }
            for (const int number : {1, 0, 2}) {
                QVariant value(number);
                if (!value.convert(property.metaType())) {
                    value = QVariant(property.metaType());
                }
                EXPECT_TRUE(property.write(object, value)) << property.name();
                ++settings;
            }
        }
        return settings;
    }

    static void callTheRest(AppModel &model)
    {
        const auto ignore = [](const std::optional<QString> &) {};
        AppConfig config = model.config();
        config.sources = {QDir::homePath()};
        config.localEnabled = !config.localEnabled;
        config.autoBackup = !config.autoBackup;
        model.setConfig(config);
        model.refreshQuota();
        model.useKey(QStringLiteral("another key"), ignore);
        model.replaceKey(QStringLiteral("a third key"), ignore);
        model.install(QStringLiteral("a fourth key"), false, ignore);
        model.connections()->read();
        model.connections()->disconnect(DestinationID::Drive);
        model.repositories()->refreshAll();
        model.run()->look();
        model.run()->launch();
        model.access()->resume();
        model.settings()->syncSchedule();
        model.runMeasure();
    }

    TestApplication application;
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    ScriptedTools tools;
    QStringList before;
};

TEST_F(PreparedWorldTest, nothingThatIsDoneInItReachesAnythingReal)
{
    int done = 0;
    const QStringList names = PreparedStates::names() + PreparedStates::sourcesNames() +
                              PreparedStates::destinationsNames();
    for (const QString &name : names) {
        PreparedWorld world(PreparedStates::state(name));
        const std::unique_ptr<AppModel> model = world.model();
        for (QObject *part : parts(*model)) {
            done += setEverything(part) + callEverything(part);
        }
        callTheRest(*model);
        Background::waitForAll();
        QCoreApplication::processEvents();
    }
    EXPECT_GT(done, 50 * names.size());
    Background::waitForAll();
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(secrets.reads, 0);
    EXPECT_EQ(secrets.adds + secrets.updates, 0);
    EXPECT_TRUE(tools.calls.isEmpty());
}

TEST_F(PreparedWorldTest, theRealWorldReachesThem)
{
    // The traces would be seen.
    auto model = std::make_unique<AppModel>(World::real(std::make_shared<NotedDesktop>()));
    EXPECT_TRUE(eventuallyInLoop([&model] { return !model->isStarting(); }));
    callTheRest(*model);
    model.reset();
    Background::waitForAll();
    EXPECT_NE(everything(), before);
    EXPECT_GT(secrets.reads, 0);
    EXPECT_GT(secrets.adds, 0);
    EXPECT_FALSE(tools.calls.isEmpty());
}

TEST_F(PreparedWorldTest, aStateIsThereAtOnce)
{
    PreparedWorld world(PreparedStates::state(QStringLiteral("running")));
    const std::unique_ptr<AppModel> model = world.model();
    EXPECT_FALSE(model->isStarting());
    EXPECT_EQ(model->run()->status()->percent, 0.424);
    EXPECT_EQ(model->run()->history().size(), 4);
    EXPECT_EQ(model->repositories()->of(DestinationID::Local).snapshots.size(), 41);
    EXPECT_TRUE(model->key()->hasKey());
    EXPECT_TRUE(world.desktop().asked.isEmpty());
}

TEST_F(PreparedWorldTest, aDiskIsThereAwayOrNotYetLookedAt)
{
    const auto seen = [](const char *name) {
        PreparedWorld world(PreparedStates::state(QString::fromLatin1(name)));
        const std::unique_ptr<AppModel> model = world.model();
        return QList<bool>{model->localFolder()->isKnown(), model->localFolder()->hasVolume(),
                           model->localFolder()->isOnSystemDisk()};
    };
    EXPECT_EQ(seen("noDisk"), (QList<bool>{true, false, false}));
    EXPECT_EQ(seen("disk"), (QList<bool>{true, true, false}));
    EXPECT_EQ(seen("systemDisk"), (QList<bool>{true, true, true}));
    EXPECT_EQ(seen("diskAway"), (QList<bool>{true, false, false}));
    EXPECT_EQ(seen("diskUnknown"), (QList<bool>{false, false, false}));
}

TEST_F(PreparedWorldTest, aMeasurementUnderWayComesToItsEndWhenAsked)
{
    PreparedWorld world(PreparedStates::state(QStringLiteral("measuring")));
    const std::unique_ptr<AppModel> model = world.model();
    EXPECT_TRUE(model->measurement()->isMeasuring());
    EXPECT_EQ(model->measurement()->soFar(), 37'000'000'000);
    EXPECT_FALSE(model->measurement()->hasTotal());
    world.finish();
    EXPECT_FALSE(model->measurement()->isMeasuring());
    EXPECT_TRUE(model->measurement()->hasTotal());
}

TEST_F(PreparedWorldTest, eachKindOfServerIsShownInEachState)
{
    for (const QString &kind : {QStringLiteral("sftp"), QStringLiteral("webdav"),
                                QStringLiteral("s3"), QStringLiteral("smb")}) {
        const auto of = [&kind](const char *state) {
            PreparedWorld world(PreparedStates::state(kind + QLatin1String(state)));
            return world.model()->connections()->server();
        };
        EXPECT_EQ(of(""), Connection());
        EXPECT_TRUE(of("Connecting").connecting);
        EXPECT_FALSE(of("Connecting").connected);
        EXPECT_EQ(of("Error").error,
                  QStringLiteral("Accesso rifiutato: controlla utente e password."));
        EXPECT_FALSE(of("Error").connected);
        EXPECT_TRUE(of("Connected").connected);
        EXPECT_TRUE(of("Connected").hasQuota());
    }
}

TEST_F(PreparedWorldTest, aConnectionUnderWayComesToItsEndWhenAsked)
{
    PreparedWorld world(PreparedStates::state(QStringLiteral("driveConnecting")));
    const std::unique_ptr<AppModel> model = world.model();
    EXPECT_TRUE(model->connections()->drive().connecting);
    world.finish();
    EXPECT_FALSE(model->connections()->drive().connecting);
    EXPECT_TRUE(model->connections()->drive().connected);
    EXPECT_TRUE(model->connections()->drive().hasQuota());
    EXPECT_TRUE(model->config().driveEnabled);
}

TEST_F(PreparedWorldTest, whatWasRefusedIsOnShow)
{
    PreparedWorld wrong(PreparedStates::state(QStringLiteral("wrongExclude")));
    const std::unique_ptr<AppModel> typed = wrong.model();
    EXPECT_FALSE(typed->sources()->excludeError().isEmpty());
    EXPECT_EQ(typed->sources()->wrongExcludes(), QStringList{QStringLiteral("foto [2019")});
    PreparedWorld drop(PreparedStates::state(QStringLiteral("refusedDrop")));
    EXPECT_FALSE(drop.model()->sources()->refusal().isEmpty());
}

TEST_F(PreparedWorldTest, eachSentenceAboutTheRoomHasItsState)
{
    const auto sentence = [](const char *name) {
        PreparedWorld world(PreparedStates::state(QString::fromLatin1(name)));
        const std::unique_ptr<AppModel> model = world.model();
        return model->space().forecast(DestinationID::Local).value_or(Notice()).text;
    };
    EXPECT_EQ(sentence("disk"), QString());
    EXPECT_TRUE(sentence("fits").startsWith(QStringLiteral("Spazio sufficiente")));
    EXPECT_TRUE(sentence("tooSmall").startsWith(QStringLiteral("Spazio insufficiente")));
    EXPECT_TRUE(sentence("growthUnknown").startsWith(QStringLiteral("La previsione")));
    EXPECT_TRUE(sentence("growthNegligible").startsWith(QStringLiteral("Crescita trascurabile")));
    EXPECT_TRUE(sentence("growthAlone").endsWith(QStringLiteral("al giorno.")));
    EXPECT_TRUE(sentence("growthDays").endsWith(QStringLiteral("giorni.")));
    EXPECT_TRUE(sentence("growthMonths").endsWith(QStringLiteral("mesi.")));
    EXPECT_TRUE(sentence("growthYears").endsWith(QStringLiteral("anni.")));
}

TEST_F(PreparedWorldTest, aKeyringThatDoesNotAnswerNeverDoes)
{
    PreparedWorld world(PreparedStates::state(QStringLiteral("starting")));
    const std::unique_ptr<AppModel> model = world.model();
    model->startBackup();
    QCoreApplication::processEvents();
    EXPECT_TRUE(model->isStarting());
    EXPECT_FALSE(model->run()->isBusy());
}

} // namespace
