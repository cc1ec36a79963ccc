#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Where the literals of a `ZNTLiteralFilter` occur in one text. Kept between searches for its memory.
class ZNTLiteralOccurrences
{
public:
    /// The numbers of the literals that occur, in no order.
    [[nodiscard]] const std::vector<std::uint32_t>& found() const { return foundLiterals; }

private:
    friend class ZNTLiteralFilter;
    friend class ZNTLiteralPlaces;
    struct Chain {
        std::int32_t first = -1, last = -1;
    };
    struct Link {
        std::int32_t offset, next;
    };
    void prepareFor(std::size_t literals, std::size_t textLength);
    void add(std::uint32_t literal, std::size_t offset);

    std::vector<std::uint32_t> foundLiterals;
    std::vector<Chain> chains; ///< by literal
    std::vector<Link> links;
    std::size_t mostLinks = 0;
    bool isComplete = true; ///< else the text holds so many occurrences that not all are kept; which literals
                            ///< occur is known all the same
};

/// The places of one literal in a text, one after the other in ascending order.
class ZNTLiteralPlaces
{
public:
    /// `occurrences` are those of a search of `text` that found the literal; both outlive this, and so does
    /// `literal`, its characters.
    ZNTLiteralPlaces(const ZNTLiteralOccurrences& occurrences, std::uint32_t number,
                     std::u16string_view literal, std::u16string_view text);

    std::optional<std::size_t> next();

private:
    const ZNTLiteralOccurrences& occurrences;
    std::u16string_view literal, text;
    std::int32_t link;            ///< the next one; -1 behind the last
    std::size_t searchedUpTo = 0; ///< used if not all places are kept
};

/// Finds thousands of literals in one walk over a text.
///
/// A trigger whose required literal does not occur in a chunk cannot match there. Nearly all triggers of a
/// list fall away so, at the cost of one walk over the text, and the matchers run for the rest alone. For
/// that the filter must find every literal that occurs; a literal that it missed would be a trigger that
/// fails in silence. It may never name one that does not occur either, because its places are used.
///
/// A gram is a few consecutive characters. The walk looks at the text only at multiples of a stride. Of each
/// literal as many consecutive grams are noted as the stride is long, so that wherever the literal stands,
/// one of them stands at such a multiple. There the text's gram is looked up in a bitmap that the processor's
/// nearest cache holds. If its bit is set, a table says which literals have the gram, and these are compared
/// in full. Literals of similar length share the length of their grams and the stride. The longer the
/// literals are, the longer is the stride, and the fewer places are looked at.
class ZNTLiteralFilter
{
public:
    /// The literals are distinct and not empty; their places in the vector are their numbers.
    explicit ZNTLiteralFilter(std::vector<std::u16string> literals);

    void search(std::u16string_view text, ZNTLiteralOccurrences& occurrences) const;

    [[nodiscard]] const std::u16string& literal(std::uint32_t number) const { return literals[number]; }

private:
    /// A gram is up to eight characters by their low bytes, the first in the lowest byte.
    struct Entry {
        std::uint64_t gram;
        std::uint32_t literal;
        std::uint32_t offsetInLiteral;
    };
    /// The literals of one range of lengths.
    struct Group {
        std::uint64_t gramMask;
        std::size_t stride;
        unsigned bitmapShift, bucketShift; ///< of a gram's hash
        std::vector<std::uint64_t> bitmap;
        std::vector<std::uint32_t> bucketStarts; ///< one more than there are buckets
        std::vector<Entry> entries;              ///< by bucket

        void indexEntries();
    };
    struct Band;

    void addGroup(const Band& band, const std::vector<std::uint32_t>& members);
    void searchBlock(const Group& group, std::u16string_view text, std::size_t blockStart,
                     std::size_t blockLength, const unsigned char* lowBytes,
                     ZNTLiteralOccurrences& occurrences) const;
    void compare(const Group& group, std::uint64_t gram, std::uint64_t hash, std::u16string_view text,
                 std::size_t offset, ZNTLiteralOccurrences& occurrences) const;

    std::vector<std::u16string> literals;
    std::vector<Group> groups;
};
