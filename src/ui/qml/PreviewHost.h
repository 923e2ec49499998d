#pragma once

#include <QPointer>
#include <QQmlParserStatus>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

class PreviewPlace;

/// Shows the preview of a row, while there is one, in the floating window of the panel that
/// the row stands in. In the row's QML:
///
///     PreviewHost { anchor: root; preview: root.row.preview; row: root.row }
///
/// The content is made of the QML file that has the name of the preview's C++ type, whose
/// one required property `view` is the preview; it is shown in its implicit size, on a
/// rounded ground with a padding around it that are not the content's matter. The preview
/// is told of the pointer, and the row when its preview disappeared. Its window would lie
/// above what opens over the rows, so it stays away while they are covered.
class PreviewHost : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* anchor MEMBER anchor_ REQUIRED)
    Q_PROPERTY(QObject* preview READ preview WRITE setPreview REQUIRED)
    Q_PROPERTY(QObject* row MEMBER row_ REQUIRED)
    Q_PROPERTY(bool isCovered READ isCovered WRITE setCovered)

public:
    explicit PreviewHost(QObject* parent = nullptr) : QObject(parent) {}
    ~PreviewHost() override;

    void setPreview(QObject* preview);
    void setCovered(bool isCovered);

    void handleHover(bool inside);  ///< the pointer has come over the preview, or left it
    void handleDisappearance();     ///< closed by something else than the row

    QObject* preview() const { return preview_; }
    bool isCovered() const { return isCovered_; }
    QQuickItem* anchor() const { return anchor_; }

private:
    void classBegin() override {}
    void componentComplete() override;
    void update();

    QQuickItem* anchor_ = nullptr;
    QPointer<QObject> preview_;
    QObject* row_ = nullptr;
    QPointer<PreviewPlace> place_;  ///< where the preview is shown
    bool isCovered_ = false;
    bool isComplete_ = false;
};

}  // namespace nettlecap
