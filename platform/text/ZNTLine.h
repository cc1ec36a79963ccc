#pragma once

#include <string_view>

/// One line of a text.
struct ZNTLine {
    std::u16string_view whole; ///< with its line end: LF, CR, CR LF or LF CR; the last line may have none
    std::u16string_view text;  ///< without it

    /// Takes the first line off `rest`, which is not empty.
    static ZNTLine takenFrom(std::u16string_view& rest);
};
