#include "ui/PrintQt.h"

#include <QColor>
#include <QQmlComponent>
#include <QQmlEngine>
#include <cmath>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

double channel(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
           0.0722 * channel(color.blueF());
}

/// In the light and in the dark appearance.
class ControlColorsTest : public testing::TestWithParam<const char*> {
protected:
    ControlColorsTest() {
        engine.addImportPath("qrc:/qt/qml");
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Nettlecap\nQtObject { readonly property var theme: Theme }",
                          QUrl());
        holder.reset(component.create());
        colors = holder->property("theme").value<QObject*>()->property(GetParam()).value<QObject*>();
    }

    QColor color(const QString& name) const {
        const bool isControls = name.startsWith("controls.");
        const QObject* of = isControls ? colors->property("controls").value<QObject*>() : colors;
        const auto result = of->property(name.section('.', -1).toUtf8().constData()).value<QColor>();
        EXPECT_TRUE(result.isValid()) << name.toStdString();
        return result;
    }
    /// WCAG 2.1, "contrast ratio".
    double contrast(const QString& a, const QString& b) const {
        const auto [low, high] = std::minmax({luminance(color(a)), luminance(color(b))});
        return (high + 0.05) / (low + 0.05);
    }
    void expect(double least, const QStringList& inks, const QStringList& grounds) const {
        for (const QString& ink : inks)
            for (const QString& ground : grounds)
                EXPECT_GE(contrast(ink, ground), least) << (ink + " on " + ground).toStdString();
    }

    QQmlEngine engine;
    std::unique_ptr<QObject> holder;
    QObject* colors = nullptr;
};

TEST_P(ControlColorsTest, TextsReadOnTheFormAndItsControls) {
    expect(4.5, {"controls.text"},
           {"controls.group", "controls.ground", "controls.hovered", "controls.pressed", "controls.field",
            "controls.sheet"});
    expect(4.5, {"text", "secondaryText"}, {"controls.group"});
    expect(4.5, {"controls.destructive"}, {"controls.ground", "controls.hovered", "controls.pressed"});
    expect(4.5, {"controls.accentText"}, {"controls.accent", "controls.accentPressed"});
    expect(4.5, {"controls.placeholder"}, {"controls.field"});
    expect(4.5, {"controls.destructive"}, {"controls.sheet"});
}

TEST_P(ControlColorsTest, SymbolsAndStatesStandOut) {
    expect(3, {"controls.caution", "controls.success"}, {"controls.group", "background"});
    expect(3, {"controls.switchBorder"}, {"controls.group", "controls.field", "controls.sheet"});
    expect(3, {"controls.focusRing"}, {"controls.group", "controls.sheet", "background"});
    expect(3, {"controls.knob"}, {"controls.accent", "controls.accentPressed"});
    expect(3, {"secondaryText"}, {"controls.ground", "controls.hovered", "controls.pressed"});
}

INSTANTIATE_TEST_SUITE_P(Appearances, ControlColorsTest, testing::Values("light", "dark"));

}  // namespace
}  // namespace nettlecap
