// Sets environment variables for one test and puts the old values back.
#ifndef VYR_TESTS_SCOPEDENVIRONMENT_H
#define VYR_TESTS_SCOPEDENVIRONMENT_H

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vyr::test {

class ScopedEnvironment
{
public:
    ScopedEnvironment() = default;
    ScopedEnvironment(const ScopedEnvironment &) = delete;
    ScopedEnvironment &operator=(const ScopedEnvironment &) = delete;

    ~ScopedEnvironment()
    {
        for (auto it = m_saved.rbegin(); it != m_saved.rend(); ++it) {
            if (it->second)
                ::setenv(it->first.c_str(), it->second->c_str(), 1);
            else
                ::unsetenv(it->first.c_str());
        }
    }

    // An empty optional unsets the variable.
    void set(const std::string &name, const std::optional<std::string> &value)
    {
        const char *old = std::getenv(name.c_str());
        m_saved.emplace_back(name, old ? std::optional<std::string>(old) : std::nullopt);
        if (value)
            ::setenv(name.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name.c_str());
    }

private:
    std::vector<std::pair<std::string, std::optional<std::string>>> m_saved;
};

} // namespace vyr::test

#endif // VYR_TESTS_SCOPEDENVIRONMENT_H
