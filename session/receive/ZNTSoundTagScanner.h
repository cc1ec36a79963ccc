#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Finds the tags of the MUD Sound Protocol ("!!SOUND(thunder.wav V=50)") in text: exactly the matches of the
/// ICU expression "!!\w*\([^ ]+.*\)", but in time linear in the text where a backtracking matcher needs the
/// cube of it for "!!(" repeated without ")".
namespace znt
{

/// The first match at or after `from`.
std::optional<std::u16string_view> nextSoundTag(std::u16string_view text, std::size_t from = 0);

/// Takes every match out of `text`.
void stripSoundTags(std::u16string& text);

} // namespace znt
