#include "ui/NavigationHUDView.h"

#include "ui/PictureAddress.h"
#include "ui/QtText.h"

namespace nettlecap {

NavigationHUDView::NavigationHUDView(NavigationCard card, NavigationHUDTextPresentation textPresentation,
                                     double panelWidth)
    : card_(std::move(card)), textPresentation_(std::move(textPresentation)), panelWidth_(panelWidth) {}

/// Qt breaks lines at line feeds alone.
QString NavigationHUDView::text() const {
    QString text = qtText(textPresentation_.text);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const QChar lineBreak : {u'\v', u'\f', u'\r', u'\x85', u'\u2028', u'\u2029'})
        text.replace(lineBreak, u'\n');
    return text;
}

QString NavigationHUDView::caption() const {
    return QStringLiteral("Item %1 de %2 • solte as teclas para colar").arg(card_.position).arg(card_.total);
}

QUrl NavigationHUDView::picture() const {
    if (!isImage() || !card_.imageURL) return {};
    return pictureAddress(pictureProvider, card_.imageURL->filename().string());
}

}  // namespace nettlecap
