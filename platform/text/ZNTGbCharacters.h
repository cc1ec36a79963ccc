#pragma once

#include <string_view>

/// Some characters of the first rows of GB 2312 have two Unicode code points (here: names). ICU's strict
/// EUC-CN converter uses the Japanese ones for the dash and the middle dot, and private ones, which no font
/// can draw, for what GBK added (brackets of vertical writing, small Roman numerals, the Euro sign, letters
/// of Pinyin). Games, fonts and input methods use those of GB 18030.
namespace znt
{

/// Changes each character that the converter has decoded to its usual name.
void toUsualGbNames(char16_t* from, const char16_t* end);

/// Changes each character that is to be encoded to the name that the converter knows.
void toConverterGbNames(char16_t* from, const char16_t* end);

} // namespace znt
