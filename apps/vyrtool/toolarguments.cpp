#include "toolarguments.h"

#include <algorithm>
#include <cstdio>

std::optional<std::string> ToolArguments::option(const std::string &name) const
{
    const auto found = options.find(name);
    return found == options.end() ? std::nullopt : std::optional<std::string>(found->second);
}

std::vector<std::string> ToolArguments::all(const std::string &name) const
{
    std::vector<std::string> values;
    const auto [first, last] = options.equal_range(name);
    for (auto it = first; it != last; ++it)
        values.push_back(it->second);
    return values;
}

bool ToolArguments::hasFlag(const std::string &name) const
{
    return std::find(flags.begin(), flags.end(), name) != flags.end();
}

std::optional<ToolArguments> readToolArguments(std::span<const std::string_view> arguments,
                                               std::initializer_list<std::string_view> known, const char *command,
                                               std::initializer_list<std::string_view> flags)
{
    ToolArguments read;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (!argument.starts_with("--")) {
            read.words.emplace_back(argument);
            continue;
        }
        const std::string_view name = argument.substr(2);
        if (std::find(flags.begin(), flags.end(), name) != flags.end()) {
            read.flags.emplace_back(name);
            continue;
        }
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            std::fprintf(stderr, "vyrtool %s: unknown option \"%.*s\"\n", command, static_cast<int>(argument.size()),
                         argument.data());
            return std::nullopt;
        }
        if (i + 1 == arguments.size()) {
            std::fprintf(stderr, "vyrtool %s: %.*s needs a value\n", command, static_cast<int>(argument.size()),
                         argument.data());
            return std::nullopt;
        }
        read.options.emplace(std::string(name), std::string(arguments[++i]));
    }
    return read;
}
