#pragma once

#include "state/Texts.h"
#include "tests/support/EventLoop.h"
#include "tests/support/ManualClock.h"
#include "ui/summary/Situation.h"

#include <gtest/gtest.h>

/// A situation at noon on a day in summer, as after a fresh installation.
class SummaryFixture : public testing::Test
{
protected:
    SummaryFixture() { Texts::load(); }

    static QDateTime at(int hour, int minute, int second = 0)
    {
        return {QDate(2026, 7, 15), QTime(hour, minute, second)};
    }

    void enable(DestinationID destination)
    {
        situation.config.localEnabled |= destination == DestinationID::Local;
        situation.config.driveEnabled |= destination == DestinationID::Drive;
        situation.config.serverEnabled |= destination == DestinationID::Server;
    }

    RunStatus &run(double percent = 0)
    {
        situation.status = RunStatus();
        situation.status->destination = DestinationID::Drive;
        situation.status->phase = QStringLiteral("Analisi dei file");
        situation.status->percent = percent;
        return *situation.status;
    }

    /// A good backup so many minutes ago.
    void succeed(int minutesAgo)
    {
        situation.lastSuccess = RunRecord();
        situation.lastSuccess->date = Clock::now().addSecs(-60 * minutesAgo);
    }

    TestApplication application;
    ManualClock clock{at(12, 0).toUTC()};
    ScopedClock clockInForce{clock};
    Situation situation;
};
