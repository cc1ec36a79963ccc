#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

/// The passwords of names, until the game ends. Nothing is written anywhere. Case does not matter in names.
class ZNTDemoPasswords
{
public:
    static constexpr std::size_t longest = 64;   ///< UTF-16 units of a password
    static constexpr std::size_t mostKept = 256; ///< past it the oldest is forgotten, and its name is free

    [[nodiscard]] bool hasPassword(std::u16string_view name) const;
    /// Whether `password` opens `name`. A name without a password gets this one.
    bool open(std::u16string_view name, std::u16string_view password);

private:
    struct Kept {
        std::u16string name; ///< in lower case
        std::u16string password;
    };
    [[nodiscard]] const Kept* keptFor(std::u16string_view name) const;

    std::deque<Kept> kept;
};
