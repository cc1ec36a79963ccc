#include "AsyncSocketPackets.h"

#include <algorithm>
#include <cassert>

std::string_view AsyncReadPacket::data() const
{
    return std::string_view(*buffer).substr(startOffset, bytesDone);
}

float AsyncReadPacket::progress() const
{
    return readLength == 0 ? 1.0F : static_cast<float>(bytesDone) / static_cast<float>(readLength);
}

AsyncReadState AsyncReadPacket::takeFromPreBuffer(AsyncSocketPreBuffer& preBuffer)
{
    bool foundTerm = false;
    const auto taken = preBuffer.view().substr(0, shareOfPreBuffer(preBuffer.view(), foundTerm));
    std::copy(taken.begin(), taken.end(), roomFor(taken.size()));
    bytesDone += taken.size();
    preBuffer.removeFront(taken.size());
    return foundTerm ? AsyncReadState::Done : stateWithoutTerm();
}

std::size_t AsyncReadPacket::shareOfPreBuffer(std::string_view preBuffered, bool& foundTerm) const
{
    if (readLength != 0)
        return std::min(readLength - bytesDone, preBuffered.size());
    if (!term)
        return limitedToMaxLength(preBuffered.size());

    const auto searched = preBuffered.substr(0, limitedToMaxLength(preBuffered.size()));
    const auto before = data().substr(bytesDone - std::min(bytesDone, term->size() - 1));
    // A terminator may begin at the end of what is read and end in the pre-buffer: search where they meet.
    std::string joint(before);
    joint += searched.substr(0, term->size() - 1);
    std::size_t end = std::string_view::npos;
    if (const auto at = joint.find(*term); at != std::string::npos)
        end = at + term->size() - before.size();
    else if (const auto whole = searched.find(*term); whole != std::string_view::npos)
        end = whole + term->size();
    foundTerm = end != std::string_view::npos;
    return foundTerm ? end : preBuffered.size();
}

std::size_t AsyncReadPacket::bytesToAskFor(std::size_t available, bool isPreBuffering) const
{
    if (readLength != 0)
        return std::min(readLength - bytesDone, available);
    if (!term || isPreBuffering)
        return limitedToMaxLength(available);
    return limitedToMaxLength(bytesThatCannotPassTerm());
}

std::size_t AsyncReadPacket::bytesThatCannotPassTerm() const
{
    assert(term && "This method does not apply to non-term reads");
    const std::string_view wanted(*term);
    // If the data ends with the first n bytes of the terminator, the rest of it may be all that comes.
    for (auto begun = std::min(bytesDone, wanted.size() - 1); begun > 0; --begun)
        if (data().ends_with(wanted.substr(0, begun)))
            return wanted.size() - begun;
    return wanted.size();
}

char* AsyncReadPacket::roomFor(std::size_t count)
{
    const auto needed = startOffset + bytesDone + count;
    if (buffer->size() < needed)
        buffer->resize(needed);
    return buffer->data() + startOffset + bytesDone;
}

AsyncReadState AsyncReadPacket::tookFromNetwork(std::size_t count, AsyncSocketPreBuffer& preBuffer,
                                                bool isPreBuffering)
{
    const auto before = bytesDone;
    bytesDone += count;
    if (!term)
        return stateWithoutTerm();
    if (!isPreBuffering)
        return data().ends_with(*term) ? AsyncReadState::Done : stateWithoutTerm();

    // The terminator may have begun in an earlier piece.
    const auto at = data().find(*term, before - std::min(before, term->size() - 1));
    if (at == std::string_view::npos)
        return stateWithoutTerm();
    const auto end = at + term->size();
    preBuffer.append(data().substr(end));
    bytesDone = end;
    return AsyncReadState::Done;
}

void AsyncReadPacket::cutBuffer()
{
    const auto end = startOffset + bytesDone;
    if (bufferOwner)
        buffer->resize(end);
    else if (buffer->size() > originalBufferLength)
        buffer->resize(std::max(end, originalBufferLength));
}

std::size_t AsyncReadPacket::limitedToMaxLength(std::size_t count) const
{
    return maxLength == 0 ? count : std::min(count, maxLength - bytesDone);
}

AsyncReadState AsyncReadPacket::stateWithoutTerm() const
{
    if (readLength != 0)
        return bytesDone == readLength ? AsyncReadState::Done : AsyncReadState::Unfinished;
    if (maxLength == 0 || bytesDone < maxLength)
        return AsyncReadState::Unfinished;
    return term ? AsyncReadState::Overflow : AsyncReadState::Done;
}
