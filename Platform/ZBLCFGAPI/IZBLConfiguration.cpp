#include "ZBLCFGAPI/IZBLConfiguration.h"

IZBLConfiguration::~IZBLConfiguration() = default;
