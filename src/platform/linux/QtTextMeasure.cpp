#include "platform/linux/QtTextMeasure.h"

#include <QFontMetricsF>
#include <QGuiApplication>

namespace nettlecap {

double QtTextMeasure::width(std::string_view text) const {
    const QFontMetricsF metrics(QGuiApplication::font());
    return metrics.horizontalAdvance(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

}  // namespace nettlecap
