#pragma once

#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Texts made of the given pieces in random order: the same sequence of texts in every run.
class ZNTRandomText
{
public:
    explicit ZNTRandomText(std::vector<std::u16string> pieces) : pieces(std::move(pieces)) {}

    /// The pieces are parted by broken bars.
    static ZNTRandomText ofPieces(std::u16string_view parted)
    {
        std::vector<std::u16string> pieces(1);
        for (const char16_t unit : parted)
            if (unit == u'\u00A6')
                pieces.emplace_back();
            else
                pieces.back() += unit;
        return ZNTRandomText(std::move(pieces));
    }

    std::u16string next(std::size_t mostPieces)
    {
        std::u16string text;
        for (auto left = random() % (mostPieces + 1); left > 0; --left)
            text += pieces[random() % pieces.size()];
        return text;
    }
    std::size_t number(std::size_t below) { return random() % below; }

private:
    std::vector<std::u16string> pieces;
    std::mt19937 random{20'241};
};
