#include "ui/qml/RawText.h"

#include <QTextDocument>

namespace nettlecap {

QString RawText::of(QQuickTextDocument* document) const {
    QString text = document->textDocument()->toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

}  // namespace nettlecap
