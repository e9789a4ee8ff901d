#pragma once

// Between the program's UTF-8 texts and Qt's UTF-16, and between the two ways of counting: the
// program counts characters, Qt counts UTF-16 units.

#include <QString>
#include <string>
#include <string_view>

namespace ostrel {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  return {utf8.constData(), static_cast<std::size_t>(utf8.size())};
}

/// Characters in the first `units` UTF-16 units.
inline int CharactersIn(const QString& text, int units) {
  int count = 0;
  for (int i = 0; i < units; ++i) count += text[i].isLowSurrogate() ? 0 : 1;
  return count;
}

/// UTF-16 units that the first `characters` characters take.
inline int UnitsOf(const QString& text, int characters) {
  int units = 0;
  for (; units < text.size() && (characters > 0 || text[units].isLowSurrogate()); ++units) {
    if (!text[units].isLowSurrogate()) --characters;
  }
  return units;
}

}  // namespace ostrel
