#include "ZNTVersion.h"

std::string znt::version() { return ZANTOR_VERSION; }

std::string znt::homePage() { return ZANTOR_HOME_PAGE; }
