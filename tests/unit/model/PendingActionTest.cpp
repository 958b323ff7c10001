#include "model/UserDefaults.h"
#include "tests/support/ModelFixture.h"

namespace {

using GatedAction = AppModel::GatedAction;

class PendingAction : public ModelFixture
{
protected:
    static QVariant pending() { return UserDefaults::value(UserDefaults::pendingAction); }

    /// The user comes back to the program's window.
    void comeBack()
    {
        model->becomeActive();
        QCoreApplication::sendPostedEvents();
        settle();
    }

    /// The user is sent to the system's settings for an action.
    void sendAway(GatedAction action)
    {
        desktop->fullDiskAccess = false;
        start();
        settle();
        model->access()->setRequest(action);
        model->requestAccessInSettings(action);
        settle();
    }
};

TEST_F(PendingAction, isRememberedAndTheSettingsOpen)
{
    sendAway(GatedAction::Backup);
    EXPECT_EQ(pending(), QStringLiteral("backup"));
    EXPECT_EQ(UserDefaults::value(UserDefaults::pendingActionDate).toDateTime(), clock.moment());
    EXPECT_EQ(model->access()->request(), GatedAction::None);
    EXPECT_EQ(desktop->privacySettingsOpened, 1);
    model->requestAccessInSettings(GatedAction::Measure);
    settle();
    EXPECT_EQ(pending(), QStringLiteral("measure"));
}

TEST_F(PendingAction, justOpeningTheSettingsRemembersNothing)
{
    start();
    model->openFullDiskAccessSettings();
    EXPECT_EQ(desktop->privacySettingsOpened, 1);
    EXPECT_FALSE(pending().isValid());
}

TEST_F(PendingAction, runsWhenTheUserComesBackWithAccess)
{
    sendAway(GatedAction::Backup);
    desktop->fullDiskAccess = true;
    clock.advance(std::chrono::seconds(899));
    comeBack();
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_FALSE(pending().isValid());
    EXPECT_TRUE(model->access()->isGranted());
    // Not a second time.
    comeBack();
    EXPECT_EQ(desktop->started.size(), 1);
}

TEST_F(PendingAction, hasRunOutAfterAQuarterOfAnHour)
{
    sendAway(GatedAction::Backup);
    desktop->fullDiskAccess = true;
    const int probes = desktop->probes;
    clock.advance(std::chrono::seconds(900));
    comeBack();
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_FALSE(pending().isValid());
    EXPECT_TRUE(UserDefaults::value(UserDefaults::pendingActionDate).isValid());
    EXPECT_EQ(desktop->probes, probes);
}

TEST_F(PendingAction, waitsOnWhileThereIsNoAccess)
{
    sendAway(GatedAction::Backup);
    const int probes = desktop->probes;
    for (int i = 1; i <= 3; ++i) {
        comeBack();
        EXPECT_EQ(desktop->probes, probes + i);
        EXPECT_EQ(pending(), QStringLiteral("backup"));
        EXPECT_EQ(model->access()->request(), GatedAction::None);
    }
    EXPECT_TRUE(desktop->started.isEmpty());
    desktop->fullDiskAccess = true;
    comeBack();
    EXPECT_EQ(desktop->started.size(), 1);
}

TEST_F(PendingAction, isTakenUpByTheNextStart)
{
    sendAway(GatedAction::Backup);
    desktop->fullDiskAccess = true;
    restart();
    settle();
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_FALSE(pending().isValid());
}

TEST_F(PendingAction, aMeasurementIsTakenUpToo)
{
    sendAway(GatedAction::Measure);
    desktop->fullDiskAccess = true;
    comeBack();
    EXPECT_EQ(model->measurement()->sizes().size(), 1);
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_FALSE(pending().isValid());
}

TEST_F(PendingAction, closesASheetThatIsOpenAgain)
{
    sendAway(GatedAction::Measure);
    model->access()->setRequest(GatedAction::Backup);
    desktop->fullDiskAccess = true;
    comeBack();
    EXPECT_EQ(model->access()->request(), GatedAction::None);
}

TEST_F(PendingAction, aResumedBackupAsksNothingElse)
{
    config.keySaved = false;
    sendAway(GatedAction::Backup);
    desktop->fullDiskAccess = true;
    comeBack();
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_EQ(desktop->permissionRequests, 0);
    EXPECT_FALSE(model->kit()->isShowing());
}

TEST_F(PendingAction, anUnknownOneStaysAndDoesNothing)
{
    start();
    UserDefaults::set(UserDefaults::pendingAction, QStringLiteral("dance"));
    UserDefaults::set(UserDefaults::pendingActionDate, clock.moment());
    comeBack();
    EXPECT_EQ(pending(), QStringLiteral("dance"));
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_FALSE(model->measurement()->isMeasuring());
}

TEST_F(PendingAction, withoutADateItHasRunOut)
{
    start();
    for (const QVariant &date : {QVariant(), QVariant(QStringLiteral("yesterday")), QVariant(5)}) {
        UserDefaults::set(UserDefaults::pendingAction, QStringLiteral("backup"));
        UserDefaults::set(UserDefaults::pendingActionDate, date);
        comeBack();
        EXPECT_FALSE(pending().isValid());
        EXPECT_TRUE(desktop->started.isEmpty());
    }
}

TEST_F(PendingAction, aClockPutBackDoesNotMakeItRunOut)
{
    sendAway(GatedAction::Backup);
    desktop->fullDiskAccess = true;
    clock.advance(std::chrono::hours(-3));
    comeBack();
    EXPECT_EQ(desktop->started.size(), 1);
}

} // namespace
