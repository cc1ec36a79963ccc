#pragma once

#include <optional>

/// Whether the side panel is shown. It folds away by itself while there is no room for it beside the text of
/// a game, unless the player wants it there or wants it gone.
class ZNTPanelFold
{
public:
    void setRoom(bool hasRoom_) { hasRoom = hasRoom_; }
    /// A choice that is what the panel does by itself holds no longer than the room stays as it is.
    void choose(bool shown)
    {
        if (shown == hasRoom)
            choice.reset();
        else
            choice = shown;
    }
    [[nodiscard]] bool isShown() const { return choice.value_or(hasRoom); }

private:
    bool hasRoom = true;
    std::optional<bool> choice;
};
