#pragma once

#include <QString>
#include <QUrl>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QUrl& url, std::ostream* out) { PrintTo(url.toString(), out); }
