#include "platform/WeekOfYear.h"

#include "platform/DateLocale.h"

#include <unicode/ucal.h>

// QDate counts the weeks of ISO 8601 alone, in every Qt so far.
int weekOfYear(const QDateTime &moment)
{
    UErrorCode failure = U_ZERO_ERROR;
    // ICU's default would be the locale of messages.
    const QByteArray locale = dateLocale();
    UCalendar *calendar = ucal_open(nullptr, -1, locale.isEmpty() ? nullptr : locale.constData(),
                                    UCAL_DEFAULT, &failure);
    ucal_setMillis(calendar, static_cast<UDate>(moment.toMSecsSinceEpoch()), &failure);
    const int week = ucal_get(calendar, UCAL_WEEK_OF_YEAR, &failure);
    ucal_close(calendar);
    // Without its data ICU has no calendar; the week of ISO 8601 will do.
    return U_SUCCESS(failure) ? week : moment.toLocalTime().date().weekNumber();
}
