#include "model/UserDefaults.h"
#include "tests/support/Files.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

namespace {

class Measurement : public ModelFixture
{
protected:
    [[nodiscard]] qint64 kept(const QString &source) const
    {
        return UserDefaults::value(UserDefaults::sourceSizes)
            .toMap()
            .value(source, -1)
            .toLongLong();
    }
};

TEST_F(Measurement, storesTheSizeOfEachSource)
{
    config.sources = {folder("one"), folder("two"), QStringLiteral("/nowhere")};
    writeFile(folder("one") + QLatin1String("/a"), QByteArray(10, 'x'));
    writeFile(folder("two") + QLatin1String("/b"), QByteArray(32, 'x'));
    start();
    settle();
    const SignalCount measuring(model->measurement(), &::Measurement::measuringChanged);
    model->measureSources();
    settle();
    EXPECT_FALSE(model->measurement()->isMeasuring());
    EXPECT_EQ(measuring.count(), 2);
    EXPECT_EQ(model->measurement()->sizes(),
              (QMap<QString, qint64>{
                  {folder("one"), 10}, {folder("two"), 32}, {QStringLiteral("/nowhere"), 0}}));
    EXPECT_EQ(kept(folder("two")), 32);
    restart();
    settle();
    EXPECT_EQ(model->measurement()->sizes().value(folder("one")), 10);
}

TEST_F(Measurement, theTotalIsThereOnceEachSourceIsMeasured)
{
    config.sources = {folder("one"), folder("two")};
    writeFile(folder("one") + QLatin1String("/a"), QByteArray(10, 'x'));
    UserDefaults::set(UserDefaults::sourceSizes, QVariantMap{{folder("one"), 10}});
    start();
    settle();
    EXPECT_EQ(model->measurement()->sizes().size(), 1);
    EXPECT_EQ(model->measurement()->total(), std::nullopt);
    model->runMeasure();
    settle();
    EXPECT_EQ(model->measurement()->total(), 10);
    model->removeSource(folder("one"));
    EXPECT_EQ(model->measurement()->total(), std::nullopt);
    model->removeSource(folder("two"));
    model->runMeasure();
    settle();
    EXPECT_EQ(model->measurement()->total(), std::nullopt); // of nothing
}

TEST_F(Measurement, emptySourcesWeighNothing)
{
    config.sources = {folder("one"), folder("two")};
    start();
    model->runMeasure();
    settle();
    EXPECT_EQ(model->measurement()->total(), 0);
}

TEST_F(Measurement, sizesThatAreNoNumbersAreNone)
{
    config.sources = {folder("one")};
    UserDefaults::set(UserDefaults::sourceSizes,
                      QVariantMap{{folder("one"), 10}, {QStringLiteral("/a"), true}});
    start();
    settle();
    EXPECT_TRUE(model->measurement()->sizes().isEmpty());
}

TEST_F(Measurement, withoutSourcesItIsDoneAtOnce)
{
    config.sources.clear();
    start();
    model->runMeasure();
    settle();
    EXPECT_FALSE(model->measurement()->isMeasuring());
    EXPECT_TRUE(model->measurement()->sizes().isEmpty());
}

TEST_F(Measurement, leavesOutTheRepositoryOnADiskInUse)
{
    config.localFolder = config.sources.first();
    QDir().mkpath(config.localFolder + QLatin1String("/Vellomar.backup"));
    writeFile(config.localFolder + QLatin1String("/Vellomar.backup/data"), QByteArray(100, 'x'));
    writeFile(config.localFolder + QLatin1String("/file"), QByteArray(5, 'x'));
    start();
    model->runMeasure();
    settle();
    EXPECT_EQ(model->measurement()->sizes().value(config.localFolder), 5);
    change([](AppConfig &settings) { settings.localEnabled = false; });
    model->runMeasure();
    settle();
    EXPECT_EQ(model->measurement()->sizes().value(config.localFolder), 105);
}

TEST_F(Measurement, waitsForAccess)
{
    desktop->fullDiskAccess = false;
    start();
    settle();
    model->measureSources();
    settle();
    EXPECT_FALSE(model->measurement()->isMeasuring());
    EXPECT_EQ(model->access()->request(), AppModel::GatedAction::Measure);
    model->continueWithoutAccess();
    EXPECT_TRUE(model->measurement()->isMeasuring());
    EXPECT_EQ(model->access()->request(), AppModel::GatedAction::None);
    EXPECT_TRUE(desktop->started.isEmpty());
}

TEST_F(Measurement, aSecondOneMeanwhileDoesNothing)
{
    start();
    settle();
    model->runMeasure();
    const int probes = desktop->probes;
    const SignalCount measuring(model->measurement(), &::Measurement::measuringChanged);
    model->measureSources();
    model->runMeasure();
    EXPECT_EQ(desktop->probes, probes);
    settle();
    EXPECT_EQ(measuring.count(), 1);
}

TEST_F(Measurement, oneOfAnEarlierSelectionEndsAtOnceAndItsFigureIsNotTaken)
{
    start();
    settle();
    model->runMeasure();
    change([](AppConfig &settings) { settings.excludes.append(QStringLiteral("*.o")); });
    EXPECT_FALSE(model->measurement()->isMeasuring());
    settle();
    EXPECT_FALSE(model->measurement()->isMeasuring());
    EXPECT_TRUE(model->measurement()->sizes().isEmpty());
}

TEST_F(Measurement, oneOfTheNewSelectionDoesNotWaitForTheOldOne)
{
    writeFile(folder("source") + QLatin1String("/a"), QByteArray(10, 'x'));
    writeFile(folder("source") + QLatin1String("/a.o"), QByteArray(100, 'x'));
    start();
    settle();
    model->runMeasure();
    change([](AppConfig &settings) { settings.excludes.append(QStringLiteral("*.o")); });
    const SignalCount measuring(model->measurement(), &::Measurement::measuringChanged);
    model->runMeasure();
    EXPECT_TRUE(model->measurement()->isMeasuring());
    settle();
    EXPECT_FALSE(model->measurement()->isMeasuring());
    EXPECT_EQ(measuring.count(), 2);
    EXPECT_EQ(model->measurement()->sizes().value(folder("source")), 10);
}

TEST_F(Measurement, otherSettingsDoNotEndIt)
{
    start();
    settle();
    model->runMeasure();
    change([](AppConfig &settings) { settings.intervalHours = 3; });
    EXPECT_TRUE(model->measurement()->isMeasuring());
    settle();
    EXPECT_EQ(model->measurement()->sizes().size(), 1);
}

TEST_F(Measurement, reportsHowFarItIs)
{
    const QString many = folder("many");
    for (int i = 0; i < 20000; ++i) {
        ASSERT_TRUE(writeFile(many + u'/' + QString::number(i)));
    }
    writeFile(folder("first") + QLatin1String("/a"), QByteArray(7, 'x'));
    config.sources = {folder("first"), many};
    start();
    settle();
    model->runMeasure();
    settle();
    EXPECT_EQ(model->measurement()->soFar(), 7);
    EXPECT_EQ(model->measurement()->sizes().value(many), 0);
    // The next one begins at nothing.
    model->runMeasure();
    EXPECT_EQ(model->measurement()->soFar(), 0);
}

TEST_F(Measurement, aModelMayGoWhileItIsMeasured)
{
    start();
    settle();
    model->runMeasure();
    model.reset();
    settle();
    EXPECT_EQ(kept(config.sources.first()), -1);
}

} // namespace
