// An XML property list as Info.plist is one: <plist> around one <dict>, in it <key>s and
// after each its value. A boolean is the empty element <true/> or <false/>.
#include "platform/linux/PropertyList.h"

#include <QXmlStreamReader>
#include <optional>

namespace nettlecap {
namespace {

using Flags = std::map<std::string, bool>;

/// Passes over the element that the reader stands at. Not by skipCurrentElement, which
/// would tell nothing of what is in there. Absent: it holds something.
bool isEmptyElement(QXmlStreamReader& reader) {
    bool isEmpty = true;
    for (int depth = 1; depth > 0 && !reader.atEnd();) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: ++depth; break;
        case QXmlStreamReader::EndElement: --depth; continue;
        case QXmlStreamReader::Comment: continue;
        default: break;
        }
        isEmpty = false;
    }
    return isEmpty;
}

/// Raises an error in the reader where keys and values do not alternate.
Flags readDictionary(QXmlStreamReader& reader) {
    Flags flags;
    while (reader.readNextStartElement()) {
        if (reader.name() != QLatin1String("key")) {
            reader.raiseError(QStringLiteral("a value without a key"));
            break;
        }
        const auto key = reader.readElementText().toStdString();
        if (!reader.readNextStartElement()) {
            reader.raiseError(QStringLiteral("a key without a value"));
            break;
        }
        const bool isTrue = reader.name() == QLatin1String("true");
        const bool isBoolean = isTrue || reader.name() == QLatin1String("false");
        flags.erase(key);  // the last of two counts
        if (isEmptyElement(reader) && isBoolean) flags.emplace(key, isTrue);
    }
    return flags;
}

}  // namespace

Flags flagsOfPropertyList(std::string_view file) {
    QXmlStreamReader reader(QByteArray(file.data(), static_cast<qsizetype>(file.size())));
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("plist")) return {};
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("dict")) return {};
    Flags flags = readDictionary(reader);
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement) return {};
    if (reader.hasError()) return {};
    return flags;
}

}  // namespace nettlecap
