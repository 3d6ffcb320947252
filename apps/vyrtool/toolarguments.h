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
    // Options given that take no value.
    std::vector<std::string> flags;

    bool hasFlag(const std::string &name) const;

    // The one value of `name`, if given.
    std::optional<std::string> option(const std::string &name) const;
    std::vector<std::string> all(const std::string &name) const;
};

// Every "--name" in `arguments` must be one of `known`, which take a value,
// or of `flags`, which take none. On a mistake, says what is wrong on
// standard error and returns nothing.
std::optional<ToolArguments> readToolArguments(std::span<const std::string_view> arguments,
                                               std::initializer_list<std::string_view> known, const char *command,
                                               std::initializer_list<std::string_view> flags = {});

#endif // VYRTOOL_TOOLARGUMENTS_H
