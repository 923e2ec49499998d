#include "ui/PasteSource.h"

namespace nettlecap {

QString PasteSource::text() const {
    return QString::fromStdString(pasteboard_.string(pasteboardType::text).value_or(""));
}

QString PasteSource::line() const {
    QString result = text();
    result.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    for (const QChar lineBreak : {u'\n', u'\r', u'\u2028', u'\u2029'}) result.replace(lineBreak, u' ');
    return result;
}

}  // namespace nettlecap
