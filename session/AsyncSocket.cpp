#include "AsyncSocket.h"
