#include "ZNTRequiredLiteral.h"

namespace
{

/// Walks over the top level of an expression and gathers runs of characters that stand for themselves. What
/// is inside groups and sets is skipped. It need only be right about where a group, a set or a quantifier
/// ends; if it is not sure, it gives up.
class LiteralWalk
{
public:
    explicit LiteralWalk(std::u16string_view pattern) : pattern(pattern) {}

    std::u16string longest()
    {
        while (at < pattern.size() && isUnderstood)
            takeAtom();
        endRun();
        return isUnderstood ? best : std::u16string();
    }

private:
    void takeAtom()
    {
        const char16_t unit = pattern[at++];
        switch (unit) {
        case u'\\':
            return takeEscape();
        case u'(':
            endRun();
            checkOpening();
            skipGroup();
            return skipQuantifier();
        case u'[':
            endRun();
            skipSet();
            return skipQuantifier();
        case u'|': // neither side is in every match
        case u')':
        case u'*': // this one and the next two: a quantifier that belongs to no atom known here
        case u'+':
        case u'?':
            return giveUp();
        case u'.':
        case u'^':
        case u'$':
        case u'{':
        case u'}':
        case u']':
            endRun();
            return skipQuantifier();
        default:
            return takeLiteral(unit);
        }
    }

    void takeLiteral(char16_t unit)
    {
        run += unit;
        if (at == pattern.size())
            return;
        // "ab?" contains "a" only; "ab+" contains "ab", but what follows need not stand beside it. A "*" in a
        // check has become a group, so none follows a character here.
        const char16_t next = pattern[at];
        if (next == u'?' || next == u'{')
            dropLastCharacter();
        if (next == u'?' || next == u'{' || next == u'+') {
            endRun();
            skipQuantifier();
        }
    }

    void takeEscape()
    {
        if (at == pattern.size())
            return giveUp();
        const char16_t unit = pattern[at++];
        const bool isLetterOrDigit = (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
                                     (unit >= u'a' && unit <= u'z');
        if (unit > u' ' && unit < 0x7F && !isLetterOrDigit)
            return takeLiteral(unit);
        if (std::u16string_view(u"wWdDsSbBAZzhHvVRXG").find(unit) == std::u16string_view::npos)
            return giveUp();
        endRun();
        skipQuantifier();
    }

    /// After the opening parenthesis.
    void skipGroup()
    {
        for (int depth = 1; depth > 0;) {
            if (at == pattern.size())
                return giveUp();
            const char16_t unit = pattern[at++];
            if (unit == u'\\')
                skipEscapeInside();
            else if (unit == u'[')
                skipSet();
            else if (unit == u'(') {
                ++depth;
                checkOpening();
            } else if (unit == u')')
                --depth;
            if (!isUnderstood)
                return;
        }
    }

    /// A flag can change how all that follows reads, a comment can hold any character.
    void checkOpening()
    {
        if (at == pattern.size() || pattern[at] != u'?')
            return;
        const auto after = pattern.substr(at + 1, 1);
        if (after.empty() || std::u16string_view(u":=!<>").find(after) == std::u16string_view::npos)
            giveUp();
    }

    /// After the opening bracket. Only sets without sets inside.
    void skipSet()
    {
        if (at < pattern.size() && pattern[at] == u'^')
            ++at;
        if (at < pattern.size() && pattern[at] == u']')
            return giveUp();
        while (at < pattern.size() && isUnderstood) {
            const char16_t unit = pattern[at++];
            if (unit == u']')
                return;
            if (unit == u'[')
                return giveUp();
            if (unit == u'\\')
                skipEscapeInside();
        }
        giveUp();
    }

    /// Quoted text and the character behind "\c" can hold brackets that open or close nothing.
    void skipEscapeInside()
    {
        if (at == pattern.size() || pattern[at] == u'Q' || pattern[at] == u'c')
            return giveUp();
        ++at;
    }

    void skipQuantifier()
    {
        while (at < pattern.size() && isUnderstood && (pattern[at] == u'?' || pattern[at] == u'+'))
            ++at;
        if (at == pattern.size() || pattern[at] != u'{')
            return;
        const auto end = pattern.find(u'}', at);
        if (end == std::u16string_view::npos)
            return giveUp();
        at = end + 1;
        while (at < pattern.size() && (pattern[at] == u'?' || pattern[at] == u'+'))
            ++at;
    }

    void dropLastCharacter()
    {
        const bool isTrail = (run.back() & 0xFC00) == 0xDC00;
        run.pop_back();
        if (isTrail && !run.empty())
            run.pop_back();
    }

    void endRun()
    {
        if (run.size() > best.size())
            best = run;
        run.clear();
    }

    void giveUp() { isUnderstood = false; }

    std::u16string_view pattern;
    std::size_t at = 0;
    bool isUnderstood = true;
    std::u16string run, best;
};

} // namespace

namespace znt
{

std::u16string requiredLiteral(std::u16string_view pattern) { return LiteralWalk(pattern).longest(); }

} // namespace znt
