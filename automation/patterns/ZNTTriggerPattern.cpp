#include "ZNTTriggerPattern.h"

#include "ZNTRequiredLiteral.h"
#include "ZNTText.h"

std::u16string ZNTTriggerPattern::expressionForCheck(std::u16string_view check)
{
    constexpr std::u16string_view group = uR"(([\w\s]*))";
    return znt::replacedAll(znt::replacedAll(check, u"%1", group), u"*", group);
}

ZNTTriggerPattern::ZNTTriggerPattern(std::u16string_view check)
    : check(check),
      wildcards_(ZNTWildcardMatcher::forCheck(check))
{
    if (wildcards_) {
        requiredLiteral_ = wildcards_->requiredLiteral();
        hasGroup_ = wildcards_->hasGroup();
        return;
    }
    // The wildcard matcher does not understand the check, so ICU compiles it now and says what is wrong.
    problem_ = expression().problem();
    hasGroup_ = expression().groupCount() > 0;
    if (problem_.empty())
        requiredLiteral_ = znt::requiredLiteral(expressionForCheck(check));
}

std::string ZNTTriggerPattern::problemWith(std::u16string_view action) const
{
    if (problem_.empty() && !hasGroup_ && znt::contains(action, u"%1"))
        return "no group for the %1 of its action";
    return problem_;
}

ZNTUserExpression& ZNTTriggerPattern::expression()
{
    if (!expression_)
        expression_.emplace(expressionForCheck(check));
    return *expression_;
}
