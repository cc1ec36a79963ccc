#pragma once

#include "ZNTDemoScreen.h"
#include "ZNTDemoTexts.h"

#include <string>

namespace znt::demo
{

/// What hangs in the gallery, as lines divided by line feeds: two pictures in as many colours as the screen
/// has, and one word in six scripts if the screen has every character. The words say all that the pictures
/// show.
std::u16string galleryText(const ZNTDemoTexts& texts, const ZNTDemoScreen& screen);

} // namespace znt::demo
