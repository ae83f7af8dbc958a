#pragma once

// Texts between the core's std::string and Qt. The program's own messages, captions and unit
// words are UTF-8 ("ft²"); the texts of the project's fields are single bytes (Latin-1), as the
// project file stores them.

#include <string>
#include <string_view>

#include <QString>

namespace quench::gui {

inline QString Text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string Utf8(const QString& text) {
    return text.toUtf8().toStdString();
}

inline QString Latin1(std::string_view bytes) {
    return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

inline std::string Latin1(const QString& text) {
    return text.toLatin1().toStdString();
}

} // namespace quench::gui
