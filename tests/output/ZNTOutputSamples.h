#pragma once

#include "ZNTAttributedText.h"
#include "ZNTOutputStore.h"

#include <random>
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

/// A line of `pieces` drawn at random; `number` of them.
inline std::u16string randomLine(std::mt19937& random, const std::vector<std::u16string>& pieces,
                                 std::size_t number)
{
    std::u16string line;
    for (std::size_t piece = 0; piece < number; ++piece)
        line += pieces[random() % pieces.size()];
    return line;
}
