#include "ZNTVersion.h"

std::string znt::version() { return ZANTOR_VERSION; }
