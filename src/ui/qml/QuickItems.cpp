#include "ui/qml/QuickItems.h"

#include <QQmlComponent>

namespace nettlecap {

std::unique_ptr<QQuickItem> makeItem(QQmlEngine& engine, const QString& name, const QVariantMap& properties) {
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Nettlecap/%1.qml").arg(name)));
    if (!component.isReady()) qFatal("%s", qPrintable(component.errorString()));  // a broken build
    std::unique_ptr<QObject> made(component.createWithInitialProperties(properties));
    QQmlEngine::setObjectOwnership(made.get(), QQmlEngine::CppOwnership);
    return std::unique_ptr<QQuickItem>(qobject_cast<QQuickItem*>(made.release()));
}

std::unique_ptr<QQuickItem> makeItemOf(QQmlEngine& engine, QObject& view) {
    const QString type = QString::fromLatin1(view.metaObject()->className());
    return makeItem(engine, type.section(QStringLiteral("::"), -1), {{"view", QVariant::fromValue(&view)}});
}

}  // namespace nettlecap
