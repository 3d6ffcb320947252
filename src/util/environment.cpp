#include "util/environment.h"

#include <cstdlib>

namespace vyr {

std::string getEnvironment(const std::string &name)
{
    const char *value = std::getenv(name.c_str());
    return value ? std::string(value) : std::string();
}

bool setEnvironment(const std::string &name, const std::string &value, bool overwrite)
{
    if (name.empty() || name.find('=') != std::string::npos)
        return false;
    if (!overwrite && !getEnvironment(name).empty())
        return false;
    return ::setenv(name.c_str(), value.c_str(), 1) == 0;
}

} // namespace vyr
