#pragma once

#include <QPointer>
#include <QQuickItem>

namespace nettlecap {

class SheetPlace;

/// Shows the sheet of a view, while there is one, over the window that this item is in. In
/// the QML of what the sheet lies over:
///
///     SheetHost { view: root.editor; onCloseRequested: root.editor.cancel() }
///
/// The content is made of the QML file that has the name of the view's C++ type, whose one
/// required property `view` is the view. Each view has a sheet of its own.
class SheetHost : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QObject* view READ view WRITE setView NOTIFY viewChanged REQUIRED)

public:
    explicit SheetHost(QQuickItem* parent = nullptr) : QQuickItem(parent) {}
    ~SheetHost() override;

    void setView(QObject* view);
    QObject* view() const { return view_; }

Q_SIGNALS:
    void viewChanged();
    void closeRequested();  ///< of the sheet, as by the window manager

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void update();

    QPointer<QObject> view_;
    QPointer<SheetPlace> place_;  ///< where the sheet is
};

}  // namespace nettlecap
