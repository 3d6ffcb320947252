// Reading a vyrtool subcommand's arguments: positional words and named
// options ("--format FILE"), some of which may be given more than once.
#ifndef VYRTOOL_TOOLARGUMENTS_H
#define VYRTOOL_TOOLARGUMENTS_H

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct ToolArguments
{
    std::vector<std::string> words;
    std::multimap<std::string, std::string> options;

    // The one value of `name`, if given.
    std::optional<std::string> option(const std::string &name) const;
    std::vector<std::string> all(const std::string &name) const;
};

// Every "--name" in `arguments` must be one of `known` and take a value.
// On a mistake, says what is wrong on standard error and returns nothing.
std::optional<ToolArguments> readToolArguments(std::span<const std::string_view> arguments,
                                               std::initializer_list<std::string_view> known, const char *command);

#endif // VYRTOOL_TOOLARGUMENTS_H
