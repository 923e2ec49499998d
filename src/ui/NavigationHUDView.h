#pragma once

#include "app/AppWindows.h"
#include "ui/NavigationHUDTextPresentation.h"

#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// What one card shows. It never changes: each show makes another.
class NavigationHUDView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the controller")
    Q_PROPERTY(bool isImage READ isImage CONSTANT)
    Q_PROPERTY(bool isMasked READ isMasked CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)
    Q_PROPERTY(QString caption READ caption CONSTANT)
    Q_PROPERTY(QUrl picture READ picture CONSTANT)
    Q_PROPERTY(bool usesExpandedLayout READ usesExpandedLayout CONSTANT)
    Q_PROPERTY(int visibleLineLimit READ visibleLineLimit CONSTANT)
    Q_PROPERTY(double panelWidth READ panelWidth CONSTANT)

public:
    /// Whose "image://" address the pictures have.
    static constexpr const char* pictureProvider = "card";

    NavigationHUDView(NavigationCard card, NavigationHUDTextPresentation textPresentation, double panelWidth);

    bool isImage() const { return card_.entry.kind == ClipboardContentKind::image; }
    bool isMasked() const { return card_.protectSensitiveContent && card_.entry.sensitiveKind; }
    QString text() const;
    QString caption() const;  ///< the place in the list and what letting go does
    QUrl picture() const;     ///< empty: there is no file to look for
    bool usesExpandedLayout() const { return textPresentation_.usesExpandedLayout; }
    int visibleLineLimit() const { return static_cast<int>(textPresentation_.visibleLineLimit); }
    double panelWidth() const { return panelWidth_; }

private:
    NavigationCard card_;
    NavigationHUDTextPresentation textPresentation_;
    double panelWidth_;
};

}  // namespace nettlecap
