#pragma once

#include <QUrl>
#include <string_view>

namespace nettlecap {

/// Where a view asks for a picture of the history: "image://", the provider, and the plain
/// name of the file.
QUrl pictureAddress(const char* provider, std::string_view filename);

}  // namespace nettlecap
