#pragma once

#include "AsyncSocket.h"

/// For the socket's own sources. Carries out `step`, which may call the delegate. False if the delegate then
/// destroyed the socket or ended the connection, so that nothing further may be done for it.
template <typename Step>
bool AsyncSocket::outlives(Step step)
{
    const std::weak_ptr<char> alive = life;
    const auto connection = theConnection;
    step();
    return !alive.expired() && connection == theConnection;
}

/// Calls the delegate, if there is one; answers as above.
template <typename Call>
bool AsyncSocket::tellDelegate(Call call)
{
    return outlives([&] {
        if (theDelegate)
            call(*theDelegate);
    });
}
