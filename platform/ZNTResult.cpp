#include "ZNTResult.h"

#include <system_error>

ZNTError posixError(int errorNumber)
{
    return {ZNTPOSIXErrorDomain, errorNumber, std::generic_category().message(errorNumber)};
}
