#pragma once

#include "ZNTDemoTexts.h"

/// The texts of each language, each in a file of its own.
namespace znt::demo
{

const ZNTDemoTexts& english();
const ZNTDemoTexts& simplifiedChinese();
const ZNTDemoTexts& traditionalChinese();

} // namespace znt::demo
