#pragma once

#include "AsyncSocket.h"

/// For the socket's own sources. Carries out `step`, which may call the delegate. False if the delegate
/// destroyed the socket or ended the connection; the caller must then return without touching the socket.
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
