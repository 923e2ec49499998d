#include "model/RelativeDate.h"

#include "model/GroupedNumber.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace nettlecap {

namespace {

struct Unit {
    double seconds;
    std::string_view one, many;
};

constexpr double day = 86'400;
constexpr double most = 1e18;  ///< that a date from a damaged file may be told with

/// A month and a year are as long as they are on average in the Gregorian calendar.
constexpr std::array<Unit, 7> units = {{
    {365.2425 * day, "ano", "anos"},
    {365.2425 * day / 12, "mês", "meses"},
    {7 * day, "semana", "semanas"},
    {day, "dia", "dias"},
    {3'600, "hora", "horas"},
    {60, "minuto", "minutos"},
    {1, "segundo", "segundos"},
}};

}  // namespace

// ICU has a formatter for this, which holds three megabytes of tables and code in memory for seven words.
std::string relativeDate(Date date, Date now) {
    const double distance = date.secondsSince2001 - now.secondsSince2001;
    for (const Unit& unit : units) {
        const double count = std::trunc(std::abs(distance) / unit.seconds);
        if (count < 1) continue;
        std::string text = distance < 0 ? "há " : "em ";
        text += groupedNumber(static_cast<std::int64_t>(std::min(count, most)));
        text += ' ';
        text += count < 2 ? unit.one : unit.many;
        return text;
    }
    return "agora";
}

}  // namespace nettlecap
