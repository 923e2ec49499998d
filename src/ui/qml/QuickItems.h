#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QVariantMap>

#include <memory>

namespace nettlecap {

/// An item of the QML file of that name, with these of its properties set from the start.
std::unique_ptr<QQuickItem> makeItem(QQmlEngine& engine, const QString& name, const QVariantMap& properties);

/// What shows a view: of the QML file that has the name of the view's C++ type, and whose one
/// required property `view` is the view.
std::unique_ptr<QQuickItem> makeItemOf(QQmlEngine& engine, QObject& view);

}  // namespace nettlecap
