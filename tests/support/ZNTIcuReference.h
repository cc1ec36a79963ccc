#pragma once

#include <string>
#include <string_view>
#include <unicode/regex.h>
#include <vector>

/// What ICU itself answers, for scanners of ours to be held to.
namespace znt::icu
{

struct Match {
    std::u16string whole;
    std::vector<std::pair<int, std::u16string>> groups; ///< start (-1 where absent) and text, from group 1 on
    int start;
};

inline ::icu::UnicodeString unicodeString(std::u16string_view text)
{
    return {text.data(), static_cast<int>(text.size())};
}

inline std::u16string plainText(const ::icu::UnicodeString& text)
{
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

inline std::u16string replacedAll(std::u16string_view text, const char16_t* pattern, const char16_t* with)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto input = unicodeString(text);
    ::icu::RegexMatcher matcher(pattern, input, 0, status);
    return plainText(matcher.replaceAll(with, status));
}

inline std::vector<Match> matches(std::u16string_view text, const char16_t* pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto input = unicodeString(text);
    ::icu::RegexMatcher matcher(pattern, input, 0, status);
    std::vector<Match> found;
    while (matcher.find(status)) {
        Match match{plainText(matcher.group(status)), {}, matcher.start(status)};
        for (int group = 1; group <= matcher.groupCount(); ++group)
            match.groups.emplace_back(matcher.start(group, status), plainText(matcher.group(group, status)));
        found.push_back(std::move(match));
    }
    return found;
}

} // namespace znt::icu
