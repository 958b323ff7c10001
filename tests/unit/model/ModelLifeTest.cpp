#include "model/Background.h"
#include "tests/support/ModelFixture.h"

#include <array>
#include <functional>

namespace {

/// A model that is destroyed during every kind of work.
class ModelLife : public ModelFixture
{
protected:
    using Work = std::function<void(AppModel &)>;

    static void ignore(const std::optional<QString> &) {}

    static void setInterval(AppModel &made, qint64 hours)
    {
        AppConfig config = made.config();
        config.intervalHours = hours;
        made.setConfig(config);
    }

    std::array<Work, 12> works{
        [](AppModel &) {},
        [](AppModel &made) { made.refresh(DestinationID::Local); },
        [](AppModel &made) { made.refresh(DestinationID::Drive); },
        [](AppModel &made) { made.connections()->read(); },
        [](AppModel &made) { made.connections()->disconnect(DestinationID::Server); },
        [](AppModel &made) { made.runMeasure(); },
        [](AppModel &made) { made.startBackup(); },
        [](AppModel &made) { made.install(QStringLiteral("a key"), false, &ModelLife::ignore); },
        [](AppModel &made) { made.replaceKey(QStringLiteral("a key"), &ModelLife::ignore); },
        [](AppModel &made) { made.requestPreviousKey(); },
        [](AppModel &made) { made.saveRecoveryKit(); },
        [](AppModel &made) {
            setInterval(made, made.config().intervalHours + 1);
            made.run()->look();
            made.becomeActive();
        },
    };
};

TEST_F(ModelLife, theModelMayBeDestroyedDuringEveryKindOfWork)
{
    static constexpr int lives = 1000;
    useAllDestinations();
    start();
    settle();
    model.reset();
    desktop->savePath = folder("stick") + QLatin1String("/kit.txt");
    for (int life = 0; life < lives; ++life) {
        auto made = std::make_unique<AppModel>(World::real(desktop));
        // At each stage of its start, and after that.
        const int turns = life % 7;
        for (int turn = 0; turn < turns; ++turn) {
            QCoreApplication::processEvents();
            QThread::yieldCurrentThread();
        }
        works.at(static_cast<std::size_t>(life) % works.size())(*made);
        if (life % 2 == 0) {
            QCoreApplication::processEvents();
        }
        made.reset();
        desktop->pass(std::chrono::milliseconds(100));
    }
    Background::waitForAll();
    QCoreApplication::processEvents();
    // Whichever key is in use, none is lost.
    EXPECT_FALSE(storedKey(QStringLiteral("repository-key")).isEmpty());
}

} // namespace
