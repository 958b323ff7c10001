#include "state/AppConfig.h"
#include "state/EngineState.h"

#include <gtest/gtest.h>

namespace {

struct Row
{
    qint64 days;
    const char *label;
    const char *shortLabel;
};

TEST(RetentionOptions, theChoicesAreTheseInThisOrder)
{
    const std::vector<Row> expected = {
        {-1, "Solo l'ultima", "Ultima"}, {7, "1 settimana", "1 sett."}, {30, "1 mese", "1 mese"},
        {90, "3 mesi", "3 mesi"},        {180, "6 mesi", "6 mesi"},     {365, "1 anno", "1 anno"},
        {730, "2 anni", "2 anni"},       {1825, "5 anni", "5 anni"},    {0, "Sempre", "Sempre"},
    };
    const QList<RetentionOption> options = AppConfig::retentionOptions();
    ASSERT_EQ(static_cast<size_t>(options.size()), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        const RetentionOption &option = options.at(static_cast<qsizetype>(i));
        EXPECT_EQ(option.days, expected[i].days);
        EXPECT_EQ(option.label, QString::fromUtf8(expected[i].label));
        EXPECT_EQ(option.shortLabel, QString::fromUtf8(expected[i].shortLabel));
    }
}

QString labelOf(qint64 keepDays)
{
    AppConfig config;
    config.keepDays = keepDays;
    return config.retentionLabel();
}

TEST(RetentionOptions, eachChoiceIsCalledByItsLongName)
{
    for (const RetentionOption &option : AppConfig::retentionOptions()) {
        EXPECT_EQ(labelOf(option.days), option.label);
    }
}

TEST(RetentionOptions, anyOtherNumberIsTheNumberOfDays)
{
    EXPECT_EQ(labelOf(45), QStringLiteral("45 giorni"));
    EXPECT_EQ(labelOf(-5), QStringLiteral("-5 giorni"));
    EXPECT_EQ(labelOf(1), QStringLiteral("1 giorni"));
}

class EngineStateDue : public testing::Test
{
protected:
    [[nodiscard]] bool isDueAfter(std::chrono::milliseconds time) const
    {
        return EngineState::isDue(dates, QStringLiteral("local"), last.addMSecs(time.count()),
                                  std::chrono::hours(7 * 24));
    }

    QDateTime last = QDateTime::fromString(QStringLiteral("2025-12-29T12:00:00Z"), Qt::ISODate);
    QMap<QString, QDateTime> dates{{QStringLiteral("local"), last}};
};

TEST_F(EngineStateDue, exactlyTheIntervalIsNotDue)
{
    EXPECT_FALSE(isDueAfter(std::chrono::hours(7 * 24)));
}

TEST_F(EngineStateDue, aMillisecondMoreIsDueAcrossTheTurnOfTheYear)
{
    EXPECT_TRUE(isDueAfter(std::chrono::hours(7 * 24) + std::chrono::milliseconds(1)));
}

TEST_F(EngineStateDue, aDateUpToADayAheadIsNotDue)
{
    EXPECT_FALSE(isDueAfter(-std::chrono::hours(24)));
}

TEST_F(EngineStateDue, aDateMoreThanADayAheadCountsAsNone)
{
    EXPECT_TRUE(isDueAfter(-std::chrono::hours(24) - std::chrono::milliseconds(1)));
}

TEST_F(EngineStateDue, noEntryIsDueWhateverTheOthersSay)
{
    EXPECT_TRUE(EngineState::isDue(dates, QStringLiteral("drive"), last, std::chrono::hours(1)));
    EXPECT_TRUE(EngineState::isDue({}, QStringLiteral("local"), last, std::chrono::hours(1)));
}

} // namespace
