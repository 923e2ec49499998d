#pragma once

#include "platform/Values.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// Leads from the settings back to the history.
class SettingsNavigationButton : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel")
    Q_PROPERTY(QString symbol READ symbol CONSTANT)
    Q_PROPERTY(QString help READ help CONSTANT)
    Q_PROPERTY(QString accessibilityLabel READ accessibilityLabel CONSTANT)

public:
    explicit SettingsNavigationButton(Task showHistory) : showHistory_(std::move(showHistory)) {}

    Q_INVOKABLE void press() const { showHistory_(); }

    QString symbol() const { return QStringLiteral("xmark"); }
    QString help() const { return QStringLiteral("Fechar ajustes e voltar ao histórico"); }
    QString accessibilityLabel() const { return QStringLiteral("Voltar ao histórico"); }

private:
    Task showHistory_;
};

}  // namespace nettlecap
