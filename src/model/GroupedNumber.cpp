#include "model/GroupedNumber.h"

namespace nettlecap {

std::string groupedNumber(std::int64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3; place -= 3) digits.insert(place - 3, 1, '.');
    return digits;
}

}  // namespace nettlecap
