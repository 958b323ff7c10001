#include "state/Fmt.h"

#include "platform/Clock.h"
#include "platform/DateLocale.h"
#include "state/Texts.h"

#include <QLocale>

#include <unicode/calendar.h>
#include <unicode/dtptngen.h>
#include <unicode/numberformatter.h>
#include <unicode/rbnf.h>
#include <unicode/reldatefmt.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>

// By ICU and not by QLocale, which has no relative times, no spelt-out numbers and no dates by
// their fields. A Qt that has them would end this.

namespace {

QString text(const icu::UnicodeString &string)
{
    return QString(reinterpret_cast<const QChar *>(string.getBuffer()), string.length());
}

UDate instant(const QDateTime &date)
{
    return static_cast<UDate>(date.toMSecsSinceEpoch());
}

/// The ICU objects that are slow to make, kept for as long as language and region stay the same.
class Formatters
{
public:
    explicit Formatters(const QString &name)
        : m_name(name)
        , m_locale(name.toLatin1().constData())
        , m_patterns(icu::DateTimePatternGenerator::createInstance(m_locale, m_failure))
        , m_calendar(icu::Calendar::createInstance(m_locale, m_failure))
        , m_relative(m_locale, m_failure)
    {
    }

    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] const icu::Locale &locale() const { return m_locale; }
    [[nodiscard]] icu::RelativeDateTimeFormatter &relative() { return m_relative; }

    /// A calendar in the user's current time zone.
    icu::Calendar *calendar()
    {
        if (m_calendar) {
            m_calendar->adoptTimeZone(icu::TimeZone::detectHostTimeZone());
        }
        return m_calendar.get();
    }

    QString formatted(const char *skeleton, const QDateTime &date)
    {
        std::unique_ptr<icu::SimpleDateFormat> &format = m_formats[skeleton];
        if (!format && m_patterns) {
            UErrorCode failure = U_ZERO_ERROR;
            const auto pattern = m_patterns->getBestPattern(icu::UnicodeString(skeleton), failure);
            format = std::make_unique<icu::SimpleDateFormat>(pattern, m_locale, failure);
            if (U_FAILURE(failure)) {
                format.reset();
            }
        }
        if (!format) {
            // Without its data ICU has no words; the international form is understood anywhere.
            return date.toLocalTime().toString(Qt::ISODate);
        }
        format->adoptTimeZone(icu::TimeZone::detectHostTimeZone());
        icu::UnicodeString string;
        return text(format->format(instant(date), string));
    }

private:
    UErrorCode m_failure = U_ZERO_ERROR;
    QString m_name;
    icu::Locale m_locale;
    std::unique_ptr<icu::DateTimePatternGenerator> m_patterns;
    std::unique_ptr<icu::Calendar> m_calendar;
    icu::RelativeDateTimeFormatter m_relative;
    std::map<std::string, std::unique_ptr<icu::SimpleDateFormat>> m_formats;
};

// Also for ICU's detection of the host's time zone, which isn't thread-safe.
std::mutex mutex; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

QStringList &localisations()
{
    static QStringList list{QStringLiteral("it")};
    return list;
}

QString currentLocale()
{
    return QString::fromLatin1(dateLocale());
}

Formatters &formatters()
{
    static std::unique_ptr<Formatters> formatters;
    const QString name = Fmt::localeFor(localisations(), currentLocale());
    if (!formatters || formatters->name() != name) {
        formatters = std::make_unique<Formatters>(name);
    }
    return *formatters;
}

QString formatted(const char *skeleton, const QDateTime &date)
{
    if (!date.isValid()) {
        return {};
    }
    const std::lock_guard lock(mutex);
    return formatters().formatted(skeleton, date);
}

/// Whole days from the day of one date to that of the other, by the user's calendar.
int daysBetween(const QDateTime &from, const QDateTime &to)
{
    const std::lock_guard lock(mutex);
    icu::Calendar *calendar = formatters().calendar();
    if (calendar == nullptr) {
        return static_cast<int>(from.toLocalTime().date().daysTo(to.toLocalTime().date()));
    }
    UErrorCode failure = U_ZERO_ERROR;
    std::array<int, 2> days{};
    for (std::size_t i = 0; i < days.size(); ++i) {
        calendar->setTime(instant(i == 0 ? from : to), failure);
        days.at(i) = calendar->get(UCAL_JULIAN_DAY, failure);
    }
    return days[1] - days[0];
}

struct SizeUnit
{
    icu::MeasureUnit (*unit)();
    double bytes;
    int digits; ///< after the decimal comma
};

const std::array<SizeUnit, 6> &sizeUnits()
{
    static const std::array<SizeUnit, 6> units = {{
        {&icu::MeasureUnit::getByte, 1, 0},
        {&icu::MeasureUnit::getKilobyte, 1e3, 0},
        {&icu::MeasureUnit::getMegabyte, 1e6, 1},
        {&icu::MeasureUnit::getGigabyte, 1e9, 2},
        {&icu::MeasureUnit::getTerabyte, 1e12, 2},
        {&icu::MeasureUnit::getPetabyte, 1e15, 2},
    }};
    return units;
}

/// The smallest unit in which the rounded size is below a thousand.
const SizeUnit &sizeUnit(double bytes)
{
    for (const SizeUnit &unit : sizeUnits()) {
        const double scale = std::pow(10, unit.digits);
        if (std::round(std::abs(bytes) / unit.bytes * scale) < 1000 * scale) {
            return unit;
        }
    }
    return sizeUnits().back();
}

/// The word for 0 with a capital letter: "Zero".
icu::UnicodeString zeroWord(const icu::Locale &locale)
{
    UErrorCode failure = U_ZERO_ERROR;
    const icu::RuleBasedNumberFormat spelling(icu::URBNF_SPELLOUT, locale, failure);
    icu::UnicodeString word;
    if (U_FAILURE(failure) || spelling.format(int32_t{0}, word).isEmpty()) {
        return icu::UnicodeString(u'0');
    }
    return word.toTitle(nullptr, locale);
}

} // namespace

void Fmt::setLocalisations(const QStringList &list)
{
    const std::lock_guard lock(mutex);
    localisations() = list;
}

QString Fmt::locale()
{
    const std::lock_guard lock(mutex);
    return localeFor(localisations(), currentLocale());
}

QString Fmt::localeFor(const QStringList &localisations, const QString &current)
{
    const QString wanted = localisations.value(0, QStringLiteral("en"));
    const auto program = icu::Locale::createCanonical(wanted.toLatin1().constData());
    const auto users = icu::Locale::createCanonical(current.toLatin1().constData());
    const bool same = qstrcmp(users.getLanguage(), program.getLanguage()) == 0;
    return QString::fromLatin1((same ? users : program).getName());
}

QString Fmt::relative(const QDateTime &date)
{
    if (!date.isValid()) {
        return {};
    }
    const QDateTime now = Clock::now();
    if (std::abs(now.msecsTo(date)) < 60'000) {
        return Texts::tr("adesso");
    }
    struct Unit
    {
        UCalendarDateFields field;
        URelativeDateTimeUnit unit;
    };
    static constexpr std::array<Unit, 6> units = {{{UCAL_YEAR, UDAT_REL_UNIT_YEAR},
                                                   {UCAL_MONTH, UDAT_REL_UNIT_MONTH},
                                                   {UCAL_WEEK_OF_YEAR, UDAT_REL_UNIT_WEEK},
                                                   {UCAL_DATE, UDAT_REL_UNIT_DAY},
                                                   {UCAL_HOUR_OF_DAY, UDAT_REL_UNIT_HOUR},
                                                   {UCAL_MINUTE, UDAT_REL_UNIT_MINUTE}}};
    const std::lock_guard lock(mutex);
    Formatters &tools = formatters();
    icu::Calendar *calendar = tools.calendar();
    icu::UnicodeString string;
    for (const auto &[field, unit] : units) {
        if (calendar == nullptr) {
            break;
        }
        UErrorCode failure = U_ZERO_ERROR;
        calendar->setTime(instant(now), failure);
        const int amount = calendar->fieldDifference(instant(date), field, failure);
        if (amount != 0 && U_SUCCESS(failure)) {
            return text(tools.relative().formatNumeric(amount, unit, string, failure));
        }
    }
    return tools.formatted("yMMMdjm", date);
}

QString Fmt::since(const QDateTime &date)
{
    if (!date.isValid()) {
        return {};
    }
    const qint64 minutes = date.msecsTo(Clock::now()) / 60'000;
    if (minutes < 1) {
        return Texts::tr("<1 min");
    }
    if (minutes < 60) {
        return Texts::tr("%1 min").arg(minutes);
    }
    if (minutes < 2880) {
        return Texts::tr("%1 h").arg(minutes / 60);
    }
    return Texts::tr("%1 g").arg(minutes / 1440);
}

QString Fmt::duration(double seconds)
{
    // An absurd duration in a file must not overflow either.
    constexpr double most = 1e15;
    const auto whole =
        static_cast<qint64>(std::isnan(seconds) ? 0.0 : std::clamp(seconds, -most, most));
    if (whole < 60) {
        return Texts::tr("%1 s").arg(whole);
    }
    if (whole < 3600) {
        return Texts::tr("%1 min").arg(whole / 60);
    }
    return Texts::tr("%1 h %2 min").arg(whole / 3600).arg(whole % 3600 / 60);
}

QString Fmt::dateTime(const QDateTime &date)
{
    return formatted("yMMMdjm", date);
}

QString Fmt::date(const QDateTime &date)
{
    return formatted("yMMMMd", date);
}

QString Fmt::time(const QDateTime &date)
{
    return formatted("jm", date);
}

QString Fmt::day(const QDateTime &date)
{
    if (!date.isValid()) {
        return {};
    }
    switch (daysBetween(date, Clock::now())) {
    case 0:
        return Texts::tr("Oggi");
    case 1:
        return Texts::tr("Ieri");
    default:
        return formatted("EEEEdMMMM", date);
    }
}

QString Fmt::byteCount(qint64 bytes)
{
    const std::lock_guard lock(mutex);
    const icu::Locale &locale = formatters().locale();
    const auto size = static_cast<double>(bytes);
    const SizeUnit &chosen = bytes == 0 ? sizeUnits()[1] : sizeUnit(size);
    UErrorCode failure = U_ZERO_ERROR;
    const icu::number::FormattedNumber number =
        icu::number::NumberFormatter::withLocale(locale)
            .unit(chosen.unit())
            .unitWidth(UNUM_UNIT_WIDTH_SHORT)
            .precision(icu::number::Precision::maxFraction(chosen.digits))
            .roundingMode(UNUM_ROUND_HALFUP)
            .formatDouble(size / chosen.bytes, failure);
    icu::UnicodeString string = number.toString(failure);
    if (U_FAILURE(failure)) {
        return QLocale::c().formattedDataSize(bytes, 2, QLocale::DataSizeSIFormat);
    }
    if (bytes == 0) {
        icu::ConstrainedFieldPosition digits;
        digits.constrainField(UFIELD_CATEGORY_NUMBER, UNUM_INTEGER_FIELD);
        if (number.nextPosition(digits, failure)) {
            string.replaceBetween(digits.getStart(), digits.getLimit(), zeroWord(locale));
        }
    }
    return text(string);
}

QString Fmt::number(qint64 count)
{
    const std::lock_guard lock(mutex);
    UErrorCode failure = U_ZERO_ERROR;
    const icu::UnicodeString string =
        icu::number::NumberFormatter::withLocale(formatters().locale())
            .formatInt(count, failure)
            .toString(failure);
    return U_SUCCESS(failure) ? text(string) : QString::number(count);
}
