#include "ZNTLiteralFilter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

namespace
{

constexpr std::size_t longestGram = 8;
/// Characters of the text that are taken at a time; a multiple of every stride.
constexpr std::size_t blockLength = 15'360;

std::uint64_t hashed(std::uint64_t gram) { return gram * 0x9E3779B97F4A7C15U; }

std::uint64_t gramAt(const unsigned char* lowBytes)
{
    std::uint64_t gram; // NOLINT(cppcoreguidelines-init-variables): filled at once
    std::memcpy(&gram, lowBytes, sizeof gram);
    if constexpr (std::endian::native == std::endian::big)
        gram = __builtin_bswap64(gram);
    return gram;
}

std::uint64_t maskOf(std::size_t gramLength) { return ~std::uint64_t{0} >> (64 - 8 * gramLength); }

void copyLowBytes(std::u16string_view text, unsigned char* lowBytes)
{
    for (std::size_t at = 0; at < text.size(); ++at)
        lowBytes[at] = static_cast<unsigned char>(text[at]);
}

std::vector<unsigned char> paddedLowBytes(std::u16string_view text)
{
    std::vector<unsigned char> lowBytes(text.size() + longestGram);
    copyLowBytes(text, lowBytes.data());
    return lowBytes;
}

/// How often a gram occurs in a game's text, roughly: as if its characters came one by one with the
/// frequencies of English. A wrong guess costs time and nothing else.
double expectedFrequency(std::uint64_t gram, std::size_t length)
{
    constexpr std::string_view byFrequency = " etaoinsrhldcumfpgwybvk";
    constexpr double rare = 1.0 / 512;
    double frequency = 1;
    for (; length > 0; --length, gram >>= 8) {
        const auto rank = byFrequency.find(static_cast<char>(gram & 0xFF));
        frequency *= rank == std::string_view::npos ? rare : 0.18 / static_cast<double>(rank + 2);
    }
    return frequency;
}

/// How often each gram occurs in the literals themselves, roughly (grams can share a counter). The literals
/// of one player's triggers often begin or end alike, and a gram from there would cause a comparison with all
/// of them.
class GramCounts
{
public:
    void add(std::uint64_t gram) { ++counts[hashed(gram) >> 48]; }
    [[nodiscard]] std::uint32_t of(std::uint64_t gram) const { return counts[hashed(gram) >> 48]; }

private:
    std::vector<std::uint32_t> counts = std::vector<std::uint32_t>(65536);
};

/// Where the `stride` consecutive grams begin that are noted of a literal. Any would do. Those are taken that
/// the walk meets least often by chance, because each meeting costs a comparison.
template <typename GramOf>
std::size_t cheapestWindow(std::size_t shortest, std::size_t gramLength, std::size_t stride,
                           std::size_t length, const GramCounts& counts, GramOf gramOf)
{
    std::size_t window = 0;
    auto leastWork = std::numeric_limits<double>::infinity();
    for (std::size_t start = 0; start + shortest <= length; ++start) {
        double work = 0;
        for (std::size_t at = start; at < start + stride; ++at)
            work += expectedFrequency(gramOf(at), gramLength) * counts.of(gramOf(at));
        if (work < leastWork) {
            leastWork = work;
            window = start;
        }
    }
    return window;
}

} // namespace

// Occurrences

void ZNTLiteralOccurrences::prepareFor(std::size_t literals, std::size_t textLength)
{
    if (chains.size() == literals) {
        for (const auto literal : foundLiterals)
            chains[literal] = {};
    } else {
        chains.assign(literals, {});
    }
    foundLiterals.clear();
    links.clear();
    mostLinks = 65'536 + textLength / 4;
    isComplete = true;
}

void ZNTLiteralOccurrences::add(std::uint32_t literal, std::size_t offset)
{
    auto& chain = chains[literal];
    if (chain.first >= 0 && links.size() >= mostLinks) {
        isComplete = false;
        return;
    }
    const auto link = static_cast<std::int32_t>(links.size());
    links.push_back({static_cast<std::int32_t>(offset), -1});
    if (chain.first < 0) {
        chain.first = link;
        foundLiterals.push_back(literal);
    } else {
        links[static_cast<std::size_t>(chain.last)].next = link;
    }
    chain.last = link;
}

ZNTLiteralPlaces::ZNTLiteralPlaces(const ZNTLiteralOccurrences& occurrences, std::uint32_t number,
                                   std::u16string_view literal, std::u16string_view text)
    : occurrences(occurrences),
      literal(literal),
      text(text),
      link(occurrences.chains[number].first)
{
}

std::optional<std::size_t> ZNTLiteralPlaces::next()
{
    if (!occurrences.isComplete) {
        const auto at = text.find(literal, searchedUpTo);
        if (at == text.npos)
            return std::nullopt;
        searchedUpTo = at + 1;
        return at;
    }
    if (link < 0)
        return std::nullopt;
    const auto& place = occurrences.links[static_cast<std::size_t>(link)];
    link = place.next;
    return static_cast<std::size_t>(place.offset);
}

// Preparation

/// Literals from `shortest` on, up to the next longer band. A gram at a multiple of the stride lies within
/// every literal: shortest = gramLength + stride - 1.
struct ZNTLiteralFilter::Band {
    std::size_t shortest, gramLength, stride;
};

ZNTLiteralFilter::ZNTLiteralFilter(std::vector<std::u16string> literals) : literals(std::move(literals))
{
    constexpr Band bands[] = {{12, 8, 5}, {8, 6, 3}, {5, 4, 2}, {4, 3, 2}, {3, 2, 2}, {2, 2, 1}, {1, 1, 1}};
    std::array<std::vector<std::uint32_t>, std::size(bands)> members;
    for (std::uint32_t number = 0; number < this->literals.size(); ++number) {
        const auto* band = std::find_if(std::begin(bands), std::end(bands), [&](const Band& candidate) {
            return this->literals[number].size() >= candidate.shortest;
        });
        members[static_cast<std::size_t>(band - bands)].push_back(number);
    }
    // Each group is a walk of its own. Two walks with long strides cost more than one with the shorter stride
    // of the two, unless so many literals meet in it that its short grams occur everywhere.
    constexpr std::size_t mostToMerge = 20'000, shortestToMergeInto = 5;
    for (std::size_t band = 0; band < std::size(bands); ++band) {
        auto next = band + 1;
        while (next < std::size(bands) && members[next].empty())
            ++next;
        if (next < std::size(bands) && bands[next].shortest >= shortestToMergeInto &&
            members[band].size() <= mostToMerge)
            members[next].insert(members[next].end(), members[band].begin(), members[band].end());
        else if (!members[band].empty())
            addGroup(bands[band], members[band]);
    }
}

void ZNTLiteralFilter::addGroup(const Band& band, const std::vector<std::uint32_t>& members)
{
    Group group{};
    group.gramMask = maskOf(band.gramLength);
    group.stride = band.stride;

    GramCounts counts;
    for (const auto number : members) {
        const auto lowBytes = paddedLowBytes(literals[number]);
        for (std::size_t at = 0; at + band.gramLength <= literals[number].size(); ++at)
            counts.add(gramAt(&lowBytes[at]) & group.gramMask);
    }
    for (const auto number : members) {
        const auto lowBytes = paddedLowBytes(literals[number]);
        const auto gramOf = [&](std::size_t at) { return gramAt(&lowBytes[at]) & group.gramMask; };
        const auto window = cheapestWindow(band.shortest, band.gramLength, band.stride,
                                           literals[number].size(), counts, gramOf);
        for (std::size_t at = window; at < window + band.stride; ++at)
            group.entries.push_back({gramOf(at), number, static_cast<std::uint32_t>(at)});
    }
    group.indexEntries();
    groups.push_back(std::move(group));
}

/// Sorts the entries into buckets by their grams, and sets a bit for each gram.
void ZNTLiteralFilter::Group::indexEntries()
{
    // At most one bit in 64 is set, and the bitmap fits into the processor's second cache.
    const auto bitmapBits = std::clamp<unsigned>(std::bit_width(entries.size() * 64), 12, 22);
    const auto bucketBits = std::clamp<unsigned>(std::bit_width(entries.size()), 4, 18);
    bitmapShift = 64 - bitmapBits;
    bucketShift = 64 - bucketBits;
    bitmap.resize(std::size_t{1} << (bitmapBits - 6));
    const auto bucketOf = [&](const Entry& entry) { return hashed(entry.gram) >> bucketShift; };
    // If a gram stands more than once in a literal, its last place belongs to the earliest occurrence, so
    // places are added in ascending order.
    std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
        return bucketOf(a) != bucketOf(b) ? bucketOf(a) < bucketOf(b) : a.offsetInLiteral > b.offsetInLiteral;
    });
    bucketStarts.resize((std::size_t{1} << bucketBits) + 1);
    for (const auto& entry : entries) {
        const auto bit = hashed(entry.gram) >> bitmapShift;
        bitmap[bit / 64] |= std::uint64_t{1} << (bit % 64);
        ++bucketStarts[bucketOf(entry) + 1];
    }
    for (std::size_t bucket = 1; bucket < bucketStarts.size(); ++bucket)
        bucketStarts[bucket] += bucketStarts[bucket - 1];
}

// The search

void ZNTLiteralFilter::search(std::u16string_view text, ZNTLiteralOccurrences& occurrences) const
{
    occurrences.prepareFor(literals.size(), text.size());
    if (groups.empty())
        return;
    std::array<unsigned char, blockLength + longestGram> lowBytes;
    for (std::size_t start = 0; start < text.size(); start += blockLength) {
        const auto block = text.substr(start, blockLength + longestGram);
        copyLowBytes(block, lowBytes.data());
        std::fill_n(lowBytes.data() + block.size(), std::min(longestGram, lowBytes.size() - block.size()),
                    static_cast<unsigned char>(0));
        for (const auto& group : groups)
            searchBlock(group, text, start, std::min(blockLength, text.size() - start), lowBytes.data(),
                        occurrences);
    }
}

void ZNTLiteralFilter::searchBlock(const Group& group, std::u16string_view text, std::size_t blockStart,
                                   std::size_t length, const unsigned char* lowBytes,
                                   ZNTLiteralOccurrences& occurrences) const
{
    const auto* const bitmap = group.bitmap.data();
    const auto mask = group.gramMask;
    const auto stride = group.stride;
    const auto shift = group.bitmapShift;
    const auto hashAt = [&](std::size_t at) { return hashed(gramAt(lowBytes + at) & mask); };
    const auto isSet = [&](std::uint64_t hash) {
        const auto bit = hash >> shift;
        return bitmap[bit / 64] >> (bit % 64) & 1;
    };
    const auto lookAt = [&](std::size_t at) {
        const auto hash = hashAt(at);
        if (isSet(hash) != 0)
            compare(group, gramAt(lowBytes + at) & mask, hash, text, blockStart + at, occurrences);
    };
    std::size_t at = 0;
    // Four places at a time with one branch, because a bit is seldom set.
    for (; at + 3 * stride < length; at += 4 * stride) {
        const auto set = isSet(hashAt(at)) | isSet(hashAt(at + stride)) | isSet(hashAt(at + 2 * stride)) |
                         isSet(hashAt(at + 3 * stride));
        if (set != 0) [[unlikely]] {
            for (std::size_t place = at; place < at + 4 * stride; place += stride)
                lookAt(place);
        }
    }
    for (; at < length; at += stride)
        lookAt(at);
}

void ZNTLiteralFilter::compare(const Group& group, std::uint64_t gram, std::uint64_t hash,
                               std::u16string_view text, std::size_t offset,
                               ZNTLiteralOccurrences& occurrences) const
{
    const auto bucket = hash >> group.bucketShift;
    for (auto index = group.bucketStarts[bucket]; index < group.bucketStarts[bucket + 1]; ++index) {
        const auto& entry = group.entries[index];
        if (entry.gram != gram || entry.offsetInLiteral > offset)
            continue;
        const auto start = offset - entry.offsetInLiteral;
        const auto& literal = literals[entry.literal];
        if (text.size() - start >= literal.size() &&
            std::memcmp(text.data() + start, literal.data(), literal.size() * sizeof(char16_t)) == 0)
            occurrences.add(entry.literal, start);
    }
}
