#include "ui/PrintQt.h"
#include "ui/qml/QuickViewFactory.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
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

/// WCAG 2.1, "contrast ratio".
double contrast(const QColor& a, const QColor& b) {
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

class ThemeTest : public testing::TestWithParam<const char*> {
protected:
    ThemeTest() {
        engine.addImportPath("qrc:/qt/qml");
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Nettlecap\nQtObject { readonly property var theme: Theme }",
                          QUrl());
        holder.reset(component.create());
        theme = holder->property("theme").value<QObject*>();
    }
    ~ThemeTest() override { QGuiApplication::setPalette(before); }

    void setWindowColor(const QColor& color) {
        QPalette palette = before;
        palette.setColor(QPalette::Window, color);
        QGuiApplication::setPalette(palette);
        QCoreApplication::sendPostedEvents();
    }
    QColor color(const char* name) const { return colorOf(colors(), name); }
    QColor rowColor(const char* state, const char* name) const {
        return colorOf(colors()->property(state).value<QObject*>(), name);
    }
    QObject* colors() const { return theme->property(GetParam()).value<QObject*>(); }
    static QColor colorOf(const QObject* colors, const char* name) {
        const auto result = colors->property(name).value<QColor>();
        EXPECT_TRUE(result.isValid()) << name;
        return result;
    }

    const QPalette before = QGuiApplication::palette();
    QQmlEngine engine;
    std::unique_ptr<QObject> holder;
    QObject* theme = nullptr;
};

TEST_P(ThemeTest, TextsReadOnWhatTheyStandOn) {
    for (const char* text : {"text", "secondaryText", "warning"})
        EXPECT_GE(contrast(color(text), color("background")), 4.5) << text;
    for (const char* state : {"row", "selectedRow", "inactiveSelectedRow"})
        for (const char* ground : {"ground", "hovered", "pressed"})
            for (const char* text : {"text", "caption"})
                EXPECT_GE(contrast(rowColor(state, text), rowColor(state, ground)), 4.5)
                    << state << " " << ground << " " << text;
}

TEST_P(ThemeTest, ButtonsWithoutAFrameReadWhereThePointerHoldsThem) {
    EXPECT_GE(contrast(color("secondaryText"), rowColor("row", "pressed")), 4.5);
    const auto* controls = colors()->property("controls").value<QObject*>();
    for (const char* symbol : {"success", "caution"})
        EXPECT_GE(contrast(colorOf(controls, symbol), rowColor("row", "pressed")), 3) << symbol;
}

TEST_P(ThemeTest, SymbolsStandOutFromWhatTheyStandOn) {
    EXPECT_GE(contrast(color("tileSymbol"), color("tile")), 3);
    EXPECT_GE(contrast(color("tileSymbol"), color("background")), 3);
    EXPECT_GE(contrast(rowColor("selectedRow", "ground"), color("background")), 3);
    for (const char* state : {"row", "selectedRow", "inactiveSelectedRow"})
        for (const char* ground : {"ground", "hovered", "pressed"})
            EXPECT_GE(contrast(rowColor(state, "favorite"), rowColor(state, ground)), 3)
                << state << " " << ground;
}

/// A symbol's tile on the card has a tenth of the symbol's colour.
QColor tileOf(const QColor& symbol, const QColor& ground) {
    const auto mix = [](float above, float below) { return above * 0.1F + below * 0.9F; };
    return QColor::fromRgbF(mix(symbol.redF(), ground.redF()), mix(symbol.greenF(), ground.greenF()),
                            mix(symbol.blueF(), ground.blueF()));
}

TEST_P(ThemeTest, TheCardReads) {
    const auto* card = colors()->property("card").value<QObject*>();
    const QColor ground = colorOf(card, "ground");
    EXPECT_EQ(ground.alpha(), 255);
    for (const char* text : {"text", "secondaryText"}) EXPECT_GE(contrast(color(text), ground), 4.5) << text;
    for (const char* symbol : {"accent", "sensitive"}) {
        const QColor drawn = colorOf(card, symbol);
        EXPECT_GE(contrast(drawn, tileOf(drawn, ground)), 3) << symbol;
    }
}

TEST_P(ThemeTest, FollowsTheDesktopWhileItRuns) {
    const bool dark = std::string_view(GetParam()) == "dark";

    setWindowColor(dark ? QColor("#efefef") : QColor("#202020"));
    EXPECT_EQ(theme->property("isDark").toBool(), !dark);

    setWindowColor(dark ? QColor("#202020") : QColor("#efefef"));
    EXPECT_EQ(theme->property("isDark").toBool(), dark);
    EXPECT_EQ(theme->property("colors"), theme->property(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Appearances, ThemeTest, testing::Values("light", "dark"));

}  // namespace
}  // namespace nettlecap
