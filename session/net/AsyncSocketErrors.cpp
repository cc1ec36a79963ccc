#include "AsyncSocketErrors.h"

#include <netdb.h>

namespace
{

const char* descriptionOf(AsyncSocketErrorCode code)
{
    switch (code) {
    case AsyncSocketCFSocketError:
        return "General CFSocket error";
    case AsyncSocketCanceledError:
        return "Connection canceled";
    case AsyncSocketConnectTimeoutError:
        return "Attempt to connect to host timed out";
    case AsyncSocketReadMaxedOutError:
        return "Read operation reached set maximum length";
    case AsyncSocketReadTimeoutError:
        return "Read operation timed out";
    case AsyncSocketWriteTimeoutError:
        return "Write operation timed out";
    }
    return "";
}

} // namespace

ZNTError asyncSocketError(AsyncSocketErrorCode code)
{
    return {AsyncSocketErrorDomain, code, descriptionOf(code)};
}

ZNTError nameResolutionError(int result, int errorNumber)
{
    if (result == EAI_SYSTEM)
        return posixError(errorNumber);
    return {AsyncSocketNameErrorDomain, result, ::gai_strerror(result)};
}
