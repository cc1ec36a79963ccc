#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Text between the logic and Qt: both are UTF-16, so nothing is converted.
namespace znt
{

inline QString qtText(std::u16string_view text)
{
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

/// For names and titles in tables of the program, which are Latin-1.
inline QString latinText(std::string_view latin)
{
    return QString::fromLatin1(latin.data(), static_cast<qsizetype>(latin.size()));
}

inline std::u16string textOfQt(const QString& text) { return text.toStdU16String(); }

} // namespace znt
