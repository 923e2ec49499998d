#include "model/RelativeDate.h"

#include <unicode/reldatefmt.h>

#include <array>
#include <cassert>
#include <cmath>

namespace nettlecap {

namespace {

struct Unit {
    URelativeDateTimeUnit name;
    double seconds;
};

constexpr double day = 86'400;

/// A month and a year are as long as they are on average in the Gregorian calendar.
constexpr std::array<Unit, 6> longUnits = {{
    {UDAT_REL_UNIT_YEAR, 365.2425 * day},
    {UDAT_REL_UNIT_MONTH, 365.2425 * day / 12},
    {UDAT_REL_UNIT_WEEK, 7 * day},
    {UDAT_REL_UNIT_DAY, day},
    {UDAT_REL_UNIT_HOUR, 3'600},
    {UDAT_REL_UNIT_MINUTE, 60},
}};

Unit largestUnitWithin(double seconds) {
    for (const Unit& unit : longUnits)
        if (seconds >= unit.seconds) return unit;
    return {UDAT_REL_UNIT_SECOND, 1};
}

}  // namespace

std::string relativeDate(Date date, Date now) {
    static thread_local UErrorCode made = U_ZERO_ERROR;
    static thread_local const icu::RelativeDateTimeFormatter formatter(icu::Locale("pt", "BR"), made);

    const double distance = date.secondsSince2001 - now.secondsSince2001;
    const Unit unit = largestUnitWithin(std::abs(distance));
    const double count = std::trunc(distance / unit.seconds);
    UErrorCode status = made;
    icu::UnicodeString text;
    if (count == 0) {
        formatter.format(UDAT_DIRECTION_PLAIN, UDAT_ABSOLUTE_NOW, text, status);
    } else {
        formatter.formatNumeric(count, unit.name, text, status);
    }
    assert(U_SUCCESS(status));
    std::string result;
    return text.toUTF8String(result);
}

}  // namespace nettlecap
