#pragma once

#include "platform/Values.h"

namespace nettlecap {

/// How long ago `date` was, in Brazilian Portuguese ("há 5 minutos", "agora").
std::string relativeDate(Date date, Date now);

}  // namespace nettlecap
