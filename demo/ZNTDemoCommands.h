#pragma once

#include "ZNTDemoVillage.h"

#include <string_view>

/// Understands what players type. Commands are English in every language of the game; ways and names are
/// understood in both.
class ZNTDemoCommands
{
public:
    /// Both outlive this.
    ZNTDemoCommands(ZNTDemoVillage& village, const ZNTDemoTexts& texts) : village(village), texts(texts) {}

    /// Answers every line. An empty line gets a prompt.
    void handleLine(ZNTDemoPlayer& player, std::u16string_view line);
    /// Answers a line that was too long to be kept.
    void handleTooLongLine(ZNTDemoPlayer& player);

private:
    [[nodiscard]] std::optional<ZNTDemoDirection> directionCalled(std::u16string_view word) const;
    void look(ZNTDemoPlayer& player, std::u16string_view rest);
    void showColours(ZNTDemoPlayer& player);
    void flood(ZNTDemoPlayer& player, std::u16string_view rest);
    void compress(ZNTDemoPlayer& player, std::u16string_view rest);

    ZNTDemoVillage& village;
    const ZNTDemoTexts& texts;
};
