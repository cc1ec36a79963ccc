#pragma once

#include "AsyncSocket.h"

/// For the socket's own sources. Lets the delegate hear of something; false where its answer was to destroy
/// the socket or to end the connection that it heard about, so that nothing further may be done for it.
template <typename Call>
bool AsyncSocket::tellDelegate(Call call)
{
    const std::weak_ptr<char> alive = life;
    const auto connection = theConnection;
    if (theDelegate)
        call(*theDelegate);
    return !alive.expired() && connection == theConnection;
}
