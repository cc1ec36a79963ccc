#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class ZNTConsoleReplies;

/// How the editing commands read what follows their name, and how they number what they list.
namespace znt::words
{

/// The first word behind a command's name: "add" in "/trigger add".
struct Verb {
    std::u16string_view name;
    std::function<void(std::u16string_view words)> carryOut;
};

/// Carries out the verb that `words` begin with. Complains if there is no such verb.
void carryOutVerb(ZNTConsoleReplies& replies, std::u16string_view command, const std::vector<Verb>& verbs,
                  std::u16string_view words);

/// "3. " for the index 2.
std::u16string numbered(std::size_t index);

/// The index of the entry that `word` means: a number as the list shows it, or the name of exactly one entry.
/// If it means none or several, complains and returns -1. `kind` says what the entries are ("trigger").
long indexMeant(ZNTConsoleReplies& replies, const std::vector<std::u16string>& names,
                std::u16string_view word, std::u16string_view kind);

template <typename Record>
std::vector<std::u16string> namesOf(const std::vector<Record>& records, std::u16string Record::*name)
{
    std::vector<std::u16string> names;
    for (const auto& record : records)
        names.push_back(record.*name);
    return names;
}

} // namespace znt::words
