#pragma once

#include "ZNTResult.h"

#include <stdexcept>

inline constexpr const char* AsyncSocketErrorDomain = "AsyncSocketErrorDomain";
/// The domain of errors whose code is a getaddrinfo result (RFC 3493).
inline constexpr const char* AsyncSocketNameErrorDomain = "kCFStreamErrorDomainNetDB";

enum AsyncSocketErrorCode : long {
    AsyncSocketCFSocketError = -1,
    AsyncSocketCanceledError = 1,
    AsyncSocketConnectTimeoutError = 2,
    AsyncSocketReadMaxedOutError = 3,
    AsyncSocketReadTimeoutError = 4,
    AsyncSocketWriteTimeoutError = 5
};

ZNTError asyncSocketError(AsyncSocketErrorCode code);
/// `result` is what getaddrinfo returned. `errorNumber` is its errno, which counts if `result` is EAI_SYSTEM.
ZNTError nameResolutionError(int result, int errorNumber);

/// The socket was used in a way that only a mistake in our own code explains.
class AsyncSocketException final : public std::logic_error
{
public:
    using std::logic_error::logic_error;
};
