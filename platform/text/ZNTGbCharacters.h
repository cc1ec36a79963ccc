#pragma once

#include <string_view>

/// The characters of the first rows of GB 2312 that ICU's strict EUC-CN converter knows by names of its own:
/// the dash and the middle dot by those that Japanese gave them, and what GBK added there (the brackets of
/// vertical writing, small Roman numerals, the Euro sign, letters of Pinyin) by private ones, for which no
/// font has a picture. Games, fonts and input methods use the names of GB 18030.
namespace znt
{

/// What the converter made of EUC-CN bytes, character by character to the usual names.
void toUsualGbNames(char16_t* from, const char16_t* end);

/// What is to be encoded, character by character to the names that the converter knows.
void toConverterGbNames(char16_t* from, const char16_t* end);

} // namespace znt
