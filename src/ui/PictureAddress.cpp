#include "ui/PictureAddress.h"

#include "ui/QtText.h"

namespace nettlecap {

QUrl pictureAddress(const char* provider, std::string_view filename) {
    QUrl address;
    address.setScheme(QStringLiteral("image"));
    address.setHost(QString::fromLatin1(provider));
    address.setPath("/" + qtText(filename), QUrl::DecodedMode);
    return address;
}

}  // namespace nettlecap
