#pragma once

#include "ZNTAttributedText.h"
#include "ZNTOutputStore.h"

#include <string>
#include <string_view>

/// Text in one foreground colour.
inline ZNTAttributedText coloured(std::u16string_view text, ZNTColour colour = znt::colours::white)
{
    ZNTAttributedText made;
    made.text = text;
    made.sets.emplace_back().foreground = colour;
    made.runs = {{0, 0}};
    return made;
}

inline std::u16string everything(const ZNTOutputStore& store)
{
    return store.text(store.start(), store.end());
}
