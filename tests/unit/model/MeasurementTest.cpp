#include "model/UserDefaults.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

namespace {

class Measurement : public ModelFixture
{
protected:
    static void write(const QString &path, qint64 size)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(QByteArray(size, 'x')), size);
    }

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
    write(folder("one") + QLatin1String("/a"), 10);
    write(folder("two") + QLatin1String("/b"), 32);
    start();
    settle();
    const SignalCount measuring(model.get(), &AppModel::measuringChanged);
    model->measureSources();
    EXPECT_TRUE(model->isMeasuring());
    EXPECT_EQ(model->measuredSoFar(), 0);
    settle();
    EXPECT_FALSE(model->isMeasuring());
    EXPECT_EQ(measuring.count(), 2);
    EXPECT_EQ(model->sourceSizes(),
              (QMap<QString, qint64>{
                  {folder("one"), 10}, {folder("two"), 32}, {QStringLiteral("/nowhere"), 0}}));
    EXPECT_EQ(kept(folder("two")), 32);
    restart();
    EXPECT_EQ(model->sourceSizes().value(folder("one")), 10);
}

TEST_F(Measurement, withoutSourcesItIsDoneAtOnce)
{
    config.sources.clear();
    start();
    model->runMeasure();
    settle();
    EXPECT_FALSE(model->isMeasuring());
    EXPECT_TRUE(model->sourceSizes().isEmpty());
}

TEST_F(Measurement, leavesOutTheRepositoryOnADiskInUse)
{
    config.localFolder = config.sources.first();
    QDir().mkpath(config.localFolder + QLatin1String("/Vellomar.backup"));
    write(config.localFolder + QLatin1String("/Vellomar.backup/data"), 100);
    write(config.localFolder + QLatin1String("/file"), 5);
    start();
    model->runMeasure();
    settle();
    EXPECT_EQ(model->sourceSizes().value(config.localFolder), 5);
    change([](AppConfig &settings) { settings.localEnabled = false; });
    model->runMeasure();
    settle();
    EXPECT_EQ(model->sourceSizes().value(config.localFolder), 105);
}

TEST_F(Measurement, waitsForAccess)
{
    desktop->fullDiskAccess = false;
    start();
    settle();
    model->measureSources();
    EXPECT_FALSE(model->isMeasuring());
    EXPECT_EQ(model->accessRequest(), AppModel::GatedAction::Measure);
    model->continueWithoutAccess();
    EXPECT_TRUE(model->isMeasuring());
    EXPECT_EQ(model->accessRequest(), AppModel::GatedAction::None);
    EXPECT_TRUE(desktop->started.isEmpty());
}

TEST_F(Measurement, aSecondOneMeanwhileDoesNothing)
{
    start();
    settle();
    model->runMeasure();
    const int probes = desktop->probes;
    const SignalCount measuring(model.get(), &AppModel::measuringChanged);
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
    EXPECT_FALSE(model->isMeasuring());
    settle();
    EXPECT_FALSE(model->isMeasuring());
    EXPECT_TRUE(model->sourceSizes().isEmpty());
}

TEST_F(Measurement, oneOfTheNewSelectionDoesNotWaitForTheOldOne)
{
    write(folder("source") + QLatin1String("/a"), 10);
    write(folder("source") + QLatin1String("/a.o"), 100);
    start();
    settle();
    model->runMeasure();
    change([](AppConfig &settings) { settings.excludes.append(QStringLiteral("*.o")); });
    const SignalCount measuring(model.get(), &AppModel::measuringChanged);
    model->runMeasure();
    EXPECT_TRUE(model->isMeasuring());
    settle();
    EXPECT_FALSE(model->isMeasuring());
    EXPECT_EQ(measuring.count(), 2);
    EXPECT_EQ(model->sourceSizes().value(folder("source")), 10);
}

TEST_F(Measurement, otherSettingsDoNotEndIt)
{
    start();
    settle();
    model->runMeasure();
    change([](AppConfig &settings) { settings.intervalHours = 3; });
    EXPECT_TRUE(model->isMeasuring());
    settle();
    EXPECT_EQ(model->sourceSizes().size(), 1);
}

TEST_F(Measurement, tellsHowFarItIs)
{
    const QString many = folder("many");
    for (int i = 0; i < 20000; ++i) {
        QFile file(many + u'/' + QString::number(i));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    write(folder("first") + QLatin1String("/a"), 7);
    config.sources = {folder("first"), many};
    start();
    model->runMeasure();
    settle();
    EXPECT_EQ(model->measuredSoFar(), 7);
    EXPECT_EQ(model->sourceSizes().value(many), 0);
    // The next one begins at nothing.
    model->runMeasure();
    EXPECT_EQ(model->measuredSoFar(), 0);
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
