#include "ZNTTextDecoder.h"

#include "ZNTTextScan.h"
#include "ZNTUtf8Decoder.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

class ZNTTextDecoder::Reading
{
public:
    virtual ~Reading() = default;
    virtual void decode(std::string_view bytes, std::u16string& text) = 0;
    virtual void finish(std::u16string& text) = 0;
};

namespace
{

void appendWidened(std::string_view bytes, std::u16string& text)
{
    const auto before = text.size();
    text.resize(before + bytes.size());
    znt::widen(bytes, text.data() + before);
}

class ByteReading final : public ZNTTextDecoder::Reading
{
public:
    void decode(std::string_view bytes, std::u16string& text) override { appendWidened(bytes, text); }
    void finish(std::u16string&) override {} // nothing ever waits
};

class Utf8Reading final : public ZNTTextDecoder::Reading
{
public:
    void decode(std::string_view bytes, std::u16string& text) override
    {
        const auto before = text.size();
        utf8.decode(bytes, text);
        takeMarkAway(text, before);
    }
    void finish(std::u16string& text) override
    {
        const auto before = text.size();
        utf8.finish(text);
        takeMarkAway(text, before);
    }

private:
    void takeMarkAway(std::u16string& text, std::size_t before)
    {
        if (!isAtBeginning || text.size() == before)
            return;
        isAtBeginning = false;
        if (text[before] == byteOrderMark)
            text.erase(before, 1);
    }

    static constexpr char16_t byteOrderMark = 0xFEFF;
    ZNTUtf8Decoder utf8;
    bool isAtBeginning = true;
};

/// ICU gives the bytes of a bad sequence, among them ASCII ones where a pair is well-formed and unassigned.
void replaceBadBytes(const void*, UConverterToUnicodeArgs* arguments, const char* bytes, int32_t count,
                     UConverterCallbackReason reason, UErrorCode* error)
{
    if (reason > UCNV_IRREGULAR)
        return; // the converter is reset, closed or cloned
    *error = U_ZERO_ERROR;
    for (int32_t at = 0; at < count; ++at) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        const char16_t unit = byte < 0x80 ? byte : 0xFFFD;
        ucnv_cbToUWriteUChars(arguments, &unit, 1, 0, error);
    }
}

class ConverterReading final : public ZNTTextDecoder::Reading
{
public:
    /// Takes `converter`, which is not null.
    explicit ConverterReading(UConverter* converter) : converter(converter)
    {
        UErrorCode error = U_ZERO_ERROR;
        ucnv_setToUCallBack(converter, &replaceBadBytes, nullptr, nullptr, nullptr, &error);
    }
    ~ConverterReading() override { ucnv_close(converter); }
    ConverterReading(const ConverterReading&) = delete;
    ConverterReading& operator=(const ConverterReading&) = delete;

    void decode(std::string_view bytes, std::u16string& text) override
    {
        if (!isInsideCharacter()) {
            const auto ascii = bytes.substr(0, znt::asciiLength(bytes));
            appendWidened(ascii, text);
            bytes.remove_prefix(ascii.size());
        }
        if (!bytes.empty())
            convert(bytes, /*flush=*/false, text);
    }
    void finish(std::u16string& text) override { convert({}, /*flush=*/true, text); }

private:
    [[nodiscard]] bool isInsideCharacter() const
    {
        UErrorCode error = U_ZERO_ERROR;
        return ucnv_toUCountPending(converter, &error) > 0;
    }

    void convert(std::string_view bytes, bool flush, std::u16string& text)
    {
        const auto before = text.size();
        // A byte gives one unit at most, and so does each that waits.
        text.resize(before + bytes.size() + mostWaiting);
        char16_t* to = text.data() + before;
        const char* from = bytes.data();
        UErrorCode error = U_ZERO_ERROR;
        ucnv_toUnicode(converter, &to, text.data() + text.size(), &from, bytes.data() + bytes.size(), nullptr,
                       flush, &error);
        text.resize(static_cast<std::size_t>(to - text.data()));
    }

    static constexpr std::size_t mostWaiting = 4;
    UConverter* converter;
};

std::unique_ptr<ZNTTextDecoder::Reading> readingOf(ZNTStringEncoding encoding)
{
    if (encoding == ZNTStringEncoding::Utf8)
        return std::make_unique<Utf8Reading>(); // several times as fast as ICU's
    const auto& row = znt::rowOf(encoding);
    UErrorCode error = U_ZERO_ERROR;
    if (const char* name = row.widerConverter ? row.widerConverter : row.converter)
        if (auto* converter = ucnv_open(name, &error))
            return std::make_unique<ConverterReading>(converter);
    return std::make_unique<ByteReading>(); // also if ICU lacks the table
}

} // namespace

ZNTTextDecoder::ZNTTextDecoder(ZNTStringEncoding encoding) : encoding_(encoding), reading(readingOf(encoding))
{
}

ZNTTextDecoder::~ZNTTextDecoder() = default;
ZNTTextDecoder::ZNTTextDecoder(ZNTTextDecoder&& other) noexcept = default;
ZNTTextDecoder& ZNTTextDecoder::operator=(ZNTTextDecoder&& other) noexcept = default;

void ZNTTextDecoder::decode(std::string_view bytes, std::u16string& text) { reading->decode(bytes, text); }

void ZNTTextDecoder::finish(std::u16string& text) { reading->finish(text); }

void ZNTTextDecoder::reset() { reading = readingOf(encoding_); }
