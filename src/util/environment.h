// The process environment as the library reads and publishes it.
#ifndef VYR_UTIL_ENVIRONMENT_H
#define VYR_UTIL_ENVIRONMENT_H

#include <string>

namespace vyr {

// The variable's value, or the empty text when it is not set.
std::string getEnvironment(const std::string &name);

// Sets `name` to `value`. With `overwrite` false a variable that already has
// a non-empty value is left alone and the result is false; otherwise the
// result says whether the environment took the value. An empty value leaves
// the variable set but empty, which every reader here treats as unset.
bool setEnvironment(const std::string &name, const std::string &value, bool overwrite);

} // namespace vyr

#endif // VYR_UTIL_ENVIRONMENT_H
